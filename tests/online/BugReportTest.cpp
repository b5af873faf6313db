#include "platform/Text.h"
#include "tests/support/TestMachine.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

using platform::MailOutcome;

constexpr std::string_view EditorKey = "Software\\Microsoft\\Office\\10.0\\Outlook\\Options\\Mail";
const std::string Page = "C:\\Desk\\Report a Bug.htm";

class BugReportTest : public BrowserTest {
protected:
    BugReportTest()
    {
        PutSetting("Options", "ReportABug", "1");
        PutSetting("Options", "Installed Path", "C:\\Desk");
        system.files.AddFolder("C:\\Desk");
        system.registry.PutString(Hive::CurrentUser,
                                  "Software\\Zelmor Software\\Zelmor User Profiles\\Profiles\\My Profile", "FirstName",
                                  "Ann");
    }
    void SetClient(std::string_view name)
    {
        system.registry.PutString(Hive::LocalMachine, "Software\\Clients\\Mail", "", name);
    }
    void SetOutlook(std::string_view current)
    {
        SetClient("Microsoft Outlook");
        system.registry.PutString(Hive::ClassesRoot, "Outlook.Application\\CurVer", "", current);
    }
    void SetEditor(std::string bytes)
    {
        (void)system.registry.CreateKey(Hive::CurrentUser, EditorKey);
        (void)system.registry.Set(Hive::CurrentUser, EditorKey, "EditorPreference",
                                  {platform::ValueType::Dword, std::move(bytes)});
    }
    std::string Editor()
    {
        const auto value = system.registry.Query(Hive::CurrentUser, EditorKey, "EditorPreference");
        return value ? value->data : "(none)";
    }
    void Report() { EXPECT_TRUE(Main().Commands().Run("mnuReportABug")); }
    const platform::memory::MemoryMail::Composed& Mail() { return system.mail.Messages().back(); }

    const std::string word{"\0\0\1\0", 4}; // 0x10000, as it is stored
    const std::string own{"\0\0\2\0", 4};  // 0x20000
};

TEST_F(BugReportTest, ComposesAMailWithThePageOfFacts)
{
    SetOutlook("Outlook.Application.11");
    SetEditor(word);
    Start();
    toolkit.ExpectMessage(Text(277), Icon::Information);
    toolkit.Screen = {640, 480};
    Main().GetSystemResolution();
    toolkit.Screen = {1280, 1000};
    Report();
    EXPECT_EQ(Mail().user, "");
    EXPECT_EQ(Mail().message.subject, "TSPRO bugs reported by Ann");
    EXPECT_EQ(Mail().message.recipient, "bugs@tessaly.example");
    EXPECT_EQ(Mail().message.text, " ");
    EXPECT_EQ(Mail().message.type, "");
    EXPECT_EQ(Mail().message.attachment, Page);
    EXPECT_EQ(Editor(), word) << "another version's editor is left alone";
    const std::string page = system.files.Contents(Page);
    for (const char* fact : {"<td>1280 x 1000</td>", "<td>96</td>", "<td>Microsoft Outlook (11.0)</td>", "<td>2.2</td>",
                             "<td>C:\\Templates\\</td>", "<td>277</td>"})
        EXPECT_TRUE(page.contains(fact)) << fact << "\n" << page;
    EXPECT_FALSE(page.contains("Ann"));
    EXPECT_EQ(platform::text::Replaced(page, "\r\n", "").find_first_of("\r\n"), std::string::npos);
    EXPECT_FALSE(Item("mnuReportABug").Enabled) << "one at a time";
    system.mail.Close(MailOutcome::GivenUp);
    EXPECT_TRUE(Item("mnuReportABug").Enabled);
    PutSetting("Options", "BugReportAddress", "help@x.example");
    SetClient("Outlook Express");
    Report();
    EXPECT_EQ(Mail().message.recipient, "help@x.example");
    EXPECT_EQ(Mail().message.type, "HTML");
    system.mail.Close(MailOutcome::Composed);
}

TEST_F(BugReportTest, AnOldClientsEditorIsSetBackOnEveryWayOut)
{
    SetOutlook("Outlook.Application.10");
    for (const std::string& before : {word, own})
        for (const std::optional<MailOutcome> outcome :
             {std::optional{MailOutcome::Composed}, {MailOutcome::GivenUp}, std::optional<MailOutcome>{}}) {
            SetEditor(before);
            Start();
            Report();
            EXPECT_EQ(Mail().user, "Outlook");
            EXPECT_EQ(Editor(), own);
            if (outcome)
                system.mail.Close(*outcome);
            else
                End(); // the client's window is still open
            EXPECT_EQ(Editor(), before);
            EXPECT_FALSE(HasSetting("Options", "EditorPreference Before"));
            End();
        }
    // A process that died under it: the next one sets it back.
    SetEditor(own);
    PutSetting("Options", "EditorPreference Before", "65536");
    Start();
    EXPECT_EQ(Editor(), word);
    End();
    (void)system.registry.DeleteValue(Hive::CurrentUser, EditorKey, "EditorPreference");
    Start();
    Report();
    EXPECT_EQ(Editor(), own);
    system.mail.Close(MailOutcome::GivenUp);
    EXPECT_EQ(Editor(), "(none)") << "as it was";
}

TEST_F(BugReportTest, EveryFailureIsToldOnce)
{
    Start();
    toolkit.ExpectMessage(Text(405), Icon::Information);
    Report(); // there is no mail client
    EXPECT_TRUE(system.mail.Messages().empty());
    SetClient("Other Mail");
    Report();
    toolkit.ExpectMessage(Text(405), Icon::Information);
    system.mail.Close(MailOutcome::NoSession);
    Report();
    toolkit.ExpectMessage(Text(660) + "\r\n" + Page, Icon::Information);
    system.mail.Close(MailOutcome::Failed);
    EXPECT_EQ(toolkit.Messages.size(), 3u);
    EXPECT_TRUE(Item("mnuReportABug").Enabled);
}

TEST_F(BugReportTest, ThePageGoesToTheTemporaryFolderWhenTheOtherCannotBeWritten)
{
    SetClient("Other Mail");
    system.files.Remove("C:\\Desk");
    Start();
    Report();
    EXPECT_EQ(Mail().message.attachment, "C:\\Temp\\TSBrowser\\Report a Bug.htm");
    system.mail.Close(MailOutcome::Composed);
    system.shell.SetFolderPath(platform::KnownFolder::Temporary, std::unexpected{platform::error::AccessDenied});
    toolkit.ExpectMessage(Text(223), Icon::Critical);
    Report();
    EXPECT_EQ(system.mail.Messages().size(), 1u);
}

} // namespace
} // namespace tests
