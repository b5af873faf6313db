#include "WindowTest.h"
#include "tests/ui/FormsUnderTest.h"

namespace {

class OnWindows final : public FormsUnderTest, private WindowHands {
public:
    ui::Toolkit& Toolkit() override { return toolkit; }
    void Open(ui::Form& form) override { WindowHands::Open(form); }
    void CloseByTitleBar(ui::Form& form) override
    {
        if (form.Peer() != nullptr)
            SendMessageW(HandleOf(form), WM_CLOSE, 0, 0);
    }
    void InNextYield(std::function<void()> act) override
    {
        acts.Add([act = std::move(act)] {
            act();
            return true;
        });
    }

    void Press(ui::Form&, const ui::Key& key) override
    {
        WindowHands::Press(static_cast<WORD>(key.code), {VK_CONTROL});
    }

    void Type(ui::TextBox& box, std::string_view text) override
    {
        box.SetFocus();
        for (const wchar_t letter : ui::win32::ToNative(std::string{text})) {
            Send(box, WM_KEYDOWN, VK_PACKET, 1);
            WindowHands::Type({&letter, 1});
        }
    }

    void Click(ui::Control& control, int part) override
    {
        if (dynamic_cast<ui::ComboBox*>(&control) == nullptr) {
            // The system gives a disabled or hidden window no mouse messages.
            if (control.Enabled() && control.Visible())
                WindowHands::Click(HandleOf(control), PlaceOf(control, part));
            return;
        }
        control.SetFocus();
        Send(control, CB_SHOWDROPDOWN, TRUE);
        WindowHands::Press(VK_HOME);
        for (int i = 0; i < part; ++i)
            WindowHands::Press(VK_DOWN);
        WindowHands::Press(VK_RETURN);
    }

    void DoubleClick(ui::Control& control, int part) override
    {
        if (control.Enabled())
            WindowHands::DoubleClick(HandleOf(control), PlaceOf(control, part));
    }

    void RunModal(ui::Form& form, std::vector<std::function<void()>> inIt) override
    {
        for (auto& act : inIt)
            InNextYield(std::move(act));
        form.ShowModal();
    }

    void RunPosted() override
    {
        toolkit.Post([this] { toolkit.Quit(); });
        toolkit.Run();
    }

    std::string Shown(const ui::Control& control) override
    {
        const auto places = [&](LRESULT selected, UINT count) {
            return std::to_string(static_cast<int>(selected)) + " of " + std::to_string(Send(control, count));
        };
        if (dynamic_cast<const ui::CheckBox*>(&control) != nullptr)
            return Send(control, BM_GETCHECK) == BST_CHECKED ? "on" : "off";
        if (dynamic_cast<const ui::ListBox*>(&control) != nullptr)
            return places(Send(control, LB_GETCURSEL), LB_GETCOUNT);
        if (dynamic_cast<const ui::ComboBox*>(&control) != nullptr)
            return places(Send(control, CB_GETCURSEL), CB_GETCOUNT);
        if (const auto* list = dynamic_cast<const ui::ListView*>(&control))
            return places(RowOf(*list), LVM_GETITEMCOUNT);
        if (const auto* tree = dynamic_cast<const ui::TreeView*>(&control))
            return Outline(*tree);
        if (const auto* tabs = dynamic_cast<const ui::TabStrip*>(&control)) {
            std::string shown;
            const auto selected = static_cast<std::size_t>(Send(control, TCM_GETCURSEL));
            for (std::size_t i = 0; i < static_cast<std::size_t>(Send(control, TCM_GETITEMCOUNT)); ++i)
                shown += (i == selected ? "*" : "") + tabs->Tabs().at(i).key + " ";
            return shown;
        }
        if (const auto* bar = dynamic_cast<const ui::ToolBar*>(&control)) {
            std::string shown;
            for (WPARAM i = 0; i < bar->Buttons().size(); ++i) {
                TBBUTTON button{};
                Send(control, TB_GETBUTTON, i, &button);
                const int state = button.fsState;
                shown += (button.fsStyle & BTNS_SEP) != 0 ? '|'
                         : (state & TBSTATE_HIDDEN) != 0  ? ' '
                         : (state & TBSTATE_ENABLED) == 0 ? '_'
                         : (state & TBSTATE_CHECKED) != 0 ? 'x'
                                                          : 'o';
            }
            return shown;
        }
        return TextOf(HandleOf(control));
    }
};

} // namespace

std::unique_ptr<FormsUnderTest> FormsUnderTest::Make()
{
    return std::make_unique<OnWindows>();
}
