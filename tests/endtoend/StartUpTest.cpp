#include "tests/endtoend/BrowserTest.h"

namespace endtoend {
namespace {

namespace fs = std::filesystem;

const std::wstring Title = L"Tessaly Desk";
constexpr wchar_t Classes[] = L"Software\\Classes\\";

/// The missing converter's installer stands in the program's folder and tells how it was started.
class ConverterTest : public BrowserTest {
protected:
    const fs::path installer =
        Installation::PutRecorder(installation.program.parent_path() / L"PDF Component" / L"Install.exe");

    std::wstring InstallerLine() const { return L'"' + installer.wstring() + L"\" \"TSPro 3.0 PDF Converter\" /s"; }
};

TEST_F(ConverterTest, IsInstalledEvenWhereTheProgramCannotRun)
{
    for (const std::optional<std::wstring>& generation : {std::optional<std::wstring>{}, {L"xp"}, {L"2003"}}) {
        SCOPED_TRACE(Printable(generation.value_or(L"no value")));
        if (generation)
            installation.Set(L"Options", L"MSOVersion", *generation);
        else
            installation.Remove(L"Options", L"MSOVersion");
        Start();
        EXPECT_EQ(AnswerBox(),
                  (Box{Title, L"The application is currently unable to run.\r\nPlease reinstall the application.",
                       Box::Icon::Critical}));
        EXPECT_EQ(installation.Recorded(installer), InstallerLine());
        ExpectEnd();
    }
}

TEST_F(ConverterTest, IsInstalledOnlyWhenItsClassCannotBeCreated)
{
    const wchar_t ownClass[] = L"{7B2A1D64-5F0E-4B8C-9C55-0E2D6E0A9B11}";
    const struct {
        const char* name;
        std::wstring classId;
        bool installs;
    } rows[] = {
        {"a class that works", L"{0D43FE01-F093-11CF-8940-00A0C9054228}",
         false}, // the system's Scripting.FileSystemObject
        {"a class without its library", ownClass, true},
    };
    const RegistryValue server{HKEY_LOCAL_MACHINE, std::wstring{Classes} + L"CLSID\\" + ownClass + L"\\InprocServer32",
                               L"", L"C:\\nowhere\\converter.dll"};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const RegistryValue name{HKEY_LOCAL_MACHINE, std::wstring{Classes} + L"CDIntf.CDIntf\\CLSID", L"", row.classId};
        ASSERT_TRUE(Open());
        if (row.installs) {
            EXPECT_EQ(installation.Recorded(installer), InstallerLine());
        }
        Close();
        EXPECT_FALSE(installation.HasRecord(installer));
    }
}

/// The templates folder that the settings name is not there.
class TemplatesPathTest : public BrowserTest {
protected:
    TemplatesPathTest()
    {
        fs::rename(installation.library, away);
        Start();
        dialog = Await(Dialog);
    }

    const fs::path away = installation.folder / L"Away";
    HWND dialog{};
};

TEST_F(TemplatesPathTest, TellsWhatIsWrongAndQuitsOnCancel)
{
    EXPECT_EQ(TextOf(dialog), L"Tessaly Professinal 3.0  Browser - Unable to read Templates Path");
    EXPECT_EQ(LabelsOf(dialog),
              L"The Browser was unable to access the drive specified, Please confirm that it is properly mapped.\n"
              L"Templates Path: " +
                  installation.library.wstring() + L"\nPress Cancel to quit the template browser.\n");
    const auto settings = harness::RegistryTree(HKEY_CURRENT_USER, SettingsKey);
    Press(ButtonOf(dialog, L"&Cancel"));
    ExpectEnd();
    EXPECT_EQ(harness::RegistryTree(HKEY_CURRENT_USER, SettingsKey), settings);
}

TEST_F(TemplatesPathTest, GoesOnWhenTheFolderIsBack)
{
    Press(ButtonOf(dialog, L"Retry"));
    PressKey(ButtonOf(dialog, L"Retry"), VK_TAB); // handled after the first attempt
    EXPECT_TRUE(harness::WaitFor([this] { return Dialog() == dialog && IsWindowEnabled(dialog); }));

    fs::rename(away, installation.library);
    Press(ButtonOf(dialog, L"Retry"));
    const HWND window = Await(MainWindow);
    EXPECT_EQ(NodesOf(window), (std::vector<std::wstring>{L"My Favorites", L"Business", L"", L"Get More Templates"}));
    EXPECT_TRUE(AwaitApplicationName());
    Close();
}

TEST_F(TemplatesPathTest, OffersAFolderChooserThatCanBeCancelled)
{
    Press(ButtonOf(dialog, L"New..."));
    const HWND chooser = Await(SystemDialog);
    ASSERT_TRUE(chooser);
    EXPECT_FALSE(IsWindowEnabled(dialog));
    PostMessageW(chooser, WM_COMMAND, IDCANCEL, 0);
    EXPECT_TRUE(AwaitGone(chooser));
    EXPECT_TRUE(harness::WaitFor([this] { return IsWindowEnabled(dialog) != FALSE; }));
    EXPECT_EQ(installation.Setting(L"Browser", L"HDD Templates Path"), installation.library.wstring());
    PostMessageW(dialog, WM_CLOSE, 0, 0);
    ExpectEnd();
}

} // namespace
} // namespace endtoend
