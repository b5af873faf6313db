#include "tests/endtoend/BrowserTest.h"

namespace endtoend {
namespace {

namespace fs = std::filesystem;

const Box NoFolders{L"Tessaly Desk", L"The browser did not find any template folders for this condition.",
                    Box::Icon::Critical};

class EndToEndLibraryTest : public BrowserTest {
protected:
    static std::vector<std::wstring> Categories(HWND window)
    {
        std::vector<std::wstring> nodes = NodesOf(window);
        std::erase_if(nodes, [](const std::wstring& node) {
            return node.empty() || node == L"My Favorites" || node == L"Get More Templates";
        });
        return nodes;
    }
    using Names = std::vector<std::wstring>;
};

TEST_F(EndToEndLibraryTest, CleansEmptyCategoriesButNothingBehindALink)
{
    const fs::path outside = installation.folder / L"Outside";
    installation.Write(outside / L"Theirs.swt");
    fs::create_directories(outside / L"Empty" / L"Deeper");
    fs::create_directories(installation.library / L"Empty");
    fs::create_directories(installation.library / L"Business" / L"Empty, too");
    fs::create_directories(installation.library / L"Full" / L"Previews");
    const bool linked = Installation::Link(installation.library / L"Linked", outside);

    const HWND window = Open();
    EXPECT_EQ(Categories(window), linked ? (Names{L"Business", L"Linked"}) : (Names{L"Business"}));
    Close();
    EXPECT_FALSE(fs::exists(installation.library / L"Empty"));
    EXPECT_FALSE(fs::exists(installation.library / L"Business" / L"Empty, too"));
    EXPECT_TRUE(fs::exists(installation.library / L"Full" / L"Previews"));
    EXPECT_TRUE(fs::exists(outside / L"Theirs.swt"));
    EXPECT_TRUE(fs::exists(outside / L"Empty" / L"Deeper"));
    EXPECT_EQ(fs::exists(installation.library / L"Linked"), linked);
}

TEST_F(EndToEndLibraryTest, StaysOpenWithoutFoldersAndFindsThemLater)
{
    const fs::path away = installation.folder / L"Away";
    fs::rename(installation.library / L"Business", away);
    Start();
    EXPECT_EQ(AnswerBox(), NoFolders);
    const HWND window = Await(MainWindow);
    ASSERT_TRUE(window);
    EXPECT_EQ(NodesOf(window), Names{});
    EXPECT_EQ(RowsOf(window), Names{});

    fs::rename(away, installation.library / L"Business");
    PressKey(Child(window, WC_TREEVIEWW), VK_F5);
    EXPECT_TRUE(harness::WaitFor([&] { return Categories(window) == Names{L"Business"}; }));
    EXPECT_TRUE(harness::WaitFor([&] { return RowsOf(window) == Names{L"Letter"}; }));

    // The whole library vanishes under the open window.
    fs::rename(installation.library, away);
    PressKey(Child(window, WC_TREEVIEWW), VK_F5);
    EXPECT_EQ(AnswerBox(), NoFolders);
    EXPECT_EQ(RowsOf(window), Names{});
    Close();
}

} // namespace
} // namespace endtoend
