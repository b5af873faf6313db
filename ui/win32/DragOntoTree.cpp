#include "ui/win32/DragOntoTree.h"

#include "ui/win32/TreeViewPeer.h"

#include <utility>

namespace ui::win32 {

TreeViewPeer* DragOntoTree::Target() const
{
    TreeView* tree = source.DropTarget;
    return tree != nullptr && tree->Visible() ? static_cast<TreeViewPeer*>(tree->Peer()) : nullptr;
}

void DragOntoTree::Begin(HWND sourceWindow)
{
    if (Target() == nullptr)
        return;
    window = sourceWindow;
    SetCapture(window);
    constexpr UINT scrollPause = 100; // milliseconds
    SetTimer(window, Timer, scrollPause, nullptr);
}

void DragOntoTree::Move(LPARAM place)
{
    pointer = {GET_X_LPARAM(place), GET_Y_LPARAM(place)};
    ClientToScreen(window, &pointer);
    Mark();
}

void DragOntoTree::Mark()
{
    TreeViewPeer* target = Target();
    if (target == nullptr)
        return;
    // Where nothing can be dropped the pointer says so.
    SetCursor(LoadCursorW(nullptr, target->ShowDropTarget(pointer) ? IDC_HAND : IDC_NO));
}

std::string DragOntoTree::End()
{
    const HWND released = std::exchange(window, nullptr);
    if (released == nullptr)
        return {};
    KillTimer(released, Timer);
    if (GetCapture() == released)
        ReleaseCapture();
    TreeViewPeer* target = Target();
    return target != nullptr ? target->EndDrop() : std::string{};
}

} // namespace ui::win32
