#pragma once

#include "ui/Control.h"
#include "ui/Key.h"
#include "ui/Layout.h"
#include "ui/Menu.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ui {

class Toolkit;

/// The native window of one form.
class FormPeer {
public:
    enum class Aspect { Caption, Icon, Placement, State };

    virtual ~FormPeer() = default;
    virtual void Update(Aspect aspect) = 0;
    virtual void Show() = 0;
    virtual void Hide() = 0;
    virtual Size ClientSize() const = 0;
    /// Resizes the window so that its client area has this size, and centres it on its owner or the screen.
    virtual void FitClient(Size client) = 0;
    /// Opens a pop-up menu at a point of the client area and runs the chosen entry's Click.
    virtual void ShowPopup(Menu& menu, Point at) = 0;
    virtual void BringToFront() = 0;
};

/// A window: its controls are its members, its events `std::function`s. Forms that are shown modally live on their
/// caller's stack.
class Form {
public:
    enum class Style {
        Sizable, ///< a main window: frame, menu bar, taskbar button
        Dialog,  ///< fixed size, closed with Esc
        Splash   ///< fixed size, no way to close it
    };
    enum class WindowState { Normal, Minimized, Maximized };

    Form(Toolkit& toolkit, std::string name, Style style, ui::Tag tag = {});
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;
    virtual ~Form();

    const std::string& Name() const { return name; }
    Style GetStyle() const { return style; }
    std::string TagText; ///< string number of the caption
    const std::string& Caption() const { return caption; }
    void SetCaption(std::string text);
    /// An .ico file for the title bar; "" for the program's own.
    const std::string& IconFile() const { return iconFile; }
    void SetIconFile(std::string path);

    /// For a window that the user did not ask for: it is shown without taking the focus from what he does, and belongs
    /// to the main window. Set before it is shown.
    bool ComesByItself{};

    const std::vector<Control*>& Controls() const { return controls; }
    Menu MenuBar;
    /// Pop-up menus, so that the caption loader finds them.
    std::vector<Menu*> Popups;
    /// Raised before a menu opens, to bring its entries' states up to date.
    std::function<void()> MenuOpening;

    /// Outer rectangle in the normal state: its corner in twips of the whole desktop, its size in those of the window,
    /// whose monitor may have dpi of its own.
    const Rect& Placement() const { return placement; }
    void SetPlacement(const Rect& rect);
    /// Where the user's dragging of the frame stops, outer size in twips; code may go below it.
    Size Smallest;
    WindowState State() const { return state; }
    void SetState(WindowState value);
    Size ClientSize() const { return clientSize; }

    /// A modeless window. Show creates the native window when there is none yet.
    void Show();
    void Hide();
    /// Blocks until the form is closed; the owner is the active form and gets the focus back.
    void ShowModal();
    /// Creates the native window without showing it, so that sizes can be measured.
    void Realize();
    /// Asks Closing, then unloads. True when it is closed.
    bool Close();
    /// Takes the window down without asking: it is out of sight and of reach at once, and gone, which raises Closed,
    /// when nothing of it is on the stack any more.
    void Unload();

    bool IsOpen() const { return open; }
    bool IsVisible() const { return visible; }

    /// The user logs off or the machine goes down: what is not stored when this returns is lost, and nobody can be
    /// asked.
    std::function<void()> SessionEnds;
    /// Whether the user can close it while his input is held (Toolkit::HoldInput): its Closing sees to it that what is
    /// running then ends.
    bool ClosesWhileHeld{};
    /// False keeps the form open.
    std::function<bool()> Closing;
    std::function<void()> Closed;
    std::function<void()> Resize;
    /// Keys that no control used up: true when this did.
    std::function<bool(const Key&)> KeyDown;

    /// The wheel was turned by so many notches, away from the user when positive, and no control used it.
    std::function<void(int notches)> MouseWheel;

    void ShowPopup(Menu& menu, Point at);
    void BringToFront();

    Control* ActiveControl() const { return activeControl; }
    /// The button that Enter presses when `focus` has the focus: itself, else the one that it names, else the form's
    /// default one; null when there is none.
    const Button* DefaultButton(const Control* focus) const;
    const Button* DefaultButton() const { return DefaultButton(activeControl); }

    /// Called by the peer (and by tests) for what the user or the system did.
    void UserResizes(Size client);
    void UserPlaces(const Rect& outer, WindowState newState);
    void UserCloses();
    /// A key that no native control used up; runs a menu shortcut or KeyDown. True when it was used.
    bool UserPresses(const Key& key);

    /// Keeps the form's window, its controls' native ones and its owner's hold on it while something of theirs is on
    /// the stack. Every call into a peer, every message of a window and every yield is a use.
    class Use {
    public:
        explicit Use(Form& usedForm) : form{usedForm} { ++form.uses; }
        Use(const Use&) = delete;
        Use& operator=(const Use&) = delete;
        ~Use() { form.EndUse(); }

    private:
        Form& form;
    };

    FormPeer* Peer() const { return peer.get(); }
    Toolkit& GetToolkit() const { return toolkit; }

protected:
    /// The dialog's content; the window takes the size it needs (`width` bounds wrapping texts, twips).
    void Layout(Cell content, int width = 0);

private:
    friend class Control;
    friend class Toolkit;
    Toolkit& toolkit;
    std::string name;
    Style style;
    std::string caption;
    std::string iconFile;
    std::vector<Control*> controls;
    std::unique_ptr<FormPeer> peer;
    std::optional<Cell> layout;
    int layoutWidth{};
    Rect placement;
    Size clientSize;
    WindowState state{WindowState::Normal};
    bool open{};
    bool visible{};
    bool closing{};
    int uses{};
    Control* activeControl{};
    Control* focusTold{}; ///< the control that was told last that it has the focus
    bool tellingFocus{};

    void PlaceControls();
    /// The last use of a form that was closed takes the window down.
    void EndUse() noexcept;
    /// Raises LostFocus and GotFocus until the controls know where the focus is.
    void TellFocus();
    void Update(FormPeer::Aspect aspect);
};

} // namespace ui
