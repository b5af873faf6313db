#include "tests/endtoend/BrowserTest.h"

#include <sddl.h>

namespace endtoend {
namespace {

namespace fs = std::filesystem;

const std::wstring Title = L"Tessaly Desk";
constexpr int Twips = 15; ///< in a pixel at 96 dpi

class MainWindowTest : public BrowserTest {
protected:
    static RECT PlaceOf(HWND window)
    {
        RECT place{};
        GetWindowRect(window, &place);
        return place;
    }
    static RECT WorkArea()
    {
        RECT area{};
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
        return area;
    }
};

TEST_F(MainWindowTest, SpeaksTheLanguageOfTheTextsBesideIt)
{
    fs::copy_file(fs::path{harness::OwnFolder()} / L"endtoend_texts.dll",
                  installation.program.parent_path() / L"TS_RES.dll");
    const HWND window = Open();
    EXPECT_EQ(NodesOf(window),
              (std::vector<std::wstring>{L"Meine Favoriten", L"Business", L"", L"Get More Templates"}));
    // The menus, by their letters: "Ansicht", "Liste", and "Datei", "Beenden".
    EXPECT_TRUE(Choose(window, L"al"));
    const HWND list = Child(window, WC_LISTVIEWW);
    EXPECT_TRUE(harness::WaitFor([list] { return SendMessageW(list, LVM_GETVIEW, 0, 0) == LV_VIEW_LIST; }));
    EXPECT_TRUE(Choose(window, L"de"));
    ExpectEnd();

    // 150 groups of four characters, cut to what is read of a text.
    installation.Set(L"Options", L"MSOVersion", L"xp");
    Start();
    const Box box = AnswerBox();
    EXPECT_TRUE(box.text.starts_with(L"000 001 002 "));
    EXPECT_TRUE(box.text.ends_with(L"126 127\r\nPlease reinstall the application.")) << Printable(box.text);
    ExpectEnd();
}

TEST_F(MainWindowTest, OpensWhereItCanBeReachedWhateverIsStored)
{
    const struct {
        const char* name;
        const wchar_t* left;
        const wchar_t* top;
        const wchar_t* width;
        const wchar_t* height;
    } rows[] = {
        {"far right", L"90000", L"1000", L"9900", L"7200"},
        {"above and left", L"-30000", L"-30000", L"9900", L"7200"},
        {"no numbers", L"left", L"", L"0x100", L"1e9"},
        {"beyond all bounds", L"99999999999", L"-99999999999", L"2147483648", L"-1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        installation.Set(L"Browser", L"MainLeft", row.left);
        installation.Set(L"Browser", L"MainTop", row.top);
        installation.Set(L"Browser", L"MainWidth", row.width);
        installation.Set(L"Browser", L"MainHeight", row.height);
        const RECT place = PlaceOf(Open());
        const RECT area = WorkArea();
        EXPECT_TRUE(place.left >= area.left && place.top >= area.top && place.right <= area.right &&
                    place.bottom <= area.bottom)
            << place.left << ' ' << place.top << ' ' << place.right << ' ' << place.bottom;
        EXPECT_GE((place.right - place.left + 1) * Twips, 9700); // in whole pixels
        Close();
    }
}

TEST_F(MainWindowTest, ComesBackWhereItWasClosed)
{
    // A number of another type counts as none, and is replaced.
    const DWORD number = 4500;
    RegSetKeyValueW(HKEY_CURRENT_USER, (std::wstring{SettingsKey} + L"\\Browser").c_str(), L"MainTop", REG_DWORD,
                    &number, sizeof number);
    HWND window = Open();
    EXPECT_EQ(PlaceOf(window).top * Twips, 1005); // 1000 twips in whole pixels
    MoveWindow(window, 120, 90, 800, 600, TRUE);
    EXPECT_TRUE(SelectNode(window, L"My Favorites"));
    EXPECT_TRUE(Choose(window, L"vl"));
    Close();

    const std::pair<const wchar_t*, const wchar_t*> stored[] = {
        {L"TSMaximized", L"False"},     {L"MainLeft", L"1800"},
        {L"MainTop", L"1350"},          {L"MainWidth", L"12000"},
        {L"MainHeight", L"9000"},       {L"HorzSplitterTop", L"5250"},
        {L"VertSplitterLeft", L"1965"}, {L"LastFolderBrowsed", L"My Favorites"},
    };
    for (const auto& [name, text] : stored)
        EXPECT_EQ(installation.Setting(L"Browser", name), text) << Printable(name);

    window = Open();
    const RECT place = PlaceOf(window);
    EXPECT_EQ(place.left, 120);
    EXPECT_EQ(place.top, 90);
    EXPECT_EQ(place.right - place.left, 800);
    EXPECT_EQ(place.bottom - place.top, 600);
    ShowWindow(window, SW_MAXIMIZE);
    EXPECT_TRUE(harness::WaitFor([window] { return IsZoomed(window) != FALSE; }));
    Close();
    EXPECT_EQ(installation.Setting(L"Browser", L"TSMaximized"), L"True");
    EXPECT_EQ(installation.Setting(L"Browser", L"MainWidth"), L"12000");
}

/// Everybody may read the settings meanwhile, nobody may write them.
class ReadOnlySettings {
public:
    ReadOnlySettings() { SetAccess(L"D:P(A;OICI;KRWD;;;WD)"); } // the right to change the rights stays
    ~ReadOnlySettings() { SetAccess(L"D:(A;OICI;KA;;;WD)"); }
    ReadOnlySettings(const ReadOnlySettings&) = delete;
    ReadOnlySettings& operator=(const ReadOnlySettings&) = delete;

    static bool CanWrite()
    {
        HKEY key = nullptr;
        if (RegOpenKeyExW(HKEY_CURRENT_USER, Key().c_str(), 0, KEY_SET_VALUE, &key) != ERROR_SUCCESS)
            return false;
        RegCloseKey(key);
        return true;
    }

private:
    static std::wstring Key() { return std::wstring{SettingsKey} + L"\\Browser"; }
    static void SetAccess(const wchar_t* access)
    {
        PSECURITY_DESCRIPTOR descriptor = nullptr;
        ConvertStringSecurityDescriptorToSecurityDescriptorW(access, SDDL_REVISION_1, &descriptor, nullptr);
        HKEY key = nullptr;
        RegOpenKeyExW(HKEY_CURRENT_USER, Key().c_str(), 0, READ_CONTROL | WRITE_DAC, &key);
        RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, descriptor);
        RegCloseKey(key);
        LocalFree(descriptor);
    }
};

TEST_F(MainWindowTest, TellsOnceThatItsSettingsCannotBeStored)
{
    Open();
    {
        const ReadOnlySettings readOnly;
        if (ReadOnlySettings::CanWrite())
            GTEST_SKIP() << "this system lets everybody write";
        PostMessageW(MainWindow(), WM_CLOSE, 0, 0);
        EXPECT_EQ(AnswerBox(), (Box{Title, L"Error setting registry Value.", Box::Icon::Critical}));
        ExpectEnd();
    }
}

/// What an impatient user does to the window; it must stay alive, and in order.
TEST_F(MainWindowTest, SurvivesAnImpatientUser)
{
    constexpr int Categories = 120;
    constexpr int Templates = 3000;
    for (int i = 0; i < Categories; ++i)
        installation.Write(installation.library / (L"Category " + std::to_wstring(i)) / L"Letter.swt");
    for (int i = 0; i < Templates; ++i)
        installation.Write(installation.library / L"Many" / (L"Template " + std::to_wstring(i) + L".swt"));
    const HWND window = Open();
    const HWND tree = Child(window, WC_TREEVIEWW);
    const HWND list = Child(window, WC_LISTVIEWW);
    const auto rows = [list] { return SendMessageW(list, LVM_GETITEMCOUNT, 0, 0); };

    // Loads on top of each other, with clicks in the middle.
    for (int i = 0; i < 5; ++i) {
        PressKey(tree, VK_F5);
        PressKey(tree, VK_DOWN);
        PressKey(list, VK_DOWN);
    }
    // The tree cannot be used before the last load is through; whoever clicks too early clicks again.
    EXPECT_TRUE(harness::WaitFor(
        [&] { return rows() == Templates || (IsWindowEnabled(tree) && !SelectNode(window, L"Many")); }));
    EXPECT_EQ(NodesOf(window).size(), Categories + 5u); // ours, "Business", "Many", favourites, a gap, more templates

    MoveWindow(window, 10, 10, 1, 1, TRUE);
    MoveWindow(window, 10, 10, 1200, 800, TRUE);
    for (const wchar_t* const view : {L"vd", L"vl", L"vm", L"vg"})
        EXPECT_TRUE(Choose(window, view)) << Printable(view);
    EXPECT_EQ(rows(), Templates);
    // Closed in the middle of a load.
    PressKey(tree, VK_F5);
    Close();
}

TEST_F(MainWindowTest, LoadsWhateverHappensToTheProgressWindow)
{
    for (int i = 0; i < 300; ++i)
        installation.Write(installation.library / (L"Category " + std::to_wstring(i)) / L"Letter.swt");
    Start();
    const HWND progress = Await(ProgressWindow);
    // As Alt+F4 does.
    PostMessageW(progress, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_TRUE(AwaitApplicationName());
    ASSERT_TRUE(MainWindow());
    EXPECT_EQ(NodesOf(MainWindow()).size(), 300 + 4u);
    Close();
}

} // namespace
} // namespace endtoend
