#include "ui/win32/DragOntoTree.h"

#include "ui/Form.h"
#include "ui/win32/FileOffer.h"
#include "ui/win32/TreeViewPeer.h"
#include "ui/win32/Win32Toolkit.h"

#include <utility>

namespace ui::win32 {

TreeViewPeer* DragOntoTree::Target() const
{
    TreeView* tree = source.DropTarget;
    return tree != nullptr && tree->Visible() ? static_cast<TreeViewPeer*>(tree->Peer()) : nullptr;
}

void DragOntoTree::Begin(HWND sourceWindow, ImageListHandle picture, POINT hotSpot)
{
    if (Target() == nullptr) {
        DragOut();
        return;
    }
    window = sourceWindow;
    SetCapture(window);
    constexpr UINT scrollPause = 100; // milliseconds
    SetTimer(window, Timer, scrollPause, nullptr);
    GetCursorPos(&pointer);
    if (!picture || !ImageList_BeginDrag(picture.get(), 0, hotSpot.x, hotSpot.y))
        return;
    shownPicture = std::move(picture);
    ImageList_DragEnter(nullptr, pointer.x, pointer.y);
}

void DragOntoTree::Move(LPARAM place)
{
    pointer = {GET_X_LPARAM(place), GET_Y_LPARAM(place)};
    ClientToScreen(window, &pointer);
    if (shownPicture)
        ImageList_DragMove(pointer.x, pointer.y);
    const HWND under = WindowFromPoint(pointer);
    const bool isOutside = under != nullptr && GetWindowThreadProcessId(under, nullptr) != GetCurrentThreadId();
    if (isOutside && source.DragFile) {
        End();
        DragOut();
        return;
    }
    Mark();
}

void DragOntoTree::DragOut()
{
    const std::string file = source.DragFile ? source.DragFile() : std::string{};
    if (file.empty())
        return;
    const Win32Toolkit::NativeModal modal{static_cast<Win32Toolkit&>(source.Owner().GetToolkit())};
    DragFile(file);
}

void DragOntoTree::Mark()
{
    TreeViewPeer* target = Target();
    if (target == nullptr)
        return;
    // The picture lies on the windows' own drawing: it is taken off while the tree draws.
    if (shownPicture)
        ImageList_DragShowNolock(FALSE);
    const bool canDrop = target->ShowDropTarget(pointer);
    UpdateWindow(target->Handle());
    if (shownPicture)
        ImageList_DragShowNolock(TRUE);
    // Where nothing can be dropped the pointer says so.
    SetCursor(LoadCursorW(nullptr, canDrop ? IDC_HAND : IDC_NO));
}

std::string DragOntoTree::End()
{
    const HWND released = std::exchange(window, nullptr);
    if (released == nullptr)
        return {};
    KillTimer(released, Timer);
    if (shownPicture) {
        ImageList_DragLeave(nullptr);
        ImageList_EndDrag();
        shownPicture.reset();
    }
    if (GetCapture() == released)
        ReleaseCapture();
    TreeViewPeer* target = Target();
    return target != nullptr ? target->EndDrop() : std::string{};
}

} // namespace ui::win32
