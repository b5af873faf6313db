// What the list shows: rows, tabs, texts and order.
#include "tests/support/TestMachine.h"

namespace tests {
namespace {

using browser::TemplateList;
using platform::memory::MemoryClock;

class ListTest : public BrowserTest {
protected:
    void Show(std::string_view category, std::string_view tab = "All")
    {
        if (browser.Main() == nullptr)
            Start();
        Main().fileTypeTabStrip.UserSelects(tab);
        Main().tvTreeView.UserSelects(category);
    }
    Texts Column(int column)
    {
        Texts texts;
        for (int row = 0; row < Main().lvListView.Rows(); ++row)
            texts.push_back(Main().Templates().Text(row, column));
        return texts;
    }
    Texts Tabs()
    {
        Texts keys;
        for (const auto& tab : Main().fileTypeTabStrip.Tabs())
            keys.push_back(tab.key);
        return keys;
    }
};

TEST_F(ListTest, EachTabShowsItsTypesInTheOrderOfTheEndings)
{
    AddTemplates({"Business\\a.b.swt", "Business\\Loud.SWT", "Business\\no.swtx", "Business\\.swt"});
    const std::pair<const char*, Texts> tabs[] = {
        {"All", {"Invoice", "a.b", "Loud", "", "Budget", "Pitch", "Terms", "Photo"}},
        {"Word", {"Invoice", "a.b", "Loud", ""}},
        {"Excel", {"Budget"}},
        {"PPT", {"Pitch"}},
        {"Photo", {"Photo"}}};
    for (const auto& [tab, expected] : tabs) {
        Show("Business", tab);
        EXPECT_EQ(Column(TemplateList::NameColumn), expected) << tab;
    }
    Show("Business", "All");
    EXPECT_EQ(Main().Templates().Icon(4), 2);
    EXPECT_EQ(Main().Templates().SmallIcon(4), 4);
    EXPECT_EQ(Column(TemplateList::FolderColumn)[0], "Business");
}

TEST_F(ListTest, SizesAreWholeKilobytesAndDatesTheUsersOwn)
{
    system.files.AddFile(InLibrary("Letters\\Size.ccw"), std::string(1023, 'x'),
                         MemoryClock::At({2020, 2, 29, 23, 30, 0}));
    system.files.AddFile(InLibrary("Letters\\Size.prt"), "", MemoryClock::At({2021, 7, 4, 5, 7, 0}));
    system.files.SetSize(InLibrary("Letters\\Size.prt"), 5'000'000'000);
    system.clock.SetOffsetMinutes(60);
    Show("Letters");
    EXPECT_EQ(Column(TemplateList::SizeColumn), (Texts{"0KB", "0KB", "4882812KB"}));
    EXPECT_EQ(Column(TemplateList::ModifiedColumn)[1], "3/1/2020 12:30 AM");
    EXPECT_EQ(Column(TemplateList::ModifiedColumn)[2], "7/4/2021 06:07 AM");
    EXPECT_EQ(browser::SizeText(5000), "4KB");
}

TEST_F(ListTest, ExcludedNamesNeverShow)
{
    PutSetting("Options", "ExcludedTemplates", "Memo||invoice|Budget");
    Show("Business");
    EXPECT_EQ(Column(0), (Texts{"Invoice", "Pitch", "Terms", "Photo"}));
    Show("Letters");
    EXPECT_EQ(Column(0), Texts{});
}

TEST_F(ListTest, AnEmptyOrUnreadableFolderSaysSoInTheListsOwnArea)
{
    const std::pair<const char*, const char*> texts[] = {{"Word", ""},
                                                         {"Excel", "No Excel templates available in this folder"},
                                                         {"PPT", "No PowerPoint templates available in this folder"},
                                                         {"Photo", "0 templates available in this folder"},
                                                         {"All", ""}};
    for (const auto& [tab, text] : texts) {
        Show("Letters", tab);
        EXPECT_EQ(Main().lvListView.EmptyText(),
                  std::string{text} + (*text == 0 ? "" : "\r\nThis folder has templates of other types."))
            << tab;
    }
    system.files.Remove(InLibrary("Letters\\Memo.swt"));
    Show("Business", "Word");
    Show("Letters", "Word");
    EXPECT_EQ(Main().lvListView.EmptyText(), "No Word templates available in this folder");
    system.files.SetUnreadable(InLibrary("Letters"));
    Show("Business");
    EXPECT_EQ(Main().lvListView.EmptyText(), "");
    Show("Letters");
    EXPECT_EQ(Main().lvListView.EmptyText(), Text(223));
}

TEST_F(ListTest, ColumnsSortByNameNumberAndTimeAndKeepTheSelection)
{
    system.files.Remove(InLibrary("Letters\\Memo.swt"));
    const auto add = [&](const char* name, std::size_t size, int day) {
        system.files.AddFile(InLibrary(std::string{"Letters\\"} + name), std::string(size, 'x'),
                             MemoryClock::At({2020, 1, day, 0, 0, 0}));
    };
    add("beta.swt", 9 * 1024, 3);
    add("Alpha.swt", 100 * 1024, 2);
    add("gamma.ccw", 20 * 1024, 1);
    Show("Letters");
    auto& list = Main().lvListView;
    list.UserSelects(0);
    const auto click = [&](int column) {
        list.UserClicksColumn(column);
        EXPECT_EQ(list.SortColumn(), column);
        EXPECT_EQ(Main().List().Selected()->text, "beta");
        return Column(0);
    };
    EXPECT_EQ(click(TemplateList::NameColumn), (Texts{"Alpha", "beta", "gamma"}));
    EXPECT_EQ(click(TemplateList::NameColumn), (Texts{"gamma", "beta", "Alpha"}));
    EXPECT_FALSE(list.SortAscending());
    EXPECT_EQ(click(TemplateList::SizeColumn), (Texts{"beta", "gamma", "Alpha"}));
    EXPECT_EQ(click(TemplateList::ModifiedColumn), (Texts{"gamma", "Alpha", "beta"}));
    Show("Business");
    Show("Letters");
    EXPECT_EQ(Column(0), (Texts{"gamma", "Alpha", "beta"})) << "the chosen order stays";
}

TEST_F(ListTest, TheUserMayGoOnInTheMiddleOfAFill)
{
    AddTemplates({"Letters\\Note.swt", "Letters\\Offer.prt"});
    Start();
    auto& tree = Main().tvTreeView;
    auto& list = Main().lvListView;
    toolkit.OnYield = [&, first = toolkit.Yields() + 1](int yield) {
        if (yield == first)
            tree.UserSelects("Letters");
    };
    tree.UserSelects("Business\\Contracts");
    EXPECT_EQ(Column(0), (Texts{"Memo", "Note", "Offer"})) << "nothing of the first fill touches what is shown since";
    EXPECT_EQ(list.Selected(), 0);
    EXPECT_EQ(tree.Selected()->key, "Letters");
    EXPECT_TRUE(Main().lblPreview.Caption().starts_with("Memo"));
    EXPECT_EQ(Main().sbStatusBar.Panels().at(0), "3 templates available in this folder");

    // As many clicks as there are yields: each fill returns before the next begins, and the last one is shown.
    int depth = 0, deepest = 0, clicks = 0;
    toolkit.OnYield = [&](int) {
        deepest = std::max(deepest, ++depth);
        if (++clicks <= 300)
            tree.UserSelects(clicks % 2 == 0 ? "Letters" : "Business");
        --depth;
    };
    tree.UserSelects("Letters\\Formal");
    EXPECT_EQ(deepest, 1);
    EXPECT_EQ(tree.Selected()->key, "Letters");
    EXPECT_EQ(Column(0), (Texts{"Memo", "Note", "Offer"}));
}

TEST_F(ListTest, TheSelectionStaysOnItsTemplateWhileItIsThere)
{
    Show("Business");
    Main().lvListView.UserSelects(3);
    const auto selected = [&](const char* command) {
        EXPECT_TRUE(Main().Commands().Run(command)) << command;
        return Main().List().SelectedPath();
    };
    AddTemplates({"Business\\Agenda.swt", "Business\\Previews\\Terms.jpg", "Business\\Previews\\Pitch.jpg"});
    bool wasEmpty = false;
    toolkit.OnYield = [&](int) { wasEmpty |= Main().lvListView.Rows() == 0; };
    EXPECT_EQ(selected("mnuRefreshTV"), InLibrary("Business\\Terms.pdf"));
    EXPECT_FALSE(wasEmpty) << "an empty list forgets where it was scrolled to";
    toolkit.OnYield = nullptr;
    for (const char* command : {"mnuViewThumbnails", "mnuViewDetails"})
        EXPECT_EQ(selected(command), InLibrary("Business\\Terms.pdf")) << command;
    EXPECT_EQ(Main().lvListView.Selected(), 4);
    system.files.Remove(InLibrary("Business\\Terms.pdf"));
    EXPECT_EQ(selected("mnuRefreshTV"), InLibrary("Business\\Photo.mst")) << "its neighbour, when it is gone";

    // A fill that another one replaces does not forget it either.
    Main().fileTypeTabStrip.UserSelects("Word");
    Main().lvListView.UserSelects(1);
    toolkit.OnYield = [&, clicked = false](int) mutable {
        if (!std::exchange(clicked, true))
            Main().fileTypeTabStrip.UserSelects("Word");
    };
    Main().fileTypeTabStrip.UserSelects("All");
    EXPECT_EQ(Main().List().SelectedPath(), InLibrary("Business\\Agenda.swt"));
}

TEST_F(ListTest, TheMenusAreThoseOfTheRowTheSpaceBesideItAndTheHeadings)
{
    Show("Business");
    Texts shown;
    const auto names = [&](const std::function<void(ui::Point)>& ask) {
        shown.clear();
        toolkit.OnPopup([&](ui::Menu& menu) {
            menu.ForEach([&](ui::Menu& item) {
                if (item.Visible && !item.Separator)
                    shown.push_back(item.Name);
            });
        });
        ask({});
        return shown;
    };
    auto& list = Main().lvListView;
    EXPECT_EQ(names(list.ContextMenu), (Texts{"mnuPopUpOpenTemplate", "mnuFileNew", "mnuFilePreview", "mnuEditCopy",
                                              "mnuPopAddToFavorites", "mnuFileProperties"}));
    list.UserSelects(-1);
    EXPECT_EQ(names(list.ContextMenu).back(), "mnuRefreshTV");
    EXPECT_EQ(names(list.HeaderContextMenu), (Texts{"mnuColumnFolder", "mnuColumnSize", "mnuColumnModified"}));
    for (const int width : {0, 1500}) {
        EXPECT_TRUE(Main().Commands().Run("mnuColumnSize"));
        EXPECT_EQ(list.Columns()[2].width, width);
    }
}

TEST_F(ListTest, ARefreshThatFindsNothingNamesThePathAndCanBeTriedAgain)
{
    Show("Letters\\Formal");
    const std::string message = Text(279) + "\r\n\r\nC:\\Templates";
    system.files.SetUnreadable(Templates);
    toolkit.ExpectMessage(message, Icon::Critical, Answer::Retry);
    toolkit.ExpectMessage(message, Icon::Critical, Answer::Cancel);
    Main().RefreshLibrary();
    EXPECT_EQ(Main().tvTreeView.Count(), 0u);
    toolkit.ExpectMessage(message, Icon::Critical, Answer::Retry);
    toolkit.OnMessage = [&](const ui::MessageBox&) { system.files.SetUnreadable(Templates, {}); };
    EXPECT_TRUE(Main().UserPresses(ui::Plain(ui::KeyCode::F5)));
    EXPECT_EQ(Main().tvTreeView.Selected()->key, "Letters\\Formal");
    EXPECT_EQ(Column(0), Texts{"Complaint"});
    EXPECT_TRUE(Main().tvTreeView.Enabled());
}

// Tabs.

TEST_F(ListTest, TabsCanBeHiddenAndComeBackInTheirPlace)
{
    Start();
    Main().fileTypeTabStrip.UserSelects("Excel");
    const auto toggle = [&](const char* command) {
        EXPECT_TRUE(Main().Commands().Run(command));
        return Tabs();
    };
    EXPECT_EQ(toggle("mnuSettingsXL"), (Texts{"Word", "PPT", "Photo", "All"}));
    EXPECT_EQ(Main().fileTypeTabStrip.Selected(), "All");
    EXPECT_EQ(Setting("Browser", "ShowXLTemplates"), "False");
    Main().lvListView.UserSelects(-1);
    EXPECT_EQ(toggle("mnuSettingsWord"), (Texts{"PPT", "Photo", "All"}));
    EXPECT_EQ(Main().lvListView.Selected(), -1) << "the list stays as it is";
    EXPECT_EQ(toggle("mnuSettingsXL"), (Texts{"Excel", "PPT", "Photo", "All"}));
    EXPECT_EQ(Main().fileTypeTabStrip.Selected(), "Excel");
    EXPECT_EQ(Main().fileTypeTabStrip.Tabs()[0].caption, "Ex&cel");
    Restart();
    EXPECT_EQ(Tabs(), (Texts{"Excel", "PPT", "Photo", "All"}));
    EXPECT_EQ(Main().fileTypeTabStrip.Tabs()[0].caption, "Ex&cel") << "with its key from the start";
    EXPECT_EQ(Main().fileTypeTabStrip.Selected(), "Excel");
    End();
    PutSetting("Browser", "LastTabSelected", "Word");
    Start();
    EXPECT_EQ(Main().fileTypeTabStrip.Selected(), "All") << "one that is hidden cannot be come back to";
}

} // namespace
} // namespace tests
