#include "WindowTest.h"

#include "ui/win32/NativeText.h"

#include <chrono>
#include <cstring>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class TreeViewWindowTest : public WindowTest {
protected:
    DemoForm form{toolkit};
    HWND tree{};

    void SetUp() override
    {
        Open(form);
        Focus(form.tvTree);
        tree = HandleOf(form.tvTree);
        form.Events.clear();
    }

    std::string TextOfItem(HTREEITEM item) const
    {
        wchar_t text[256]{};
        TVITEMW native{};
        native.mask = TVIF_TEXT | TVIF_HANDLE;
        native.hItem = item;
        native.pszText = text;
        native.cchTextMax = 256;
        SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&native));
        return ui::win32::FromNative(text);
    }

    HTREEITEM Next(WPARAM which, HTREEITEM item) const
    {
        return reinterpret_cast<HTREEITEM>(SendMessageW(tree, TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(item)));
    }

    std::string Selected() const { return TextOfItem(Next(TVGN_CARET, nullptr)); }

    /// What the native tree shows, one line a node.
    std::string Outline() const { return Outline(Next(TVGN_ROOT, nullptr), 0); }

    std::string Outline(HTREEITEM item, std::size_t depth) const
    {
        std::string lines;
        for (; item != nullptr; item = Next(TVGN_NEXT, item)) {
            const auto state = SendMessageW(tree, TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_EXPANDED);
            lines += std::string(depth, ' ') + TextOfItem(item) + ((state & TVIS_EXPANDED) != 0 ? " -" : "") + "\n";
            lines += Outline(Next(TVGN_CHILD, item), depth + 1);
        }
        return lines;
    }

    std::string ModelOutline() const
    {
        std::string lines;
        form.tvTree.ForEach([&](const ui::TreeView::Node& node) {
            for (const auto* parent = node.parent; parent != nullptr; parent = parent->parent)
                lines += ' ';
            lines += node.text + (node.expanded ? " -" : "") + "\n";
            return true;
        });
        return lines;
    }

    POINT At(std::string_view text) const
    {
        for (HTREEITEM item = Next(TVGN_ROOT, nullptr); item != nullptr; item = Next(TVGN_NEXTVISIBLE, item)) {
            if (TextOfItem(item) != text)
                continue;
            RECT place{};
            std::memcpy(&place, &item, sizeof(item));
            SendMessageW(tree, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&place));
            return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
        }
        ADD_FAILURE() << text << " is not shown";
        return {};
    }
    /// What opens and closes the node's branch.
    /// As the system sees it; the program's own keys come before it.
    void ShiftF10()
    {
        BYTE before[256];
        GetKeyboardState(before);
        BYTE keys[256]{};
        keys[VK_SHIFT] = 0x80;
        SetKeyboardState(keys);
        SendMessageW(tree, WM_SYSKEYDOWN, VK_F10, 1);
        SetKeyboardState(before);
    }
    POINT BranchMark(std::string_view text) const
    {
        TVHITTESTINFO hit{};
        for (hit.pt = At(text); hit.pt.x > 0; --hit.pt.x) {
            SendMessageW(tree, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
            if ((hit.flags & TVHT_ONITEMBUTTON) != 0)
                return {hit.pt.x - 4, hit.pt.y};
        }
        ADD_FAILURE() << text << " has no branch";
        return {};
    }
};

} // namespace

TEST_F(TreeViewWindowTest, TurnsEachActOfTheUserIntoOneEvent)
{
    EXPECT_EQ(Selected(), "Private");
    struct Act {
        const char* name;
        std::function<void()> run;
        std::vector<std::string> events;
    };
    const Act acts[] = {
        {"down", [&] { Press(VK_DOWN); }, {"select Letters\\Holidays"}},
        {"click", [&] { Click(tree, At("Faxes")); }, {"select Faxes"}},
        {"click again", [&] { Click(tree, At("Faxes")); }, {}},
        {"right", [&] { Press(VK_RIGHT); }, {"expand Faxes"}},
        {"into", [&] { Press(VK_RIGHT); }, {"select Faxes\\Business"}},
        {"end", [&] { Press(VK_END); }, {"select Übersichten"}},
        {"home", [&] { Press(VK_HOME); }, {"select My Favorites"}},
        {"right button", [&] { RightClick(tree, At("Letters")); }, {"select Letters", "context Letters"}},
        {"context key",
         [&] { SendMessageW(tree, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(tree), -1); },
         {"context Letters"}},
        {"shift and F10", [&] { ShiftF10(); }, {"context Letters"}},
        {"double click", [&] { DoubleClick(tree, At("Letters")); }, {"double Letters", "collapse Letters"}},
    };
    for (const Act& act : acts) {
        form.Events.clear();
        act.run();
        EXPECT_EQ(form.Events, act.events) << act.name;
    }
    EXPECT_EQ(Outline(), ModelOutline());
}

TEST_F(TreeViewWindowTest, AsksForItsMenuWhenTheSelectionIsDealtWith)
{
    form.tvTree.Click = [this] {
        Pump(); // the button goes up
        form.Events.push_back("dealt with");
    };
    RightClick(tree, At("Faxes"));
    Pump();
    EXPECT_THAT(form.Events, ElementsAre("dealt with", "context Faxes"));
}

TEST_F(TreeViewWindowTest, MovesTheSelectionOutOfABranchThatCloses)
{
    Click(tree, BranchMark("Letters"));
    EXPECT_THAT(form.Events, ElementsAre("collapse Letters", "select Letters"));
    EXPECT_EQ(form.tvTree.Selected()->key, "Letters");
}

TEST_F(TreeViewWindowTest, FollowsCodeWithoutRaisingEvents)
{
    ui::TreeView& model = form.tvTree;
    model.Select(model.Find("Faxes\\Private"));
    EXPECT_EQ(Selected(), "Private");
    EXPECT_EQ(Outline(), ModelOutline());

    model.Add(model.Find("Faxes"), "Faxes\\Contracts", "Contracts", 3, 4);
    model.SetExpanded(*model.Find("Letters"), false);
    model.SetImages(*model.Find("Letters"), 3, 4);
    EXPECT_EQ(Outline(), ModelOutline());
    EXPECT_EQ(Selected(), "Private") << "a rebuilt tree keeps what was selected";

    model.Select(nullptr);
    EXPECT_EQ(Next(TVGN_CARET, nullptr), nullptr);
    HandleOf(form.lvList);
    SetFocus(HandleOf(form.lvList));
    SetFocus(tree);
    EXPECT_EQ(Next(TVGN_CARET, nullptr), nullptr) << "taking the keyboard selects nothing";
    model.Clear();
    EXPECT_EQ(Outline(), "");
    EXPECT_THAT(form.Events, IsEmpty());
}

TEST_F(TreeViewWindowTest, GetsTheKeyboardBackAfterItWasLocked)
{
    form.tvTree.SetEnabled(false);
    Press(VK_DOWN);
    EXPECT_THAT(form.Events, IsEmpty());
    Press(VK_F5);
    EXPECT_THAT(form.Events, testing::Contains("menu refresh")) << "commands still have their keys";
    form.tvTree.SetEnabled(true);
    EXPECT_EQ(GetFocus(), tree);
    form.Events.clear();
    Press(VK_DOWN);
    EXPECT_THAT(form.Events, ElementsAre("select Letters\\Holidays"));
}

TEST_F(TreeViewWindowTest, StandsAHandlerThatRebuildsTheTree)
{
    form.tvTree.Click = [&] {
        const ui::TreeUpdate update{form.tvTree};
        form.tvTree.Clear();
        ui::TreeView::Node* node = form.tvTree.Add(nullptr, "New", "New", 2, 2);
        form.tvTree.Add(node, "New\\Below", "Below", 2, 2);
        form.tvTree.Select(form.tvTree.Find("New\\Below"));
        // The user goes on while the handler yields.
        toolkit.DoEvents();
    };
    Press(VK_DOWN);
    EXPECT_TRUE(PumpUntil([&] { return Outline() == "New -\n Below\n"; })) << Outline();
    EXPECT_EQ(Selected(), "Below");
}

TEST_F(TreeViewWindowTest, StandsAHandlerThatClosesTheWindow)
{
    bool closed = false;
    form.Closed = [&] { closed = true; };
    form.tvTree.Click = [&] {
        form.Close();
        toolkit.DoEvents();
    };
    Press(VK_DOWN);
    EXPECT_TRUE(closed);
    EXPECT_TRUE(PumpUntil([&] { return !IsWindow(tree); }));
}

TEST_F(TreeViewWindowTest, RebuildsFiveHundredNodesWithoutADelayToBeSeen)
{
    const auto start = std::chrono::steady_clock::now();
    {
        const ui::TreeUpdate update{form.tvTree};
        form.tvTree.Clear();
        for (int i = 0; i < 100; ++i) {
            const std::string key = "Category " + std::to_string(i);
            ui::TreeView::Node* parent = form.tvTree.Add(nullptr, key, key, 2, 2);
            for (int k = 0; k < 4; ++k)
                form.tvTree.Add(parent, key + "\\" + std::to_string(k), std::to_string(k), 3, 4);
            form.tvTree.SetExpanded(*parent, i % 2 == 0);
        }
    }
    const auto taken = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(SendMessageW(tree, TVM_GETCOUNT, 0, 0), 500);
    // One drawing a node would take seconds.
    EXPECT_LT(std::chrono::duration_cast<std::chrono::milliseconds>(taken).count(), 500);
}

TEST_F(TreeViewWindowTest, EditsALabelAndLetsTheModelDecide)
{
    std::vector<std::string> typed;
    form.tvTree.BeforeLabelEdit = [](ui::TreeView::Node& node, std::string& text) {
        text = "offered";
        return node.text != "Faxes";
    };
    form.tvTree.AfterLabelEdit = [&](ui::TreeView::Node& node, const std::string& text) {
        typed.push_back(node.text + ": " + text);
    };
    const auto edit = [&] { return reinterpret_cast<HWND>(SendMessageW(tree, TVM_GETEDITCONTROL, 0, 0)); };
    form.tvTree.StartLabelEdit();
    ASSERT_NE(edit(), nullptr);
    EXPECT_EQ(TextOf(edit()), "offered");
    SetWindowTextW(edit(), L"Übung");
    Press(VK_RETURN);
    ASSERT_TRUE(PumpUntil([&] { return !typed.empty(); }));
    EXPECT_THAT(typed, ElementsAre("Private: Übung"));
    EXPECT_EQ(Selected(), "Private") << "the model has not changed it";

    form.tvTree.StartLabelEdit();
    Press(VK_ESCAPE);
    Pump();
    EXPECT_FALSE(form.tvTree.EditedLabel());
    EXPECT_EQ(typed.size(), 1u);

    form.tvTree.Select(form.tvTree.Find("Faxes"));
    form.tvTree.StartLabelEdit();
    EXPECT_EQ(edit(), nullptr);
    EXPECT_TRUE(IsWindowVisible(HandleOf(form)));
}
