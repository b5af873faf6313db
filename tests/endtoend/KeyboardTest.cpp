// The whole program by keyboard alone.
#include "tests/endtoend/BrowserTest.h"

#include <algorithm>

namespace endtoend {
namespace {

HWND FocusIn(HWND window)
{
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
    return info.hwndFocus;
}

/// For messages of a failed test, and to compare: what the windows are, in the order of Tab from the first in Z order.
Names Described(const std::vector<HWND>& windows)
{
    Names names;
    for (const HWND window : windows) {
        wchar_t name[100] = L"";
        GetClassNameW(window, name, static_cast<int>(std::size(name)));
        names.push_back(std::to_wstring(GetDlgCtrlID(window)) + L" " + name + L" " + TextOf(window));
    }
    std::ranges::sort(names);
    return names;
}

std::vector<HWND> TabStopsOf(HWND window)
{
    std::vector<HWND> stops;
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
        if (IsWindowVisible(child) && IsWindowEnabled(child) && (GetWindowLongW(child, GWL_STYLE) & WS_TABSTOP) != 0)
            stops.push_back(child);
    return stops;
}

/// Where the focus goes from Tab to Tab, until it is back where it was.
std::vector<HWND> VisitedByTab(HWND window)
{
    constexpr std::size_t tooMany = 60;
    std::vector<HWND> visited{FocusIn(window)};
    while (visited.size() < tooMany) {
        PressKey(visited.back(), VK_TAB);
        HWND next = nullptr;
        if (!WaitFor([&] { return (next = FocusIn(window)) != nullptr && next != visited.back(); }) ||
            next == visited.front())
            break;
        visited.push_back(next);
    }
    return visited;
}

/// Whether Tab goes to all that is a tab stop. A list that is being filled is none for that moment.
void ExpectWalk(HWND window)
{
    Names visited, stops;
    WaitFor([&] {
        visited = Described(VisitedByTab(window));
        stops = Described(TabStopsOf(window));
        return visited == stops;
    });
    EXPECT_EQ(visited, stops);
}

HWND DialogInUse()
{
    return FindTop(L"TSBrowserForm", [](HWND window) {
        return !GetMenu(window) && IsWindowEnabled(window) && ChildOf(window, WC_BUTTONW);
    });
}

/// Goes through a dialog by Tab, into each that one of its own letters opens, and out by Escape.
void WalkThrough(HWND dialog, const std::wstring& letters)
{
    const auto hasFocus = [dialog] { return IsChild(dialog, FocusIn(dialog)) != FALSE; };
    EXPECT_TRUE(WaitFor(hasFocus));
    ExpectWalk(dialog);
    for (const wchar_t letter : letters) {
        SCOPED_TRACE(static_cast<char>(letter));
        constexpr LPARAM withAlt = 1 << 29;
        PostMessageW(FocusIn(dialog), WM_SYSCHAR, letter, withAlt);
        HWND next = nullptr;
        if (WaitFor([&] { return (next = DialogInUse()) != nullptr && next != dialog; }))
            WalkThrough(next, L"");
        else
            ADD_FAILURE() << "did not open";
        EXPECT_TRUE(WaitFor(hasFocus));
    }
    PressKey(FocusIn(dialog), VK_ESCAPE);
    EXPECT_TRUE(AwaitGone(dialog));
}

TEST_F(BrowserTest, EveryDialogOpensIsWalkedThroughAndClosesByKeys)
{
    constexpr wchar_t profiles[] = L"Software\\Zelmor Software\\Zelmor User Profiles\\Profiles";
    const BorrowedKey borrowed{HKEY_CURRENT_USER, profiles};
    SetText(HKEY_CURRENT_USER, profiles + std::wstring{L"\\Ann"}, L"FirstName", L"Ann");
    constexpr struct {
        const wchar_t *letters, *caption, *inside = L"";
    } dialogs[] = {
        {L"fp", L"Letter - Template Preview"},
        {L"fr", L"Template Properties"},
        {L"od", L"Recent Documents"},
        {L"re", L"Edit Profile", L"ma"},
        {L"r\x2193\r", L"Manage Profiles", L"ar"},
        {L"ri", L"Import/Export Profiles"},
        {L"tr", L"Recent Documents"},
        {L"tm", L"Solution Pack Manager"},
        {L"ha", L"About"},
    };
    installation.Set(L"Browser", L"LastFolderBrowsed", L"Business");
    installation.Set(L"Options", L"WebLink", L"http://one.example/");
    const HWND window = Open();
    ASSERT_TRUE(window);
    ExpectWalk(window);
    EXPECT_TRUE(Choose(window, L"ef"));
    const HWND searchBox = ChildOf(window, WC_EDITW);
    EXPECT_TRUE(WaitFor([&] { return FocusIn(window) == searchBox; }));
    ExpectWalk(window);
    PressKey(searchBox, VK_ESCAPE);
    EXPECT_TRUE(WaitFor([&] { return FocusIn(window) == ListOf(window); }));

    for (const auto& [letters, caption, inside] : dialogs) {
        SCOPED_TRACE(fs::path{letters}.string());
        const HWND before = FocusIn(window);
        EXPECT_TRUE(Choose(window, letters));
        const HWND dialog = Await(Dialog);
        if (!dialog) {
            ADD_FAILURE() << "did not open";
            continue;
        }
        EXPECT_EQ(TextOf(dialog), caption);
        WalkThrough(dialog, inside);
        EXPECT_TRUE(WaitFor([&] { return FocusIn(window) == before; }));
    }
    Close();
}

} // namespace
} // namespace endtoend
