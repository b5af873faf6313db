#include "WindowTest.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class DialogWindowTest : public WindowTest {};

/// A dialog that only its title bar and Esc close.
class PlainDialog final : public ui::Form {
public:
    explicit PlainDialog(ui::Toolkit& toolkit) : Form{toolkit, "PlainDialog", Style::Dialog}
    {
        btnOnly.SetCaption("Only");
        Layout(ui::Column(btnOnly));
    }
    ui::Button btnOnly{*this};
};

} // namespace

TEST_F(DialogWindowTest, KeysReachTheButtonsTheyAreMeantFor)
{
    DemoDialog dialog{toolkit};
    Open(dialog);
    Focus(dialog.btnRetry);
    struct Act {
        const char* name;
        std::function<void()> run;
        std::vector<std::string> events;
    };
    const Act acts[] = {
        {"mnemonic letter", [&] { Type(L'n'); }, {"new"}},
        {"other mnemonic", [&] { Type(L'r'); }, {"retry"}},
        {"enter on a button is that button",
         [&] {
             Focus(dialog.btnRetry);
             Press(VK_RETURN);
         },
         {"retry"}},
        {"a disabled button is left alone",
         [&] {
             dialog.btnNew.SetEnabled(false);
             Type(L'n');
             dialog.btnNew.SetEnabled(true);
         },
         {}},
    };
    for (const Act& act : acts) {
        dialog.Events.clear();
        act.run();
        EXPECT_EQ(dialog.Events, act.events) << act.name;
    }

    Focus(dialog.btnRetry);
    Press(VK_TAB);
    EXPECT_TRUE(dialog.btnNew.HasFocus());
    EXPECT_EQ(GetFocus(), HandleOf(dialog.btnNew));
    dialog.Events.clear();
    Press(VK_ESCAPE);
    EXPECT_THAT(dialog.Events, ElementsAre("cancel"));
    EXPECT_FALSE(dialog.IsOpen());
}

TEST_F(DialogWindowTest, EnterIsTheDefaultButtonWhereNoButtonHasTheFocus)
{
    DemoDialog dialog{toolkit};
    Open(dialog);
    SendMessageW(HandleOf(dialog), WM_COMMAND, IDOK, 0);
    EXPECT_THAT(dialog.Events, ElementsAre("new"));
    dialog.Close();
}

TEST_F(DialogWindowTest, EscClosesADialogWithoutACancelButton)
{
    PlainDialog dialog{toolkit};
    Open(dialog);
    Press(VK_ESCAPE);
    EXPECT_FALSE(dialog.IsOpen());
}

TEST_F(DialogWindowTest, AModalFormHoldsTheOthersAndGivesTheFocusBack)
{
    DemoForm form{toolkit};
    Open(form);
    Focus(form.lvList);
    const HWND main = HandleOf(form);
    EXPECT_FALSE(toolkit.ModalActive());

    DemoDialog dialog{toolkit};
    bool heldTheMain = false;
    bool innerHeldTheOuter = false;
    dialog.btnRetry.Click = [&] {
        heldTheMain = !IsWindowEnabled(main) && toolkit.ModalActive();
        DemoDialog inner{toolkit, "Inner"};
        const HWND outer = HandleOf(dialog);
        inner.btnRetry.Click = [&] {
            innerHeldTheOuter = !IsWindowEnabled(outer) && !IsWindowEnabled(main);
            inner.Close();
        };
        inner.Realize();
        PostMessageW(HandleOf(inner.btnRetry), BM_CLICK, 0, 0);
        inner.ShowModal();
        EXPECT_TRUE(IsWindowEnabled(outer));
        EXPECT_FALSE(IsWindowEnabled(main)) << "the outer dialog is still up";
        dialog.Close();
    };
    dialog.Realize();
    EXPECT_EQ(GetWindow(HandleOf(dialog), GW_OWNER), main);
    PostMessageW(HandleOf(dialog.btnRetry), BM_CLICK, 0, 0);
    dialog.ShowModal();

    EXPECT_TRUE(heldTheMain);
    EXPECT_TRUE(innerHeldTheOuter);
    EXPECT_TRUE(IsWindowEnabled(main));
    EXPECT_FALSE(toolkit.ModalActive());
    EXPECT_TRUE(PumpUntil([&] { return GetFocus() == HandleOf(form.lvList); }));
    EXPECT_TRUE(form.lvList.HasFocus());
}

TEST_F(DialogWindowTest, EveryCaptionFitsItsControlAtEachDpi)
{
    DemoDialog dialog{toolkit};
    dialog.btnRetry.SetCaption("&Retry with a much longer translated caption");
    dialog.Realize();
    for (const int dpi : {96, 120, 144, 192}) {
        MoveToDpi(HandleOf(dialog), dpi, {600, 260});
        for (const ui::Control* control : dialog.Controls()) {
            if (control->Caption().empty())
                continue;
            const ui::Size needed = control->PreferredSize(control->Bounds().width);
            RECT client{};
            GetClientRect(HandleOf(*control), &client);
            EXPECT_GE(client.right + 1, ui::win32::ToPixels(needed.width, dpi)) << control->Caption() << " at " << dpi;
            EXPECT_GE(client.bottom + 1, ui::win32::ToPixels(needed.height, dpi))
                << control->Caption() << " at " << dpi;
        }
    }
}
