#include "tests/endtoend/BrowserTest.h"

namespace endtoend {
namespace {

/// The folder "Formal" below the category "Business", with favourites and a recent file in it.
class EndToEndFolderTest : public BrowserTest {
protected:
    EndToEndFolderTest()
    {
        WriteFile(formal / L"Memo.swt", "memo");
        WriteFile(formal / L"Deep" / L"Plan.swt");
        WriteFile(formal / L"Previews" / L"Memo.jpg");
        WriteFile(business / L"Family" / L"Card.swt");
        for (const wchar_t* const favorite : {L"Formal\\Memo.swt", L"Formal\\Deep\\Plan.swt", L"Family\\Card.swt"})
            installation.Set(L"Browser\\Favorites", L"Business\\" + std::wstring{favorite}, L"");
        installation.Set(L"Browser\\Recent Files", L"File 1", (formal / L"Memo.swt").wstring());
        installation.Set(L"Browser", L"LastFolderBrowsed", L"Business\\Formal");
    }

    /// The tree below "Business" is this, the list shows this row, and the selected folder is stored.
    static bool Shows(HWND window, const Names& tree, const std::wstring& row, const std::wstring& folder)
    {
        Names nodes{L"My Favorites", L"Business"};
        nodes.insert(nodes.end(), tree.begin(), tree.end());
        nodes.insert(nodes.end(), {L"", L"Get More Templates"});
        return WaitFor([&] {
            return IsWindowEnabled(TreeOf(window)) && NodesOf(window) == nodes && RowsOf(window) == Names{row} &&
                   Installation::Setting(L"Browser", L"LastFolderBrowsed") == folder;
        });
    }

    const fs::path business = installation.library / L"Business";
    const fs::path formal = business / L"Formal";
};

TEST_F(EndToEndFolderTest, RenamesAFolderAndWhatPointsIntoItFollows)
{
    const HWND window = Open();
    ASSERT_TRUE(TypeLabel(window, L"Casual"));
    EXPECT_TRUE(Shows(window, {L"  Casual", L"    Deep", L"  Family"}, L"Memo", L"Business\\Casual"));
    EXPECT_FALSE(fs::exists(formal));
    Names favorites;
    const std::wstring key = std::wstring{SettingsKey} + L"\\Browser\\Favorites";
    for (const auto& [path, data] : ReadRegistry(HKEY_CURRENT_USER, key))
        if (path != key)
            favorites.push_back(path.substr(key.size() + 2));
    EXPECT_EQ(favorites, (Names{L"Business\\Casual\\Deep\\Plan.swt", L"Business\\Casual\\Memo.swt",
                                L"Business\\Family\\Card.swt"}));
    EXPECT_EQ(installation.Setting(L"Browser\\Recent Files", L"File 1"),
              (business / L"Casual" / L"Memo.swt").wstring());
    Close();
}

TEST_F(EndToEndFolderTest, DeletesAFolderButNothingBehindALink)
{
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
    EXPECT_EQ(AnswerBox(), L"Tessaly Desk: Are you sure you want to delete \"Formal\" and all its contents?");
    // Wine cannot remove the links, so they stay with the folders that they lie in.
    EXPECT_TRUE(AnswerBox().starts_with(L"Tessaly Desk: Cannot delete folder"));
    EXPECT_TRUE(Shows(window, {L"  Family", L"  Formal", L"    Linked", L"      Deeper"}, L"Letter", L"Business"));
    EXPECT_EQ(FilesBelow(outside), theirs);
    EXPECT_FALSE(fs::exists(formal / L"Memo.swt"));
    EXPECT_TRUE(fs::exists(business / L"Family" / L"Card.swt"));
    Close();
}

} // namespace
} // namespace endtoend
