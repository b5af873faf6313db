#include "ui/win32/Accessible.h"

#include "pictures/win32/NativeHandle.h"
#include "ui/win32/NativeText.h"

#include <oleacc.h>

#include <iterator>

namespace ui::win32 {
namespace {

pictures::win32::ComPointer<IAccPropServices> Services()
{
    return pictures::win32::CreateComObject<IAccPropServices>(CLSID_AccPropServices, IID_IAccPropServices);
}

constexpr auto Client = static_cast<DWORD>(OBJID_CLIENT);

} // namespace

void NameForReaders(HWND window, const std::string& name)
{
    if (name.empty())
        return;
    if (const auto services = Services())
        services->SetHwndPropStr(window, Client, CHILDID_SELF, PROPID_ACC_NAME, ToNative(name).c_str());
}

void RoleForReaders(HWND window, LONG role)
{
    VARIANT value{};
    value.vt = VT_I4;
    value.lVal = role;
    if (const auto services = Services())
        services->SetHwndProp(window, Client, CHILDID_SELF, PROPID_ACC_ROLE, value);
}

void ForgetForReaders(HWND window)
{
    const MSAAPROPID told[] = {PROPID_ACC_NAME, PROPID_ACC_ROLE};
    if (const auto services = Services())
        services->ClearHwndProps(window, Client, CHILDID_SELF, told, static_cast<int>(std::size(told)));
}

} // namespace ui::win32
