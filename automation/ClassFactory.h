#pragma once

#include "automation/Session.h"
#include "automation/WindowsHeader.h"

#include <list>

namespace automation {

/// Makes the objects that hosts ask for. There is one, as long as the program runs; its references are not counted.
class ClassFactory final : public IClassFactory {
public:
    explicit ClassFactory(Session& owner) : session{owner} {}
    virtual ~ClassFactory() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return 2; }
    ULONG STDMETHODCALLTYPE Release() noexcept override { return 1; }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID interfaceId, void** object) noexcept override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) noexcept override;

private:
    Session& session;
    std::list<Lifetime::Holder> locks;
};

} // namespace automation
