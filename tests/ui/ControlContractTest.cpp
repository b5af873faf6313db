#include "FormsUnderTest.h"

#include "ui/Toolkit.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tests {
namespace {

/// What forms and controls promise, with scripted windows and with real ones.
class ControlContractTest : public ::testing::Test {
protected:
    std::unique_ptr<FormsUnderTest> user{FormsUnderTest::Make()};
    DemoDialog dialog{user->Toolkit()};
    DemoForm form{user->Toolkit()};

    void Check(EventForm& eventForm, const std::vector<Act>& acts)
    {
        for (const Act& act : acts) {
            eventForm.Events.clear();
            act.run();
            EXPECT_EQ(eventForm.Events, act.events) << act.name;
            if (act.control != nullptr) {
                EXPECT_EQ(user->Shown(*act.control), act.shown) << act.name;
            }
        }
    }
    std::function<void()> Clicks(ui::Control& control, int part = 0)
    {
        return [this, &control, part] { user->Click(control, part); };
    }
};

// clang-format off
TEST_F(ControlContractTest, EachActInADialogIsOneEvent)
{
    user->Open(dialog);
    dialog.txtPhone.SetFocus();
    Check(dialog, {
        {"typing", [&] { user->Type(dialog.txtFirst, "Zoë"); },
         {"out of phone", "into first", "first=Z", "first=Zo", "first=Zoë"}, &dialog.txtFirst, "Zoë"},
        {"button", [&] { dialog.btnRetry.SetFocus(); user->Click(dialog.btnRetry); }, {"out of first", "retry"}},
        {"check box", Clicks(dialog.chkApply), {"apply on"}, &dialog.chkApply, "on"},
        {"check box again", Clicks(dialog.chkApply), {"apply off"}, &dialog.chkApply, "off"},
        {"line", Clicks(dialog.lstNames, 2), {"list Cäcilie"}, &dialog.lstNames, "2 of 8"},
        {"the same line", Clicks(dialog.lstNames, 2), {}},
        {"double click", [&] { user->DoubleClick(dialog.lstNames, 0); }, {"list Ann", "double Ann"}},
        {"drop-down list", Clicks(dialog.cboKind, 2), {"combo Übersee"}, &dialog.cboKind, "2 of 3"},
        {"the same entry", Clicks(dialog.cboKind, 2), {}},
        {"box of the arrows", [&] { dialog.txtMonths.SetFocus(); }, {"into months"}},
        {"arrow", Clicks(dialog.udMonths, 0), {"months=13", "count 13"}, &dialog.txtMonths, "13"},
        {"other arrow", Clicks(dialog.udMonths, 1), {"months=12", "count 12"}, &dialog.txtMonths, "12"}});
}

TEST_F(ControlContractTest, EachActInAWindowIsOneEvent)
{
    user->Open(form);
    form.Rows.Count = 8;
    form.lvList.Refill();
    Check(form, {
        {"node", Clicks(form.tvTree, 5), {"select Faxes"}, &form.tvTree,
         "My Favorites\nLetters-\n Business\n Private\n Holidays\n*Faxes\nÜbersichten\n"},
        {"the same node", Clicks(form.tvTree, 5), {"again Faxes"}},
        {"row", Clicks(form.lvList, 3), {"row 3"}, &form.lvList, "3 of 8"},
        {"the same row", Clicks(form.lvList, 3), {}},
        {"double click", [&] { user->DoubleClick(form.lvList, 5); }, {"row 5", "open 5"}},
        {"tab", Clicks(form.tsTypes, 1), {"tab Excel"}, &form.tsTypes, "Word *Excel All "},
        {"the same tab", Clicks(form.tsTypes, 1), {}},
        {"tool", Clicks(form.tbMain, 0), {"button new"}},
        {"tool that is a switch", Clicks(form.tbMain, 4), {"button details"}, &form.tbMain, "oo|_x o"},
        {"disabled tool", Clicks(form.tbMain, 3), {}},
        {"menu key", [&] { user->Press(form, ui::Ctrl('N')); }, {"opening", "menu new"}},
        {"key of a grey entry", [&] { user->Press(form, ui::Ctrl('Q')); }, {"opening"}}});
}

TEST_F(ControlContractTest, CodeIsShownAndIsNoActOfTheUser)
{
    user->Open(dialog);
    dialog.txtMonths.SetFocus();
    Check(dialog, {
        {"text", [&] { dialog.txtFirst.SetText("Äbc"); }, {"first=Äbc"}, &dialog.txtFirst, "Äbc"},
        {"the same text", [&] { dialog.txtFirst.SetText("Äbc"); }, {}},
        {"number", [&] { dialog.udMonths.SetValue(200); }, {"months=99"}, &dialog.txtMonths, "99"},
        {"the end of the range", Clicks(dialog.udMonths, 0), {}, &dialog.txtMonths, "99"},
        {"check", [&] { dialog.chkApply.SetChecked(true); }, {}, &dialog.chkApply, "on"},
        {"another text", [&] { dialog.lstNames.SetItem(1, "Bobby"); }, {}, &dialog.lstNames, "1 of 8"},
        {"lines", [&] { dialog.lstNames.SetItems({"a", "b"}); }, {}, &dialog.lstNames, "-1 of 2"},
        {"line that is not there", [&] { dialog.lstNames.Select(2); }, {}, &dialog.lstNames, "-1 of 2"},
        {"entry", [&] { dialog.cboKind.Select(1); }, {}, &dialog.cboKind, "1 of 3"}});

    user->Open(form);
    ui::TreeView& tree = form.tvTree;
    const auto setTool = [&](const char* key, bool enabled) {
        auto buttons = form.tbMain.Buttons();
        for (ui::ToolBar::Button& button : buttons)
            if (button.key == key) {
                button.enabled = enabled;
                button.pressed = false;
                button.visible = true;
            }
        form.tbMain.SetButtons(std::move(buttons));
    };
    Check(form, {
        {"row", [&] { form.lvList.Select(7); }, {}, &form.lvList, "7 of 60"},
        {"moved row", [&] { form.lvList.Reordered(40); }, {}, &form.lvList, "40 of 60"},
        {"refill", [&] { form.lvList.Refill(); }, {}, &form.lvList, "-1 of 60"},
        {"tab", [&] { form.tsTypes.Select("All"); }, {}, &form.tsTypes, "Word Excel *All "},
        {"a tab before it", [&] { form.tsTypes.Insert(0, {"PPT", {}, {}, "PPT", {}, 0}); }, {}, &form.tsTypes,
         "PPT Word Excel *All "},
        {"a tab less", [&] { form.tsTypes.Remove("Word"); }, {}, &form.tsTypes, "PPT Excel *All "},
        {"the selected tab less", [&] { form.tsTypes.Remove("All"); }, {}, &form.tsTypes, "*PPT Excel "},
        {"tools", [&] { setTool("details", true); setTool("delete", true); setTool("hidden", false); }, {},
         &form.tbMain, "oo|oo_o"},
        {"a node's ancestors open", [&] { tree.Select(tree.Find("Faxes\\Private")); }, {}, &tree,
         "My Favorites\nLetters-\n Business\n Private\n Holidays\nFaxes-\n Business\n *Private\n Holidays\n"
         "Übersichten\n"},
        {"a closed branch", [&] { tree.SetExpanded(*tree.Find("Letters"), false); }, {}, &tree,
         "My Favorites\nLetters\nFaxes-\n Business\n *Private\n Holidays\nÜbersichten\n"},
        {"a node comes behind its siblings", [&] { tree.Add(tree.Find("Faxes"), "Faxes\\C", "Contracts", 1, 2); }, {},
         &tree, "My Favorites\nLetters\nFaxes-\n Business\n *Private\n Holidays\n Contracts\nÜbersichten\n"},
        {"a key that is taken", [&] { EXPECT_EQ(tree.Add(nullptr, "Faxes\\C", "again", 1, 2), nullptr); }, {}},
        {"an emptied tree", [&] { tree.Clear(); }, {}, &tree, ""}});
    EXPECT_EQ(tree.Selected(), nullptr);
}
// clang-format on

TEST_F(ControlContractTest, WhatIsDisabledHiddenOrReadOnlyCannotBeUsed)
{
    user->Open(dialog);
    ui::Control* const controls[] = {&dialog.btnRetry, &dialog.chkApply, &dialog.lstNames, &dialog.udMonths};
    for (const bool hidden : {false, true}) {
        for (ui::Control* control : controls) {
            hidden ? control->SetVisible(false) : control->SetEnabled(false);
            Check(dialog, {{control->TypeName().data(), Clicks(*control), {}}});
            control->SetEnabled(true);
        }
    }
    dialog.txtPhone.SetFocus();
    dialog.txtPhone.SetReadOnly(true);
    Check(dialog, {{"read-only", [&] { user->Type(dialog.txtPhone, "x"); }, {}}});

    user->Open(form);
    form.tvTree.SetEnabled(false);
    form.lvList.Select(2);
    form.lvList.SetEnabled(false);
    Check(form, {{"node", Clicks(form.tvTree), {}}, {"row", [&] { user->DoubleClick(form.lvList, 2); }, {}}});
}

TEST_F(ControlContractTest, AKeyIsSeenBeforeItChangesTheTextWhichAHandlerMayChange)
{
    user->Open(dialog);
    Events seen;
    ui::TextBox& box = dialog.txtLast;
    box.SelectAll();
    box.KeyDown = [&] { seen.push_back(box.SelText() + "/" + box.Text()); };
    user->Type(box, "ab");
    EXPECT_EQ(seen, (Events{"Müller/Müller", "/a"}));
    // A check on every change, which empties the box.
    box.Change = [&] {
        if (box.Text().find('7') != std::string::npos)
            box.SetText("");
    };
    user->Type(box, "7n");
    EXPECT_EQ(user->Shown(box), "n");
    EXPECT_EQ(box.Text(), "n");
}

TEST_F(ControlContractTest, AFormClosesOnceAndOnlyWhenNobodyObjects)
{
    bool allow = false;
    bool fail = false;
    form.Closing = [&] {
        form.Events.push_back("asked");
        form.Close(); // a handler that closes again
        if (fail)
            throw std::runtime_error{"failed"};
        return allow;
    };
    form.Closed = [&] { form.Events.push_back("closed"); };
    user->Open(form);
    form.Events.clear();
    user->CloseByTitleBar(form);
    EXPECT_TRUE(form.IsOpen());
    fail = true;
    EXPECT_THROW(form.Close(), std::runtime_error);
    fail = false;
    allow = true;
    user->CloseByTitleBar(form);
    user->CloseByTitleBar(form);
    EXPECT_FALSE(form.IsOpen());
    EXPECT_EQ(form.Events, (Events{"asked", "asked", "asked", "closed"}))
        << "a failed attempt does not keep it open for good";
}

/// Routines of a form that the user closes in the middle, each with what must still be there when they go on.
TEST_F(ControlContractTest, AFormStaysUntilNothingOfItIsOnTheStack)
{
    ui::Toolkit& toolkit = user->Toolkit();
    const auto yields = [&](DemoForm& closed) {
        return [&] {
            user->InNextYield([&] { user->CloseByTitleBar(closed); });
            toolkit.DoEvents();
            EXPECT_FALSE(closed.IsOpen());
        };
    };
    const std::pair<const char*, std::function<void(DemoForm&)>> cases[] = {
        {"placed by code, which resizes it",
         [&](DemoForm& closed) {
             closed.Resize = [&, yield = yields(closed)] {
                 yield();
                 EXPECT_NE(closed.Peer(), nullptr) << "it is placing the window";
             };
             closed.SetPlacement({900, 900, 12000, 9000});
         }},
        {"handler of a node",
         [&](DemoForm& closed) {
             closed.tvTree.Click = yields(closed);
             user->Click(closed.tvTree, 5);
         }},
        {"dialog over a hidden window",
         [&](DemoForm& closed) {
             closed.Hide();
             user->RunModal(dialog, {[&] { user->CloseByTitleBar(closed); },
                                     [&] {
                                         EXPECT_FALSE(closed.IsOpen());
                                         EXPECT_NE(closed.Peer(), nullptr);
                                         dialog.Close();
                                     }});
         }},
    };
    for (const auto& [name, run] : cases) {
        SCOPED_TRACE(name);
        auto owned = std::make_unique<DemoForm>(toolkit);
        bool gone = false;
        // As an owner does who lets go of the form when it has closed.
        owned->Closed = [&] {
            toolkit.Post([&] {
                owned.reset();
                gone = true;
            });
        };
        user->Open(*owned);
        run(*owned);
        ASSERT_NE(owned, nullptr);
        EXPECT_FALSE(owned->IsOpen());
        EXPECT_EQ(owned->Peer(), nullptr);
        user->RunPosted();
        EXPECT_TRUE(gone);
    }
}

} // namespace
} // namespace tests
