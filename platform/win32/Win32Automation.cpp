#include "platform/win32/Win32Automation.h"

#include "platform/win32/Native.h"

#include <algorithm>

namespace platform::win32 {

Result<> Win32Automation::TryCreate(std::string_view progId)
{
    CLSID classId;
    if (FAILED(CLSIDFromProgID(ToUtf16(progId).c_str(), &classId)))
        return std::unexpected{error::CannotCreateObject};
    IUnknown* object{};
    const HRESULT result =
        CoCreateInstance(classId, nullptr, CLSCTX_SERVER, IID_IUnknown, reinterpret_cast<void**>(&object));
    if (SUCCEEDED(result)) {
        object->Release();
        return {};
    }
    // Not there, or no server that would make one. The missing module comes as it is, like every other failure.
    const auto notThere = {REGDB_E_CLASSNOTREG,
                           CO_E_APPNOTFOUND,
                           CO_E_DLLNOTFOUND,
                           CO_E_SERVER_EXEC_FAILURE,
                           CLASS_E_CLASSNOTAVAILABLE,
                           HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND),
                           HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND)};
    if (std::ranges::find(notThere, result) != notThere.end())
        return std::unexpected{error::CannotCreateObject};
    return std::unexpected{Error{static_cast<std::uint32_t>(result)}};
}

} // namespace platform::win32
