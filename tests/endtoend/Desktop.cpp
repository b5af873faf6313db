#include "tests/endtoend/Desktop.h"

#include "tests/automation/Harness.h"

#include <cwchar>
#include <functional>
#include <ostream>

namespace endtoend {
namespace {

using harness::WaitFor;

constexpr UINT AnswerTime = 10'000; ///< milliseconds that a living window may take to answer

LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
{
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, AnswerTime, &answer);
    return static_cast<LRESULT>(answer);
}

std::wstring ClassOf(HWND window)
{
    wchar_t name[64]{};
    GetClassNameW(window, name, 64);
    return name;
}

HWND FindTop(const wchar_t* className, bool (*fits)(HWND))
{
    HWND window = nullptr;
    while ((window = FindWindowExW(nullptr, window, className, nullptr)) != nullptr)
        if (IsWindowVisible(window) && fits(window))
            return window;
    return nullptr;
}

HWND FindForm(bool (*fits)(HWND))
{
    return FindTop(L"TSBrowserForm", fits);
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

template <class Item>
struct WithText {
    Item item;
    wchar_t text[300];
};

HWND TreeOf(HWND window)
{
    return Child(window, WC_TREEVIEWW);
}

HWND ListOf(HWND window)
{
    return Child(window, WC_LISTVIEWW);
}

using VisitNode = std::function<void(HTREEITEM, const std::wstring&, std::size_t level)>;

void VisitNodes(HWND tree, LRESULT first, std::size_t level, const VisitNode& visit)
{
    for (LRESULT node = first; node != 0; node = Ask(tree, TVM_GETNEXTITEM, TVGN_NEXT, node)) {
        Remote<WithText<TVITEMW>> memory{tree, {}};
        WithText<TVITEMW> request{};
        request.item.mask = TVIF_TEXT | TVIF_HANDLE;
        request.item.hItem = reinterpret_cast<HTREEITEM>(node);
        request.item.pszText = memory.Address()->text;
        request.item.cchTextMax = static_cast<int>(std::size(request.text));
        memory.Write(request);
        Ask(tree, TVM_GETITEMW, 0, memory.Parameter());
        visit(reinterpret_cast<HTREEITEM>(node), memory.Read().text, level);
        VisitNodes(tree, Ask(tree, TVM_GETNEXTITEM, TVGN_CHILD, node), level + 1, visit);
    }
}

void VisitNodes(HWND window, const VisitNode& visit)
{
    const HWND tree = TreeOf(window);
    VisitNodes(tree, Ask(tree, TVM_GETNEXTITEM, TVGN_ROOT), 0, visit);
}

std::size_t OpenMenus()
{
    std::size_t count = 0;
    HWND menu = nullptr;
    while ((menu = FindWindowExW(nullptr, menu, L"#32768", nullptr)) != nullptr)
        count += IsWindowVisible(menu) != FALSE;
    return count;
}

/// Tells the system's icons apart by what is on the screen: handles mean nothing in another process.
Box::Icon IconOn(HWND box)
{
    HWND icon = Child(box, WC_STATICW);
    while (icon && (GetWindowLongW(icon, GWL_STYLE) & SS_TYPEMASK) != SS_ICON)
        icon = FindWindowExW(box, icon, WC_STATICW, nullptr);
    if (!icon || !IsWindowVisible(icon) || Ask(icon, STM_GETICON) == 0)
        return Box::Icon::None;
    int red = 0;
    int blue = 0;
    WaitFor([&] {
        RECT place{};
        GetWindowRect(icon, &place);
        const HDC screen = GetDC(nullptr);
        for (int y = place.top; y < place.bottom; y += 2)
            for (int x = place.left; x < place.right; x += 2) {
                const COLORREF colour = GetPixel(screen, x, y);
                red += GetRValue(colour) > GetBValue(colour) + 60;
                blue += GetBValue(colour) > GetRValue(colour) + 60;
            }
        ReleaseDC(nullptr, screen);
        return red + blue > 0;
    });
    return red > blue ? Box::Icon::Critical : Box::Icon::Information;
}

} // namespace

void PrintTo(const Box& box, std::ostream* stream)
{
    *stream << Printable(box.title) << ": " << Printable(box.text) << " icon " << static_cast<int>(box.icon);
}

std::string Printable(const std::wstring& text)
{
    std::string result;
    for (const wchar_t c : text)
        result += c >= 0x20 && c < 0x7F ? std::string(1, static_cast<char>(c)) : "<" + std::to_string(c) + ">";
    return result;
}

std::wstring TextOf(HWND window)
{
    std::wstring text(2048, L'\0');
    DWORD_PTR length = 0;
    // The system carries this text across by itself.
    SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()), SMTO_NORMAL, AnswerTime,
                        &length);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

HWND MainWindow()
{
    return FindForm([](HWND window) { return GetMenu(window) != nullptr; });
}

HWND Dialog()
{
    return FindForm([](HWND window) { return GetMenu(window) == nullptr && Child(window, WC_BUTTONW) != nullptr; });
}

HWND ProgressWindow()
{
    return FindForm([](HWND window) { return Child(window, PROGRESS_CLASSW) != nullptr; });
}

HWND SystemDialog()
{
    return FindTop(L"#32770", [](HWND) { return true; });
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

Box AnswerBox()
{
    constexpr int textOfBox = 0xFFFF;
    const HWND box = Await(SystemDialog);
    if (!box)
        return {L"(no message came)", {}, {}};
    Box shown{TextOf(box), TextOf(GetDlgItem(box, textOfBox)), IconOn(box)};
    Press(Child(box, WC_BUTTONW));
    AwaitGone(box);
    return shown;
}

HWND Child(HWND window, const wchar_t* className, int index)
{
    HWND child = nullptr;
    for (; index >= 0; --index)
        child = FindWindowExW(window, child, className, nullptr);
    return child;
}

HWND ButtonOf(HWND dialog, const std::wstring& caption)
{
    return FindWindowExW(dialog, nullptr, WC_BUTTONW, caption.c_str());
}

std::wstring LabelsOf(HWND dialog)
{
    std::wstring labels;
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if (IsWindowVisible(child) && _wcsicmp(ClassOf(child).c_str(), WC_STATICW) == 0)
            labels += TextOf(child) + L"\n";
    return labels;
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
    for (std::size_t i = 1; i < letters.size(); ++i) {
        // Each letter is for the menu that the one before opened.
        if (!WaitFor([i] { return OpenMenus() == i; }))
            break;
        PostMessageW(window, WM_CHAR, letters[i], 1);
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

bool TypeLabel(HWND window, const std::wstring& label)
{
    const HWND tree = TreeOf(window);
    HWND editor = nullptr;
    const auto isOpen = [&] { return (editor = reinterpret_cast<HWND>(Ask(tree, TVM_GETEDITCONTROL))) != nullptr; };
    // While the tree is being loaded the key does nothing; whoever presses it too early presses it again.
    for (int attempt = 0; attempt < 10 && !editor; ++attempt) {
        PressKey(tree, VK_F2);
        WaitFor(isOpen, std::chrono::seconds{1});
    }
    if (!editor)
        return false;
    Ask(editor, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(label.c_str())); // carried across by the system
    PressKey(editor, VK_RETURN);
    return true;
}

std::vector<std::wstring> RowsOf(HWND window)
{
    const HWND list = ListOf(window);
    Remote<WithText<LVITEMW>> memory{list, {}};
    WithText<LVITEMW> request{};
    request.item.pszText = memory.Address()->text;
    request.item.cchTextMax = static_cast<int>(std::size(request.text));
    std::vector<std::wstring> rows;
    const LRESULT count = Ask(list, LVM_GETITEMCOUNT);
    for (LRESULT i = 0; i < count; ++i) {
        memory.Write(request);
        Ask(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(i), memory.Parameter());
        rows.emplace_back(memory.Read().text);
    }
    return rows;
}

bool SelectRow(HWND window, const std::wstring& name)
{
    const std::vector<std::wstring> rows = RowsOf(window);
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (rows[i] == name) {
            LVITEMW state{};
            state.state = state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
            const Remote<LVITEMW> memory{ListOf(window), state};
            return Ask(ListOf(window), LVM_SETITEMSTATE, i, memory.Parameter()) != 0;
        }
    return false;
}

void DoubleClickSelection(HWND window)
{
    const HWND list = ListOf(window);
    const LRESULT row = Ask(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
    RECT place{};
    place.left = LVIR_ICON;
    const Remote<RECT> memory{list, place};
    Ask(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), memory.Parameter());
    place = memory.Read();
    const LPARAM middle = MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    PostMessageW(list, WM_LBUTTONDBLCLK, MK_LBUTTON, middle);
    PostMessageW(list, WM_LBUTTONUP, 0, middle);
}

} // namespace endtoend
