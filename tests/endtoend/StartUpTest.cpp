#include "tests/endtoend/BrowserTest.h"

namespace endtoend {
namespace {

TEST_F(BrowserTest, GoesOnWhenTheTemplatesFolderIsBack)
{
    const fs::path away = installation.folder / L"Away";
    fs::rename(installation.library, away);
    Start();
    const HWND dialog = Await(Dialog);
    fs::rename(away, installation.library);
    Press(ButtonOf(dialog, L"Retry"));
    EXPECT_TRUE(AwaitApplicationName());
    EXPECT_EQ(NodesOf(MainWindow()), (Names{L"My Favorites", L"Business", L"", L"Get More Templates"}));
    Close();
}

} // namespace
} // namespace endtoend
