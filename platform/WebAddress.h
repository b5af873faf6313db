#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Addresses of pages on the web.
namespace platform::web_address {

/// Longest one, in characters: what the system's browsers take.
inline constexpr std::size_t Longest = 2048;

/// "http://" or "https://", a server's name, no more than `Longest` characters, and nothing that could leave a
/// browser's command line.
bool IsWebAddress(std::string_view text);

/// The text as a value in an address: every byte but letters, digits and "-._~" as "%XX".
std::string Encoded(std::string_view value);

/// The address that a page at `base` means by `reference`, without the mark of a place in the page ("#..."). Nothing
/// when that is no web address, or leads from https to plain http.
std::optional<std::string> Resolved(std::string_view base, std::string_view reference);

} // namespace platform::web_address
