#include "tests/endtoend/BrowserTest.h"

namespace endtoend {
namespace {

constexpr int FileNameBox = 0x47C; // of the system's file dialog (cmb13 of dlgs.h)
constexpr wchar_t LockText[] = L"Tessaly Desk: A Solution Pack is currently being installed on your system.";

/// A solution pack whose installer runs until the test lets it end.
class PackTest : public BrowserTest {
protected:
    const fs::path pack = installation.folder / L"Garden Pack.exe";

    PackTest() { fs::copy_file(OwnFolder() / L"endtoend_pack.exe", pack); }
    ~PackTest() override { EndProcesses(pack.filename()); }

    /// Chooses the pack in the dialog that the menu opens.
    void Install()
    {
        EXPECT_TRUE(Choose(MainWindow(), L"ti"));
        HWND box = nullptr;
        EXPECT_TRUE(WaitFor([&] { return (box = GetDlgItem(SystemDialog(), FileNameBox)) != nullptr; }));
        SendMessageW(box, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(pack.c_str()));
        PostMessageW(GetParent(box), WM_COMMAND, IDOK, 0);
    }
    bool IsInstalling() const { return CountProcesses(pack.filename()) > 0; }
    void ExpectLock()
    {
        EXPECT_TRUE(Choose(MainWindow(), L"ti"));
        EXPECT_TRUE(AnswerBox().starts_with(LockText));
    }
};

TEST_F(PackTest, IsInstalledUnderALockThatOutlivesTheBrowserAndDeletedAgain)
{
    Open();
    Install();
    EXPECT_TRUE(WaitFor([&] { return !Installation::Setting(L"Content", L"Pack Installer").empty(); }));
    EXPECT_TRUE(IsInstalling());
    EXPECT_EQ(Installation::Setting(L"Content", L"Template Pack Path"), pack.wstring());
    ExpectLock();
    Close();
    EXPECT_TRUE(IsInstalling());

    const HWND window = Open();
    ExpectLock();
    WriteFile(pack.wstring() + L".go");
    const Names withPack{L"My Favorites", L"Business", L"Garden", L"", L"Get More Templates"};
    EXPECT_TRUE(WaitFor([&] { return NodesOf(window) == withPack; })) << "loaded again by itself";
    EXPECT_FALSE(IsInstalling());

    EXPECT_TRUE(Choose(window, L"tm"));
    const HWND manager = Await(Dialog);
    EXPECT_EQ(SendMessageW(ListOf(manager), LVM_GETITEMCOUNT, 0, 0), 1);
    Press(ButtonOf(manager, L"&Delete"));
    EXPECT_EQ(AnswerBox(), L"Tessaly Desk: Are you sure you want to delete the Garden Template Pack?");
    EXPECT_TRUE(WaitFor([&] { return SendMessageW(ListOf(manager), LVM_GETITEMCOUNT, 0, 0) == 0; }));
    EXPECT_EQ(NodesOf(window), (Names{L"My Favorites", L"Business", L"", L"Get More Templates"}));
    EXPECT_FALSE(fs::exists(installation.library / L"Garden"));
    EXPECT_EQ(Installation::Setting(L"Content\\Garden", L"Version"), L"");
    Press(ButtonOf(manager, L"C&lose"));
    EXPECT_TRUE(AwaitGone(manager));
    Close();
}

} // namespace
} // namespace endtoend
