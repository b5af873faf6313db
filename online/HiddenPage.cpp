#include "online/HiddenPage.h"

#include "platform/Utf.h"

namespace online {
namespace {

bool IsUtf8(std::string_view bytes)
{
    constexpr std::size_t longestCharacter = 4;
    for (std::size_t i = 0; i < bytes.size();) {
        const auto decoded = platform::utf::Decode(bytes, i);
        // The bound may have cut the last character in two.
        if (!decoded.valid)
            return i + longestCharacter > bytes.size() && bytes.size() >= PageText::Longest;
        i += decoded.bytes;
    }
    return true;
}

} // namespace

std::string PageFromBytes(std::string bytes, platform::Locale& locale)
{
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (!IsUtf8(bytes))
        return locale.FromAnsi(bytes);
    return bytes.starts_with(mark) ? bytes.substr(mark.size()) : std::move(bytes);
}

void HiddenPage::Navigate(std::string address)
{
    Stop();
    if (address == Blank) {
        locationUrl = std::move(address);
        document = {};
        return;
    }
    underWay = jobs.Start(
        [&from = web, address = std::move(address)](const platform::Cancelled& cancelled) {
            return platform::Fetch(from, address, {Patience, PageText::Longest}, cancelled);
        },
        [this](platform::Result<platform::WebPage> page) { Arrived(std::move(page)); });
}

void HiddenPage::Arrived(platform::Result<platform::WebPage> page)
{
    const platform::Ticket over = std::move(underWay);
    locationUrl.clear();
    document = {};
    if (page) {
        document = PageText{PageFromBytes(std::move(page->body), locale)};
        if (page->status == platform::WebReply::Good)
            locationUrl = std::move(page->address);
    }
    if (DocumentComplete)
        DocumentComplete();
}

} // namespace online
