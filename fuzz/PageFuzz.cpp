// Pages of any bytes, as a server may send them, and addresses and texts of any bytes that go into a page of ours.
#include "fuzz/Check.h"
#include "online/BannerPage.h"
#include "online/BugReport.h"
#include "online/PageText.h"
#include "platform/Text.h"
#include "platform/WebAddress.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace platform;
using fuzz::Check;

namespace {

/// Text that is made of what means something in a page more often than of any bytes.
std::string TakeHtml(FuzzedDataProvider& input)
{
    constexpr std::string_view pieces[] = {
        // clang-format off
        "<", ">", "\"", "'", "=", "/", " ", "<!--", "-->", "<input ", "name=F ", "value=", "<title>", "</title>",
        "<script>", "</script", "&amp;", "&#x41;", "<textarea name=F>", "</textarea>", "<a href=", "<img src=", "</a>",
        "id=F ",
        // clang-format on
    };
    std::string html;
    while (input.remaining_bytes() > 0 && html.size() < 4096) {
        const auto next = input.ConsumeIntegral<std::uint8_t>();
        if (next < std::size(pieces) * 8)
            html += pieces[next % std::size(pieces)];
        else
            html += input.ConsumeRandomLengthString(8);
    }
    return html;
}

bool IsPlain(std::string_view text)
{
    return std::ranges::none_of(
        text, [](char c) { return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\r' && c != '\n'; });
}

/// The page with what stands in quotes and between tags taken out.
std::string Skeleton(std::string_view page)
{
    std::string tags;
    char quote = 0;
    bool inTag = false;
    for (const char c : page) {
        if (quote != 0) {
            quote = c == quote ? '\0' : quote;
        } else if (inTag && (c == '"' || c == '\'')) {
            quote = c;
        } else if (c == '<' || c == '>') {
            inTag = c == '<';
            tags += c;
        } else if (inTag) {
            tags += c;
        }
    }
    return tags;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    FuzzedDataProvider input{bytes, size};
    const std::string a = input.ConsumeRandomLengthString(64);
    const std::string b = input.ConsumeRandomLengthString(64);
    const auto longest = input.ConsumeIntegralInRange<std::size_t>(0, 64);
    const std::string html = TakeHtml(input);

    const online::PageText page{html};
    const std::string value = page.Value("f", longest);
    Check(text::Length(value) <= longest, "a value keeps its bound");
    Check(page.Has("F") || value.empty(), "there is no value without an element");
    for (const std::string& read : {value, page.Title(), page.FirstPicture().source, page.FirstPicture().link})
        Check(IsPlain(read), "a value is plain text");
    Check(online::PageText{"<!-- " + a + " -->" + html}.Has("F") || a.contains("--") || !page.Has("F"),
          "a comment in front changes nothing");

    static const std::string banner = Skeleton(online::BannerPage("", ""));
    Check(Skeleton(online::BannerPage(a, b)) == banner, "the same tags for any picture and link");
    static const std::string report = Skeleton(online::BugReportPage({{"", ""}}));
    Check(Skeleton(online::BugReportPage({{a, b}})) == report, "the same tags for any fact");
    const online::PageText written{online::BannerPage(a, b)};
    Check(text::Length(written.FirstPicture().source) == text::Length(a), "a picture's path is read back");

    const std::string encoded = web_address::Encoded(a);
    Check(encoded.find_first_of("&=?#/ \"<>\\") == std::string::npos && IsPlain(encoded), "a value stays a value");
    if (const auto resolved = web_address::Resolved("https://a.example/b?c", a))
        Check(web_address::IsWebAddress(*resolved) && text::Folded(*resolved).starts_with("https://"),
              "a reference leads nowhere else");
    return 0;
}
