#pragma once

#include "ui/Geometry.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace ui {

class Button;
class Form;
class Control;
class TreeView;

/// The number of a text in the string table, kept as text in a control until the captions are loaded.
struct Tag {
    int id{};
};

/// What of a control changed by code, so that its peer can bring the native window in step. A peer reads the new
/// state from the control.
enum class Aspect {
    Caption,
    ToolTip,
    Bounds,
    Visible,
    Enabled,
    Focus,
    Value,
    Picture,
    Items,
    Selection,
    View,
    Columns,
    Scroll,
    LabelEdit
};

/// The native side of one control. The control owns it; it exists while the form's window exists.
class ControlPeer {
public:
    virtual ~ControlPeer() = default;
    virtual void Update(Aspect aspect) = 0;
    /// The size the control needs, in twips; texts that wrap may use up to `width` (0: no bound).
    virtual Size Preferred(int width) const = 0;
};

/// One control of a form: plain state, a peer while there is a window, and `std::function` members for its events.
/// Code assigns (`Set...`), which raises no event unless ui/README.md says so; the user acts (`User...`), called by the
/// peer and by tests, which changes the state and raises the event. The two are never mixed.
class Control {
public:
    Control(Form& form, Tag tag);
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control();

    /// The kind of control, as the caption loader knows it: "Label", "TabStrip", ...
    virtual std::string_view TypeName() const = 0;

    /// Set at design time: string numbers as text (TagText: caption, ToolTipText: tool tip); the caption loader turns
    /// them into Caption and ToolTip.
    std::string TagText;
    std::string ToolTipText;
    /// What a screen reader calls it, where no label stands before it; not shown. Set before the window is there.
    std::string Name;

    const std::string& Caption() const { return caption; }
    void SetCaption(std::string text);
    /// The tool tip shown; ToolTipText itself until captions are loaded.
    void SetToolTip(std::string text);

    bool Visible() const { return visible; }
    void SetVisible(bool value);
    bool Enabled() const { return enabled; }
    void SetEnabled(bool value);

    /// Place inside the form's client area.
    const Rect& Bounds() const { return bounds; }
    void SetBounds(const Rect& rect);

    /// Moves the form's focus here: LostFocus where it was, then GotFocus here, unless LostFocus moved it elsewhere.
    void SetFocus();
    bool HasFocus() const;
    std::function<void()> GotFocus;
    /// The focus went to another control of the form. The handler may take it back with SetFocus. A form that is left
    /// for another window, or closed, keeps its focus.
    std::function<void()> LostFocus;
    /// Whether Tab stops here.
    virtual bool IsTabStop() const { return false; }
    /// Whether it is one line of text high, whatever room there is.
    virtual bool HasLineHeight() const { return false; }
    /// The user moved the focus here; raises the same events as SetFocus.
    void UserFocuses();

    Size PreferredSize(int width = 0) const;

    /// The button that Enter presses while the focus is here; null: the form's default one.
    Button* EnterButton{};

    /// The tree onto whose nodes the user can drag from here; null: nothing can be dragged. The tree's Drop tells.
    TreeView* DropTarget{};

    /// The file that a drag from here offers to other programs; none, or "": nothing.
    std::function<std::string()> DragFile;

    Form& Owner() const { return form; }
    ControlPeer* Peer() const { return peer.get(); }
    void SetPeer(std::unique_ptr<ControlPeer> value);

protected:
    void Changed(Aspect aspect);

private:
    Form& form;
    std::unique_ptr<ControlPeer> peer;
    std::string caption;
    Rect bounds;
    bool visible{true};
    bool enabled{true};
};

} // namespace ui
