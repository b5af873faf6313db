#pragma once

#include "automation/Session.h"
#include "automation/WindowsHeader.h"

#include <string>

namespace automation {

/// The object that a host creates. Early-bound hosts call `Start` directly; script hosts come through `Invoke`, which
/// takes whatever a script has at hand (literals, variables, numbers) as text.
class clsBrowser final : public _clsBrowser {
public:
    /// Starts with one reference. `owner` outlives it.
    explicit clsBrowser(Session& owner) : session{owner}, holder{owner.lifetime} {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override;
    ULONG STDMETHODCALLTYPE Release() noexcept override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) noexcept override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) noexcept override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) noexcept override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* arguments,
                                     VARIANT* result, EXCEPINFO* exception, UINT* badArgument) noexcept override;

    /// The arguments are by reference because such hosts expect it; none is changed.
    HRESULT STDMETHODCALLTYPE Start(BSTR* hostKind, BSTR arg2, BSTR* arg3, BSTR* arg4, BSTR* caption,
                                    BSTR* result) noexcept override;

private:
    ~clsBrowser() = default;

    HRESULT Open(std::string hostKind, std::string arg2, std::string arg3, std::string arg4, std::string caption,
                 BSTR& answer);

    Session& session;
    Lifetime::Holder holder;
    LONG references{1};
};

} // namespace automation
