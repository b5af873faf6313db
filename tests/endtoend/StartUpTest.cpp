#include "tests/endtoend/BrowserTest.h"

namespace endtoend {
namespace {

TEST_F(BrowserTest, SeesToTheConverterEvenWhereItCannotRun)
{
    // The missing converter's installer stands in the program's folder and tells how it was started.
    const fs::path installer =
        Installation::PutRecorder(installation.program.parent_path() / L"PDF Component" / L"Install.exe");
    installation.Remove(L"Options", L"MSOVersion");
    Start();
    EXPECT_EQ(AnswerBox(),
              L"Tessaly Desk: The application is currently unable to run.\r\nPlease reinstall the application.");
    EXPECT_EQ(installation.Recorded(installer), L'"' + installer.wstring() + L"\" \"TSPro 3.0 PDF Converter\" /s");
    ExpectEnd();
}

TEST_F(BrowserTest, GoesOnWhenTheTemplatesFolderIsBack)
{
    const fs::path away = installation.folder / L"Away";
    fs::rename(installation.library, away);
    Start();
    const HWND dialog = Await(Dialog);
    Press(ButtonOf(dialog, L"Retry"));
    // The key is handled after the first attempt, and moves on from the button.
    PressKey(ButtonOf(dialog, L"Retry"), VK_TAB);
    EXPECT_TRUE(WaitFor([dialog] { return FocusOf(dialog) == ButtonOf(dialog, L"New..."); }));
    EXPECT_EQ(Dialog(), dialog);

    fs::rename(away, installation.library);
    Press(ButtonOf(dialog, L"Retry"));
    EXPECT_TRUE(AwaitApplicationName());
    EXPECT_EQ(NodesOf(MainWindow()), (Names{L"My Favorites", L"Business", L"", L"Get More Templates"}));
    Close();
}

} // namespace
} // namespace endtoend
