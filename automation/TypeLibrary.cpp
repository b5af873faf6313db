#include "automation/TypeLibrary.h"

namespace automation {

std::wstring ProgramPath()
{
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

HRESULT LoadOwnTypeLibrary(ITypeLib** library)
{
    return LoadTypeLibEx(ProgramPath().c_str(), REGKIND_NONE, library);
}

HRESULT LoadInterfaceInfo(ITypeInfo** info)
{
    ITypeLib* library = nullptr;
    HRESULT outcome = LoadOwnTypeLibrary(&library);
    if (FAILED(outcome))
        return outcome;
    outcome = library->GetTypeInfoOfGuid(IID__clsBrowser, info);
    library->Release();
    return outcome;
}

} // namespace automation
