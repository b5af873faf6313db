#include "platform/memory/MemoryLocale.h"

#include "platform/Text.h"
#include "platform/Utf.h"

#include <compare>
#include <tuple>
#include <vector>

namespace platform::memory {

namespace {

std::string TwoDigits(int number)
{
    return {static_cast<char>('0' + number / 10 % 10), static_cast<char>('0' + number % 10)};
}

/// How one character sorts: signs before digits before letters, accents only between words that are else the same.
struct Weight {
    int kind;
    char32_t base, accent;
};

Weight WeightOf(char32_t character)
{
    // The letters without accents of U+00E0 to U+00FF; "*" for what is no letter or has no plain form.
    constexpr std::string_view plain = "aaaaaa*ceeeeiiii*nooooo*ouuuuy*y";
    char32_t base = character;
    if (character >= 0xE0 && character <= 0xFF && plain[character - 0xE0] != '*')
        base = static_cast<unsigned char>(plain[character - 0xE0]);
    const bool digit = base >= '0' && base <= '9';
    const bool letter = (base >= 'a' && base <= 'z') || base >= 0xC0;
    return {letter ? 2 : digit ? 1 : 0, base, base == character ? 0 : character};
}

} // namespace

std::string MemoryLocale::ShortDate(const LocalTime& time)
{
    return std::to_string(time.month) + '/' + std::to_string(time.day) + '/' + std::to_string(time.year);
}

std::string MemoryLocale::MediumTime(const LocalTime& time)
{
    const int hour = time.hour % 12 == 0 ? 12 : time.hour % 12;
    return TwoDigits(hour) + ':' + TwoDigits(time.minute) + (time.hour < 12 ? " AM" : " PM");
}

int MemoryLocale::Compare(std::string_view a, std::string_view b)
{
    const std::string first = text::Folded(a);
    const std::string second = text::Folded(b);
    std::strong_ordering accents = std::strong_ordering::equal;
    std::size_t i = 0, j = 0;
    while (i < first.size() && j < second.size()) {
        const utf::Decoded left = utf::Decode(first, i);
        const utf::Decoded right = utf::Decode(second, j);
        const Weight one = WeightOf(left.character);
        const Weight other = WeightOf(right.character);
        if (const auto order = std::tie(one.kind, one.base) <=> std::tie(other.kind, other.base); order != 0)
            return order < 0 ? -1 : 1;
        if (accents == 0)
            accents = one.accent <=> other.accent;
        i += left.bytes;
        j += right.bytes;
    }
    if (i < first.size() || j < second.size())
        return i < first.size() ? 1 : -1;
    return accents < 0 ? -1 : accents > 0 ? 1 : 0;
}

std::string MemoryLocale::FromAnsi(std::string_view bytes)
{
    std::string text;
    for (const char byte : bytes)
        utf::Append(text, static_cast<unsigned char>(byte));
    return text;
}

std::optional<std::string> MemoryLocale::ToAnsi(std::string_view text)
{
    std::string bytes;
    for (std::size_t position = 0; position < text.size();) {
        const utf::Decoded decoded = utf::Decode(text, position);
        if (!decoded.valid || decoded.character > 0xFF)
            return std::nullopt;
        bytes += static_cast<char>(decoded.character);
        position += decoded.bytes;
    }
    return bytes;
}

} // namespace platform::memory
