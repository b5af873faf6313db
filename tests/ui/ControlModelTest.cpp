#include "tests/support/ScriptedToolkit.h"

#include "ui/Button.h"
#include "ui/ListView.h"
#include "ui/TabStrip.h"
#include "ui/ToolBar.h"
#include "ui/TreeView.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

struct TestForm : ui::Form {
    explicit TestForm(ui::Toolkit& toolkit) : Form{toolkit, "test", Style::Sizable} {}
    ui::Button button{*this};
    ui::TreeView tree{*this};
    ui::ListView list{*this};
    ui::TabStrip tabs{*this};
    ui::ToolBar bar{*this};
};

struct Numbers final : ui::ListModel {
    int count{10};
    int Rows() const override { return count; }
    std::string Text(int row, int) const override { return std::to_string(row); }
    int Icon(int) const override { return 1; }
    int SmallIcon(int) const override { return 1; }
};

class ControlModelTest : public ::testing::Test {
protected:
    ScriptedToolkit toolkit;
    TestForm form{toolkit};
    Numbers numbers;
    int events{};
    std::function<void()> count = [this] { ++events; };
};

TEST_F(ControlModelTest, CodeRaisesNoEventsAndAUserActRaisesOne)
{
    form.tree.Click = form.list.Click = form.tabs.Click = count;
    auto* a = form.tree.Add(nullptr, "a", "A", 0, 0);
    auto* b = form.tree.Add(a, "b", "B", 0, 0);
    form.tree.Select(b);
    form.list.SetModel(&numbers);
    form.list.Select(3);
    form.list.Refill();
    form.tabs.SetTabs({{"x"}, {"y"}});
    form.tabs.Select("y");
    EXPECT_EQ(events, 0);
    EXPECT_TRUE(a->expanded) << "a selected node can be seen";
    EXPECT_EQ(form.list.Selected(), -1) << "a refill selects nothing";

    form.tree.UserSelects("a");
    form.tree.UserSelects("a");
    EXPECT_EQ(events, 1);
    form.list.UserSelects(4);
    form.list.UserSelects(4);
    EXPECT_EQ(events, 2);
    form.tabs.UserSelects("x");
    form.tabs.UserSelects("x");
    EXPECT_EQ(events, 3);
}

TEST_F(ControlModelTest, WhatIsNotThereOrDisabledCannotBeUsed)
{
    form.button.Click = form.tree.Click = form.list.Click = form.list.DblClick = count;
    form.bar.ButtonClick = [this](const std::string&) { ++events; };
    form.tree.Add(nullptr, "a", "A", 0, 0);
    form.list.SetModel(&numbers);
    form.bar.SetButtons({{.key = "off", .enabled = false}, {.key = "hidden", .visible = false}});
    form.button.SetEnabled(false);
    form.tree.SetEnabled(false);
    form.button.UserClicks();
    form.tree.UserSelects("a");
    form.tree.SetEnabled(true);
    form.tree.UserSelects("gone");
    form.list.UserSelects(99);
    form.list.UserActivates(-1);
    form.bar.UserClicks("off");
    form.bar.UserClicks("hidden");
    form.bar.UserClicks("gone");
    EXPECT_EQ(events, 0);
}

TEST_F(ControlModelTest, ATreeKeepsKeysUniqueAndSiblingsInOrder)
{
    auto* root = form.tree.Add(nullptr, "r", "Root", 0, 0);
    for (const char* text : {"m", "z", "a", "n"})
        form.tree.Add(root, text, text, 0, 0);
    EXPECT_EQ(form.tree.Add(root, "n", "again", 0, 0), nullptr);
    std::string order;
    for (const auto& child : root->children)
        order += child->text;
    EXPECT_EQ(order, "mzan");
    EXPECT_EQ(form.tree.Count(), 5u);
    form.tree.Select(form.tree.Find("z"));
    form.tree.Clear();
    EXPECT_EQ(form.tree.Selected(), nullptr);
}

TEST_F(ControlModelTest, AFormClosesOnceAndOnlyWhenNobodyObjects)
{
    bool allow = false;
    int asked = 0;
    form.Closing = [&] {
        ++asked;
        form.Close(); // a handler that closes again
        return allow;
    };
    form.Closed = count;
    form.Show();
    form.UserCloses();
    EXPECT_TRUE(form.IsOpen());
    allow = true;
    form.UserCloses();
    form.UserCloses();
    EXPECT_FALSE(form.IsOpen());
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(events, 1);
}

TEST_F(ControlModelTest, AShortcutRunsItsMenuEntryUnlessItIsDisabled)
{
    auto& item = form.MenuBar.Add(std::make_unique<ui::Menu>("file", ui::Tag{}))
                     .Add(std::make_unique<ui::Menu>("open", ui::Tag{}));
    item.Shortcut = ui::Ctrl('O');
    item.Click = count;
    EXPECT_TRUE(form.UserPresses(ui::Ctrl('O')));
    item.Enabled = false;
    EXPECT_TRUE(form.UserPresses(ui::Ctrl('O'))) << "it is still its key";
    EXPECT_FALSE(form.UserPresses(ui::Ctrl('P')));
    EXPECT_EQ(events, 1);
}

TEST(KeyTextTest, IsWhatMenusShow)
{
    using ui::Key;
    using ui::KeyCode;
    const std::pair<Key, const char*> keys[] = {{ui::Ctrl('N'), "Ctrl+N"},
                                                {ui::Plain(KeyCode::F5), "F5"},
                                                {ui::Plain(KeyCode::F10), "F10"},
                                                {{KeyCode::Enter, false, false, true}, "Alt+Enter"},
                                                {{KeyCode::Tab, true, true}, "Ctrl+Shift+Tab"},
                                                {ui::Plain(KeyCode::Delete), "Del"},
                                                {{}, ""}};
    for (const auto& [key, text] : keys)
        EXPECT_EQ(ui::KeyText(key), text);
}

} // namespace
} // namespace tests
