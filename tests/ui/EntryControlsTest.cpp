#include "tests/support/ScriptedToolkit.h"

#include "ui/CheckBox.h"
#include "ui/ComboBox.h"
#include "ui/Form.h"
#include "ui/Frame.h"
#include "ui/Label.h"
#include "ui/ListBox.h"
#include "ui/UpDown.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

using Events = std::vector<std::string>;

struct EntryForm : ui::Form {
    explicit EntryForm(ui::Toolkit& toolkit) : Form{toolkit, "entry", Style::Dialog}
    {
        for (ui::TextBox* box : {&first, &second, &third}) {
            const std::string name = box == &first ? "1" : box == &second ? "2" : "3";
            box->GotFocus = [this, name] { events.push_back("into " + name); };
            box->LostFocus = [this, name] { events.push_back("out of " + name); };
        }
        label.SetCaption("Name:");
        longLabel.SetCaption("A longer name:");
        frame.SetCaption("Person");
        Layout(ui::Column(ui::Framed(frame, ui::Grid(ui::Row(label, ui::Fill(first), ui::Joined(months, arrows)),
                                                     ui::Row(longLabel, ui::Fill(second)))),
                          ui::Row(ui::Fill(list), check)),
               6000);
    }
    Events events;
    ui::Frame frame{*this};
    ui::Label label{*this};
    ui::TextBox first{*this};
    ui::Label longLabel{*this};
    ui::TextBox second{*this};
    ui::TextBox third{*this};
    ui::TextBox months{*this};
    ui::UpDown arrows{*this, months, 1, 24};
    ui::ListBox list{*this};
    ui::ComboBox combo{*this};
    ui::CheckBox check{*this};
};

class EntryControlsTest : public ::testing::Test {
protected:
    ScriptedToolkit toolkit;
    EntryForm form{toolkit};
    int changes{};
    std::function<void()> count = [this] { ++changes; };
};

TEST_F(EntryControlsTest, TypingGoesToTheSelectionAndKeepsCharactersWhole)
{
    struct Case {
        const char* name;
        const char* text;
        std::size_t start, length, limit;
        const char* typed;
        const char* result;
        std::size_t cursor;
    };
    const Case cases[] = {
        {"at the cursor", "ac", 1, 0, 0, "b", "abc", 2},
        {"over the selection", "abc", 0, 3, 0, "Zoë", "Zoë", 4},
        {"backspace takes a whole character", "aö", 3, 0, 0, "\b", "a", 1},
        {"backspace takes the selection", "abcd", 1, 2, 0, "\b", "ad", 1},
        {"backspace at the start", "a", 0, 0, 0, "\b", "a", 0},
        {"a selection inside a character starts before it", "öa", 1, 1, 0, "x", "xa", 1},
        {"a selection past the end", "ab", 7, 9, 0, "c", "abc", 3},
        {"up to the limit, in UTF-16 units", "a", 1, 0, 3, "😀b", "a😀", 5},
        {"what is replaced makes room", "abc", 0, 2, 3, "xyz", "xyc", 2},
    };
    for (const Case& c : cases) {
        form.first.SetText(c.text);
        form.first.SetMaxLength(c.limit);
        form.first.Select(c.start, c.length);
        form.first.UserTypes(c.typed);
        EXPECT_EQ(form.first.Text(), c.result) << c.name;
        EXPECT_EQ(form.first.SelStart(), c.cursor) << c.name;
        EXPECT_EQ(form.first.SelLength(), 0u) << c.name;
    }
}

TEST_F(EntryControlsTest, ATextTellsEachChangeOnceWhoeverMadeIt)
{
    form.first.Change = count;
    form.first.SetText("a");
    form.first.SetText("a");
    EXPECT_EQ(changes, 1) << "the same text is no change";
    form.first.SelectAll();
    EXPECT_EQ(changes, 1);
    form.first.UserTypes("xy");
    EXPECT_EQ(changes, 3);
    form.first.UserPastes("12\r\n34");
    EXPECT_EQ(form.first.Text(), "xy12") << "one line only";
    EXPECT_EQ(changes, 4);

    // A check that empties the box at the first wrong character goes on with the rest.
    form.first.Change = [this] {
        if (form.first.Text().find('.') != std::string::npos)
            form.first.SetText("");
    };
    form.first.UserTypes("N.Y");
    EXPECT_EQ(form.first.Text(), "Y");
}

TEST_F(EntryControlsTest, AKeyOrAPasteIsSeenBeforeItChangesTheText)
{
    Events seen;
    form.first.SetText("old");
    form.first.SelectAll();
    form.first.KeyDown = [&] { seen.push_back(form.first.SelText() + "/" + form.first.Text()); };
    form.first.UserTypes("ab");
    form.first.Pasting = [&] { seen.push_back("paste over " + form.first.SelText()); };
    form.first.SelectAll();
    form.first.UserPastes("x");
    EXPECT_EQ(seen, (Events{"old/old", "/a", "paste over ab"}));
}

TEST_F(EntryControlsTest, AFieldThatIsLeftMayTakeTheFocusBack)
{
    form.first.UserFocuses();
    form.second.UserFocuses();
    form.second.UserFocuses();
    EXPECT_EQ(form.events, (Events{"into 1", "out of 1", "into 2"}));

    form.events.clear();
    form.second.LostFocus = [this] {
        form.events.push_back("refused");
        form.second.SetFocus();
    };
    form.third.UserTypes("x");
    EXPECT_TRUE(form.second.HasFocus());
    EXPECT_EQ(form.third.Text(), "") << "the keys never came there";
    EXPECT_EQ(form.events, (Events{"refused", "into 2"}));

    form.events.clear();
    form.second.LostFocus = nullptr;
    form.third.GotFocus = [this] { form.first.SetFocus(); };
    form.third.UserFocuses();
    EXPECT_TRUE(form.first.HasFocus());
    EXPECT_EQ(form.events, (Events{"out of 3", "into 1"}));
}

TEST_F(EntryControlsTest, AHandlerThatThrowsDoesNotSilenceTheFocus)
{
    form.first.UserFocuses();
    form.first.LostFocus = [] { throw std::runtime_error{"failed"}; };
    EXPECT_THROW(form.second.UserFocuses(), std::runtime_error);
    form.events.clear();
    form.third.UserFocuses();
    EXPECT_EQ(form.events, (Events{"into 3"}));
}

TEST_F(EntryControlsTest, WhatIsReadOnlyDisabledOrHiddenCannotBeUsed)
{
    form.list.SetItems({"a", "b"});
    form.list.Click = form.list.DblClick = form.check.Click = form.first.Change = form.arrows.Change = count;
    form.first.SetReadOnly(true);
    form.first.UserTypes("x");
    form.first.UserPastes("x");
    form.first.SetReadOnly(false);
    form.first.SetEnabled(false);
    form.first.UserTypes("x");
    form.list.SetEnabled(false);
    form.list.UserSelects(1);
    form.list.UserActivates(1);
    form.check.SetVisible(false);
    form.check.UserClicks();
    form.arrows.SetEnabled(false);
    form.arrows.UserSteps(1);
    EXPECT_EQ(changes, 0);
    EXPECT_FALSE(form.check.Checked());
}

TEST_F(EntryControlsTest, FillingAndSelectingByCodeIsNoClick)
{
    form.combo.Click = form.list.Click = form.check.Click = count;
    form.combo.SetItems({"Office", "Home"});
    EXPECT_EQ(form.combo.Selected(), -1);
    EXPECT_EQ(form.combo.Text(), "");
    form.combo.SelectText("Home");
    form.combo.SetItem(1, "Home (default)");
    EXPECT_EQ(form.combo.Text(), "Home (default)");
    form.combo.SelectText("gone");
    EXPECT_EQ(form.combo.Selected(), -1);
    form.check.SetChecked(true);
    EXPECT_EQ(changes, 0);

    form.combo.UserSelects(1);
    form.combo.UserSelects(1);
    EXPECT_EQ(changes, 1);
    form.check.UserClicks();
    EXPECT_FALSE(form.check.Checked());
    EXPECT_EQ(changes, 2);
    form.list.SetItems({"a"});
    form.list.DblClick = count;
    form.list.UserActivates(0);
    form.list.UserActivates(0);
    EXPECT_EQ(changes, 5) << "one click, two double clicks";
}

TEST_F(EntryControlsTest, ArrowsCountFromWhatIsTypedAndStayInRange)
{
    form.arrows.Change = count;
    form.arrows.SetValue(99);
    EXPECT_EQ(form.months.Text(), "24");
    EXPECT_EQ(changes, 0);
    form.arrows.UserSteps(1);
    EXPECT_EQ(changes, 0) << "at the end already";
    struct Case {
        const char* typed;
        int steps;
        int value;
    };
    for (const Case& c : {Case{"7", 1, 8}, Case{"", 1, 2}, Case{"500", -1, 23}, Case{"abc", -1, 1}, Case{"-4", 1, 2}}) {
        form.months.SetText(c.typed);
        form.arrows.UserSteps(c.steps);
        EXPECT_EQ(form.arrows.Value(), c.value) << c.typed;
    }
}

TEST_F(EntryControlsTest, AGridInAFrameLinesItsFieldsUp)
{
    form.Realize();
    const ui::Rect& frame = form.frame.Bounds();
    EXPECT_EQ(form.label.Bounds().left, frame.left + ui::FrameMargin);
    EXPECT_EQ(form.first.Bounds().left, form.longLabel.Bounds().Right() + ui::LayoutGap);
    EXPECT_EQ(form.second.Bounds().left, form.first.Bounds().left);
    EXPECT_EQ(form.second.Bounds().width, form.first.Bounds().width) << "though its row has no third cell";
    EXPECT_EQ(form.arrows.Bounds().left, form.months.Bounds().Right()) << "they look like one";
    EXPECT_EQ(form.arrows.Bounds().Right(), frame.Right() - ui::FrameMargin);
    EXPECT_EQ(form.second.Bounds().Bottom(), frame.Bottom() - ui::FrameMargin);
    EXPECT_EQ(form.label.Bounds().top + form.label.Bounds().height / 2,
              form.first.Bounds().top + form.first.Bounds().height / 2);
    EXPECT_EQ(form.list.Bounds().height, 1200) << "a list takes the height of its row, a line does not";
    EXPECT_LT(form.check.Bounds().height, 1200);
}

TEST(HeadlessToolkitTest, TellsWhateverIsNotAsScripted)
{
    ui::HeadlessToolkit toolkit;
    toolkit.ExpectMessage("Kept", ui::Icon::None);
    toolkit.ExpectMessage("Lost", ui::Icon::None);
    toolkit.OnModal("frmLost", [](ui::Form&) {});
    toolkit.OnPopup([](ui::Menu&) {});
    toolkit.FolderChoices = {"C:\\Library"};
    toolkit.FileChoices = {"C:\\logo.jpg", std::nullopt};
    toolkit.ShowMessage({"Kept"});
    toolkit.ShowMessage({"Wrong"});
    EXPECT_EQ(toolkit.OpenFile({"Select", "", ""}), "C:\\logo.jpg");
    EXPECT_EQ(toolkit.NotAsScripted(),
              (Events{"message Wrong", "no message Lost", "no modal form frmLost", "no pop-up menu",
                      "no folder chooser for C:\\Library", "no file dialog for a cancel"}));

    toolkit.FolderChoices.clear();
    toolkit.FileChoices.clear();
    toolkit.Unexpected.clear();
    EXPECT_EQ(toolkit.BrowseForFolder("Where?", ""), std::nullopt);
    EXPECT_EQ(toolkit.OpenFile({"Again", "", ""}), std::nullopt);
    EXPECT_EQ(toolkit.Unexpected, (Events{"folder chooser Where?", "file dialog Again"}));
}

} // namespace
} // namespace tests
