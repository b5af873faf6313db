#include "WindowTest.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Events = std::vector<std::string>;

class DialogWindowTest : public WindowTest {
protected:
    DemoDialog form{toolkit};

    void SetUp() override
    {
        Open(form);
        Focus(form.btnRetry);
    }
};

/// A dialog that only its title bar and Esc close.
struct PlainDialog final : ui::Form {
    explicit PlainDialog(ui::Toolkit& toolkit) : Form{toolkit, "PlainDialog", Style::Dialog}
    {
        Layout(ui::Column(btnOnly));
    }
    ui::Button btnOnly{*this};
};

} // namespace

TEST_F(DialogWindowTest, KeysReachTheControlsTheyAreMeantFor)
{
    struct Act {
        const char* name;
        std::function<void()> run;
        Events events;
    };
    const Act acts[] = {
        {"mnemonic letter", [&] { Type(L"n"); }, {"new"}},
        {"enter on a button is that button",
         [&] {
             Focus(form.btnRetry);
             Press(VK_RETURN);
         },
         {"retry"}},
        {"a disabled button is left alone",
         [&] {
             form.btnNew.SetEnabled(false);
             Type(L"n");
             form.btnNew.SetEnabled(true);
         },
         {}},
        {"mnemonic of a check box", [&] { PressAlt('p'); }, {"apply on"}},
        {"space",
         [&] {
             Press(VK_SPACE);
             PostMessageW(GetFocus(), WM_KEYUP, VK_SPACE, static_cast<LPARAM>(0xC0000001));
             Pump();
         },
         {"apply off"}},
        {"tab",
         [&] {
             Focus(form.txtLast);
             Press(VK_TAB);
         },
         {"out of last", "into phone"}},
        {"enter in a field", [&] { Press(VK_RETURN); }, {"new"}},
        {"down in the arrows' box",
         [&] {
             Focus(form.txtMonths);
             Press(VK_DOWN);
         },
         {"months=11", "count 11"}},
        {"down in a list",
         [&] {
             Focus(form.lstNames);
             Press(VK_DOWN);
         },
         {"list Cäcilie"}},
        {"enter in a list", [&] { Press(VK_RETURN); }, {"new"}},
    };
    for (const Act& act : acts) {
        form.Events.clear();
        act.run();
        EXPECT_EQ(form.Events, act.events) << act.name;
    }
    Focus(form.txtNotes);
    Type(L"a");
    PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 0x001C0001);
    Pump();
    Type(L"b");
    EXPECT_EQ(form.txtNotes.Text(), "a\r\nb") << "a box of several lines keeps the key";
    Press(VK_TAB);
    EXPECT_TRUE(form.lstNames.HasFocus());
    form.txtNotes.SetFocus();
    form.Events.clear();
    Press(VK_ESCAPE);
    EXPECT_THAT(form.Events, ElementsAre("cancel"));
    EXPECT_FALSE(form.IsOpen());

    PlainDialog plain{toolkit};
    Open(plain);
    Press(VK_ESCAPE);
    EXPECT_FALSE(plain.IsOpen()) << "without a cancel button";
}

TEST_F(DialogWindowTest, TypingChangesTheModelAndCodeMovesTheNativeSelection)
{
    Focus(form.txtFirst);
    Type(L"Zoë");
    EXPECT_EQ(form.txtFirst.SelStart(), 4u) << "in bytes";
    Press(VK_LEFT);
    Type(L"\b");
    EXPECT_EQ(form.txtFirst.Text(), "Zë");
    EXPECT_EQ(form.txtFirst.SelStart(), 1u);
    Press(VK_DELETE);
    EXPECT_EQ(form.txtFirst.Text(), "Z");
    form.txtFirst.SetText("Äbc");
    form.txtFirst.Select(2, 1);
    EXPECT_EQ(Send(form.txtFirst, EM_GETSEL), MAKELRESULT(1, 2)) << "in UTF-16 units";
    Type(L"x\x01"); // Ctrl+A
    EXPECT_EQ(form.txtFirst.SelText(), "Äxc");

    // What the mouse selects.
    DoubleClick(HandleOf(form.txtFirst), {8, 6});
    EXPECT_EQ(form.Events.back(), "first selects Äxc");

    // What was selected before the form opened hides nothing.
    DemoDialog early{toolkit};
    early.txtFirst.SetText("Zoë");
    early.txtFirst.SelectAll();
    Open(early);
    EXPECT_GE(static_cast<short>(LOWORD(Send(early.txtFirst, EM_POSFROMCHAR))), 0);
    EXPECT_EQ(early.txtFirst.SelText(), "Zoë");
    EXPECT_EQ(Send(early.lstNames, LB_GETTOPINDEX), 0);
}

TEST_F(DialogWindowTest, PastingIsAnEditAndLimitsHold)
{
    Focus(form.txtLast);
    ASSERT_TRUE(OpenClipboard(HandleOf(form)));
    EmptyClipboard();
    const std::wstring text = L"abcdefghijklmnop";
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    std::copy_n(text.c_str(), text.size() + 1, static_cast<wchar_t*>(GlobalLock(memory)));
    GlobalUnlock(memory);
    SetClipboardData(CF_UNICODETEXT, memory);
    CloseClipboard();
    form.txtLast.Pasting = [&] { form.Events.push_back("over " + form.txtLast.SelText()); };
    form.txtLast.SelectAll();
    Type(L"\x16"); // Ctrl+V
    EXPECT_THAT(form.Events, ElementsAre("over Müller", "last=abcdefghij"));
}

TEST_F(DialogWindowTest, AFieldMayTakeTheFocusBackHoweverItIsLeft)
{
    bool refuse = true;
    form.txtPhone.LostFocus = [&] {
        form.Events.push_back("check");
        if (refuse)
            form.txtPhone.SetFocus();
    };
    Focus(form.txtPhone);
    struct Way {
        const char* name;
        std::function<void()> leave;
    };
    const Way ways[] = {
        {"tab", [&] { Press(VK_TAB); }},
        {"mouse on a button",
         [&] {
             Click(HandleOf(form.btnRetry), {10, 10});
         }},
        {"mouse on a text",
         [&] {
             Click(HandleOf(form.txtFirst), {10, 10});
         }},
        {"mnemonic of a button", [&] { PressAlt('r'); }},
        {"mnemonic of a check box", [&] { PressAlt('p'); }},
    };
    for (const Way& way : ways) {
        form.Events.clear();
        way.leave();
        EXPECT_EQ(GetFocus(), HandleOf(form.txtPhone)) << way.name;
        EXPECT_TRUE(form.txtPhone.HasFocus()) << way.name;
        EXPECT_EQ(GetCapture(), nullptr) << way.name;
        EXPECT_EQ(std::ranges::count(form.Events, "check"), 1) << way.name;
        EXPECT_EQ(std::ranges::count(form.Events, "retry"), 0) << way.name;
        EXPECT_FALSE(form.chkApply.Checked()) << way.name;
    }
    refuse = false;
    form.Events.clear();
    PressAlt('r');
    EXPECT_THAT(form.Events, ElementsAre("check", "retry"));

    // A message box in the middle of a move: the form is left and comes back.
    Focus(form.txtPhone);
    form.txtPhone.LostFocus = [&] {
        PlainDialog other{toolkit};
        other.Show();
        EXPECT_TRUE(PumpUntil([&] { return GetActiveWindow() == HandleOf(other); }));
        other.Close();
        EXPECT_TRUE(PumpUntil([&] { return GetActiveWindow() == HandleOf(form); }));
        form.txtPhone.SetFocus();
    };
    Press(VK_TAB);
    EXPECT_EQ(GetFocus(), HandleOf(form.txtPhone));
    EXPECT_THAT(form.Events, ElementsAre("into phone")) << "the next field never had it";
}

TEST_F(DialogWindowTest, AnOpenDropDownListIsOnlyTriedOut)
{
    Focus(form.cboKind);
    Send(form.cboKind, CB_SHOWDROPDOWN, TRUE);
    Press(VK_DOWN);
    EXPECT_THAT(form.Events, IsEmpty());
    Press(VK_ESCAPE);
    EXPECT_TRUE(form.IsOpen()) << "the key closed the list";
    EXPECT_THAT(form.Events, IsEmpty());
    EXPECT_EQ(Send(form.cboKind, CB_GETCURSEL), 0);
    Press(VK_DOWN);
    EXPECT_THAT(form.Events, ElementsAre("combo Home"));
}

TEST_F(DialogWindowTest, AModalFormHoldsTheOthersAndGivesTheFocusBack)
{
    DemoForm window{toolkit};
    DemoForm hidden{toolkit};
    hidden.Realize();
    Open(window);
    Focus(window.lvList);
    const HWND main = HandleOf(window);
    form.Close();
    EXPECT_FALSE(toolkit.ModalActive());

    DemoDialog dialog{toolkit};
    int held = 0;
    dialog.btnRetry.Click = [&] {
        held += !IsWindowEnabled(main) && !IsWindowEnabled(HandleOf(hidden)) && toolkit.ModalActive();
        DemoDialog inner{toolkit, "Inner"};
        const HWND outer = HandleOf(dialog);
        inner.btnRetry.Click = [&] {
            held += !IsWindowEnabled(outer) && !IsWindowEnabled(main);
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

    EXPECT_EQ(held, 2);
    EXPECT_TRUE(IsWindowEnabled(main));
    EXPECT_TRUE(IsWindowEnabled(HandleOf(hidden)));
    EXPECT_FALSE(toolkit.ModalActive());
    EXPECT_TRUE(PumpUntil([&] { return GetFocus() == HandleOf(window.lvList); }));
}

TEST_F(DialogWindowTest, NothingIsClippedOrUnevenAtAnyDpi)
{
    form.btnRetry.SetCaption("&Retry with a much longer translated caption");
    for (const int dpi : {96, 120, 144, 192}) {
        MoveToDpi(HandleOf(form), dpi, {720, 800});
        const auto sizeOf = [](const ui::Control& control) {
            RECT place{};
            GetWindowRect(HandleOf(control), &place);
            return SIZE{place.right - place.left, place.bottom - place.top};
        };
        for (const ui::Control* control : form.Controls()) {
            const ui::Size needed = control->PreferredSize(control->Bounds().width);
            const SIZE size = sizeOf(*control);
            EXPECT_GE(size.cx + 1, ui::win32::ToPixels(needed.width, dpi))
                << control->TypeName() << ' ' << control->Caption() << " at " << dpi;
            EXPECT_GE(size.cy + 1, ui::win32::ToPixels(needed.height, dpi))
                << control->TypeName() << ' ' << control->Caption() << " at " << dpi;
        }
        EXPECT_NEAR(sizeOf(form.cboKind).cy, sizeOf(form.txtFirst).cy, 2 * dpi / 96) << dpi;
        EXPECT_EQ(sizeOf(form.txtMonths).cy, sizeOf(form.udMonths).cy) << dpi;
    }
}
