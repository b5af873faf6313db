#include "tests/endtoend/BrowserTest.h"

namespace endtoend {
namespace {

TEST_F(BrowserTest, SpeaksTheLanguageOfTheTextsBesideIt)
{
    fs::copy_file(OwnFolder() / L"endtoend_texts.dll", installation.program.parent_path() / L"TS_RES.dll");
    const HWND window = Open();
    EXPECT_EQ(NodesOf(window), (Names{L"Meine Favoriten", L"Business", L"", L"Get More Templates"}));
    // The menu, by its letters: "Datei", "Beenden".
    EXPECT_TRUE(Choose(window, L"de"));
    ExpectEnd();
}

/// What an impatient user does to the window; it must stay alive, and in order.
TEST_F(BrowserTest, SurvivesAnImpatientUser)
{
    constexpr int Categories = 200;
    constexpr int Templates = 3000;
    for (int i = 0; i < Categories; ++i)
        WriteFile(installation.library / (L"Category " + std::to_wstring(i)) / L"Letter.swt");
    for (int i = 0; i < Templates; ++i)
        WriteFile(installation.library / L"Many" / (L"Template " + std::to_wstring(i) + L".swt"));
    Start();
    // As Alt+F4 does.
    PostMessageW(Await(ProgressWindow), WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_TRUE(AwaitApplicationName());
    const HWND window = MainWindow();
    const HWND tree = TreeOf(window);
    const HWND list = ListOf(window);
    const auto rows = [list] { return SendMessageW(list, LVM_GETITEMCOUNT, 0, 0); };

    // Loads on top of each other, with clicks in the middle.
    for (int i = 0; i < 5; ++i) {
        PressKey(tree, VK_F5);
        PressKey(tree, VK_DOWN);
        PressKey(list, VK_DOWN);
    }
    // The tree cannot be used before the last load is through; whoever clicks too early clicks again.
    EXPECT_TRUE(
        WaitFor([&] { return rows() == Templates || (IsWindowEnabled(tree) && !SelectNode(window, L"Many")); }));
    EXPECT_EQ(NodesOf(window).size(), Categories + 5u); // ours, "Business", "Many", favourites, a gap, more templates

    MoveWindow(window, 10, 10, 1, 1, TRUE);
    MoveWindow(window, 10, 10, 1200, 800, TRUE);
    for (const wchar_t* const view : {L"vd", L"vl", L"vm", L"vg"})
        EXPECT_TRUE(Choose(window, view)) << view;
    EXPECT_EQ(rows(), Templates);
    // Closed in the middle of a load.
    PressKey(tree, VK_F5);
    Close();
}

} // namespace
} // namespace endtoend
