#pragma once

#include "ui/Control.h"
#include "ui/Key.h"
#include "ui/win32/Dpi.h"

#include <optional>

namespace ui::win32 {

class FormWindow;

/// What every native control shares: its window as a child of the form's, its font, place and state, and the guard
/// that keeps a code assignment from coming back as a user act.
///
/// A handler of the program may close the form while the control's own message is being handled: the peer is still
/// there, but raises no more events when a `Watch` says that the form is gone.
class PeerBase : public ControlPeer {
public:
    PeerBase(const PeerBase&) = delete;
    PeerBase& operator=(const PeerBase&) = delete;
    ~PeerBase() override;

    void Update(Aspect aspect) override;

    HWND Handle() const { return window; }
    Control& Model() const { return control; }

    /// The control's WM_COMMAND: what happened, and the command number for controls that have several.
    virtual void OnCommand(int code, int id);
    /// The control's WM_NOTIFY; a value answers it.
    virtual std::optional<LRESULT> OnNotify(NMHDR& header);
    /// A key before the native control sees it. True when it was used up.
    virtual bool UsesKey(const Key& key);
    /// Whether a list hangs from the control, which Enter and Escape close before they do anything else.
    virtual bool HasOpenList() const { return false; }
    /// Alt and a letter. True when the control has it as a mnemonic and followed it.
    virtual bool UsesMnemonic(wchar_t letter);
    /// What lies behind the parts that the control leaves out when it draws (COLOR_...).
    virtual int BackgroundColour() const { return COLOR_3DFACE; }
    /// Whether this is the control's tool-tip window.
    virtual bool OwnsToolTips(HWND toolTips) const;
    /// The window moved to a monitor of another dpi, or is new: set fonts, sizes and pictures.
    virtual void DpiChanged();

    /// The peer that a window is the native control of; null for other windows.
    static PeerBase* Of(HWND window);

protected:
    PeerBase(Control& peerControl, FormWindow& peerForm);

    /// Creates the native window in the control's state. `style` gets the child styles added.
    void Create(const wchar_t* windowClass, DWORD style, DWORD extendedStyle = 0, int id = 0);

    /// The state that only this kind of control has.
    virtual void Sync(Aspect aspect);
    /// A message before the native control sees it; a value answers it.
    virtual std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam);

    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    template <class Struct>
    LRESULT Send(UINT message, WPARAM wParam, const Struct* argument) const
    {
        return Send(message, wParam, reinterpret_cast<LPARAM>(argument));
    }

    FormWindow& Window() const { return form; }
    int Dpi() const;
    int Pixels(int twips) const { return ToPixels(twips, Dpi()); }
    int Twips(int pixels) const { return ToTwipsUp(pixels, Dpi()); }
    /// A point of this control as a point of the form's client area, in twips.
    Point InForm(POINT point) const;
    /// The size of a text in a font, wrapped at `width` pixels (0: one line a paragraph), with more DT_... flags.
    SIZE Measure(const std::string& text, HFONT font, int width = 0, UINT flags = 0) const;
    HFONT NormalFont() const;
    /// Twips of a box with one line of text, so that text boxes and drop-down lists are equally high.
    int FieldHeight() const;

    /// Whether the caption has this letter as its mnemonic.
    bool HasMnemonic(wchar_t letter) const;
    /// Moves the keyboard here. False when the control that had it kept it, or when this one is gone.
    bool TakesFocus() const;
    /// WM_LBUTTONDOWN of a button: lets it go at once when the control that had the keyboard kept it, since the user
    /// may have answered a question meanwhile and the button would wait for a release that it never gets.
    LRESULT PressIfFocused(WPARAM wParam, LPARAM lParam);

    /// Code is changing the native control: its notifications are no user act.
    class ByCode {
    public:
        explicit ByCode(const PeerBase& codedPeer) : peer{codedPeer} { ++peer.byCode; }
        ByCode(const ByCode&) = delete;
        ByCode& operator=(const ByCode&) = delete;
        ~ByCode() { --peer.byCode; }

    private:
        const PeerBase& peer;
    };
    bool IsByCode() const { return byCode > 0; }

    /// The native control is changed in several steps: it draws nothing between them, and all of it once at the end.
    class DrawnLater {
    public:
        explicit DrawnLater(const PeerBase& drawnPeer) : peer{drawnPeer} { peer.Send(WM_SETREDRAW, FALSE); }
        DrawnLater(const DrawnLater&) = delete;
        DrawnLater& operator=(const DrawnLater&) = delete;
        ~DrawnLater()
        {
            peer.Send(WM_SETREDRAW, TRUE);
            InvalidateRect(peer.Handle(), nullptr, TRUE);
        }

    private:
        const PeerBase& peer;
    };

    /// A notification is being handled; tells whether the form is gone after the program's handlers ran.
    class Watch {
    public:
        explicit Watch(const PeerBase& watchedPeer) : peer{watchedPeer} { ++peer.notifying; }
        Watch(const Watch&) = delete;
        Watch& operator=(const Watch&) = delete;
        ~Watch() { --peer.notifying; }
        bool Gone() const { return peer.IsGone(); }

    private:
        const PeerBase& peer;
    };
    bool IsNotifying() const { return notifying > 0; }

private:
    Control& control;
    FormWindow& form;
    HWND window{};
    mutable int byCode{};
    mutable int notifying{};

    void Place();
    bool IsGone() const;
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
};

} // namespace ui::win32
