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

TEST_F(BrowserTest, EveryDialogOpensIsWalkedThroughAndClosesByKeys)
{
    constexpr struct {
        const wchar_t *letters, *caption;
    } dialogs[] = {
        {L"fp", L"Letter - Template Preview"},
        {L"fr", L"Template Properties"},
        {L"od", L"Recent Documents"},
        {L"re", L"Edit Profile"},
        {L"r\x2193\r", L"Manage Profiles"},
        {L"ri", L"Import/Export Profiles"},
        {L"tr", L"Recent Documents"},
        {L"tm", L"Solution Pack Manager"},
        {L"ha", L"About"},
    };
    installation.Set(L"Browser", L"LastFolderBrowsed", L"Business");
    installation.Set(L"Options", L"WebLink", L"http://one.example/");
    const HWND window = Open();
    ASSERT_TRUE(window);
    EXPECT_EQ(Described(VisitedByTab(window)), Described(TabStopsOf(window)));
    EXPECT_TRUE(Choose(window, L"ef"));
    const HWND searchBox = ChildOf(window, WC_EDITW);
    EXPECT_TRUE(WaitFor([&] { return FocusIn(window) == searchBox; }));
    EXPECT_EQ(Described(VisitedByTab(window)), Described(TabStopsOf(window)));
    PressKey(searchBox, VK_ESCAPE);
    EXPECT_TRUE(WaitFor([&] { return FocusIn(window) == ListOf(window); }));

    for (const auto& [letters, caption] : dialogs) {
        SCOPED_TRACE(fs::path{letters}.string());
        const HWND before = FocusIn(window);
        EXPECT_TRUE(Choose(window, letters));
        const HWND dialog = Await(Dialog);
        if (!dialog) {
            ADD_FAILURE() << "did not open";
            continue;
        }
        EXPECT_EQ(TextOf(dialog), caption);
        EXPECT_TRUE(WaitFor([&] { return IsChild(dialog, FocusIn(window)); }));
        EXPECT_EQ(Described(VisitedByTab(dialog)), Described(TabStopsOf(dialog)));
        PressKey(FocusIn(dialog), VK_ESCAPE);
        EXPECT_TRUE(AwaitGone(dialog));
        EXPECT_TRUE(WaitFor([&] { return FocusIn(window) == before; }));
    }
    Close();
}

} // namespace
} // namespace endtoend
