#include "DemoForm.h"

#include "tests/support/ScriptedToolkit.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tests {
namespace {

class ControlRulesTest : public ::testing::Test {
protected:
    ScriptedToolkit toolkit;
    DemoDialog dialog{toolkit};
};

TEST_F(ControlRulesTest, TypingGoesToTheSelectionAndKeepsCharactersWhole)
{
    struct Case {
        const char *name, *text;
        std::size_t start, length, limit;
        const char *typed, *result;
        std::size_t cursor;
    };
    const Case cases[] = {
        {"over the selection", "abc", 0, 3, 0, "Zoë", "Zoë", 4},
        {"backspace takes a whole character", "aö", 3, 0, 0, "\b", "a", 1},
        {"backspace takes the selection", "abcd", 1, 2, 0, "\b", "ad", 1},
        {"a selection inside a character starts before it", "öa", 1, 1, 0, "x", "xa", 1},
        {"a selection past the end", "ab", 7, 9, 0, "c", "abc", 3},
        {"up to the limit, in UTF-16 units", "a", 1, 0, 3, "😀b", "a😀", 5},
        {"a character of two units does not fit into one", "ab", 2, 0, 3, "😀", "ab", 2},
    };
    ui::TextBox& box = dialog.txtFirst;
    for (const Case& c : cases) {
        box.SetText(c.text);
        box.SetMaxLength(c.limit);
        box.Select(c.start, c.length);
        box.UserTypes(c.typed);
        EXPECT_EQ(box.Text(), c.result) << c.name;
        EXPECT_EQ(box.SelStart(), c.cursor) << c.name;
        EXPECT_EQ(box.SelLength(), 0u) << c.name;
    }
}

TEST_F(ControlRulesTest, AFieldThatIsLeftMayTakeTheFocusBack)
{
    dialog.txtFirst.UserFocuses();
    dialog.txtPhone.LostFocus = [this] {
        dialog.Events.push_back("refused");
        dialog.txtPhone.SetFocus();
    };
    dialog.txtPhone.UserFocuses();
    dialog.txtPhone.UserFocuses();
    EXPECT_EQ(dialog.Events, (Events{"into first", "out of first", "into phone"}));
    dialog.Events.clear();
    dialog.txtLast.UserTypes("x");
    EXPECT_TRUE(dialog.txtPhone.HasFocus());
    EXPECT_EQ(dialog.txtLast.Text(), "Müller") << "the keys never came there";
    EXPECT_EQ(dialog.Events, (Events{"refused", "into phone"}));

    dialog.txtPhone.LostFocus = [] { throw std::runtime_error{"failed"}; };
    EXPECT_THROW(dialog.txtLast.UserFocuses(), std::runtime_error);
    dialog.txtLast.GotFocus = [this] { dialog.txtFirst.SetFocus(); };
    dialog.Events.clear();
    dialog.txtLast.UserFocuses();
    EXPECT_EQ(dialog.Events, (Events{"out of last", "into first"})) << "a handler that threw silences nothing";
}

TEST_F(ControlRulesTest, ArrowsCountFromWhatIsTypedAndStayInRange)
{
    struct Case {
        const char* typed;
        int steps, value;
    };
    for (const Case& c : {Case{"7", 1, 8}, Case{"", 1, 2}, Case{"500", -1, 98}, Case{"abc", -1, 1}, Case{"-4", 1, 2}}) {
        dialog.txtMonths.SetText(c.typed);
        dialog.udMonths.UserSteps(c.steps);
        EXPECT_EQ(dialog.udMonths.Value(), c.value) << c.typed;
    }
}

TEST_F(ControlRulesTest, ALayoutGivesEveryControlTheRoomItNeeds)
{
    dialog.btnCancel.SetCaption("A longer caption than the other");
    dialog.pbProgress.SetVisible(false);
    dialog.Realize();
    const auto place = [](const ui::Control& control) { return control.Bounds(); };
    const int right = dialog.ClientSize().width - ui::LayoutMargin;
    EXPECT_GT(dialog.ClientSize().width, 6000) << "the fields need more than the wanted width";
    EXPECT_EQ(place(dialog.btnNew).width, place(dialog.btnCancel).width);
    EXPECT_EQ(place(dialog.btnCancel).Right(), right);
    EXPECT_EQ(place(dialog.btnCancel).Bottom(), dialog.ClientSize().height - ui::LayoutMargin);
    EXPECT_EQ(place(dialog.chkApply).Bottom() + ui::LayoutGap, place(dialog.btnNew).top) << "no hole where one hides";
    EXPECT_GT(place(dialog.lblText).height, 195) << "the text wraps";
    EXPECT_EQ(place(dialog.lstNames).height, 1200);

    const ui::Rect frame = place(dialog.fraPerson);
    EXPECT_EQ(place(dialog.lblFirst).left, frame.left + ui::FrameMargin);
    EXPECT_EQ(place(dialog.txtFirst).left, place(dialog.lblPhone).Right() + ui::LayoutGap);
    EXPECT_EQ(place(dialog.txtFirst).left, place(dialog.txtPhone).left);
    EXPECT_EQ(place(dialog.udMonths).left, place(dialog.txtMonths).Right()) << "they look like one";
    EXPECT_EQ(place(dialog.txtLast).Right(), frame.Right() - ui::FrameMargin);
    EXPECT_EQ(place(dialog.txtNotes).Bottom(), frame.Bottom() - ui::FrameMargin);
    EXPECT_EQ(2 * place(dialog.lblFirst).top + place(dialog.lblFirst).height,
              2 * place(dialog.txtFirst).top + place(dialog.txtFirst).height);

    for (const ui::Control* a : dialog.Controls()) {
        for (const ui::Control* b : dialog.Controls()) {
            const bool apart = place(*a).Right() <= place(*b).left || place(*b).Right() <= place(*a).left ||
                               place(*a).Bottom() <= place(*b).top || place(*b).Bottom() <= place(*a).top;
            EXPECT_TRUE(apart || a == b || a == &dialog.fraPerson || b == &dialog.fraPerson || !a->Visible() ||
                        !b->Visible())
                << a->TypeName() << a->Caption() << " and " << b->TypeName() << b->Caption() << " overlap";
        }
    }
}

TEST(HeadlessToolkitTest, TellsWhateverIsNotAsScripted)
{
    ui::HeadlessToolkit toolkit;
    toolkit.ExpectMessage("Kept", ui::Icon::None);
    toolkit.ExpectMessage("Lost", ui::Icon::None);
    toolkit.OnModal("frmLost", [](ui::Form&) {});
    toolkit.OnPopup([](ui::Menu&) {});
    toolkit.ShowMessage({"Kept"});
    toolkit.ShowMessage({"Wrong"});
    EXPECT_EQ(toolkit.BrowseForFolder("Where?", ""), std::nullopt);
    EXPECT_EQ(toolkit.OpenFile({"Select", "", ""}), std::nullopt);
    toolkit.FolderChoices = {"C:\\Library"};
    toolkit.FileChoices = {"C:\\logo.jpg", std::nullopt};
    EXPECT_EQ(toolkit.OpenFile({"Select", "", ""}), "C:\\logo.jpg");
    EXPECT_EQ(toolkit.NotAsScripted(), (Events{"message Wrong", "folder chooser Where?", "file dialog Select",
                                               "no message Lost", "no modal form frmLost", "no pop-up menu",
                                               "no folder chooser for C:\\Library", "no file dialog for a cancel"}));
}

TEST(KeyTextTest, IsWhatMenusShow)
{
    using ui::KeyCode;
    // clang-format off
    const std::pair<ui::Key, const char*> keys[] = {
        {ui::Ctrl('N'), "Ctrl+N"}, {ui::Plain(KeyCode::F5), "F5"}, {ui::Plain(KeyCode::F10), "F10"},
        {{KeyCode::Enter, false, false, true}, "Alt+Enter"}, {{KeyCode::Tab, true, true}, "Ctrl+Shift+Tab"},
        {ui::Plain(KeyCode::Delete), "Del"}, {{}, ""}};
    // clang-format on
    for (const auto& [key, text] : keys)
        EXPECT_EQ(ui::KeyText(key), text);
}

} // namespace
} // namespace tests
