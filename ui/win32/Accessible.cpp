#include "ui/win32/Accessible.h"

#include "pictures/win32/NativeHandle.h"
#include "ui/win32/NativeText.h"

#include <oleacc.h>

namespace ui::win32 {

void NameForReaders(HWND window, const std::string& name)
{
    if (name.empty())
        return;
    const auto services =
        pictures::win32::CreateComObject<IAccPropServices>(CLSID_AccPropServices, IID_IAccPropServices);
    if (services)
        services->SetHwndPropStr(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, PROPID_ACC_NAME,
                                 ToNative(name).c_str());
}

} // namespace ui::win32
