#include "platform/WebAddress.h"

#include "platform/FileName.h"
#include "platform/Text.h"

#include <algorithm>

namespace platform::web_address {
namespace {

constexpr bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

constexpr bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// "http:" or "https:" in small letters; "" for any other text.
std::string SchemeOf(std::string_view text)
{
    const std::size_t slashes = text.find("//");
    std::string scheme = slashes == std::string_view::npos ? std::string{} : text::Folded(text.substr(0, slashes));
    return scheme == "http:" || scheme == "https:" ? scheme : std::string{};
}

/// Whether a reference begins with a scheme of its own ("file:", "javascript:").
bool HasScheme(std::string_view reference)
{
    const std::size_t colon = reference.find(':');
    return colon != std::string_view::npos && colon > 0 && std::ranges::all_of(reference.substr(0, colon), [](char c) {
               return IsLetter(c) || IsDigit(c) || c == '+' || c == '-' || c == '.';
           });
}

/// The page's address up to the "/" before its name.
std::string FolderOf(std::string_view base)
{
    const std::string_view page = base.substr(0, base.find('?'));
    const std::size_t server = page.find("//") + 2;
    const std::size_t slash = page.rfind('/');
    return std::string{slash < server || slash == std::string_view::npos ? page : page.substr(0, slash)} + "/";
}

} // namespace

bool IsWebAddress(std::string_view text)
{
    const std::size_t server = text.find("//") + 2;
    return !SchemeOf(text).empty() && text::Length(text) <= Longest && server < text.size() &&
           !std::string_view{"/?#:@"}.contains(text[server]) && !file_name::HasControlCharacter(text) &&
           text.find_first_of(" \"<>\\\x7F") == std::string_view::npos;
}

std::string Encoded(std::string_view value)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : value) {
        if (IsLetter(c) || IsDigit(c) || std::string_view{"-._~"}.contains(c)) {
            encoded += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        encoded += {'%', digits[byte >> 4], digits[byte & 15]};
    }
    return encoded;
}

std::optional<std::string> Resolved(std::string_view base, std::string_view reference)
{
    base = base.substr(0, base.find('#'));
    reference = reference.substr(0, reference.find('#'));
    const std::string scheme = SchemeOf(base);
    if (scheme.empty())
        return std::nullopt;
    std::string address;
    if (HasScheme(reference))
        address = reference;
    else if (reference.starts_with("//"))
        address = std::string{scheme}.append(reference);
    else if (reference.starts_with('/'))
        address = std::string{base.substr(0, base.find_first_of("/?", base.find("//") + 2))}.append(reference);
    else if (reference.starts_with('?') || reference.empty())
        address = std::string{base.substr(0, reference.empty() ? base.size() : base.find('?'))}.append(reference);
    else
        address = FolderOf(base).append(reference);
    if (!IsWebAddress(address) || (SchemeOf(base) == "https:" && SchemeOf(address) != "https:"))
        return std::nullopt;
    return address;
}

} // namespace platform::web_address
