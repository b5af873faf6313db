#include "automation/clsBrowser.h"

#include "automation/Boundary.h"
#include "automation/TypeLibrary.h"
#include "platform/Utf.h"

#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace automation {
namespace {

constexpr DISPID StartMember = 1;
constexpr UINT StartArguments = 5;

std::string TextOf(BSTR text)
{
    // An empty text may be a null pointer.
    return text ? platform::utf::ToUtf8(std::wstring_view{text, SysStringLen(text)}) : std::string{};
}

HRESULT ToBstr(const std::string& text, BSTR& result)
{
    const std::wstring wide = platform::utf::ToUtf16<wchar_t>(text);
    result = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    return result ? S_OK : E_OUTOFMEMORY;
}

/// The place of a parameter in the list: positional arguments stand in reverse order at the end, named ones in front.
std::optional<UINT> IndexOf(const DISPPARAMS& arguments, UINT parameter)
{
    for (UINT i = 0; i < arguments.cNamedArgs; ++i)
        if (arguments.rgdispidNamedArgs[i] == static_cast<DISPID>(parameter))
            return i;
    if (parameter < arguments.cArgs - arguments.cNamedArgs)
        return arguments.cArgs - 1 - parameter;
    return std::nullopt;
}

/// An argument as text. A script's variable comes as a reference to a variant that may hold anything; the system's own
/// dispatcher refuses that for a by-reference string, so all arguments are turned into text here.
HRESULT TextArgument(const DISPPARAMS& arguments, UINT parameter, LCID locale, std::string& text, UINT& index)
{
    const std::optional<UINT> found = IndexOf(arguments, parameter);
    if (!found)
        return DISP_E_PARAMNOTOPTIONAL;
    index = *found;
    VARIANT& argument = arguments.rgvarg[index];
    if (V_VT(&argument) == VT_ERROR && V_ERROR(&argument) == DISP_E_PARAMNOTFOUND)
        return DISP_E_PARAMNOTOPTIONAL;

    VARIANT asText;
    VariantInit(&asText);
    const HRESULT outcome = VariantChangeTypeEx(&asText, &argument, locale, 0, VT_BSTR);
    if (FAILED(outcome))
        return outcome == E_OUTOFMEMORY ? outcome : DISP_E_TYPEMISMATCH;
    const HRESULT read = Guarded([&] {
        text = TextOf(V_BSTR(&asText));
        return S_OK;
    });
    VariantClear(&asText);
    return read;
}

} // namespace

HRESULT clsBrowser::QueryInterface(REFIID interfaceId, void** object) noexcept
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (interfaceId != IID_IUnknown && interfaceId != IID_IDispatch && interfaceId != IID__clsBrowser)
        return E_NOINTERFACE;
    *object = static_cast<_clsBrowser*>(this);
    AddRef();
    return S_OK;
}

ULONG clsBrowser::AddRef() noexcept
{
    return static_cast<ULONG>(InterlockedIncrement(&references));
}

ULONG clsBrowser::Release() noexcept
{
    const LONG left = InterlockedDecrement(&references);
    if (left == 0)
        delete this;
    return static_cast<ULONG>(left);
}

HRESULT clsBrowser::GetTypeInfoCount(UINT* count) noexcept
{
    if (!count)
        return E_POINTER;
    *count = 1;
    return S_OK;
}

HRESULT clsBrowser::GetTypeInfo(UINT index, LCID, ITypeInfo** info) noexcept
{
    if (!info)
        return E_POINTER;
    *info = nullptr;
    if (index != 0)
        return DISP_E_BADINDEX;
    return Guarded([&] { return LoadInterfaceInfo(info); });
}

HRESULT clsBrowser::GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) noexcept
{
    if (reserved != IID_NULL)
        return DISP_E_UNKNOWNINTERFACE;
    ITypeInfo* info = nullptr;
    HRESULT outcome = GetTypeInfo(0, locale, &info);
    if (FAILED(outcome))
        return outcome;
    outcome = info->GetIDsOfNames(names, count, ids);
    info->Release();
    return outcome;
}

HRESULT clsBrowser::Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* arguments,
                           VARIANT* result, EXCEPINFO*, UINT* badArgument) noexcept
{
    if (reserved != IID_NULL)
        return DISP_E_UNKNOWNINTERFACE;
    if (member != StartMember || !(flags & DISPATCH_METHOD))
        return DISP_E_MEMBERNOTFOUND;
    if (!arguments)
        return E_POINTER;
    if (arguments->cArgs != StartArguments || arguments->cNamedArgs > arguments->cArgs)
        return DISP_E_BADPARAMCOUNT;

    return Guarded([&] {
        std::array<std::string, StartArguments> text;
        for (UINT i = 0; i < StartArguments; ++i) {
            UINT index = 0;
            const HRESULT read = TextArgument(*arguments, i, locale, text[i], index);
            if (FAILED(read)) {
                if (badArgument)
                    *badArgument = index;
                return read;
            }
        }
        BSTR answer = nullptr;
        const HRESULT outcome = Open(text[0], text[1], text[2], text[3], text[4], answer);
        if (FAILED(outcome) || !result) {
            SysFreeString(answer);
            return outcome;
        }
        V_VT(result) = VT_BSTR;
        V_BSTR(result) = answer;
        return S_OK;
    });
}

HRESULT clsBrowser::Start(BSTR* hostKind, BSTR arg2, BSTR* arg3, BSTR* arg4, BSTR* caption, BSTR* result) noexcept
{
    if (!hostKind || !arg3 || !arg4 || !caption || !result)
        return E_POINTER;
    *result = nullptr;
    return Guarded(
        [&] { return Open(TextOf(*hostKind), TextOf(arg2), TextOf(*arg3), TextOf(*arg4), TextOf(*caption), *result); });
}

HRESULT clsBrowser::Open(std::string hostKind, std::string arg2, std::string arg3, std::string arg4,
                         std::string caption, BSTR& answer)
{
    // The message filter says so before, where the system asks it; a call from inside this process passes it by.
    if (session.application.ModalActive())
        return RPC_E_SERVERCALL_RETRYLATER;
    return ToBstr(
        session.Start(std::move(hostKind), std::move(arg2), std::move(arg3), std::move(arg4), std::move(caption)),
        answer);
}

} // namespace automation
