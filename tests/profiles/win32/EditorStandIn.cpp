#include "platform/win32/WindowsHeader.h"
#include "tests/support/win32/Files.h"

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

// Stands for the registry editor. TS_EDITOR_MODE says how: "original" does what the command line asks for, as the
// editor that knows /e /a and /i /s does; "nothing", "half" and "garbage" do so badly; "never" does not end; "lax"
// hands an import to the editor TS_EDITOR_REAL, which takes any file. Each call adds a line to TS_EDITOR_LOG: what it
// was asked for and how many values it moved.
namespace {

std::string Environment(const char* name)
{
    char text[1024]{};
    GetEnvironmentVariableA(name, text, sizeof text);
    return text;
}

class Key {
public:
    explicit Key(HKEY opened) : key{opened} {}
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key() { RegCloseKey(key); }
    operator HKEY() const { return key; }

private:
    HKEY key;
};

std::string Quoted(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text)
        (c == '"' || c == '\\' ? quoted += '\\' : quoted) += c;
    return quoted + '"';
}

std::string Hex(const std::string& bytes)
{
    std::string list;
    for (const char byte : bytes) {
        char digits[8];
        wsprintfA(digits, list.empty() ? "%02x" : ",%02x", static_cast<unsigned char>(byte));
        list += digits;
    }
    return list;
}

/// Adds a key below the user's hive, with all that it holds, as text. The number of values.
int Write(const std::string& path, std::string& text)
{
    HKEY opened{};
    if (RegOpenKeyExA(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS)
        return 0;
    const Key key{opened};
    text += "\r\n[HKEY_CURRENT_USER\\" + path + "]\r\n";
    int count = 0;
    std::vector<char> data(1 << 16);
    char name[1024];
    for (DWORD i = 0;; ++i) {
        DWORD nameLength = sizeof name, size = static_cast<DWORD>(data.size()), type = 0;
        if (RegEnumValueA(key, i, name, &nameLength, nullptr, &type, reinterpret_cast<BYTE*>(data.data()), &size) !=
            ERROR_SUCCESS)
            break;
        const std::string bytes{data.data(), size};
        text += nameLength == 0 ? "@=" : Quoted({name, nameLength}) + "=";
        char number[16];
        wsprintfA(number, "hex(%x):", static_cast<unsigned>(type));
        if (type == REG_SZ)
            text += Quoted(bytes.c_str());
        else if (type == REG_DWORD && size == 4)
            text += (wsprintfA(name, "dword:%08x", *reinterpret_cast<const DWORD*>(bytes.data())), name);
        else
            text += (type == REG_BINARY ? "hex:" : number) + Hex(bytes);
        text += "\r\n";
        ++count;
    }
    for (DWORD i = 0; RegEnumKeyA(key, i, name, sizeof name) == ERROR_SUCCESS; ++i)
        count += Write(path + "\\" + name, text);
    return count;
}

std::string TakeQuoted(const std::string& line, std::size_t& at)
{
    std::string text;
    for (++at; at < line.size() && line[at] != '"'; ++at) {
        if (line[at] == '\\')
            ++at;
        text += line[at];
    }
    ++at;
    return text;
}

/// Merges a clean file. The number of values.
int Merge(const std::string& file)
{
    constexpr std::string_view hive = "HKEY_CURRENT_USER\\";
    std::istringstream lines{file};
    std::string line, path;
    int count = 0;
    while (std::getline(lines, line)) {
        if (line.ends_with('\r'))
            line.pop_back();
        if (line.starts_with('['))
            path = line.substr(1 + hive.size(), line.size() - 2 - hive.size());
        if (path.empty() || (!line.starts_with('"') && !line.starts_with('@')))
            continue;
        std::size_t at = line.starts_with('@') ? 1 : 0;
        const std::string name = at == 1 ? "" : TakeQuoted(line, at);
        std::string data = line.substr(++at);
        DWORD type = REG_SZ;
        if (data.starts_with('"')) {
            data = TakeQuoted(line, at) + '\0';
        } else if (data.starts_with("dword:")) {
            const DWORD number = std::stoul(data.substr(6), nullptr, 16);
            type = REG_DWORD;
            data.assign(reinterpret_cast<const char*>(&number), sizeof number);
        } else {
            type = data[3] == '(' ? std::stoul(data.substr(4), nullptr, 16) : REG_BINARY;
            std::istringstream list{data.substr(data.find(':') + 1)};
            data.clear();
            for (std::string byte; std::getline(list, byte, ',');)
                data += static_cast<char>(std::stoi(byte, nullptr, 16));
        }
        HKEY opened{};
        if (RegCreateKeyExA(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &opened, nullptr) ==
            ERROR_SUCCESS) {
            const Key key{opened};
            count += RegSetValueExA(key, name.c_str(), 0, type, reinterpret_cast<const BYTE*>(data.data()),
                                    static_cast<DWORD>(data.size())) == ERROR_SUCCESS;
        }
    }
    return count;
}

void RunRealEditor(const std::wstring& file)
{
    wchar_t real[MAX_PATH]{};
    GetEnvironmentVariableW(L"TS_EDITOR_REAL", real, MAX_PATH);
    std::wstring line = L"regedit.exe /s \"" + file + L"\"";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(real, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process))
        return;
    WaitForSingleObject(process.hProcess, 20'000);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    int count = 0;
    wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    const std::string mode = Environment("TS_EDITOR_MODE");
    const auto is = [&](int at, const wchar_t* text) { return at < count && std::wstring_view{arguments[at]} == text; };
    int moved = 0;
    std::string asked = "nothing known";
    const bool works = mode != "nothing" && mode != "never";
    if (is(1, L"/e") && is(2, L"/a") && count == 5) {
        asked = "export";
        const std::wstring_view full = arguments[4];
        std::string text = "REGEDIT4\r\n";
        if (works)
            moved = Write(std::string{full.begin() + 18, full.end()}, text);
        text += "\r\n";
        if (mode == "half")
            text.resize(text.size() / 2);
        if (mode == "garbage")
            text.assign(5000, '\x8f');
        if (works)
            std::ofstream{arguments[3], std::ios::binary} << text;
    } else if (is(1, L"/i") && is(2, L"/s") && count == 4) {
        asked = "import";
        std::string text = support::ReadFile(arguments[3]);
        if (mode == "half")
            text.resize(text.rfind('\n', text.size() / 2));
        if (mode == "garbage")
            for (std::size_t at = 0; (at = text.find("=\"", at)) != std::string::npos; at += 2)
                text.insert(at + 2, "?");
        if (mode == "lax")
            RunRealEditor(arguments[3]);
        else if (works)
            moved = Merge(text);
    }
    std::ofstream{Environment("TS_EDITOR_LOG"), std::ios::app} << asked << " " << moved << "\n";
    if (mode == "never")
        Sleep(INFINITE);
    return 0;
}
