#include "automation/ClassFactory.h"

#include "automation/Boundary.h"
#include "automation/clsBrowser.h"

namespace automation {

HRESULT ClassFactory::QueryInterface(REFIID interfaceId, void** object) noexcept
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (interfaceId != IID_IUnknown && interfaceId != IID_IClassFactory)
        return E_NOINTERFACE;
    *object = static_cast<IClassFactory*>(this);
    return S_OK;
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID interfaceId, void** object) noexcept
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (outer)
        return CLASS_E_NOAGGREGATION;
    // The system answers this code by starting a new process for the host.
    if (session.lifetime.Ending())
        return CO_E_SERVER_STOPPING;
    return Guarded([&] {
        auto* const browser = new clsBrowser{session};
        const HRESULT outcome = browser->QueryInterface(interfaceId, object);
        browser->Release();
        return outcome;
    });
}

HRESULT ClassFactory::LockServer(BOOL lock) noexcept
{
    return Guarded([&] {
        if (!lock) {
            if (locks.empty())
                return E_UNEXPECTED;
            locks.pop_back();
            return S_OK;
        }
        if (session.lifetime.Ending())
            return CO_E_SERVER_STOPPING;
        locks.emplace_back(session.lifetime);
        return S_OK;
    });
}

} // namespace automation
