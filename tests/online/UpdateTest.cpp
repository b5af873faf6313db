#include "online/StartCounter.h"
#include "online/frmNotifyMessage.h"
#include "tests/support/TestMachine.h"

namespace tests {
namespace {

using platform::Result;
using platform::WebReply;

/// The browser, and the update service as the net in memory.
class UpdateTest : public BrowserTest {
protected:
    std::string fields = Field("IsUpdateRequired", "1") + Field("MessageText", "A newer build is there.") +
                         Field("ProductPath", "http://tessaly.example/get?a=1&amp;b=2");

    UpdateTest()
    {
        PutSetting("Options", "WebHostPath", "http://updates.example/");
        system.web.OnGet([this](const std::string&) { return Result<WebReply>{WebReply{200, "", fields}}; });
    }
    static std::string Field(const std::string& name, const std::string& value)
    {
        return "<input type=hidden name=\"" + name + "\" value=\"" + value + "\">\r\n";
    }
    /// A start in a process of its own.
    void StartAlone(const std::string& count = "0")
    {
        End();
        PutSetting("Options", "NotifyCount", count);
        Program().UpdateCheckDone = false;
        Start();
    }
    /// The same, with what came of its request.
    void StartAnew(const std::string& count = "0")
    {
        StartAlone(count);
        system.jobs.FinishAll();
    }
    online::frmNotifyMessage* Message()
    {
        return dynamic_cast<online::frmNotifyMessage*>(toolkit.Find("frmNotifyMessage"));
    }
};

TEST_F(UpdateTest, AsksOnOneStartInTenOrInFiftyForWhoWantsNoMessages)
{
    for (const auto& [disabled, cycle] : {std::pair{false, 10}, {true, 50}}) {
        int count = 0;
        for (int start = 0; start < 120; ++start) {
            const auto now = online::CountStart(count, disabled);
            EXPECT_EQ(now.asks, start % cycle == 0) << start << " disabled: " << disabled;
            count = now.count;
        }
    }
    for (const int count : {0, 1, 4, 5, 6, 45, 49, 50})
        EXPECT_EQ(online::CountStart(count, true).notifyAllowed, count != 5 && count != 45) << count;
    for (const auto& [before, next] :
         {std::pair{"0", "1"}, {"-5", "1"}, {"x", "1"}, {"99999999999", "0"}, {"1", "2"}}) {
        const auto asked = system.web.Asked().size();
        StartAnew(before);
        EXPECT_EQ(Setting("Options", "NotifyCount"), next) << before;
        EXPECT_EQ(system.web.Asked().size() - asked, *next == '1' ? 1u : 0u) << before;
    }
    PutSetting("Options", "NotifyDisabled", "True");
    StartAnew("12");
    EXPECT_EQ(Setting("Options", "NotifyCount"), "13") << "the longer turn";
}

TEST_F(UpdateTest, TellsTheServiceWhatIsInstalledOnceInAProcess)
{
    PutSetting("Edition", "Build", "1234 b&c");
    PutSetting("Edition", "ProductID", "A=1#\u00FC");
    PutSetting("Options", "OS Version", "Windows 11");
    PutSetting("Options", "IEVersion", "");
    StartAnew();
    End();
    PutSetting("Options", "NotifyCount", "0");
    Start();
    system.jobs.FinishAll();
    EXPECT_EQ(system.web.Asked(),
              Texts{"http://updates.example/UpdateNotify.asp?MajorVersion=2&MinorVersion=2&BuildNumber=1234%20b%26c"
                    "&ProductID=A%3D1%23%C3%BC&OSVersion=Windows%2011&OfficeVersion=XP&BrowserVersion="});
    EXPECT_EQ(Setting("Options", "NotifyCount"), "0") << "a second browser of the process counts no start";
}

TEST_F(UpdateTest, ShowsTheMessageBesideWhatTheUserDoes)
{
    StartAnew();
    ASSERT_NE(Message(), nullptr);
    EXPECT_TRUE(Message()->ComesByItself);
    EXPECT_EQ(Message()->lblMessage.Caption(), "A newer build is there.");
    EXPECT_FALSE(Message()->chkDontShow.Checked());
    EXPECT_EQ(Message()->chkDontShow.Caption(), Text(478));
    Message()->chkDontShow.UserClicks();
    Message()->OKButton.UserClicks();
    EXPECT_EQ(Setting("Options", "NotifyDisabled") + Setting("Options", "NotifyCount"), "True1");
    EXPECT_TRUE(system.shell.Opened().empty()) << "beside the window";
    EXPECT_FALSE(Message()->OKButton.Enabled()) << "once";
    system.jobs.FinishAll();
    EXPECT_EQ(system.shell.Opened(), Texts{"http://tessaly.example/get?a=1&b=2"});
    EXPECT_EQ(Message(), nullptr);
    StartAnew();
    EXPECT_TRUE(Message()->chkDontShow.Checked());
    Message()->chkDontShow.UserClicks();
    Message()->OKButton.UserClicks();
    Main().Close();
    EXPECT_EQ(system.jobs.Count(), 0u);
    EXPECT_EQ(Setting("Options", "NotifyDisabled"), "False") << "closing the main window is no way to lose it";
    EXPECT_EQ(Message(), nullptr);
}

TEST_F(UpdateTest, ShowsOnlyAnOfferWithAText)
{
    const std::string offer = Field("IsUpdateRequired", "1");
    const std::string text = Field("MessageText", "News");
    const std::pair<std::string, const char*> rows[] = {
        {offer + text, "News"},
        {Field("isupdaterequired", " 1 ") + Field("MESSAGETEXT", "\r\n News &lt;b&gt;\r\n"), "News <b>"},
        {offer, "(none)"},
        {offer + Field("MessageText", " \r\n "), "(none)"},
        {Field("IsUpdateRequired", "0") + text, "(none)"},
        {Field("IsUpdateRequired", "65537") + text, "(none)"},
        {text, "(none)"},
        {"", "(none)"},
    };
    for (const auto& [page, shown] : rows) {
        fields = page;
        StartAnew();
        EXPECT_EQ(Message() == nullptr ? "(none)" : Message()->lblMessage.Caption(), shown) << page;
    }
    fields = offer + Field("MessageText", std::string(5000, 'x'));
    StartAnew();
    EXPECT_EQ(Message()->lblMessage.Caption().size(), 1000u);
    fields = offer + Field("MessageText", "a" + std::string(100, '\n') + "b");
    StartAnew();
    EXPECT_LT(Message()->ClientSize().height, 6000) << "a text of line ends makes no tower";
}

TEST_F(UpdateTest, OpensOnlyWhatTheGateLetsThroughWithoutATypeOrFolderOfItsOwn)
{
    for (const char* file : {"C:\\Docs\\News.htm", "C:\\Docs\\Setup.exe", "\\\\srv\\share\\News.htm"})
        system.files.AddFile(file);
    const struct {
        std::string target;
        bool opens;
        int code{33}; ///< of the shell
    } rows[] = {
        {"http://a/" + std::string(2048 - 9, 'x'), true},
        {"http://a/" + std::string(2048 - 8, 'x'), false},
        {"C:\\Docs\\News.htm", true},
        {"C:\\Docs\\Gone.htm", false},
        {"C:\\Docs\\Setup.exe", false},
        {"\\\\srv\\share\\News.htm", false},
        {"http://a.example/", false, 2},
        {"http://a.example/", false, 3},
        {"http://a.example/", true, 31},
    };
    for (const auto& [target, opens, code] : rows) {
        SCOPED_TRACE(target + " " + std::to_string(code));
        fields = Field("IsUpdateRequired", "1") + Field("MessageText", "x") + Field("ProductPath", target);
        StartAnew();
        system.shell.Forget();
        system.shell.SetOpenResult(code);
        if (!opens)
            toolkit.ExpectMessage(Text(126), Icon::Information);
        Message()->OKButton.UserClicks();
        system.jobs.FinishAll();
        EXPECT_EQ(system.shell.Opened(), opens || code < 33 ? Texts{target} : Texts{});
        EXPECT_EQ(Message(), nullptr);
    }
}

TEST_F(UpdateTest, ABetterBannerAddressIsKept)
{
    PutSetting("Options", "BannerURLPath", "http://old.example/");
    for (const auto& [param, kept] :
         {std::pair<std::string, std::string>{"http://new.example/b", "http://new.example/b"},
          {"", "http://new.example/b"},
          {"file://srv/share/b.htm", "file://srv/share/b.htm"},
          {"javascript:x", "javascript:x"}}) {
        fields = Field("ParamID1", param);
        StartAnew();
        EXPECT_EQ(Setting("Options", "BannerURLPath"), kept) << param;
    }
    const auto asked = system.web.Asked().size();
    StartAnew("1");
    EXPECT_EQ(system.web.Asked().size(), asked) << "what is no web address is kept, and asked for by nobody";
}

TEST_F(UpdateTest, WhateverGoesWrongStaysSilentAndEnds)
{
    const Result<WebReply> answers[] = {std::unexpected{platform::error::Timeout}, WebReply{404, "", fields},
                                        WebReply{302, "http://updates.example/", ""},
                                        WebReply{302, "file:///C:/Docs/News.htm", ""}, WebReply{301, "", ""}};
    for (const auto& answer : answers) {
        SCOPED_TRACE(answer ? std::to_string(answer->status) + answer->location : "none");
        system.web.OnGet([&](auto&) { return answer; });
        const auto asked = system.web.Asked().size();
        StartAnew();
        EXPECT_EQ(Message(), nullptr);
        EXPECT_LE(system.web.Asked().size() - asked, 11u) << "requests";
        system.timers.Elapse();
        EXPECT_TRUE(system.timers.Running().empty());
    }
    for (const char* host : {"", "updates.example/", "file:///C:/", "\\\\srv\\share\\"}) {
        PutSetting("Options", "WebHostPath", host);
        const auto asked = system.web.Asked().size();
        StartAnew();
        EXPECT_EQ(system.web.Asked().size(), asked) << host;
    }
}

TEST_F(UpdateTest, FollowsARedirectAndGivesUpOneThatStaysBusy)
{
    system.web.OnGet([this](const std::string& address) {
        const bool moved = address.starts_with("http://updates.");
        return Result<WebReply>{moved ? WebReply{302, "//other.example/here", ""} : WebReply{200, "", fields}};
    });
    StartAnew();
    EXPECT_EQ(system.web.Asked().back(), "http://other.example/here");
    EXPECT_NE(Message(), nullptr);

    End();
    PutSetting("Browser", "BannerOn", "False"); // it has jobs of its own
    system.clock.Set(platform::memory::MemoryClock::At({2004, 3, 17, 23, 59, 50}));
    StartAlone();
    EXPECT_EQ(system.jobs.Count(), 1u);
    system.timers.Elapse();
    EXPECT_EQ(system.jobs.Count(), 1u);
    system.clock.Sleep(25'000);
    system.timers.Elapse();
    EXPECT_EQ(system.jobs.Count(), 0u) << "nobody waits for it any more";
    EXPECT_TRUE(system.timers.Running().empty());

    StartAlone();
    EXPECT_EQ(system.jobs.Count(), 1u);
    Main().Close();
    EXPECT_EQ(system.jobs.Count(), 0u) << "nor once the window is closed";
}

} // namespace
} // namespace tests
