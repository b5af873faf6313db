#include "ui/win32/PeerFactory.h"

#include "ui/Frame.h"
#include "ui/ProgressBar.h"
#include "ui/UpDown.h"
#include "ui/win32/ButtonPeers.h"
#include "ui/win32/ImagePeer.h"
#include "ui/win32/ItemPeers.h"
#include "ui/win32/LabelPeer.h"
#include "ui/win32/ListViewPeer.h"
#include "ui/win32/SplitterPeer.h"
#include "ui/win32/StatusBarPeer.h"
#include "ui/win32/TabStripPeer.h"
#include "ui/win32/TextBoxPeer.h"
#include "ui/win32/ToolBarPeer.h"
#include "ui/win32/TreeViewPeer.h"

#include <stdexcept>

// The peers of the three smallest controls, and the table of all peers. Lengths of theirs are twips, at any dpi.

namespace ui::win32 {
namespace {

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

    Size Preferred(int) const override { return OwnSize; }

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
    static constexpr Size OwnSize{3600, 255};
    ProgressBar& bar;
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

    Size Preferred(int) const override { return {ArrowsWidth, FieldHeight()}; }

    std::optional<LRESULT> OnNotify(NMHDR& header) override
    {
        if (header.code != static_cast<UINT>(UDN_DELTAPOS))
            return std::nullopt;
        if (!IsByCode())
            arrows.UserSteps(reinterpret_cast<const NMUPDOWN&>(header).iDelta);
        return 1;
    }

private:
    static constexpr int ArrowsWidth = 240;
    /// The number is the model's: the native one stays in the middle of a range that it never leaves.
    static constexpr int Range = 1000000;
    UpDown& arrows;
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
