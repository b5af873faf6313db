#include "automation/MessageFilter.h"

namespace automation {
namespace {

/// Methods 0 to 2 of every interface are those of IUnknown.
constexpr WORD FirstOwnMethod = 3;

bool CallsBrowser(const INTERFACEINFO* call)
{
    if (!call)
        return true;
    return call->wMethod >= FirstOwnMethod && (call->iid == IID_IDispatch || call->iid == IID__clsBrowser);
}

} // namespace

HRESULT MessageFilter::QueryInterface(REFIID interfaceId, void** object) noexcept
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (interfaceId != IID_IUnknown && interfaceId != IID_IMessageFilter)
        return E_NOINTERFACE;
    *object = static_cast<IMessageFilter*>(this);
    return S_OK;
}

DWORD MessageFilter::HandleInComingCall(DWORD, HTASK, DWORD, INTERFACEINFO* call) noexcept
{
    return CallsBrowser(call) && application.ModalActive() ? SERVERCALL_RETRYLATER : SERVERCALL_ISHANDLED;
}

DWORD MessageFilter::RetryRejectedCall(HTASK, DWORD, DWORD) noexcept
{
    constexpr DWORD giveUp = static_cast<DWORD>(-1);
    return giveUp;
}

DWORD MessageFilter::MessagePending(HTASK, DWORD, DWORD) noexcept
{
    return PENDINGMSG_WAITDEFPROCESS;
}

} // namespace automation
