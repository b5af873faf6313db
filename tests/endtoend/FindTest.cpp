#include "tests/endtoend/BrowserTest.h"

namespace endtoend {
namespace {

TEST_F(BrowserTest, FindsWhileTheUserTypes)
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
    const HWND box = ChildOf(window, WC_EDITW);
    EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(box) != FALSE; }));
    for (const wchar_t letter : std::wstring{L"kundig"})
        PostMessageW(box, WM_CHAR, static_cast<WPARAM>(letter), 1);
    EXPECT_TRUE(showsRows(2)); // by its name, and by the title that the other one has
    EXPECT_TRUE(SelectRow(window, L"Plan"));
    PressKey(box, VK_ESCAPE);
    EXPECT_TRUE(showsRows(1)); // the folder again
    PressKey(box, VK_ESCAPE);
    EXPECT_TRUE(WaitFor([&] { return !IsWindowVisible(box); }));
    EXPECT_TRUE(SelectRow(window, L"Letter"));
    Close();
}

} // namespace
} // namespace endtoend
