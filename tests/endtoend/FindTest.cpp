#include "tests/endtoend/BrowserTest.h"

namespace endtoend {
namespace {

HWND SearchBoxOf(HWND window)
{
    return ChildOf(window, WC_EDITW);
}

HWND PreviewWindow()
{
    return FindTop(L"TSBrowserForm", [](HWND window) { return TextOf(window).ends_with(L" - Template Preview"); });
}

TEST_F(BrowserTest, FindsWhileTheUserTypesAndShowsTheFoundOneByOne)
{
    WriteFile(installation.library / L"Home" / L"K\u00FCndigung.swt");
    WriteFile(installation.library / L"Home" / L"Plan.swt", "{\\rtf1{\\info{\\title Kundigungen}}}");
    installation.Set(L"Browser", L"LastFolderBrowsed", L"Business");
    const HWND window = Open();
    const HWND list = ListOf(window);
    const auto showsRows = [&](LRESULT count) {
        return WaitFor([&] { return SendMessageW(list, LVM_GETITEMCOUNT, 0, 0) == count; });
    };
    EXPECT_TRUE(showsRows(1));
    EXPECT_TRUE(Choose(window, L"ef"));
    const HWND box = SearchBoxOf(window);
    EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(box) != FALSE; }));
    for (const wchar_t letter : std::wstring{L"kundig"})
        PostMessageW(box, WM_CHAR, static_cast<WPARAM>(letter), 1);
    EXPECT_TRUE(showsRows(2)); // by its name, and by the title that the other one has
    EXPECT_TRUE(SelectRow(window, L"Plan"));

    EXPECT_TRUE(Choose(window, L"fp"));
    const HWND preview = Await(PreviewWindow);
    EXPECT_EQ(TextOf(preview), L"Plan - Template Preview");
    PressKey(preview, VK_PRIOR);
    EXPECT_TRUE(WaitFor([&] { return TextOf(preview) == L"K\u00FCndigung - Template Preview"; }));
    PressKey(preview, VK_ESCAPE);
    EXPECT_TRUE(AwaitGone(preview));

    PressKey(box, VK_ESCAPE);
    EXPECT_TRUE(showsRows(1)); // the folder again
    PressKey(box, VK_ESCAPE);
    EXPECT_TRUE(WaitFor([&] { return !IsWindowVisible(box); }));
    EXPECT_TRUE(SelectRow(window, L"Letter"));
    Close();
}

} // namespace
} // namespace endtoend
