#include "tests/support/win32/Windows.h"

#include <algorithm>
#include <functional>
#include <string_view>

namespace support {
namespace {

constexpr UINT AnswerTime = 10'000; ///< milliseconds that a living window may take to answer

LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
{
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, AnswerTime, &answer);
    return static_cast<LRESULT>(answer);
}

/// Memory in the process of a window, for messages that carry pointers.
template <class Data>
class Remote {
public:
    Remote(HWND window, const Data& data)
    {
        DWORD id = 0;
        GetWindowThreadProcessId(window, &id);
        process = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
        address = static_cast<Data*>(
            VirtualAllocEx(process, nullptr, sizeof(Data), MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
        Write(data);
    }
    ~Remote()
    {
        VirtualFreeEx(process, address, 0, MEM_RELEASE);
        CloseHandle(process);
    }
    Remote(const Remote&) = delete;
    Remote& operator=(const Remote&) = delete;

    void Write(const Data& data) { WriteProcessMemory(process, address, &data, sizeof data, nullptr); }
    Data Read() const
    {
        Data data{};
        ReadProcessMemory(process, address, &data, sizeof data, nullptr);
        return data;
    }
    Data* Address() const { return address; }
    LPARAM Parameter() const { return reinterpret_cast<LPARAM>(address); }

private:
    HANDLE process;
    Data* address;
};

/// The text that an item of a tree or a list has; `item` says which one.
template <class Item>
std::wstring TextOfItem(HWND control, UINT message, WPARAM index, Item item)
{
    struct Request {
        Item item;
        wchar_t text[300];
    };
    Remote<Request> memory{control, {}};
    item.pszText = memory.Address()->text;
    item.cchTextMax = static_cast<int>(std::size(Request{}.text));
    memory.Write({item, {}});
    Ask(control, message, index, memory.Parameter());
    return memory.Read().text;
}

using VisitNode = std::function<void(HTREEITEM, const std::wstring&, std::size_t level)>;

void VisitNodes(HWND tree, LRESULT first, std::size_t level, const VisitNode& visit)
{
    for (LRESULT node = first; node != 0; node = Ask(tree, TVM_GETNEXTITEM, TVGN_NEXT, node)) {
        TVITEMW item{};
        item.mask = TVIF_TEXT | TVIF_HANDLE;
        item.hItem = reinterpret_cast<HTREEITEM>(node);
        visit(item.hItem, TextOfItem(tree, TVM_GETITEMW, 0, item), level);
        VisitNodes(tree, Ask(tree, TVM_GETNEXTITEM, TVGN_CHILD, node), level + 1, visit);
    }
}

void VisitNodes(HWND window, const VisitNode& visit)
{
    VisitNodes(TreeOf(window), Ask(TreeOf(window), TVM_GETNEXTITEM, TVGN_ROOT), 0, visit);
}

struct Search {
    std::wstring_view className;
    std::vector<HWND> found;
};

BOOL CALLBACK AddIfFound(HWND window, LPARAM parameter) noexcept
{
    auto& search = *reinterpret_cast<Search*>(parameter);
    wchar_t name[64]{};
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    if (search.className == name && IsWindowVisible(window))
        search.found.push_back(window);
    return TRUE;
}

std::size_t OpenMenus()
{
    return TopWindows(L"#32768").size();
}

} // namespace

std::wstring TextOf(HWND window)
{
    std::wstring text(2048, L'\0');
    // The system carries this text across by itself.
    text.resize(static_cast<std::size_t>(Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

std::vector<HWND> TopWindows(const wchar_t* className)
{
    Search search{className, {}};
    EnumWindows(&AddIfFound, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND FindTop(const wchar_t* className, bool (*fits)(HWND))
{
    const auto windows = TopWindows(className);
    const auto found = std::ranges::find_if(windows, fits);
    return found != windows.end() ? *found : nullptr;
}

HWND SystemDialog()
{
    return FindTop(L"#32770");
}

HWND Await(HWND (*find)())
{
    HWND found = nullptr;
    WaitFor([&] { return (found = find()) != nullptr; });
    return found;
}

bool AwaitGone(HWND window)
{
    return WaitFor([window] { return !IsWindow(window) || !IsWindowVisible(window); });
}

std::wstring AnswerBox()
{
    constexpr int textOfBox = 0xFFFF;
    const HWND box = Await(SystemDialog);
    if (!box)
        return L"(no message came)";
    const std::wstring shown = TextOf(box) + L": " + TextOf(GetDlgItem(box, textOfBox));
    Press(ChildOf(box, WC_BUTTONW));
    AwaitGone(box);
    return shown;
}

HWND ChildOf(HWND window, const wchar_t* className)
{
    return FindWindowExW(window, nullptr, className, nullptr);
}

HWND TreeOf(HWND window)
{
    return ChildOf(window, WC_TREEVIEWW);
}

HWND ListOf(HWND window)
{
    return ChildOf(window, WC_LISTVIEWW);
}

HWND ButtonOf(HWND dialog, const std::wstring& caption)
{
    return FindWindowExW(dialog, nullptr, WC_BUTTONW, caption.c_str());
}

void Press(HWND button)
{
    PostMessageW(button, BM_CLICK, 0, 0);
}

void PressKey(HWND control, WPARAM key)
{
    PostMessageW(control, WM_KEYDOWN, key, 1);
    PostMessageW(control, WM_KEYUP, key, 1);
}

bool Choose(HWND window, const std::wstring& letters)
{
    PostMessageW(window, WM_SYSCOMMAND, SC_KEYMENU, letters.front());
    std::size_t depth = 1;
    for (const wchar_t letter : letters.substr(1)) {
        // Each letter is for the menu that the one before opened.
        if (!WaitFor([depth] { return OpenMenus() == depth; }))
            break;
        if (letter == LineDown) {
            PostMessageW(window, WM_KEYDOWN, VK_DOWN, 1);
            continue;
        }
        PostMessageW(window, WM_CHAR, letter, 1);
        ++depth;
    }
    const auto closed = [] { return OpenMenus() == 0; };
    if (WaitFor(closed, std::chrono::seconds{5}))
        return true;
    PostMessageW(window, WM_CANCELMODE, 0, 0);
    WaitFor(closed);
    return false;
}

std::vector<std::wstring> NodesOf(HWND window)
{
    std::vector<std::wstring> nodes;
    VisitNodes(window, [&](HTREEITEM, const std::wstring& caption, std::size_t level) {
        nodes.push_back(std::wstring(2 * level, L' ') + caption);
    });
    return nodes;
}

bool SelectNode(HWND window, const std::wstring& caption)
{
    HTREEITEM found = nullptr;
    VisitNodes(window, [&](HTREEITEM node, const std::wstring& text, std::size_t) {
        if (text == caption)
            found = node;
    });
    if (found)
        Ask(TreeOf(window), TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(found));
    return found != nullptr;
}

bool SelectRow(HWND window, const std::wstring& name)
{
    const HWND list = ListOf(window);
    const auto count = static_cast<WPARAM>(Ask(list, LVM_GETITEMCOUNT));
    for (WPARAM row = 0; row < count; ++row)
        if (TextOfItem(list, LVM_GETITEMTEXTW, row, LVITEMW{}) == name) {
            LVITEMW state{};
            state.state = state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
            const Remote<LVITEMW> memory{list, state};
            return Ask(list, LVM_SETITEMSTATE, row, memory.Parameter()) != 0;
        }
    return false;
}

} // namespace support
