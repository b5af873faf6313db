#include "tests/endtoend/BrowserTest.h"

namespace endtoend {
namespace {

TEST_F(BrowserTest, DeletesAFolderButNothingBehindALink)
{
    const fs::path formal = installation.library / L"Business" / L"Formal";
    WriteFile(formal / L"Memo.swt");
    WriteFile(formal / L"Deep" / L"Plan.swt");
    WriteFile(formal / L"Previews" / L"Memo.jpg");
    installation.Set(L"Browser", L"LastFolderBrowsed", L"Business\\Formal");
    const fs::path outside = installation.folder / L"Outside";
    WriteFile(outside / L"Theirs.swt", "theirs");
    WriteFile(outside / L"Previews" / L"Theirs.jpg", "their picture");
    WriteFile(outside / L"Deeper" / L"Other.swt", "other");
    const auto theirs = FilesBelow(outside);
    if (!Installation::Link(formal / L"Linked", outside) ||
        !Installation::Link(formal / L"Deep" / L"Up", installation.folder) ||
        !Installation::Link(formal / L"Previews" / L"Pictures", outside / L"Previews"))
        GTEST_SKIP() << "no links here";
    const HWND window = Open();
    PressKey(TreeOf(window), VK_DELETE);
    EXPECT_TRUE(AnswerBox().starts_with(L"Tessaly Desk: Are you sure you want to delete \"Formal\""));
    // Wine cannot remove the links, so they stay with the folders that they lie in.
    EXPECT_TRUE(AnswerBox().starts_with(L"Tessaly Desk: Cannot delete folder"));
    const Names nodes{L"My Favorites", L"Business", L"  Formal",          L"    Linked",
                      L"      Deeper", L"",         L"Get More Templates"};
    EXPECT_TRUE(WaitFor([&] { return IsWindowEnabled(TreeOf(window)) && NodesOf(window) == nodes; }));
    EXPECT_EQ(FilesBelow(outside), theirs);
    EXPECT_FALSE(fs::exists(formal / L"Memo.swt"));
    Close();
}

} // namespace
} // namespace endtoend
