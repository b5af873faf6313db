#pragma once

#include "platform/win32/WindowsHeader.h"

#include <oleauto.h>

#include <chrono>
#include <string>

namespace prove {

/// A host of the browser, late-bound as scripts are. Needs COM on its thread. Where the system cannot suspend a class,
/// or starts a server for each of two hosts, creation breaks when it meets a process that is just coming or going, and
/// the host asks again.
class Host {
public:
    explicit Host()
    {
        CLSID id{};
        created = CLSIDFromProgID(L"TSBrowser.clsBrowser", &id);
        constexpr int mostAttempts = 6;
        for (bool again = SUCCEEDED(created); again; again = FAILED(created) && attempts < mostAttempts) {
            ++attempts;
            created =
                CoCreateInstance(id, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch, reinterpret_cast<void**>(&object));
        }
    }
    ~Host() { Release(); }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    /// Whether the object is there.
    HRESULT Created() const { return created; }
    int Attempts() const { return attempts; }
    void Release()
    {
        if (object != nullptr)
            object->Release();
        object = nullptr;
    }

    struct Answer {
        HRESULT outcome{E_FAIL};
        std::wstring text;
        std::chrono::milliseconds took{};
    };
    Answer Start(const wchar_t* caption)
    {
        constexpr DISPID start = 1;
        constexpr std::size_t count = 5;
        VARIANT arguments[count]{};
        for (VARIANT& argument : arguments) {
            V_VT(&argument) = VT_BSTR;
            V_BSTR(&argument) = SysAllocString(&argument == arguments ? caption : L"PROOF"); // the last comes first
        }
        DISPPARAMS parameters{arguments, nullptr, count, 0};
        VARIANT result{};
        Answer answer;
        const auto from = std::chrono::steady_clock::now();
        if (object != nullptr)
            answer.outcome = object->Invoke(start, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result,
                                            nullptr, nullptr);
        const auto took = std::chrono::steady_clock::now() - from;
        answer.took = std::chrono::duration_cast<std::chrono::milliseconds>(took);
        if (V_VT(&result) == VT_BSTR && V_BSTR(&result) != nullptr)
            answer.text = V_BSTR(&result);
        VariantClear(&result);
        for (VARIANT& argument : arguments)
            VariantClear(&argument);
        return answer;
    }

private:
    HRESULT created;
    int attempts{};
    IDispatch* object{};
};

} // namespace prove
