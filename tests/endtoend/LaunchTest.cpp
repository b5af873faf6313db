#include "tests/endtoend/BrowserTest.h"

namespace endtoend {
namespace {

/// Templates are opened by programs that tell their command lines.
class EndToEndLaunchTest : public BrowserTest {
protected:
    EndToEndLaunchTest()
    {
        SetText(HKEY_LOCAL_MACHINE, AppPaths, L"", calc.wstring());
        WriteFile(category / L"Budget.ccw");
    }
    HWND OpenCategory()
    {
        const HWND window = Open();
        EXPECT_TRUE(SelectNode(window, L"Sales & More"));
        return window;
    }

    static constexpr wchar_t AppPaths[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\CLC.EXE";
    const fs::path category = installation.library / L"Sales & More";
    const fs::path calc = installation.PutRecorder(installation.folder / L"Office" / L"calc.exe");
    const BorrowedKey spreadsheet{HKEY_LOCAL_MACHINE, AppPaths};
};

TEST_F(EndToEndLaunchTest, HandsEachTemplateToItsProgram)
{
    const fs::path word = installation.PutRecorder(installation.folder / L"Office" / L"word.exe");
    const FileType types[] = {{L".swt", word}, {L".prt", {}}};
    const struct {
        std::wstring file;
        fs::path program;
        const wchar_t* between;
    } rows[] = {
        {L"Profit & Loss  100%.swt", word, L" "},
        {L"\u00DCbersicht \u65E5\u672C\u8A9E \U0001F600.swt", word, L" "},
        {std::wstring(150, L'n') + L".swt", word, L" "},
        {L"Budget.ccw", calc, L" /+  "},
    };
    for (const auto& row : rows)
        WriteFile(category / row.file);
    WriteFile(category / L"Show.prt");
    const HWND window = OpenCategory();
    for (const auto& row : rows) {
        SCOPED_TRACE(Printable(row.file));
        ASSERT_TRUE(SelectRow(window, row.file.substr(0, row.file.size() - 4)));
        DoubleClickSelection(window);
        EXPECT_EQ(Printable(Installation::Recorded(row.program)),
                  Printable(L'"' + row.program.wstring() + L'"' + row.between + L'"' + (category / row.file).wstring() +
                            L'"'));
    }
    // The keyboard and the menu do the same.
    PressKey(ListOf(window), VK_RETURN);
    EXPECT_NE(Installation::Recorded(calc).find(L"Budget.ccw"), std::wstring::npos);
    ASSERT_TRUE(SelectRow(window, L"Show"));
    EXPECT_TRUE(Choose(window, L"fo"));
    EXPECT_EQ(AnswerBox(), L"Tessaly Desk: Unable to launch 'Show.prt'.\r\nVistrel is not installed on the system.");
    Close();
}

TEST_F(EndToEndLaunchTest, MakesANewSpreadsheetFromACopyInTheWorkingFolder)
{
    const fs::path working = installation.folder / L"My Sheets";
    WriteFile(working / L"Budget.ccw", "mine");
    constexpr wchar_t options[] = L"Software\\Quenby\\Calcora\\12\\Properties\\File Options";
    const BorrowedKey borrowed{HKEY_CURRENT_USER, options};
    SetText(HKEY_CURRENT_USER, options, L"Working Dir", working.wstring());
    const HWND window = OpenCategory();
    EXPECT_TRUE(Choose(window, L"fnd"));
    EXPECT_EQ(Printable(Installation::Recorded(calc)),
              Printable(L'"' + calc.wstring() + L"\" /+  \"" + (working / L"Budget1.ccw").wstring() + L'"'));
    EXPECT_EQ(ReadFile(working / L"Budget1.ccw"), ReadFile(category / L"Budget.ccw"));
    EXPECT_EQ(ReadFile(working / L"Budget.ccw"), "mine");
    Close();
}

} // namespace
} // namespace endtoend
