// Drives that take their time, or never answer: what the user waits for, in a time that passes in steps.
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
    Start();
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

TEST_F(SlowDriveTest, ADriveThatNeverAnswersStopsNothing)
{
    struct Row {
        std::string what;
        std::string dead;
        std::function<void()> prepare{};
        std::function<void()> act{};
    };
    const auto openRecent = [this] {
        toolkit.OnModal("frmRecentDocuments", [](ui::Form& form) { form.UserCloses(); });
        Main().mnuRecentDocuments_Click();
    };
    const Row rows[] = {
        {"the library", "C:\\Templates",
         [this] { toolkit.OnModal("frmTemplatesPath", [](ui::Form& form) { form.UserCloses(); }); }},
        {"a category", "C:\\Templates\\Business"},
        {"the pictures of a category",
         "C:\\Templates\\Business\\Previews",
         {},
         [this] { Main().LoadThumbnailImages(); }},
        {"a favourite", "C:\\Templates\\Letters\\Memo.swt",
         [this] { PutSetting("Browser\\Favorites", "Letters\\Memo.swt", ""); }},
        {"a recent document", "\\\\server\\share",
         [this] { PutSetting("Browser\\History List", "\\\\server\\share\\there.doc", "2004-03-17"); }, openRecent},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        delays.Set("", 0ms);
        delays.Set(row.dead, Delays::Never);
        if (row.prepare)
            row.prepare();
        Start();
        if (row.act && browser.Main() != nullptr)
            row.act();
        End();
        ExpectFluent(row.what);
    }
}

} // namespace
} // namespace tests
