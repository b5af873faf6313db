#pragma once

#include "platform/Error.h"
#include "platform/Jobs.h"

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

/// What one request may take.
struct WebBounds {
    std::chrono::milliseconds time{}; ///< from the first step to the last byte
    std::size_t bytes{};              ///< of the answer; the rest is not read
};

/// What a server answered.
struct WebReply {
    static constexpr int Good = 200; ///< the status of a page; 404 stands for none

    int status{};         ///< of HTTP
    std::string location; ///< where a redirect leads, as the server writes it
    std::string body;
};

/// The system's own downloader.
class Web {
public:
    virtual ~Web() = default;
    /// Asks for one page by its http(s) address, the way the user's settings lead to the net. Blocks, so it is for jobs
    /// alone; when the job is cancelled it ends soon (error::Cancelled). It follows no redirect, sends no name,
    /// password or cookie, keeps nothing and shows nothing. error::Timeout when the time is over before the answer is
    /// there.
    virtual Result<WebReply> Get(std::string_view address, const WebBounds& bounds, const Cancelled& cancelled) = 0;
};

/// A page, and where it was found in the end.
struct WebPage {
    std::string address;
    int status{};
    std::string body;
};

/// Get, following at most ten redirects, each to a web address and none from https to plain http; any other is
/// error::InvalidName. The bounds are for the whole.
Result<WebPage> Fetch(Web& web, std::string address, const WebBounds& bounds, const Cancelled& cancelled);

} // namespace platform
