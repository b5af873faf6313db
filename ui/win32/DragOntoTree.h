#pragma once

#include "ui/TreeView.h"
#include "ui/win32/NativeHandle.h"
#include "ui/win32/WindowsHeader.h"

#include <string>

namespace ui::win32 {

class TreeViewPeer;

/// A drag of the mouse from one control: onto the nodes of its drop target, or, once the pointer leaves the program's
/// windows, of its file to another program.
class DragOntoTree {
public:
    explicit DragOntoTree(Control& dragSource) : source{dragSource} {}

    bool Running() const { return window != nullptr; }
    /// Takes the mouse for `sourceWindow`. From a control without a drop target, its file is dragged at once, and the
    /// drag is over when this returns. `picture` (its first image; may be null) moves with the pointer, which holds it
    /// at `hotSpot`.
    void Begin(HWND sourceWindow, ImageListHandle picture = {}, POINT hotSpot = {});
    /// Marks the node under the pointer, whose place a mouse message of the source window tells.
    void Move(LPARAM place);
    /// Marks it again: the source window's timer of this number asks for it, so that a pointer that rests at the tree's
    /// edge scrolls on.
    void Mark();
    static constexpr UINT_PTR Timer = 0x7D0;
    /// Lets go of the mouse. The key of the node under it; "" when there is none.
    std::string End();

private:
    Control& source;
    HWND window{};
    POINT pointer{}; ///< on the screen
    ImageListHandle shownPicture;

    TreeViewPeer* Target() const;
    void DragOut();
};

} // namespace ui::win32
