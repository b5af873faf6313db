#pragma once

#include <algorithm>
#include <string_view>

/// What the fields of a profile may hold. Anything else is refused while it is typed or pasted.
namespace profiles {

constexpr bool IsAsciiLetter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

constexpr bool IsAsciiDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Whether there is one of ASCII's control characters, the last of them (DEL) included.
constexpr bool HasControlCharacter(std::string_view text)
{
    return std::ranges::any_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; });
}

/// Letters of the English alphabet and blanks.
constexpr bool IsStateText(std::string_view text)
{
    return std::ranges::all_of(text, [](char c) { return IsAsciiLetter(c) || c == ' '; });
}

/// Letters of the English alphabet, digits, blanks and hyphens.
constexpr bool IsZipText(std::string_view text)
{
    return std::ranges::all_of(text,
                               [](char c) { return IsAsciiLetter(c) || IsAsciiDigit(c) || c == ' ' || c == '-'; });
}

} // namespace profiles
