#include "platform/win32/Win32Automation.h"

#include "platform/win32/Native.h"

namespace platform::win32 {

Result<> Win32Automation::TryCreate(std::string_view progId)
{
    CLSID classId;
    HRESULT result = CLSIDFromProgID(ToUtf16(progId).c_str(), &classId);
    IUnknown* object{};
    if (SUCCEEDED(result)) {
        result = CoCreateInstance(classId, nullptr, CLSCTX_SERVER, IID_IUnknown, reinterpret_cast<void**>(&object));
    }
    if (result == HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND))
        return std::unexpected{error::AutomationModuleNotFound};
    if (FAILED(result))
        return std::unexpected{error::CannotCreateObject};
    object->Release();
    return {};
}

} // namespace platform::win32
