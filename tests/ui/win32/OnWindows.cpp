#include "WindowTest.h"
#include "tests/ui/FormsUnderTest.h"

#include "ui/win32/NativeText.h"

#include <deque>

namespace {

/// Runs acts from messages of its own, one after the other.
class Acts {
public:
    Acts() : window{CreateWindowExW(0, WC_STATICW, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)}
    {
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Acts::Procedure));
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&acts));
    }
    Acts(const Acts&) = delete;
    Acts& operator=(const Acts&) = delete;
    ~Acts() { DestroyWindow(window); }

    void Add(std::vector<std::function<void()>> more)
    {
        acts.insert(acts.end(), more.begin(), more.end());
        PostMessageW(window, WM_APP, 0, 0);
    }

private:
    std::deque<std::function<void()>> acts;
    HWND window;

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
    {
        if (message != WM_APP)
            return DefWindowProcW(window, message, wParam, lParam);
        auto& waiting = *reinterpret_cast<std::deque<std::function<void()>>*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        const auto act = waiting.front();
        waiting.pop_front();
        if (!waiting.empty())
            PostMessageW(window, WM_APP, 0, 0);
        act();
        return 0;
    }
};

class OnWindows final : public FormsUnderTest, private WindowHands {
public:
    ui::Toolkit& Toolkit() override { return toolkit; }
    void Open(ui::Form& form) override { WindowHands::Open(form); }
    void CloseByTitleBar(ui::Form& form) override
    {
        if (form.Peer() != nullptr)
            SendMessageW(HandleOf(form), WM_CLOSE, 0, 0);
    }
    void InNextYield(std::function<void()> act) override { acts.Add({std::move(act)}); }

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
        acts.Add(std::move(inIt));
        form.ShowModal();
    }

    void RunPosted() override
    {
        toolkit.Post([this] { toolkit.Quit(); });
        toolkit.Run();
    }

    std::string Shown(const ui::Control& control) override
    {
        const auto places = [&](UINT selected, UINT count) {
            return std::to_string(static_cast<int>(Send(control, selected))) + " of " +
                   std::to_string(Send(control, count));
        };
        if (dynamic_cast<const ui::CheckBox*>(&control) != nullptr)
            return Send(control, BM_GETCHECK) == BST_CHECKED ? "on" : "off";
        if (dynamic_cast<const ui::ListBox*>(&control) != nullptr)
            return places(LB_GETCURSEL, LB_GETCOUNT);
        if (dynamic_cast<const ui::ComboBox*>(&control) != nullptr)
            return places(CB_GETCURSEL, CB_GETCOUNT);
        if (dynamic_cast<const ui::ListView*>(&control) != nullptr) {
            const auto row = static_cast<int>(Send(control, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
            return std::to_string(row) + " of " + std::to_string(Send(control, LVM_GETITEMCOUNT));
        }
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
                Send(control, TB_GETBUTTON, i, reinterpret_cast<LPARAM>(&button));
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

private:
    Acts acts;
};

} // namespace

std::unique_ptr<FormsUnderTest> FormsUnderTest::Make()
{
    return std::make_unique<OnWindows>();
}
