#include "tests/endtoend/BrowserTest.h"

namespace endtoend {
namespace {

/// Templates are opened by programs that tell their command lines.
TEST_F(BrowserTest, HandsEachTemplateToItsProgram)
{
    constexpr wchar_t appPaths[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\CLC.EXE";
    const fs::path category = installation.library / L"Sales & More";
    const fs::path calc = installation.PutRecorder(installation.folder / L"Office" / L"calc.exe");
    const std::wstring classes = L"Software\\Classes\\";
    const std::wstring type = L"TSBrowserEndToEnd.swt";
    const BorrowedKey borrowed[] = {{HKEY_LOCAL_MACHINE, appPaths},
                                    {HKEY_LOCAL_MACHINE, classes + L".swt"},
                                    {HKEY_LOCAL_MACHINE, classes + type},
                                    {HKEY_LOCAL_MACHINE, classes + L".prt"}};
    SetText(HKEY_LOCAL_MACHINE, appPaths, L"", calc.wstring());
    const fs::path word = installation.PutRecorder(installation.folder / L"Office" / L"word.exe");
    SetText(HKEY_LOCAL_MACHINE, classes + L".swt", L"", type);
    SetText(HKEY_LOCAL_MACHINE, classes + type + L"\\shell\\open\\command", L"", L'"' + word.wstring() + L"\" \"%1\"");
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
    const HWND window = Open();
    EXPECT_TRUE(SelectNode(window, L"Sales & More"));
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.file);
        ASSERT_TRUE(SelectRow(window, row.file.substr(0, row.file.size() - 4)));
        PressKey(ListOf(window), VK_RETURN);
        EXPECT_EQ(Installation::Recorded(row.program),
                  L'"' + row.program.wstring() + L'"' + row.between + L'"' + (category / row.file).wstring() + L'"');
    }
    ASSERT_TRUE(SelectRow(window, L"Show"));
    EXPECT_TRUE(Choose(window, L"fo"));
    EXPECT_EQ(AnswerBox(), L"Tessaly Desk: Unable to launch 'Show.prt'.\r\nVistrel is not installed on the system.");
    Close();
}

} // namespace
} // namespace endtoend
