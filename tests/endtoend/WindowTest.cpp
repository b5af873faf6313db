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

} // namespace
} // namespace endtoend
