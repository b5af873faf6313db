// Drives that take their time, or never answer: what the user waits for, in a time that passes in steps.
#include "app/base/StringId.h"
#include "app/shell/frmTemplatesPath.h"
#include "browser/FrmPreview.h"
#include "tests/support/TestMachine.h"

#include <chrono>
#include <random>

namespace tests {
namespace {

using namespace std::chrono_literals;
using platform::memory::Delays;

class SlowDriveTest : public BrowserTest {
protected:
    Delays& delays = system.delays;

    /// The library is `tops` categories of `subs` folders each, with a template in every one.
    void AddLibrary(int tops, int subs)
    {
        for (int top = 0; top < tops; ++top)
            for (int sub = 0; sub < subs; ++sub) {
                const std::string folder =
                    "Top " + std::to_string(top) + (sub == 0 ? "" : "\\Sub " + std::to_string(sub));
                AddTemplates({folder + "\\one.swt"});
            }
    }
    /// Every call of this name takes so long from now on, and no other takes any time.
    void Delay(const std::string& call, Delays::Time time)
    {
        system.faults.OnCall = [this, call, time](std::string_view name, std::string_view subject) {
            delays.Set("", name == call ? time : 0ms);
            delays.Call(name, subject);
        };
    }
    void ExpectFluent(const std::string& what)
    {
        EXPECT_LE(delays.LongestStretch(), 50ms) << what << ": " << delays.LongestCall();
        delays.Forget();
    }
};

TEST_F(SlowDriveTest, ALoadAsksManyFoldersAtATimeAndTheTreeIsTheSame)
{
    AddLibrary(20, 24);
    Start();
    const Texts tree = TreeTexts(Main().tvTreeView);
    End();

    delays.Set(Templates, 5ms);
    system.files.ForgetListings();
    auto before = delays.Now();
    Start();
    std::size_t listings = 0;
    for (const auto& [folder, count] : system.files.Listings())
        listings += count;
    EXPECT_GE(listings, 480u);
    EXPECT_LE(delays.Now() - before, listings * 5ms / 4);
    EXPECT_EQ(TreeTexts(Main().tvTreeView), tree);
    ExpectFluent("5 ms a call");
    End();

    std::minstd_rand random{7};
    for (const auto& [folder, count] : system.files.Listings())
        delays.Set(folder, std::chrono::milliseconds{random() % 200});
    Start();
    EXPECT_EQ(TreeTexts(Main().tvTreeView), tree) << "whatever comes first";
    ExpectFluent("up to 200 ms a folder");
}

TEST_F(SlowDriveTest, AFolderWithoutAnAnswerIsShownAsSuchAndAskedAgain)
{
    PutSetting("Browser", "LastFolderBrowsed", "Business");
    delays.Set("C:\\Templates\\Business", Delays::Never);
    bool isShownBefore = false;
    toolkit.OnYield = [&](int) {
        const auto* main = browser.Main();
        isShownBefore = isShownBefore || (main != nullptr && main->IsVisible() && main->tvTreeView.Count() == 0);
    };
    Start();
    toolkit.OnYield = nullptr;
    EXPECT_TRUE(isShownBefore) << "the window, before its library has been read";
    EXPECT_EQ(TreeTexts(Main().tvTreeView),
              (Texts{"My Favorites", "Business (no answer)", "Letters", "  Formal", "", "Get More Templates"}));
    EXPECT_EQ(Main().lvListView.EmptyText(), Text(714));
    EXPECT_LE(delays.Now(), 11s) << "five for the tree, five for the list";
    EXPECT_TRUE(system.files.Exists("C:\\Templates\\Business\\Contracts"));

    // The user does not wait for it.
    Main().tvTreeView.UserSelects("Letters");
    bool isLeft = false;
    toolkit.OnYield = [&](int) {
        if (std::exchange(isLeft, true))
            return;
        Main().tvTreeView.UserSelects("Letters");
    };
    const auto before = delays.Now();
    Main().tvTreeView.UserSelects("Business");
    EXPECT_EQ(ListTexts(Main().lvListView), (Texts{"Memo"}));
    EXPECT_LE(delays.Now() - before, 100ms);
    toolkit.OnYield = nullptr;

    delays.Set("C:\\Templates\\Business", 0ms);
    Item("mnuRefreshTV").Click();
    EXPECT_EQ(TreeTexts(Main().tvTreeView).at(1), "Business");
    ExpectFluent("a folder without an answer");
}

TEST_F(SlowDriveTest, AFolderChosenInTheMiddleOfAFillShowsAlone)
{
    AddTemplates({"Letters\\Previews\\Memo.jpg", "Outer\\Inner\\x.swt"});
    for (int at = 1; at < 12; ++at) {
        SCOPED_TRACE(at);
        Start();
        Main().LoadThumbnailImages();
        delays.Set(Templates, 5ms);
        toolkit.OnYield = [&, first = toolkit.Yields() + at](int yield) {
            if (yield == first)
                Main().tvTreeView.UserSelects("Outer");
        };
        Main().tvTreeView.UserSelects("Letters");
        toolkit.OnYield = nullptr;
        Main().tvTreeView.UserSelects("Outer");
        EXPECT_EQ(Main().lvListView.Rows(), 0);
        delays.Set(Templates, 0ms);
        End();
    }
}

TEST_F(SlowDriveTest, WhoGoesOnWhileTheLibraryIsWaitedForIsHeard)
{
    system.files.AddFile("C:\\Other\\Letters\\Memo.swt", "");
    for (const bool chooses : {true, false}) {
        bool isHeard = false;
        delays.Set(Templates, Delays::Never);
        toolkit.OnModal<app::frmTemplatesPath>("frmTemplatesPath", [&](app::frmTemplatesPath& form) {
            toolkit.OnYield = [&](int) {
                if (std::exchange(isHeard, true))
                    return;
                if (!chooses)
                    return form.cmdCancel.UserClicks();
                toolkit.FolderChoices = {"C:\\Other"};
                form.cmdNew.UserClicks();
            };
            if (!chooses)
                delays.Set(Templates, 1s); // it comes after the user has gone
            form.cmdRetry.UserClicks();
        });
        Start();
        toolkit.OnYield = nullptr;
        toolkit.RunPosted();
        EXPECT_EQ(browser.Main() != nullptr, chooses);
        End();
        PutSetting("Browser", "HDD Templates Path", std::string{Templates});
    }
}

TEST_F(SlowDriveTest, ALoadInTheMiddleOfAFillIsNotGivenUpWithIt)
{
    AddTemplates({"Letters\\Previews\\Memo.jpg"});
    Start();
    const Texts tree = TreeTexts(Main().tvTreeView);
    End();
    for (int at = 1; at < 8; ++at) {
        SCOPED_TRACE(at);
        Start();
        Main().LoadThumbnailImages();
        Main().tvTreeView.UserSelects("Letters\\Formal");
        delays.Set(Templates, 50ms);
        delays.Set(InLibrary("Letters"), 0ms);
        toolkit.OnYield = [&, first = toolkit.Yields() + at](int yield) {
            if (yield == first) {
                Main().tvTreeView.UserSelects("Business");
                Item("mnuRefreshTV").Click();
            }
        };
        Main().tvTreeView.UserSelects("Letters");
        toolkit.OnYield = nullptr;
        EXPECT_EQ(TreeTexts(Main().tvTreeView), tree);
        delays.Set(Templates, 0ms);
        End();
    }
}

TEST_F(SlowDriveTest, ATemplateIsAFavouriteOnceHoweverOftenItIsAdded)
{
    Start();
    Main().tvTreeView.UserSelects("Letters");
    delays.Set(Templates, 50ms);
    bool again = false;
    toolkit.OnYield = [&](int) {
        if (!std::exchange(again, true))
            Main().UserPresses(ui::Ctrl('D'));
    };
    toolkit.ExpectMessage("Memo " + Text(app::str::AlreadyFavorite), Icon::Information);
    Main().UserPresses(ui::Ctrl('D'));
    EXPECT_EQ(Main().Favorites().FavoritesList(), Texts{"Letters\\Memo.swt"});
}

// What the user opens.

TEST_F(SlowDriveTest, ADocumentIsOpenedOnceAndAfterTheWindow)
{
    Delay("", 0ms);
    Start();
    Main().tvTreeView.UserSelects("Letters");
    Delay("Shell.Open", 3s);
    toolkit.OnYield = [&](int) {
        for (const char* again : {"mnuFileOpen", "mnuFileNew"})
            Main().Commands().Run(again);
        EXPECT_EQ(ListTexts(Main().lvListView), (Texts{"Memo"}));
    };
    Main().Commands().Run("mnuFileOpen");
    EXPECT_EQ(system.shell.Opened(), Texts{InLibrary("Letters\\Memo.swt")});
    EXPECT_EQ(Main().RecentFiles().List(), Texts{InLibrary("Letters\\Memo.swt")});
    ExpectFluent("a slow program");

    // Whoever closes the window has still opened the document; of a share that is dead he hears no more.
    for (const auto& [call, time] : {std::pair{"Shell.Open", Delays::Time{3s}},
                                     {"Shell.Open", Delays::Never},
                                     {"FileSystem.Stat", Delays::Never}}) {
        SCOPED_TRACE(call);
        Delay("", 0ms);
        toolkit.OnYield = nullptr;
        Restart();
        Main().tvTreeView.UserSelects("Letters");
        system.shell.Forget();
        Delay(call, time);
        const auto before = delays.Now();
        toolkit.OnYield = [&](int) { Main().UserCloses(); };
        Main().Commands().Run("mnuFileOpen");
        EXPECT_EQ(system.shell.Opened().size(), time == Delays::Never ? 0u : 1u);
        EXPECT_LE(delays.Now() - before, 5100ms);
        toolkit.RunPosted();
        EXPECT_EQ(browser.Main(), nullptr);
        ExpectFluent(call);
    }
}

// What comes late.

TEST_F(SlowDriveTest, AFavouriteThatGoesWhileItIsLookedForStaysAway)
{
    AddTemplates({"Letters\\New.swt"});
    PutSetting("Browser\\Favorites", "Letters\\Memo.swt", "");
    PutSetting("Browser\\Favorites", "Letters\\Gone.swt", "");
    Start();
    delays.Set(Templates, 100ms);
    toolkit.OnYield = [&](int) {
        (void)Program().settings.Delete("Browser\\Favorites", "Letters\\Memo.swt");
        PutSetting("Browser\\Favorites", "Letters\\New.swt", "");
    };
    Main().LibraryChanged();
    EXPECT_EQ(Main().Favorites().FavoritesList(), Texts{"Letters\\New.swt"});
    EXPECT_EQ(StoredFavorites(), Texts{"Letters\\New.swt"});
}

TEST_F(SlowDriveTest, OfManyFoldersWithoutAnAnswerAFewAreWaitedForAndOnceTheWindowHasClosedNone)
{
    AddLibrary(40, 1); // more than are asked for at a time
    delays.Set(InLibrary("Top"), Delays::Never);
    Start();
    EXPECT_EQ(Main().tvTreeView.Roots().size(), 45u);
    EXPECT_LE(delays.Now(), 11s) << "five for the tree, five for the list";

    const auto before = delays.Now();
    toolkit.OnYield = [&](int) {
        if (delays.Now() > before) // it is waiting
            Main().UserCloses();
    };
    Item("mnuRefreshTV").Click();
    EXPECT_LE(delays.Now() - before, 100ms);
    toolkit.RunPosted();
    EXPECT_EQ(browser.Main(), nullptr);
    ExpectFluent("dead folders");
}

TEST_F(SlowDriveTest, ThePreviewWindowShowsWhatIsThereAndEachPictureWhenItComes)
{
    AddTemplates({"Business\\Previews\\Invoice.jpg", "Business\\Previews\\Budget.jpg"});
    Start();
    Main().tvTreeView.UserSelects("Business");
    Main().lvListView.UserClicksColumn(browser::TemplateList::NameColumn);
    Main().lvListView.Select(-1); // as in the middle of a fill
    int looks = 0;
    delays.Set(InLibrary("Business\\Previews"), 1s);
    system.faults.OnCall = [&](std::string_view name, std::string_view subject) {
        looks += name == "FileSystem.Stat" && subject.ends_with(".jpg");
        delays.Call(name, subject);
    };
    toolkit.OnModal<browser::FrmPreview>("FrmPreview", [&](browser::FrmPreview& form) {
        EXPECT_EQ(form.Caption(), "Budget - Template Preview");
        EXPECT_EQ(form.imgPicture.File(), "");
        form.cmdNext.UserClicks();
        EXPECT_EQ(looks, 4) << "each of two rows and the one behind it";
        system.jobs.FinishAll();
        EXPECT_EQ(looks, 4) << "and none again";
        EXPECT_EQ(form.imgPicture.File(), InLibrary("Business\\Previews\\Invoice.jpg"));
        form.cmdClose.UserClicks();
    });
    EXPECT_TRUE(Main().Commands().Run("mnuFilePreview"));
    ExpectFluent("late pictures");
    system.faults.OnCall = nullptr; // it counts in here
}

} // namespace
} // namespace tests
