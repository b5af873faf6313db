#pragma once

#include "automation/Application.h"
#include "automation/WindowsHeader.h"

namespace automation {

/// Has hosts come again later while a dialog waits for the user. Only calls of the browser object are put off: the
/// system's own traffic (references, creation of objects) never opens anything. Its references are not counted.
class MessageFilter final : public IMessageFilter {
public:
    explicit MessageFilter(const Application& owner) : application{owner} {}
    virtual ~MessageFilter() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return 2; }
    ULONG STDMETHODCALLTYPE Release() noexcept override { return 1; }

    DWORD STDMETHODCALLTYPE HandleInComingCall(DWORD type, HTASK caller, DWORD ticks,
                                               INTERFACEINFO* call) noexcept override;
    DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK callee, DWORD ticks, DWORD refusal) noexcept override;
    DWORD STDMETHODCALLTYPE MessagePending(HTASK callee, DWORD ticks, DWORD type) noexcept override;

private:
    const Application& application;
};

} // namespace automation
