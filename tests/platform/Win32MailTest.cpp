#include "PlatformUnderTest.h"
#include "tests/support/win32/Files.h"
#include "tests/support/win32/Process.h"
#include "tests/support/win32/Registry.h"

#include <gtest/gtest.h>

#include <optional>

using namespace platform;
using namespace support;

namespace {

/// A client that is found the way any mail client is.
TEST(Win32MailTest, HandsTheMessageToTheDefaultClient)
{
    const BorrowedKey clients{HKEY_LOCAL_MACHINE, L"Software\\Clients\\Mail"};
    const BorrowedKey own{HKEY_CURRENT_USER, L"Software\\Clients\\Mail"};
    const std::filesystem::path client = OwnFolder() / L"test_mail_provider.dll";
    SetText(HKEY_LOCAL_MACHINE, L"Software\\Clients\\Mail", L"", L"Test Mail");
    SetText(HKEY_LOCAL_MACHINE, L"Software\\Clients\\Mail\\Test Mail", L"DLLPath", client.wstring());
    const std::filesystem::path record = client.wstring() + L".record";
    const auto under = PlatformUnderTest::Make();
    const auto folder = std::filesystem::current_path();
    const struct {
        const char* codes;
        MailOutcome outcome;
        bool sent;
    } rows[] = {
        {"0 0", MailOutcome::Composed, true},   {"0 1", MailOutcome::GivenUp, true},
        {"0 2", MailOutcome::Failed, true},     {"0 11", MailOutcome::Failed, true},
        {"0 3", MailOutcome::NoSession, true},  {"1 0", MailOutcome::GivenUp, false},
        {"3 0", MailOutcome::NoSession, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.codes);
        WriteFile(client.wstring() + L".answer", row.codes);
        std::filesystem::remove(record);
        std::optional<MailOutcome> outcome;
        const auto ticket =
            under->Get().mail.Compose("Outlook", {"HTML", "Bug of \u00FC", " ", "bugs@x.example", "C:\\a.htm"},
                                      [&](MailOutcome told) { outcome = told; });
        ASSERT_TRUE(ticket);
        EXPECT_TRUE(under->WaitUntil([&] { return outcome.has_value(); }));
        EXPECT_EQ(outcome, row.outcome);
        const std::string sent = "send 7 8\ntype HTML\nsubject Bug of \xFC\ntext  \nto bugs@x.example\n"
                                 "file C:\\a.htm at 0\nlogoff 7\n";
        EXPECT_EQ(ReadFile(record), "logon Outlook 0\n" + (row.sent ? sent : ""));
        EXPECT_EQ(std::filesystem::current_path(), folder);
    }
    std::filesystem::remove(client.wstring() + L".answer");
    std::filesystem::remove(record);
}

} // namespace
