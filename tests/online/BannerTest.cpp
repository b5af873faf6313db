#include "tests/support/TestMachine.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

using platform::Result;
using platform::WebReply;

const std::string WebPicture = "C:\\Temp\\TSBrowser\\banner.gif";

class BannerTest : public BrowserTest {
protected:
    std::string status = "<input name=BannerStatus value=OK>";
    std::string title = "Banner";

    void AddLocal(const std::string& picture = "Images\\local.gif")
    {
        system.files.AddFile(InLibrary("Images\\local.gif"), "gif");
        system.files.AddFile(InLibrary("Banner1.htm"),
                             "<a href=http://local.example/><img alt='Local news' src=\"" + picture + "\"></a>");
    }
    void AddWeb()
    {
        PutSetting("Options", "BannerURLPath", "http://web.example/b/banner.asp");
        system.web.OnGet([this](const std::string& address) {
            const bool isPicture = address.ends_with(".gif");
            return Result<WebReply>{WebReply{200, "",
                                             isPicture ? "web picture"
                                                       : "<title>" + title + "</title>" + status +
                                                             "<a href=http://news.example/?a=1&amp;b=2>"
                                                             "<img alt='Web news' src=web.gif></a>"}};
        });
    }
    void StartAndWait()
    {
        Restart();
        system.jobs.FinishAll();
    }
    std::string Shown() { return Main().imgBanner.Visible() ? Main().imgBanner.File() : "(none)"; }
};

TEST_F(BannerTest, ShowsTheLocalPageAndTakesNoRoomWithoutOne)
{
    StartAndWait();
    EXPECT_EQ(Shown(), "(none)");
    const int bottom = Main().lvListView.Bounds().Bottom();
    EXPECT_EQ(bottom, Main().sbStatusBar.Bounds().top);
    AddLocal();
    StartAndWait();
    EXPECT_EQ(Shown(), InLibrary("Images\\local.gif"));
    EXPECT_LT(Main().lvListView.Bounds().Bottom(), Main().imgBanner.Bounds().top);
    EXPECT_EQ(Main().imgBanner.Bounds().Bottom(), Main().sbStatusBar.Bounds().top);
    EXPECT_EQ(Main().imgBanner.Caption(), "Local news");
    EXPECT_TRUE(Main().imgBanner.IsTabStop());
    Main().imgBanner.UserClicks();
    EXPECT_EQ(system.shell.Opened(), Texts{"http://local.example/"});
}

TEST_F(BannerTest, APageOfTheLibraryShowsNothingFromElsewhere)
{
    for (const char* file : {"C:\\Other\\x.gif", "C:\\Templates\\x.exe", "\\\\srv\\share\\x.gif"})
        system.files.AddFile(file, "gif");
    for (const char* picture :
         {"C:\\Other\\x.gif", "..\\Other\\x.gif", "\\\\srv\\share\\x.gif", "http://a.example/x.gif", "x.exe",
          "file:///C:/Templates/Images/local.gif", "gone.gif", ""}) {
        AddLocal(picture);
        StartAndWait();
        EXPECT_EQ(Shown(), "(none)") << picture;
    }
    EXPECT_TRUE(system.web.Asked().empty());
}

TEST_F(BannerTest, ShowsTheWebsBannerOnceItSaysThatItIsLive)
{
    AddLocal();
    AddWeb();
    StartAndWait();
    EXPECT_EQ(Shown(), WebPicture);
    EXPECT_EQ(system.files.Contents(WebPicture), "web picture");
    EXPECT_EQ(Main().imgBanner.Caption(), "Web news");
    Main().imgBanner.UserClicks();
    EXPECT_EQ(system.shell.Opened(), Texts{"http://news.example/?a=1&b=2"});

    const struct {
        const char* status;
        const char* title;
        bool isWeb;
    } rows[] = {
        {"<b id=bannerstatus value=' ok '>", "cannot", true},
        {"<input name=BannerStatus value=no>", "Banner", false},
        {"", "The page CANNOT be displayed", false},
        {"", "404 Not Found", false},
    };
    for (const auto& row : rows) {
        status = row.status;
        title = row.title;
        StartAndWait();
        EXPECT_EQ(Shown(), row.isWeb ? WebPicture : InLibrary("Images\\local.gif")) << row.status << row.title;
    }
    system.web.OnGet({});
    StartAndWait();
    EXPECT_EQ(Shown(), InLibrary("Images\\local.gif")) << "no net";
}

TEST_F(BannerTest, ADeadWebBannerGivesWayToTheLocalOne)
{
    AddLocal();
    AddWeb();
    PutSetting("Options", "WebHostPath", "http://updates.example/");
    StartAndWait();
    EXPECT_EQ(Shown(), WebPicture);
    status = "";
    title = "cannot";
    Main().SwitchBanner(true);
    system.jobs.FinishAll();
    EXPECT_EQ(Shown(), InLibrary("Images\\local.gif"));
    // A temporary folder that somebody else has laid a trap in is not written to.
    status = "<input name=BannerStatus value=OK>";
    system.files.Remove("C:\\Temp\\TSBrowser");
    system.files.AddFile("C:\\Temp\\TSBrowser", "trap");
    StartAndWait();
    EXPECT_EQ(Shown(), InLibrary("Images\\local.gif"));
}

TEST_F(BannerTest, IsHiddenForGoodUntilItIsAskedForAgain)
{
    AddLocal();
    AddWeb();
    StartAndWait();
    Main().imgBanner.SetFocus();
    EXPECT_FALSE(Item("mnuShowBanner").Visible);
    Item("mnuHideBanner").UserClicks();
    EXPECT_EQ(Shown(), "(none)");
    EXPECT_TRUE(Main().lvListView.HasFocus());
    const auto asked = system.web.Asked().size();
    StartAndWait();
    EXPECT_EQ(Shown(), "(none)");
    EXPECT_EQ(system.web.Asked().size(), asked) << "nobody is asked for what is not shown";
    EXPECT_FALSE(Item("mnuHideBanner").Visible);
    Item("mnuShowBanner").UserClicks();
    system.jobs.FinishAll();
    EXPECT_EQ(Shown(), WebPicture);
}

} // namespace
} // namespace tests
