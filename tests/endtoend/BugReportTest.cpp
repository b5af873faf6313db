#include "tests/endtoend/BrowserTest.h"

namespace endtoend {
namespace {

constexpr wchar_t ClientsKey[] = L"Software\\Clients\\Mail";
constexpr wchar_t EditorKey[] = L"Software\\Microsoft\\Office\\10.0\\Outlook\\Options\\Mail";
constexpr wchar_t SenderKey[] = L"Software\\Zelmor Software\\Zelmor User Profiles\\Profiles\\My Profile";

TEST_F(BrowserTest, SendsABugReportThroughTheUsersMailClient)
{
    const BorrowedKey clients{HKEY_LOCAL_MACHINE, ClientsKey};
    const BorrowedKey ownClients{HKEY_CURRENT_USER, ClientsKey};
    const BorrowedKey office{HKEY_CLASSES_ROOT, L"Outlook.Application"};
    const BorrowedKey options{HKEY_CURRENT_USER, EditorKey};
    const BorrowedKey sender{HKEY_CURRENT_USER, SenderKey};
    SetText(HKEY_CURRENT_USER, SenderKey, L"FirstName", L"Ann");
    Installation::Set(L"Options", L"ReportABug", L"1");
    Open();
    const auto report = [] { EXPECT_TRUE(Choose(MainWindow(), {L'h', LineDown, LineDown, L'\r'})); };
    report();
    EXPECT_TRUE(AnswerBox().starts_with(L"Tessaly Desk: A valid email account was not found."));

    const fs::path client = installation.folder / L"Mail Client.dll";
    const fs::path record = client.wstring() + L".record";
    fs::copy_file(OwnFolder() / L"..\\platform\\test_mail_provider.dll", client);
    SetText(HKEY_LOCAL_MACHINE, ClientsKey, L"", L"Microsoft Outlook");
    SetText(HKEY_LOCAL_MACHINE, std::wstring{ClientsKey} + L"\\Microsoft Outlook", L"DLLPath", client.wstring());
    SetText(HKEY_CLASSES_ROOT, L"Outlook.Application\\CurVer", L"", L"Outlook.Application.10");
    const auto editor = [] {
        DWORD value{};
        DWORD size = sizeof value;
        RegGetValueW(HKEY_CURRENT_USER, EditorKey, L"EditorPreference", RRF_RT_REG_DWORD, nullptr, &value, &size);
        return value;
    };
    constexpr DWORD before = 0x10000;
    RegSetKeyValueW(HKEY_CURRENT_USER, EditorKey, L"EditorPreference", REG_DWORD, &before, sizeof before);
    report();
    EXPECT_TRUE(WaitFor([&] { return fs::exists(record) && ReadFile(record).ends_with("logoff 7\n"); }));
    const fs::path page = installation.program.parent_path() / L"Report a Bug.htm";
    EXPECT_EQ(ReadFile(record), "logon Outlook 0\nsend 7 8\ntype (null)\nsubject TSPRO bugs reported by Ann\ntext  \n"
                                "to bugs@tessaly.example\nfile " +
                                    page.string() + " at 0\neditor 131072\nlogoff 7\n");
    EXPECT_TRUE(ReadFile(page).contains("Microsoft Outlook (10.0)"));
    EXPECT_TRUE(WaitFor([&] { return editor() == before; }));
    EXPECT_FALSE(SystemDialog());
    Close();
}

} // namespace
} // namespace endtoend
