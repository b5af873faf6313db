#include "ui/win32/PeerFactory.h"

#include "platform/Text.h"
#include "ui/Button.h"
#include "ui/CheckBox.h"
#include "ui/ComboBox.h"
#include "ui/Frame.h"
#include "ui/Label.h"
#include "ui/ListBox.h"
#include "ui/ProgressBar.h"
#include "ui/StatusBar.h"
#include "ui/UpDown.h"
#include "ui/win32/Canvas.h"
#include "ui/win32/FormWindow.h"
#include "ui/win32/ImagePeer.h"
#include "ui/win32/ListViewPeer.h"
#include "ui/win32/NativeText.h"
#include "ui/win32/SplitterPeer.h"
#include "ui/win32/TabStripPeer.h"
#include "ui/win32/TextBoxPeer.h"
#include "ui/win32/ToolBarPeer.h"
#include "ui/win32/TreeViewPeer.h"

#include <algorithm>
#include <stdexcept>
#include <utility>
#include <vector>

// The peers of the smallest controls, and the table of all peers. Lengths of theirs are twips, at any dpi.

namespace ui::win32 {
namespace {

class LabelPeer final : public PeerBase {
public:
    LabelPeer(Label& peerLabel, FormWindow& form, int id) : PeerBase{peerLabel, form}, label{peerLabel}
    {
        // Names are drawn here: the system's own label leaves out whatever does not fit, which may be a whole line.
        Create(label.PlainText ? CanvasClass() : WC_STATICW, label.PlainText ? 0u : static_cast<DWORD>(SS_LEFT), 0, id);
    }

    Size Preferred(int width) const override
    {
        const SIZE text = Measure(label.Caption(), Font(), Pixels(width), label.PlainText ? PlainFlags : 0u);
        const int least = label.LeastLines * static_cast<int>(Measure("X", Font()).cy);
        return {Twips(text.cx + 1), Twips(std::max(static_cast<int>(text.cy), least))};
    }

    void DpiChanged() override
    {
        PeerBase::DpiChanged();
        Send(WM_SETFONT, reinterpret_cast<WPARAM>(Font()), TRUE);
    }

    /// The system would send a label's letter on as a message that dialogs of its own alone understand.
    bool UsesMnemonic(wchar_t letter) override
    {
        if (label.PlainText || !HasMnemonic(letter))
            return false;
        const auto& controls = Window().Model().Controls();
        const auto next =
            std::find_if(std::ranges::find(controls, &Model()), controls.end(), [](const Control* control) {
                return control->IsTabStop() && control->Visible() && control->Enabled() && control->Peer() != nullptr;
            });
        if (next == controls.end())
            return false;
        (*next)->SetFocus();
        if (auto* box = dynamic_cast<TextBox*>(*next); box != nullptr && box->HasFocus())
            box->SelectAll();
        return true;
    }

protected:
    void Sync(Aspect aspect) override
    {
        PeerBase::Sync(aspect);
        if (label.PlainText)
            InvalidateRect(Handle(), nullptr, TRUE);
    }

    std::optional<LRESULT> OnMessage(UINT message, WPARAM, LPARAM) override
    {
        if (!label.PlainText || message != WM_PAINT)
            return std::nullopt;
        PaintNames();
        return 0;
    }

private:
    static constexpr UINT PlainFlags = DT_NOPREFIX | DT_EDITCONTROL;

    Label& label;

    /// Wrapped; where there is no room for that, in a line each, with dots in place of what is too long.
    void PaintNames() const
    {
        PAINTSTRUCT paint{};
        HDC context = BeginPaint(Handle(), &paint);
        const HGDIOBJ before = SelectObject(context, Font());
        SetBkMode(context, TRANSPARENT);
        SetTextColor(context, GetSysColor(COLOR_BTNTEXT));
        RECT room{};
        GetClientRect(Handle(), &room);
        const auto draw = [&](const std::string& text, UINT flags) {
            const std::wstring native = ToNative(text);
            DrawTextW(context, native.c_str(), static_cast<int>(native.size()), &room, flags);
        };
        if (Measure(label.Caption(), Font(), std::max(1, static_cast<int>(room.right)), PlainFlags).cy <= room.bottom) {
            draw(label.Caption(), PlainFlags | DT_WORDBREAK);
        } else {
            const LONG height = Measure("X", Font()).cy;
            for (const std::string& line : platform::text::Split(label.Caption(), '\n')) {
                draw(line.substr(0, line.find('\r')), DT_NOPREFIX | DT_SINGLELINE | DT_END_ELLIPSIS);
                room.top += height;
            }
        }
        SelectObject(context, before);
        EndPaint(Handle(), &paint);
    }

    HFONT Font() const { return label.Heading ? Window().WindowFonts().heading.get() : NormalFont(); }
};

class FramePeer final : public PeerBase {
public:
    FramePeer(Frame& frame, FormWindow& form, int id) : PeerBase{frame, form}
    {
        Create(WC_BUTTONW, BS_GROUPBOX, 0, id);
    }

    void Update(Aspect aspect) override
    {
        PeerBase::Update(aspect);
        // Behind the controls that it holds, which it would cover otherwise.
        if (aspect == Aspect::Bounds)
            SetWindowPos(Handle(), HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }

    /// The room that the title needs; the height reaches to what the frame holds.
    Size Preferred(int) const override
    {
        const SIZE text = Measure(Model().Caption(), NormalFont());
        return {Twips(text.cx) + TitleSides, Twips(text.cy) + BelowTitle};
    }

protected:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM) override
    {
        if (message != WM_ERASEBKGND)
            return std::nullopt;
        // The native box draws its lines only, and the form leaves out what its controls cover.
        RECT client{};
        GetClientRect(Handle(), &client);
        FillRect(reinterpret_cast<HDC>(wParam), &client, GetSysColorBrush(COLOR_3DFACE));
        return TRUE;
    }

private:
    static constexpr int TitleSides = 270; ///< both sides together
    static constexpr int BelowTitle = 75;
};

/// Drawn here, flat, when there is time: the system's own bar draws itself at every step, which may take longer than
/// what the step is about, and glides to a higher value, so that the last one would never be seen.
class ProgressBarPeer final : public PeerBase {
public:
    ProgressBarPeer(ProgressBar& peerBar, FormWindow& form, int id) : PeerBase{peerBar, form}, bar{peerBar}
    {
        Create(PROGRESS_CLASSW, PBS_SMOOTH, 0, id);
    }

    Size Preferred(int) const override { return {3600, 255}; }

protected:
    void Sync(Aspect aspect) override
    {
        if (aspect != Aspect::Value)
            return;
        InvalidateRect(Handle(), nullptr, FALSE);
        NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, Handle(), OBJID_CLIENT, CHILDID_SELF);
    }

    std::optional<LRESULT> OnMessage(UINT message, WPARAM, LPARAM) override
    {
        if (message == PBM_GETPOS)
            return bar.Value(); // asked by screen readers
        if (message == WM_ERASEBKGND)
            return 1;
        if (message != WM_PAINT)
            return std::nullopt;
        PAINTSTRUCT paint{};
        HDC context = BeginPaint(Handle(), &paint);
        RECT room{};
        GetClientRect(Handle(), &room);
        FrameRect(context, &room, GetSysColorBrush(COLOR_BTNSHADOW));
        InflateRect(&room, -1, -1);
        RECT done = room;
        done.right = room.left + MulDiv(room.right - room.left, bar.Value(), 100);
        room.left = done.right;
        FillRect(context, &done, GetSysColorBrush(COLOR_HIGHLIGHT));
        FillRect(context, &room, GetSysColorBrush(COLOR_WINDOW));
        EndPaint(Handle(), &paint);
        return 0;
    }

private:
    ProgressBar& bar;
};

class StatusBarPeer final : public PeerBase {
public:
    StatusBarPeer(StatusBar& peerBar, FormWindow& form, int id) : PeerBase{peerBar, form}, bar{peerBar}
    {
        Create(STATUSCLASSNAMEW, SBARS_SIZEGRIP | CCS_NOPARENTALIGN | CCS_NORESIZE | CCS_NODIVIDER, 0, id);
        SetParts();
    }

    Size Preferred(int width) const override { return {width, Twips(Measure("", NormalFont()).cy) + LineRoom}; }

    void DpiChanged() override
    {
        PeerBase::DpiChanged();
        SetParts();
    }

protected:
    void Sync(Aspect aspect) override
    {
        if (aspect == Aspect::Items)
            SetParts();
    }

    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message != WM_SIZE)
            return std::nullopt;
        const LRESULT result = Default(message, wParam, lParam);
        SetParts();
        return result;
    }

private:
    static constexpr int TextRoom = 240; ///< beside a panel's text
    static constexpr int LineRoom = 120; ///< above and below it
    StatusBar& bar;

    void SetParts()
    {
        const auto& panels = bar.Panels();
        RECT client{};
        GetClientRect(Handle(), &client);
        const std::size_t count = std::max<std::size_t>(panels.size(), 1);
        std::vector<std::wstring> texts;
        for (const std::string& panel : panels)
            texts.push_back(ToNative(panel));
        const int room = client.right - SystemMetric(SM_CXVSCROLL, Dpi());
        if (count > 1) {
            int left = room - Pixels(TextRoom);
            for (std::size_t i = 0; i + 1 < count; ++i)
                left -= WidthOf(texts[i]) + Pixels(TextRoom);
            texts.back() = left > 0 ? Shortened(texts.back(), left) : std::wstring{};
            if (left <= 0)
                texts.front() = Shortened(texts.front(), room - 2 * Pixels(TextRoom));
        }
        std::vector<int> edges(count);
        int edge = room;
        for (std::size_t i = count; i-- > 0;) {
            edges[i] = edge;
            edge -= i < texts.size() ? WidthOf(texts[i]) + Pixels(TextRoom) : 0;
        }
        // The last edge runs under the size grip to the window's own.
        edges.back() = -1;
        Send(SB_SETPARTS, count, edges.data());
        for (std::size_t i = 0; i < texts.size(); ++i)
            Send(SB_SETTEXTW, i, texts[i].c_str());
    }

    std::wstring Shortened(const std::wstring& text, int width) const
    {
        return ShortenedInTheMiddle(text, [&](const std::wstring& part) { return WidthOf(part) <= width; });
    }

    int WidthOf(const std::wstring& text) const { return Measure(FromNative(text), NormalFont()).cx; }
};

/// What push buttons and check boxes share: they are clicked with the mouse, with Space and by their mnemonic.
template <class Kind>
class ClickedPeer : public PeerBase {
public:
    void OnCommand(int code, int) override
    {
        if (code == BN_CLICKED && !IsByCode())
            model.UserClicks();
    }

    bool UsesMnemonic(wchar_t letter) override
    {
        if (!HasMnemonic(letter))
            return false;
        if (TakesFocus())
            model.UserClicks();
        return true;
    }

protected:
    ClickedPeer(Kind& peerModel, FormWindow& form) : PeerBase{peerModel, form}, model{peerModel} {}

    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_LBUTTONDOWN)
            return PressIfFocused(wParam, lParam);
        return std::nullopt;
    }

    Kind& model;
};

class CheckBoxPeer final : public ClickedPeer<CheckBox> {
public:
    CheckBoxPeer(CheckBox& box, FormWindow& form, int id) : ClickedPeer{box, form}
    {
        // Not an automatic one: the model alone says what the box shows.
        Create(WC_BUTTONW, BS_CHECKBOX | BS_MULTILINE, 0, id);
        Sync(Aspect::Value);
    }

    Size Preferred(int width) const override
    {
        const SIZE text = Measure(model.Caption(), NormalFont(), width > BoxRoom ? Pixels(width - BoxRoom) : 0);
        return {Twips(text.cx) + BoxRoom, std::max(Twips(text.cy), LeastHeight)};
    }

protected:
    void Sync(Aspect aspect) override
    {
        if (aspect == Aspect::Value)
            Send(BM_SETCHECK, model.Checked() ? BST_CHECKED : BST_UNCHECKED);
        else
            PeerBase::Sync(aspect);
    }

private:
    static constexpr int BoxRoom = 330; ///< the box with the gap to its caption
    static constexpr int LeastHeight = 255;
};

class ButtonPeer final : public ClickedPeer<Button> {
public:
    ButtonPeer(Button& button, FormWindow& form, int id) : ClickedPeer{button, form}
    {
        const Role role = button.GetRole();
        Create(WC_BUTTONW, static_cast<DWORD>(role == Role::Default ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON), 0,
               role == Role::Default  ? IDOK
               : role == Role::Cancel ? IDCANCEL
                                      : id);
    }

    Size Preferred(int) const override
    {
        const SIZE text = Measure(model.Caption(), NormalFont());
        return {std::max(Twips(text.cx) + SideRoom, LeastWidth), std::max(Twips(text.cy) + TopRoom, LeastHeight)};
    }

protected:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_KILLFOCUS)
            Window().MarkDefaultButton(reinterpret_cast<HWND>(wParam));
        return ClickedPeer::OnMessage(message, wParam, lParam);
    }

private:
    static constexpr int LeastWidth = 1125;
    static constexpr int LeastHeight = 345;
    static constexpr int SideRoom = 360; ///< around the caption
    static constexpr int TopRoom = 150;
};

class UpDownPeer final : public PeerBase {
public:
    UpDownPeer(UpDown& peerArrows, FormWindow& form, int id) : PeerBase{peerArrows, form}, arrows{peerArrows}
    {
        Create(UPDOWN_CLASSW, UDS_ARROWKEYS, 0, id);
        Send(UDM_SETRANGE32, static_cast<WPARAM>(-Range), static_cast<LPARAM>(Range));
        if (const auto* box = static_cast<const PeerBase*>(arrows.Buddy().Peer()))
            Send(UDM_SETBUDDY, reinterpret_cast<WPARAM>(box->Handle()));
    }

    Size Preferred(int) const override { return {240, FieldHeight()}; }

    std::optional<LRESULT> OnNotify(NMHDR& header) override
    {
        if (header.code != static_cast<UINT>(UDN_DELTAPOS))
            return std::nullopt;
        if (!IsByCode())
            arrows.UserSteps(reinterpret_cast<const NMUPDOWN&>(header).iDelta);
        return 1;
    }

private:
    /// The number is the model's: the native one stays in the middle of a range that it never leaves.
    static constexpr int Range = 1000000;
    UpDown& arrows;
};

/// Keeps the lines and the selection of a native list or drop-down list like the model's.
class ItemControlPeer : public PeerBase {
protected:
    /// What the two kinds of native lists call the same things.
    struct Messages {
        UINT clear;
        UINT add;
        UINT select;
        UINT selected;
    };
    static constexpr int Width = 2400;

    ItemControlPeer(ItemControl& peerItems, FormWindow& form, const Messages& nativeMessages)
        : PeerBase{peerItems, form}, items{peerItems}, messages{nativeMessages}
    {
    }

    void Sync(Aspect aspect) override
    {
        if (aspect == Aspect::Items) {
            Send(WM_SETREDRAW, FALSE);
            Send(messages.clear);
            for (const std::string& item : items.Items())
                Send(messages.add, 0, Fitted(item).c_str());
            Send(WM_SETREDRAW, TRUE);
            InvalidateRect(Handle(), nullptr, TRUE);
        }
        if (aspect == Aspect::Items || aspect == Aspect::Selection)
            Send(messages.select, static_cast<WPARAM>(items.Selected()));
    }

    int NativeSelection() const { return static_cast<int>(Send(messages.selected)); }

    /// Pixels that a line's text has; 0 while that is not known.
    virtual int Room() const
    {
        constexpr int sides = 10;
        RECT client{};
        GetClientRect(Handle(), &client);
        return std::max(0, static_cast<int>(client.right) - sides);
    }
    /// The line under a point of the control; -1 when there is none.
    virtual int LineAt(POINT point) const = 0;

    std::optional<LRESULT> OnMessage(UINT message, WPARAM, LPARAM lParam) override
    {
        if (message == WM_MOUSEMOVE)
            ShowToolTip(LineAt({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}));
        return std::nullopt;
    }

private:
    ItemControl& items;
    Messages messages;
    std::string shownToolTip;

    /// A long text shortened in the middle: names often differ, and are marked, at their ends.
    std::wstring Fitted(const std::string& item) const
    {
        const int room = Room();
        return ShortenedInTheMiddle(ToNative(item), [&](const std::wstring& text) {
            return room == 0 || Measure(FromNative(text), NormalFont()).cx <= room;
        });
    }

    void ShowToolTip(int line)
    {
        const auto& all = items.Items();
        const bool isLine = line >= 0 && line < static_cast<int>(all.size());
        const std::string& item = isLine ? all[static_cast<std::size_t>(line)] : std::string{};
        const bool isShortened = isLine && Fitted(item) != ToNative(item);
        const std::string& toolTip = isShortened ? item : items.ToolTipText;
        if (toolTip == shownToolTip)
            return;
        shownToolTip = toolTip;
        Window().SetToolTip(Handle(), toolTip);
    }
};

class ListBoxPeer final : public ItemControlPeer {
public:
    ListBoxPeer(ListBox& peerList, FormWindow& form, int id)
        : ItemControlPeer{peerList, form, {LB_RESETCONTENT, LB_ADDSTRING, LB_SETCURSEL, LB_GETCURSEL}}, list{peerList}
    {
        Create(WC_LISTBOXW, LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | static_cast<DWORD>(WS_VSCROLL), WS_EX_CLIENTEDGE, id);
        Sync(Aspect::Items);
    }

    void Update(Aspect aspect) override
    {
        PeerBase::Update(aspect);
        if (aspect != Aspect::Bounds)
            return;
        // Selecting in a list that had no size yet scrolled the lines above out of sight.
        const ByCode guard{*this};
        Sync(Aspect::Items);
        Send(LB_SETTOPINDEX, 0);
        Sync(Aspect::Selection);
    }

    int LineAt(POINT point) const override
    {
        const LRESULT line = Send(LB_ITEMFROMPOINT, 0, MAKELPARAM(point.x, point.y));
        return HIWORD(line) == 0 ? LOWORD(line) : -1;
    }

    Size Preferred(int) const override
    {
        constexpr int linesInSight = 6;
        return {Width, Twips(linesInSight * Measure({}, NormalFont()).cy + 2 * SystemMetric(SM_CYEDGE, Dpi()))};
    }

    void DpiChanged() override
    {
        PeerBase::DpiChanged();
        // The control measures its lines once, with the font it had first.
        Send(LB_SETITEMHEIGHT, 0, MAKELPARAM(Measure({}, NormalFont()).cy, 0));
    }

    void OnCommand(int code, int) override
    {
        if (IsByCode())
            return;
        if (code == LBN_SELCHANGE)
            list.UserSelects(NativeSelection());
        else if (code == LBN_DBLCLK)
            list.UserActivates(NativeSelection());
    }

private:
    ListBox& list;
};

class ComboBoxPeer final : public ItemControlPeer {
public:
    ComboBoxPeer(ComboBox& peerCombo, FormWindow& form, int id)
        : ItemControlPeer{peerCombo, form, {CB_RESETCONTENT, CB_ADDSTRING, CB_SETCURSEL, CB_GETCURSEL}}, combo{
                                                                                                             peerCombo}
    {
        Create(WC_COMBOBOXW, CBS_DROPDOWNLIST | static_cast<DWORD>(WS_VSCROLL), 0, id);
        Sync(Aspect::Items);
    }

    Size Preferred(int) const override { return {Width, FieldHeight()}; }

    void Update(Aspect aspect) override
    {
        PeerBase::Update(aspect);
        if (aspect != Aspect::Bounds)
            return;
        const ByCode guard{*this};
        Sync(Aspect::Items);
    }

    int Room() const override { return std::max(0, ItemControlPeer::Room() - SystemMetric(SM_CXVSCROLL, Dpi())); }
    int LineAt(POINT) const override { return combo.Selected(); }

    void DpiChanged() override
    {
        PeerBase::DpiChanged();
        // The field is as high as a text box; the control takes the height of its text and adds its edges.
        RECT outer{};
        GetWindowRect(Handle(), &outer);
        constexpr auto field = static_cast<WPARAM>(-1);
        const auto edges = static_cast<int>(outer.bottom - outer.top) - static_cast<int>(Send(CB_GETITEMHEIGHT, field));
        Send(CB_SETITEMHEIGHT, field, static_cast<LPARAM>(Pixels(FieldHeight()) - edges));
        Send(CB_SETITEMHEIGHT, 0, static_cast<LPARAM>(Measure({}, NormalFont()).cy));
    }

    void OnCommand(int code, int) override
    {
        if (IsByCode())
            return;
        // While the list is open the arrow keys only try lines out: what counts is how it is closed.
        switch (code) {
        case CBN_DROPDOWN:
            cancelled = false;
            break;
        case CBN_SELENDCANCEL:
            cancelled = true;
            break;
        case CBN_CLOSEUP:
            if (std::exchange(cancelled, false)) {
                const ByCode guard{*this};
                Sync(Aspect::Selection);
            } else {
                combo.UserSelects(NativeSelection());
            }
            break;
        case CBN_SELCHANGE:
            if (!Send(CB_GETDROPPEDSTATE))
                combo.UserSelects(NativeSelection());
            break;
        default:
            break;
        }
    }

private:
    ComboBox& combo;
    bool cancelled{}; ///< the open list is being closed without a choice
};

template <class Kind, class Peer>
std::unique_ptr<PeerBase> TryCreate(Control& control, FormWindow& window, int id)
{
    auto* model = dynamic_cast<Kind*>(&control);
    return model != nullptr ? std::make_unique<Peer>(*model, window, id) : nullptr;
}

} // namespace

std::unique_ptr<PeerBase> CreateControlPeer(Control& control, FormWindow& window, int id)
{
    using Create = std::unique_ptr<PeerBase> (*)(Control&, FormWindow&, int);
    static constexpr Create kinds[] = {
        &TryCreate<Label, LabelPeer>,       &TryCreate<Button, ButtonPeer>,
        &TryCreate<Image, ImagePeer>,       &TryCreate<ListView, ListViewPeer>,
        &TryCreate<TreeView, TreeViewPeer>, &TryCreate<TabStrip, TabStripPeer>,
        &TryCreate<ToolBar, ToolBarPeer>,   &TryCreate<StatusBar, StatusBarPeer>,
        &TryCreate<Splitter, SplitterPeer>, &TryCreate<ProgressBar, ProgressBarPeer>,
        &TryCreate<TextBox, TextBoxPeer>,   &TryCreate<CheckBox, CheckBoxPeer>,
        &TryCreate<ListBox, ListBoxPeer>,   &TryCreate<ComboBox, ComboBoxPeer>,
        &TryCreate<Frame, FramePeer>,       &TryCreate<UpDown, UpDownPeer>,
    };
    for (const Create create : kinds) {
        if (auto peer = create(control, window, id)) {
            peer->DpiChanged();
            return peer;
        }
    }
    throw std::logic_error{"no native control for a " + std::string{control.TypeName()}};
}

} // namespace ui::win32
