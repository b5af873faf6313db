#pragma once

#include "online/PageText.h"
#include "platform/Platform.h"

#include <chrono>
#include <functional>
#include <string>

namespace online {

/// A page that is loaded out of sight: fetched off the window's thread with the system's downloader and read as data.
/// No script, picture or frame of it does anything. It goes when this goes.
class HiddenPage {
public:
    /// For the whole of a page: no answer is worth a longer wait.
    static constexpr std::chrono::seconds Patience{30};
    static constexpr std::string_view Blank = "about:blank";

    explicit HiddenPage(const platform::Platform& platform)
        : jobs{platform.jobs}, web{platform.web}, locale{platform.locale}
    {
    }

    /// Ends what is under way and begins to load the page; "about:blank" is there at once. What is no web address leads
    /// nowhere.
    void Navigate(std::string address);
    void Stop() { underWay.Drop(); }
    bool Busy() const { return static_cast<bool>(underWay); }
    /// Where the page was found; the one before while another is under way. "" when the last one failed.
    const std::string& LocationURL() const { return locationUrl; }
    const PageText& Document() const { return document; }
    /// A page is there, or could not be loaded: it has no address then.
    std::function<void()> DocumentComplete;

private:
    platform::Jobs& jobs;
    platform::Web& web;
    platform::Locale& locale;
    platform::Ticket underWay;
    std::string locationUrl;
    PageText document;

    void Arrived(platform::Result<platform::WebPage> page);
};

/// What a page's bytes say: as UTF-8 when they are, else in the system's code page.
std::string PageFromBytes(std::string bytes, platform::Locale& locale);

} // namespace online
