#include "tests/endtoend/BrowserTest.h"

namespace endtoend {
namespace {

namespace fs = std::filesystem;
using Icon = Box::Icon;

const std::wstring Title = L"Tessaly Desk";
constexpr wchar_t AppPaths[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\CLC.EXE";

/// Every type of template is opened by a program of its own, which tells its command line.
class EndToEndLaunchTest : public BrowserTest {
protected:
    EndToEndLaunchTest()
    {
        for (const wchar_t* const file :
             {L"Plan.swt", L"Show.prt", L"Photo.mst", L"Book.pdf", L"Budget.ccw", L"Profit & Loss  100%.swt"})
            installation.Write(category / file);
        installation.Write(category / UnicodeName);
        installation.Write(category / fs::path{LongName});
    }

    HWND OpenCategory(const std::wstring& name = L"Sales & More")
    {
        const HWND window = Open();
        EXPECT_TRUE(SelectNode(window, name));
        return window;
    }

    fs::path Program(const wchar_t* name) { return installation.PutRecorder(installation.folder / L"Office" / name); }

    const std::wstring UnicodeName = L"\u00DCbersicht \u65E5\u672C\u8A9E \U0001F600.swt";
    const std::wstring LongName = std::wstring(150, L'n') + L".swt";
    const fs::path category = installation.library / L"Sales & More";
};

TEST_F(EndToEndLaunchTest, HandsEachTemplateToItsProgram)
{
    const fs::path word = Program(L"word.exe");
    const fs::path show = Program(L"show.exe");
    const fs::path reader = Program(L"reader.exe");
    const fs::path calc = Program(L"calc.exe");
    const FileType types[] = {{L".swt", word}, {L".prt", show}, {L".mst", show}, {L".pdf", reader}};
    const RegistryValue spreadsheet{HKEY_LOCAL_MACHINE, AppPaths, L"", calc.wstring()};

    const struct {
        std::wstring file;
        fs::path program;
        const wchar_t* between;
    } rows[] = {
        {L"Plan.swt", word, L" "},   {L"Show.prt", show, L" "},       {L"Photo.mst", show, L" "},
        {L"Book.pdf", reader, L" "}, {L"Budget.ccw", calc, L" /+  "}, {L"Profit & Loss  100%.swt", word, L" "},
        {UnicodeName, word, L" "},   {LongName, word, L" "},
    };
    const HWND window = OpenCategory();
    for (const auto& row : rows) {
        SCOPED_TRACE(Printable(row.file));
        ASSERT_TRUE(SelectRow(window, row.file.substr(0, row.file.size() - 4)));
        DoubleClickSelection(window);
        EXPECT_EQ(Printable(Installation::Recorded(row.program)),
                  Printable(L'"' + row.program.wstring() + L'"' + row.between + L'"' + (category / row.file).wstring() +
                            L'"'));
    }
    EXPECT_FALSE(SystemDialog());

    // The keyboard and the menu do the same.
    ASSERT_TRUE(SelectRow(window, L"Plan"));
    PressKey(Child(window, WC_LISTVIEWW), VK_RETURN);
    EXPECT_NE(Installation::Recorded(word).find(L"Plan.swt"), std::wstring::npos);
    ASSERT_TRUE(SelectRow(window, L"Show"));
    EXPECT_TRUE(Choose(window, L"fo"));
    EXPECT_NE(Installation::Recorded(show).find(L"Show.prt"), std::wstring::npos);
    Close();
}

TEST_F(EndToEndLaunchTest, TellsWhyATemplateDoesNotOpen)
{
    const fs::path word = Program(L"word.exe");
    const FileType types[] = {{L".swt", word}, {L".prt", {}}, {L".mst", {}}, {L".pdf", {}}};
    std::optional<RegistryValue> spreadsheet;
    spreadsheet.emplace(HKEY_LOCAL_MACHINE, AppPaths, L"", std::nullopt);
    const HWND window = OpenCategory();
    fs::remove(category / L"Plan.swt");

    const struct {
        const wchar_t* row;
        Box box;
    } rows[] = {
        {L"Plan", {Title, L"File not found.", Icon::Information}},
        {L"Show", {Title, L"Unable to launch 'Show.prt'.\r\nVistrel is not installed on the system.", Icon::None}},
        {L"Photo", {Title, L"Unable to launch 'Photo.mst'.\r\nVistrel is not installed on the system.", Icon::None}},
        {L"Book",
         {Title, L"Unable to launch 'Book.pdf'.\r\nThe associated application is not installed on the system.",
          Icon::None}},
        {L"Budget", {Title, L"Unable to launch 'Budget.ccw'.\r\nCalcora is not installed on the system.", Icon::None}},
    };
    for (const auto& row : rows) {
        ASSERT_TRUE(SelectRow(window, row.row));
        DoubleClickSelection(window);
        EXPECT_EQ(AnswerBox(), row.box);
    }

    spreadsheet.reset();
    spreadsheet.emplace(HKEY_LOCAL_MACHINE, AppPaths, L"", L"C:\\nowhere\\clc.exe");
    DoubleClickSelection(window);
    EXPECT_EQ(AnswerBox(), (Box{Title, L"File not found.", Icon::Information}));
    // A file that is no program.
    spreadsheet.reset();
    spreadsheet.emplace(HKEY_LOCAL_MACHINE, AppPaths, L"", (category / L"Show.prt").wstring());
    DoubleClickSelection(window);
    EXPECT_EQ(AnswerBox(), (Box{Title,
                                L"Unable to launch 'Budget.ccw'. Please check if the associated application to launch "
                                L"the file is installed on the machine and try again",
                                Icon::Information}));
    Close();
}

TEST_F(EndToEndLaunchTest, MakesANewSpreadsheetFromACopyInTheWorkingFolder)
{
    const fs::path calc = Program(L"calc.exe");
    const fs::path working = installation.folder / L"My Sheets";
    installation.Write(working / L"Budget.ccw", "mine");
    const RegistryValue spreadsheet{HKEY_LOCAL_MACHINE, AppPaths, L"", calc.wstring()};
    const RegistryValue option{HKEY_CURRENT_USER, L"Software\\Quenby\\Calcora\\12\\Properties\\File Options",
                               L"Working Dir", working.wstring()};
    const HWND window = OpenCategory();
    for (const wchar_t* const copy : {L"Budget1.ccw", L"Budget2.ccw"}) {
        ASSERT_TRUE(SelectRow(window, L"Budget"));
        EXPECT_TRUE(Choose(window, L"fnd"));
        EXPECT_EQ(Printable(Installation::Recorded(calc)),
                  Printable(L'"' + calc.wstring() + L"\" /+  \"" + (working / copy).wstring() + L'"'));
        EXPECT_EQ(fs::file_size(working / copy), fs::file_size(category / L"Budget.ccw"));
    }
    EXPECT_EQ(fs::file_size(working / L"Budget.ccw"), 4u);
    // The template itself is opened on request.
    EXPECT_TRUE(Choose(window, L"fnt"));
    EXPECT_NE(Installation::Recorded(calc).find((category / L"Budget.ccw").wstring()), std::wstring::npos);
    Close();
}

} // namespace
} // namespace endtoend
