#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// UTF-8 and UTF-16, each into the other. Half a surrogate pair (the system allows one in a file name) is carried as
/// the three bytes it would have as a character, so every UTF-16 text comes back unchanged.
namespace platform::utf {

inline constexpr char32_t Replacement = 0xFFFD;

/// One character of a UTF-8 text, or one byte that belongs to none.
struct Decoded {
    char32_t character{}; ///< Replacement when the byte is malformed
    std::size_t bytes{};
    bool valid{};

    /// UTF-16 units that it takes.
    std::size_t Units() const { return character > 0xFFFF ? 2 : 1; }
};

/// Decodes what starts at `position`, which must lie inside the text.
constexpr Decoded Decode(std::string_view text, std::size_t position)
{
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(text[position + index]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80)
        return {lead, 1, true};

    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    constexpr Decoded malformed{Replacement, 1, false};
    if (lead < 0xC2 || lead > 0xF4 || text.size() - position < length)
        return malformed;
    char32_t character = lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return malformed;
        character = character << 6 | (byte(i) & 0x3Fu);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (character < smallest[length] || character > 0x10FFFF)
        return malformed;
    return {character, length, true};
}

constexpr void Append(std::string& text, char32_t character)
{
    const auto tail = [&](int shift) { text += static_cast<char>(0x80 | (character >> shift & 0x3F)); };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0 | character >> 6);
        tail(0);
    } else if (character < 0x10000) {
        text += static_cast<char>(0xE0 | character >> 12);
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0 | character >> 18);
        tail(12);
        tail(6);
        tail(0);
    }
}

/// `Unit` is the 16-bit type of the caller: char16_t, or the system's wchar_t.
template <class Unit>
std::basic_string<Unit> ToUtf16(std::string_view text)
{
    static_assert(sizeof(Unit) == 2);
    std::basic_string<Unit> result;
    result.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const Decoded decoded = Decode(text, position);
        position += decoded.bytes;
        if (decoded.Units() == 2) {
            const char32_t offset = decoded.character - 0x10000;
            result += static_cast<Unit>(0xD800 + (offset >> 10));
            result += static_cast<Unit>(0xDC00 + (offset & 0x3FF));
        } else {
            result += static_cast<Unit>(decoded.character);
        }
    }
    return result;
}

template <class Unit>
std::string ToUtf8(std::basic_string_view<Unit> text)
{
    static_assert(sizeof(Unit) == 2);
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t unit = static_cast<char16_t>(text[i]);
        const bool leads = unit >= 0xD800 && unit < 0xDC00 && i + 1 < text.size();
        const char32_t next = leads ? static_cast<char16_t>(text[i + 1]) : 0;
        if (next >= 0xDC00 && next < 0xE000) {
            Append(result, 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
            ++i;
        } else {
            Append(result, unit);
        }
    }
    return result;
}

} // namespace platform::utf
