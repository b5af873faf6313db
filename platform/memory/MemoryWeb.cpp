#include "platform/memory/MemoryWeb.h"

namespace platform::memory {

Result<WebReply> MemoryWeb::Get(std::string_view address, const WebBounds& bounds, const Cancelled& cancelled)
{
    if (const auto fault = faults.Enter("Web.Get", address))
        return std::unexpected{*fault};
    asked.emplace_back(address);
    if (cancelled)
        return std::unexpected{error::Cancelled};
    auto reply = server ? server(asked.back()) : Result<WebReply>{std::unexpected{error::CannotConnect}};
    if (reply)
        reply->body.resize(std::min(reply->body.size(), bounds.bytes));
    return reply;
}

} // namespace platform::memory
