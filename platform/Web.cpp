#include "platform/Web.h"

#include "platform/WebAddress.h"

namespace platform {
namespace {

constexpr int MostRedirects = 10;

bool IsRedirect(int status)
{
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

} // namespace

Result<WebPage> Fetch(Web& web, std::string address, const WebBounds& bounds, const Cancelled& cancelled)
{
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + bounds.time;
    if (!web_address::IsWebAddress(address))
        return std::unexpected{error::InvalidName};
    for (int redirects = 0; redirects <= MostRedirects; ++redirects) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
        if (cancelled)
            return std::unexpected{error::Cancelled};
        if (left.count() <= 0)
            return std::unexpected{error::Timeout};
        auto reply = web.Get(address, {left, bounds.bytes}, cancelled);
        if (!reply)
            return std::unexpected{reply.error()};
        if (!IsRedirect(reply->status))
            return WebPage{std::move(address), reply->status, std::move(reply->body)};
        auto next = web_address::Resolved(address, reply->location);
        if (!next || reply->location.empty())
            break;
        address = std::move(*next);
    }
    return std::unexpected{error::InvalidName};
}

} // namespace platform
