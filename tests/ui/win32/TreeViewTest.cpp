#include "WindowTest.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class TreeViewWindowTest : public DemoFormTest {
protected:
    // Places in the tree as it is at first.
    static constexpr int Letters = 1;
    static constexpr int Faxes = 5;

    void SetUp() override { Focus(form.tvTree); }

    POINT At(int part) const { return PlaceOf(form.tvTree, part); }
    /// What opens and closes the node's branch.
    POINT BranchMark(int part) const
    {
        TVHITTESTINFO hit{};
        for (hit.pt = At(part); hit.pt.x > 0; --hit.pt.x) {
            SendMessageW(tree, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
            if ((hit.flags & TVHT_ONITEMBUTTON) != 0)
                return {hit.pt.x - 4, hit.pt.y};
        }
        ADD_FAILURE() << part << " has no branch";
        return {};
    }
};

} // namespace

TEST_F(TreeViewWindowTest, TurnsEachKeyAndButtonIntoOneEvent)
{
    // As the system sees it; the program's own keys come before it.
    const auto shiftF10 = [&] { Hold({VK_SHIFT}, [&] { Send(form.tvTree, WM_SYSKEYDOWN, VK_F10, 1); }); };
    // clang-format off
    Check(form, {
        {"down", [&] { Press(VK_DOWN); }, {"select Letters\\Holidays"}},
        {"down again", [&] { Press(VK_DOWN); }, {"select Faxes"}},
        {"right", [&] { Press(VK_RIGHT); }, {"expand Faxes"}},
        {"into", [&] { Press(VK_RIGHT); }, {"select Faxes\\Business"}},
        {"end", [&] { Press(VK_END); }, {"select Übersichten"}},
        {"home", [&] { Press(VK_HOME); }, {"select My Favorites"}},
        {"right button", [&] { RightClick(tree, At(Letters)); }, {"select Letters", "context Letters"}},
        {"context key", [&] { SendMessageW(tree, WM_CONTEXTMENU, 0, -1); }, {"context Letters"}},
        {"shift and F10", shiftF10, {"context Letters"}},
        {"double click", [&] { DoubleClick(tree, At(Letters)); }, {"again Letters", "double Letters", "collapse Letters"}},
        {"a branch opens", [&] { Click(tree, BranchMark(Letters)); }, {"expand Letters"}},
        {"below it", [&] { Press(VK_DOWN); }, {"select Letters\\Business"}},
        {"a branch closes over the selection", [&] { Click(tree, BranchMark(Letters)); },
         {"collapse Letters", "select Letters"}}});
    // clang-format on
}

TEST_F(TreeViewWindowTest, BesideANameIsOnItWhereRowsAreSelectedWhole)
{
    RECT room{};
    GetClientRect(tree, &room);
    const auto use = [&](LONG_PTR rows) { // by the system's theme one or the other
        const LONG_PTR others = GetWindowLongPtrW(tree, GWL_STYLE) & ~LONG_PTR{TVS_HASLINES | TVS_FULLROWSELECT};
        SetWindowLongPtrW(tree, GWL_STYLE, others | rows);
        form.Events.clear();
        RightClick(tree, {room.right - 5, At(Faxes).y});
    };
    use(TVS_HASLINES);
    EXPECT_THAT(form.Events, ElementsAre("context Letters\\Private"));
    use(TVS_FULLROWSELECT);
    EXPECT_THAT(form.Events, ElementsAre("select Faxes", "context Faxes"));
    form.Events.clear();
    DoubleClick(tree, {room.right - 5, room.bottom - 5});
    EXPECT_THAT(form.Events, IsEmpty());
}

TEST_F(TreeViewWindowTest, AsksForItsMenuWhenTheSelectionIsDealtWith)
{
    form.tvTree.Click = [this] {
        Pump(); // the button goes up
        form.Events.push_back("dealt with");
    };
    RightClick(tree, At(Faxes));
    Pump();
    EXPECT_THAT(form.Events, ElementsAre("dealt with", "context Faxes"));
}

TEST_F(TreeViewWindowTest, LongNamesAndManyNodesStayInReach)
{
    ui::TreeView& model = form.tvTree;
    {
        const ui::TreeUpdate update{model};
        for (int i = 0; i < 80; ++i)
            model.Add(model.Find("Faxes"), std::to_string(i), std::string(90, 'x') + std::to_string(i), 3, 4);
    }
    const auto top = [&] { return Send(model, TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE); };
    model.Select(model.Find("79"));
    model.EnsureVisible(*model.Find("79"));
    EXPECT_GT(GetScrollPos(tree, SB_VERT), 0);
    EXPECT_EQ(GetScrollPos(tree, SB_HORZ), 0) << "the branch marks would be out of sight";
    EXPECT_NE(Send(model, TVM_GETTOOLTIPS), 0) << "names that do not fit are told in full";

    model.BeforeLabelEdit = [](ui::TreeView::Node&, std::string&) { return true; };
    model.StartLabelEdit();
    Press(VK_ESCAPE);
    EXPECT_TRUE(PumpUntil([&] { return !model.EditedLabel() && GetScrollPos(tree, SB_HORZ) == 0; }));

    // By keyboard the menu opens beside the selected node, wherever the tree has been scrolled.
    ui::Point asked{};
    model.ContextMenu = [&](ui::Point at) { asked = at; };
    Send(model, WM_VSCROLL, SB_TOP);
    Send(model, WM_CONTEXTMENU, 0, -1);
    EXPECT_GT(asked.y, model.Bounds().top);
    EXPECT_LT(asked.y, model.Bounds().Bottom() + 600);

    // A drag goes on scrolling while the pointer rests at an edge.
    form.lvList.DropTarget = &model;
    BeginDrag(form.lvList, 0);
    POINT edge{40, 3};
    ClientToScreen(tree, &edge);
    SetCursorPos(edge.x, edge.y); // the system tells where its pointer is by itself, too
    ScreenToClient(list, &edge);
    SendMessageW(list, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(edge.x, edge.y));
    const LRESULT before = top();
    EXPECT_TRUE(PumpUntil([&] { return top() != before; }));
    ReleaseCapture();
}

TEST_F(TreeViewWindowTest, ATreeThatIsFilledShowsItsBeginning)
{
    ui::TreeView& model = form.tvTree;
    const auto fill = [&](int nodes, const char* selected) {
        const ui::TreeUpdate update{model};
        model.Clear();
        for (int i = 0; i < nodes; ++i)
            model.Add(nullptr, std::to_string(i), "x", 3, 4);
        model.Add(nullptr, "", "", 3, 4); // the space before the last node has no name
        model.Select(model.Find(selected));
    };
    fill(80, "1");
    EXPECT_EQ(GetScrollPos(tree, SB_VERT), 0);

    // Read again, it stays where the user scrolled it, unless another node is to be seen.
    Send(model, WM_VSCROLL, SB_BOTTOM);
    const int bottom = GetScrollPos(tree, SB_VERT);
    ASSERT_GT(bottom, 0);
    for (const int nodes : {80, 81}) {
        fill(nodes, "1");
        EXPECT_EQ(GetScrollPos(tree, SB_VERT), bottom) << nodes;
    }
    fill(80, "2");
    EXPECT_LE(GetScrollPos(tree, SB_VERT), 2);
}

TEST_F(TreeViewWindowTest, TakingTheKeyboardSelectsNothing)
{
    form.tvTree.Select(nullptr);
    SetFocus(list);
    SetFocus(tree);
    EXPECT_EQ(Send(form.tvTree, TVM_GETNEXTITEM, TVGN_CARET), 0);
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
    EXPECT_TRUE(PumpUntil([&] { return Outline(form.tvTree) == "New-\n *Below\n"; })) << Outline(form.tvTree);
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
    const auto edit = [&] { return reinterpret_cast<HWND>(Send(form.tvTree, TVM_GETEDITCONTROL)); };
    form.tvTree.StartLabelEdit();
    ASSERT_NE(edit(), nullptr);
    EXPECT_EQ(TextOf(edit()), "offered");
    SetWindowTextW(edit(), L"Übung");
    Press(VK_RETURN);
    ASSERT_TRUE(PumpUntil([&] { return !typed.empty(); }));
    EXPECT_THAT(typed, ElementsAre("Private: Übung"));
    EXPECT_THAT(Outline(form.tvTree), testing::HasSubstr("*Private\n")) << "the model has not changed it";

    form.tvTree.StartLabelEdit();
    Press(VK_ESCAPE);
    Pump();
    EXPECT_FALSE(form.tvTree.EditedLabel());
    EXPECT_EQ(typed.size(), 1u);

    form.tvTree.Select(form.tvTree.Find("Faxes"));
    form.tvTree.StartLabelEdit();
    EXPECT_EQ(edit(), nullptr);
}
