#include "platform/win32/Win32Web.h"

#include "platform/win32/Native.h"
#include "platform/win32/SystemLibrary.h"

#include <winhttp.h>

#include <algorithm>
#include <array>
#include <memory>
#include <mutex>

namespace platform::win32 {
namespace {

constexpr DWORD AutomaticProxy = 4; ///< the user's proxy script is found and run; from Windows 8.1 on
constexpr std::chrono::milliseconds Glance{20};

struct WinHttp {
    ModuleHandle library{LoadSystemLibrary(L"winhttp.dll")};
    decltype(&::WinHttpOpen) Open{};
    decltype(&::WinHttpConnect) Connect{};
    decltype(&::WinHttpOpenRequest) OpenRequest{};
    decltype(&::WinHttpCloseHandle) CloseHandle{};
    decltype(&::WinHttpSetOption) SetOption{};
    decltype(&::WinHttpSetTimeouts) SetTimeouts{};
    decltype(&::WinHttpSetStatusCallback) SetStatusCallback{};
    decltype(&::WinHttpSendRequest) SendRequest{};
    decltype(&::WinHttpReceiveResponse) ReceiveResponse{};
    decltype(&::WinHttpQueryHeaders) QueryHeaders{};
    decltype(&::WinHttpQueryDataAvailable) QueryDataAvailable{};
    decltype(&::WinHttpReadData) ReadData{};
    decltype(&::WinHttpCrackUrl) CrackUrl{};
    decltype(&::WinHttpGetIEProxyConfigForCurrentUser) GetProxyConfig{};

    /// Null when the system has no such library. It is never unloaded: its threads may still be closing a request.
    static const WinHttp* Get()
    {
        static const WinHttp* const loaded = [] {
            auto functions = std::make_unique<WinHttp>();
            return functions->LookAll() ? functions.release() : nullptr;
        }();
        return loaded;
    }

private:
    bool LookAll()
    {
        return library && Look(library, "WinHttpOpen", Open) && Look(library, "WinHttpConnect", Connect) &&
               Look(library, "WinHttpOpenRequest", OpenRequest) && Look(library, "WinHttpCloseHandle", CloseHandle) &&
               Look(library, "WinHttpSetOption", SetOption) && Look(library, "WinHttpSetTimeouts", SetTimeouts) &&
               Look(library, "WinHttpSetStatusCallback", SetStatusCallback) &&
               Look(library, "WinHttpSendRequest", SendRequest) &&
               Look(library, "WinHttpReceiveResponse", ReceiveResponse) &&
               Look(library, "WinHttpQueryHeaders", QueryHeaders) &&
               Look(library, "WinHttpQueryDataAvailable", QueryDataAvailable) &&
               Look(library, "WinHttpReadData", ReadData) && Look(library, "WinHttpCrackUrl", CrackUrl) &&
               Look(library, "WinHttpGetIEProxyConfigForCurrentUser", GetProxyConfig);
    }
};

struct InternetTraits {
    using Type = HINTERNET;
    static Type None() { return nullptr; }
    static void Close(Type handle) { WinHttp::Get()->CloseHandle(handle); }
};
using InternetHandle = Handle<InternetTraits>;

/// What the system's threads tell of a request. They may write into the buffer until they have told that the request is
/// closed, which is later than whoever made it waits for.
struct Exchange {
    ObjectHandle told{CreateEventW(nullptr, FALSE, FALSE, nullptr)};
    std::mutex mutex;
    DWORD step{};
    DWORD bytes{};
    DWORD error{};
    std::array<char, 16384> buffer{};

    void Tell(DWORD newStep, DWORD newBytes, DWORD newError)
    {
        {
            const std::lock_guard lock{mutex};
            step = newStep;
            bytes = newBytes;
            error = newError;
        }
        SetEvent(told.Get());
    }

    static void CALLBACK OnStatus(HINTERNET, DWORD_PTR context, DWORD status, void* information, DWORD length)
    {
        auto* held = reinterpret_cast<std::shared_ptr<Exchange>*>(context); // NOLINT(performance-no-int-to-ptr)
        if (held == nullptr)
            return;
        switch (status) {
        case WINHTTP_CALLBACK_STATUS_HANDLE_CLOSING: // the last news of it
            delete held;
            return;
        case WINHTTP_CALLBACK_STATUS_SENDREQUEST_COMPLETE:
        case WINHTTP_CALLBACK_STATUS_HEADERS_AVAILABLE:
            (*held)->Tell(status, 0, 0);
            return;
        case WINHTTP_CALLBACK_STATUS_DATA_AVAILABLE:
            (*held)->Tell(status, *static_cast<const DWORD*>(information), 0);
            return;
        case WINHTTP_CALLBACK_STATUS_READ_COMPLETE:
            (*held)->Tell(status, length, 0);
            return;
        case WINHTTP_CALLBACK_STATUS_REQUEST_ERROR:
            (*held)->Tell(status, 0, static_cast<const WINHTTP_ASYNC_RESULT*>(information)->dwError);
            return;
        default:
            return;
        }
    }
};

/// The system's numbers for failures of the net, as the ones that this program knows.
std::unexpected<Error> Failure(DWORD code)
{
    switch (code) {
    case ERROR_WINHTTP_TIMEOUT:
        return std::unexpected{error::Timeout};
    case ERROR_WINHTTP_NAME_NOT_RESOLVED:
    case ERROR_WINHTTP_CONNECTION_ERROR:
        return std::unexpected{error::CannotConnect};
    default:
        return std::unexpected{Error{code}};
    }
}

/// The net as the user has set it up. A proxy with a name comes first: it is all that older systems know.
InternetHandle OpenSession(const WinHttp& http)
{
    constexpr wchar_t agent[] = L"TSBrowser/2.2";
    WINHTTP_CURRENT_USER_IE_PROXY_CONFIG config{};
    InternetHandle session;
    if (http.GetProxyConfig(&config)) {
        if (config.lpszProxy != nullptr && config.lpszProxy[0] != L'\0')
            session = InternetHandle{http.Open(agent, WINHTTP_ACCESS_TYPE_NAMED_PROXY, config.lpszProxy,
                                               config.lpszProxyBypass, WINHTTP_FLAG_ASYNC)};
        for (wchar_t* text : {config.lpszAutoConfigUrl, config.lpszProxy, config.lpszProxyBypass})
            GlobalFree(text);
    }
    for (const DWORD access : {AutomaticProxy, static_cast<DWORD>(WINHTTP_ACCESS_TYPE_NO_PROXY)})
        if (!session)
            session = InternetHandle{http.Open(agent, access, nullptr, nullptr, WINHTTP_FLAG_ASYNC)};
    return session;
}

/// One request on its way.
class Request {
public:
    Request(const WinHttp& winHttp, const WebBounds& bounds, const Cancelled& cancelled)
        : http{winHttp}, bounds{bounds}, end{Clock::now() + bounds.time}, cancelled{cancelled}
    {
    }

    Result<WebReply> Run(std::string_view address)
    {
        if (const auto opened = Open(ToUtf16(address)); !opened)
            return std::unexpected{opened.error()};
        if (!http.SendRequest(request.Get(), L"Accept: */*", static_cast<DWORD>(-1), nullptr, 0, 0, 0))
            return Failure(GetLastError());
        if (const auto sent = Await(); !sent)
            return std::unexpected{sent.error()};
        if (!http.ReceiveResponse(request.Get(), nullptr))
            return Failure(GetLastError());
        if (const auto received = Await(); !received)
            return std::unexpected{received.error()};
        WebReply reply{.status = Status(), .location = Location()};
        while (reply.body.size() < bounds.bytes) {
            const auto read = ReadPiece(bounds.bytes - reply.body.size());
            if (!read)
                return std::unexpected{read.error()};
            if (*read == 0)
                break;
            reply.body.append(exchange->buffer.data(), *read);
        }
        return reply;
    }

private:
    using Clock = std::chrono::steady_clock;

    const WinHttp& http;
    const WebBounds bounds;
    const Clock::time_point end;
    const Cancelled& cancelled;
    std::shared_ptr<Exchange> exchange = std::make_shared<Exchange>();
    InternetHandle session, connection, request; // closed in the opposite order

    Result<> Open(const std::wstring& address)
    {
        URL_COMPONENTS parts{};
        parts.dwStructSize = sizeof(parts);
        parts.dwHostNameLength = parts.dwUrlPathLength = parts.dwExtraInfoLength = static_cast<DWORD>(-1);
        if (!http.CrackUrl(address.c_str(), static_cast<DWORD>(address.size()), 0, &parts))
            return std::unexpected{error::InvalidName};
        const std::wstring server{parts.lpszHostName, parts.dwHostNameLength};
        std::wstring path{parts.lpszUrlPath, parts.dwUrlPathLength};
        path.append(parts.lpszExtraInfo, parts.dwExtraInfoLength);
        path = path.substr(0, path.find(L'#'));
        session = OpenSession(http);
        if (!session)
            return Failure(GetLastError());
        const int time = static_cast<int>(std::max<long long>(bounds.time.count(), 1));
        http.SetTimeouts(session.Get(), time, time, time, time);
        connection = InternetHandle{http.Connect(session.Get(), server.c_str(), parts.nPort, 0)};
        if (!connection)
            return Failure(GetLastError());
        request = InternetHandle{http.OpenRequest(
            connection.Get(), L"GET", path.c_str(), nullptr, WINHTTP_NO_REFERER, nullptr,
            WINHTTP_FLAG_REFRESH | (parts.nScheme == INTERNET_SCHEME_HTTPS ? WINHTTP_FLAG_SECURE : 0u))};
        if (!request)
            return Failure(GetLastError());
        return Prepare();
    }

    Result<> Prepare()
    {
        DWORD never = WINHTTP_DISABLE_REDIRECTS | WINHTTP_DISABLE_COOKIES | WINHTTP_DISABLE_AUTHENTICATION;
        auto held = std::make_unique<std::shared_ptr<Exchange>>(exchange);
        void* context = held.get();
        if (!http.SetOption(request.Get(), WINHTTP_OPTION_DISABLE_FEATURE, &never, sizeof(never)) ||
            http.SetStatusCallback(request.Get(), &Exchange::OnStatus, WINHTTP_CALLBACK_FLAG_ALL_NOTIFICATIONS, 0) ==
                WINHTTP_INVALID_STATUS_CALLBACK ||
            !http.SetOption(request.Get(), WINHTTP_OPTION_CONTEXT_VALUE, &context, sizeof(context)))
            return Failure(GetLastError());
        (void)held.release(); // let go of when the request tells that it is closed
        return {};
    }

    /// Reads what has come so far into the exchange's buffer; 0 bytes at the answer's end. Asking for more than has
    /// come would let some systems fill the whole buffer before they return: of an answer that trickles, for minutes.
    Result<std::size_t> ReadPiece(std::size_t most)
    {
        if (!http.QueryDataAvailable(request.Get(), nullptr))
            return Failure(GetLastError());
        const auto available = Await();
        if (!available || *available == 0)
            return available;
        const auto room = std::min({exchange->buffer.size(), most, std::size_t{*available}});
        if (!http.ReadData(request.Get(), exchange->buffer.data(), static_cast<DWORD>(room), nullptr))
            return Failure(GetLastError());
        const auto read = Await();
        if (!read)
            return read;
        return std::min<std::size_t>(*read, room);
    }

    /// Waits for the step that was begun; the bytes that it brought.
    Result<DWORD> Await() const
    {
        while (WaitForSingleObject(exchange->told.Get(), static_cast<DWORD>(Glance.count())) != WAIT_OBJECT_0) {
            if (cancelled)
                return std::unexpected{error::Cancelled};
            if (Clock::now() >= end)
                return std::unexpected{error::Timeout};
        }
        const std::lock_guard lock{exchange->mutex};
        if (exchange->step == WINHTTP_CALLBACK_STATUS_REQUEST_ERROR)
            return Failure(exchange->error);
        // An answer that trickles brings news at every glance.
        if (cancelled)
            return std::unexpected{error::Cancelled};
        if (Clock::now() >= end)
            return std::unexpected{error::Timeout};
        return exchange->bytes;
    }

    int Status() const
    {
        DWORD status = 0;
        DWORD size = sizeof(status);
        http.QueryHeaders(request.Get(), WINHTTP_QUERY_STATUS_CODE | WINHTTP_QUERY_FLAG_NUMBER,
                          WINHTTP_HEADER_NAME_BY_INDEX, &status, &size, WINHTTP_NO_HEADER_INDEX);
        return static_cast<int>(status);
    }

    /// "" for one that is longer than any address.
    std::string Location() const
    {
        std::array<wchar_t, 4096> text{};
        DWORD size = sizeof(text);
        if (!http.QueryHeaders(request.Get(), WINHTTP_QUERY_LOCATION, WINHTTP_HEADER_NAME_BY_INDEX, text.data(), &size,
                               WINHTTP_NO_HEADER_INDEX))
            return {};
        return ToUtf8({text.data(), size / sizeof(wchar_t)});
    }
};

} // namespace

Result<WebReply> Win32Web::Get(std::string_view address, const WebBounds& bounds, const Cancelled& cancelled)
{
    const WinHttp* const http = WinHttp::Get();
    if (http == nullptr)
        return std::unexpected{error::ModuleNotFound};
    return Request{*http, bounds, cancelled}.Run(address);
}

} // namespace platform::win32
