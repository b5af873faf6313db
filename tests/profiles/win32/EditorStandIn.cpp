#include "platform/win32/WindowsHeader.h"

#include <fstream>
#include <string>

// Stands for the registry editor. It adds a line to TS_EDITOR_LOG, what it was asked for, and hands that to the
// system's own editor, TS_EDITOR_REAL, which takes any file; with TS_EDITOR_MODE "never" it does nothing and does not
// end.
namespace {

std::wstring Environment(const wchar_t* name)
{
    wchar_t text[1024]{};
    GetEnvironmentVariableW(name, text, 1024);
    return text;
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    int count = 0;
    wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    const auto is = [&](int at, const wchar_t* text) { return at < count && std::wstring_view{arguments[at]} == text; };
    const bool exports = is(1, L"/e") && is(2, L"/a") && count == 5;
    const bool imports = is(1, L"/i") && is(2, L"/s") && count == 4;
    std::ofstream{Environment(L"TS_EDITOR_LOG").c_str(), std::ios::app | std::ios::binary}
        << (exports   ? "export"
            : imports ? "import"
                      : "nothing known")
        << "\n";
    if (Environment(L"TS_EDITOR_MODE") == L"never")
        Sleep(INFINITE);
    if (!exports && !imports)
        return 1;
    // Options that the system's own editor may not know are left out.
    std::wstring line = exports ? L"regedit.exe /e \"" : L"regedit.exe /s \"";
    line.append(arguments[3]).append(exports ? L"\" \"" : L"\"");
    if (exports)
        line.append(arguments[4]).append(L"\"");
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(Environment(L"TS_EDITOR_REAL").c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        nullptr, &start, &process))
        return 1;
    WaitForSingleObject(process.hProcess, 20'000);
    return 0;
}
