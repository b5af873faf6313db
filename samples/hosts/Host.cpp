// Starts the template browser as an office suite would, with nothing but the system's own automation.
//
//   Host.exe [CAPTION]
//
// With mingw:   i686-w64-mingw32-g++ -municode -static Host.cpp -o Host.exe -lole32 -loleaut32
// The type library in TSBrowser.exe gives an early-bound host the same method as `_clsBrowser::Start`.
#include <windows.h>

#include <oaidl.h>

#include <cstdio>
#include <cwchar>

namespace {

/// A text that the method may change: all of its arguments but the second are handed over by reference.
struct Text {
    explicit Text(const wchar_t* text) : value{SysAllocString(text)} {}
    ~Text() { SysFreeString(value); }
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;

    VARIANT ByReference()
    {
        VARIANT argument{};
        argument.vt = VT_BSTR | VT_BYREF;
        argument.pbstrVal = &value;
        return argument;
    }

    BSTR value;
};

HRESULT Start(IDispatch& browser, const wchar_t* caption)
{
    wchar_t name[] = L"Start";
    OLECHAR* names[] = {name};
    DISPID method = 0;
    HRESULT outcome = browser.GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &method);
    if (FAILED(outcome))
        return outcome;

    Text kind{L"WORD"};
    Text second{L""};
    Text third{L""};
    Text fourth{L""};
    Text title{caption};
    // The last argument comes first.
    VARIANT arguments[] = {title.ByReference(), fourth.ByReference(), third.ByReference(), second.ByReference(),
                           kind.ByReference()};
    DISPPARAMS parameters{arguments, nullptr, ARRAYSIZE(arguments), 0};
    VARIANT result{};
    // While a dialog of the browser is open, the call is refused with RPC_E_SERVERCALL_RETRYLATER: ask again.
    for (int attempt = 0; attempt < 20; ++attempt) {
        outcome = browser.Invoke(method, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result, nullptr,
                                 nullptr);
        if (outcome != RPC_E_SERVERCALL_RETRYLATER)
            break;
        Sleep(500);
    }
    VariantClear(&result);
    return outcome;
}

HRESULT StartBrowser(const wchar_t* caption)
{
    CLSID id{};
    HRESULT outcome = CLSIDFromProgID(L"TSBrowser.clsBrowser", &id);
    if (FAILED(outcome))
        return outcome;
    IDispatch* browser = nullptr;
    outcome = CoCreateInstance(id, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch, reinterpret_cast<void**>(&browser));
    if (FAILED(outcome))
        return outcome;
    // The browser comes to the front: this process has the right to it, and passes it on.
    CoAllowSetForegroundWindow(browser, nullptr);
    outcome = Start(*browser, caption);
    browser->Release(); // the window stays: it is the user's now
    return outcome;
}

} // namespace

int wmain(int count, wchar_t** arguments)
{
    HRESULT outcome = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (SUCCEEDED(outcome)) {
        outcome = StartBrowser(count > 1 ? arguments[1] : L"");
        CoUninitialize();
    }
    if (FAILED(outcome)) {
        std::printf("The browser could not be opened (%08lx).\n", static_cast<unsigned long>(outcome));
        return 1;
    }
    std::printf("The browser is open.\n");
    return 0;
}
