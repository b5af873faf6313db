#include "ui/win32/ItemControlPeer.h"

#include "ui/win32/NativeText.h"

namespace ui::win32 {

void ItemControlPeer::Sync(Aspect aspect)
{
    if (aspect == Aspect::Items) {
        Send(WM_SETREDRAW, FALSE);
        Send(messages.clear);
        for (const std::string& item : control.Items())
            Send(messages.add, 0, ToNative(item).c_str());
        Send(WM_SETREDRAW, TRUE);
        InvalidateRect(Handle(), nullptr, TRUE);
    }
    if (aspect == Aspect::Items || aspect == Aspect::Selection)
        Send(messages.select, static_cast<WPARAM>(control.Selected()));
}

} // namespace ui::win32
