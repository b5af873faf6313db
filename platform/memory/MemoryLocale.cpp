#include "platform/memory/MemoryLocale.h"

#include "platform/Accents.h"
#include "platform/Text.h"
#include "platform/Utf.h"

#include <algorithm>
#include <compare>
#include <iterator>
#include <tuple>
#include <utility>

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

// The double-byte code page: first bytes 81 to 9F and E0 to FC, second ones 40 to FC without 7F.
constexpr char32_t firstIdeograph = 0x4E00, leads = 60, trails = 188;

char32_t ByteAt(std::string_view bytes, std::size_t i)
{
    return static_cast<unsigned char>(bytes[i]);
}

bool IsLead(char32_t byte)
{
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

/// The number of a pair of bytes; nothing when they are none.
std::optional<char32_t> PairOf(char32_t lead, char32_t trail)
{
    if (!IsLead(lead) || trail < 0x40 || trail == 0x7F || trail > 0xFC)
        return std::nullopt;
    return (lead < 0xA0 ? lead - 0x81 : lead - 0xC1) * trails + (trail < 0x7F ? trail - 0x40 : trail - 0x41);
}

/// A letter without its accent; itself where it has none.
char32_t WithoutAccent(char32_t letter)
{
    // Of U+00E0 to U+017F; "*" for what has no plain form.
    constexpr std::string_view latin = "aaaaaa*ceeeeiiii*nooooo**uuuuy*y"
                                       "aaaaaaccccccccdd**eeeeeeeeeegggggggghh**iiiiiiiii***jjkk*llllll****"
                                       "nnnnnn***oooooo**rrrrrrsssssssstttt**uuuuuuuuuuuuwwyyyzzzzzzs";
    constexpr std::pair<char32_t, char32_t> others[] = {{0x3AC, 0x3B1}, {0x3AD, 0x3B5}, {0x3AE, 0x3B7}, {0x3AF, 0x3B9},
                                                        {0x3CA, 0x3B9}, {0x3CB, 0x3C5}, {0x3CC, 0x3BF}, {0x3CD, 0x3C5},
                                                        {0x3CE, 0x3C9}, {0x451, 0x435}, {0x439, 0x438}, {0x457, 0x456}};
    if (letter >= 0xE0 && letter - 0xE0 < latin.size() && latin[letter - 0xE0] != '*')
        return static_cast<unsigned char>(latin[letter - 0xE0]);
    const auto* found = std::ranges::find(others, letter, &std::pair<char32_t, char32_t>::first);
    return found != std::end(others) ? found->second : letter;
}

/// The kana that the narrow ones from U+FF66 on stand for.
constexpr std::u32string_view wideKana =
    U"ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワン";

} // namespace

std::string MemoryLocale::SearchForm(std::string_view text) const
{
    std::string form;
    char32_t before = 0;
    std::size_t beforeAt = 0;
    const std::string small = text::Folded(text);
    for (std::size_t position = 0; position < small.size();) {
        const utf::Decoded decoded = utf::Decode(small, position);
        position += decoded.bytes;
        char32_t letter = WithoutAccent(decoded.character);
        if (IsAccent(letter))
            continue;
        if (letter == 0xFF9E || letter == 0xFF9F) { // the marks of narrow kana belong to the sign before them
            form.resize(beforeAt);
            letter = before + (letter == 0xFF9E ? 1 : 2);
        } else if (letter >= 0xFF66 && letter - 0xFF66 < wideKana.size()) {
            letter = wideKana[letter - 0xFF66];
        } else if (letter >= 0xFF01 && letter <= 0xFF5E) {
            letter -= 0xFEE0;
            if (letter >= 'A' && letter <= 'Z')
                letter += 'a' - 'A';
        } else if (letter == 0x3000 || letter == 0xA0) {
            letter = ' ';
        }
        before = letter;
        beforeAt = form.size();
        utf::Append(form, letter);
    }
    return form;
}

std::string MemoryLocale::ShortDate(const LocalTime& time)
{
    return std::to_string(time.month) + '/' + std::to_string(time.day) + '/' + std::to_string(time.year);
}

std::string MemoryLocale::MediumTime(const LocalTime& time)
{
    const int hour = time.hour % 12 == 0 ? 12 : time.hour % 12;
    return TwoDigits(hour) + ':' + TwoDigits(time.minute) + (time.hour < 12 ? " AM" : " PM");
}

std::string MemoryLocale::SortKey(std::string_view text) const
{
    constexpr char betweenThem = 1;
    constexpr int first = 2; // kinds of character are greater than what stands between them and the accents
    std::string bases, accents;
    const auto append = [](std::string& to, char32_t character) {
        for (const int shift : {16, 8, 0})
            to += static_cast<char>(character >> shift & 0xFF);
    };
    const std::string folded = text::Folded(text);
    for (std::size_t i = 0; i < folded.size();) {
        const utf::Decoded decoded = utf::Decode(folded, i);
        i += decoded.bytes;
        const Weight weight = WeightOf(decoded.character);
        bases += static_cast<char>(first + weight.kind);
        append(bases, weight.base);
        append(accents, weight.accent);
    }
    return text.empty() ? std::string{} : bases + betweenThem + accents;
}

std::string MemoryLocale::FromAnsi(std::string_view bytes)
{
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        char32_t character = ByteAt(bytes, i);
        if (doubleByte && character >= 0x80) {
            const auto pair = PairOf(character, i + 1 < bytes.size() ? ByteAt(bytes, i + 1) : 0);
            if (IsLead(character) && i + 1 < bytes.size())
                ++i; // the system swallows the byte behind a first one, whatever it is
            character = pair ? firstIdeograph + *pair : utf::Replacement;
        }
        utf::Append(text, character);
    }
    return text;
}

std::optional<std::string> MemoryLocale::FromCodePage(std::uint32_t codePage, std::string_view bytes) const
{
    // What 1252 has in place of the control characters from 80 on; 0 where it has nothing either.
    constexpr char32_t signs[] = {0x20AC, 0,      0x201A, 0x192,  0x201E, 0x2026, 0x2020, 0x2021,
                                  0x2C6,  0x2030, 0x160,  0x2039, 0x152,  0,      0x17D,  0,
                                  0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                  0x2DC,  0x2122, 0x161,  0x203A, 0x153,  0,      0x17E,  0x178};
    if (codePage == 65001)
        return std::string{bytes};
    if (codePage != 1252)
        return std::nullopt;
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const char32_t byte = ByteAt(bytes, i);
        const char32_t sign = byte >= 0x80 && byte < 0xA0 ? signs[byte - 0x80] : 0;
        utf::Append(text, sign != 0 ? sign : byte);
    }
    return text;
}

std::optional<std::string> MemoryLocale::ToAnsi(std::string_view text)
{
    std::string bytes;
    for (std::size_t position = 0; position < text.size();) {
        const utf::Decoded decoded = utf::Decode(text, position);
        if (!decoded.valid)
            return std::nullopt;
        if (doubleByte && decoded.character >= 0x80) {
            if (decoded.character < firstIdeograph || decoded.character - firstIdeograph >= leads * trails)
                return std::nullopt;
            const char32_t pair = decoded.character - firstIdeograph;
            const char32_t lead = 0x81 + pair / trails;
            const char32_t trail = 0x40 + pair % trails;
            bytes += static_cast<char>(lead < 0xA0 ? lead : lead + 0x40);
            bytes += static_cast<char>(trail < 0x7F ? trail : trail + 1);
        } else if (decoded.character > 0xFF) {
            return std::nullopt;
        } else {
            bytes += static_cast<char>(decoded.character);
        }
        position += decoded.bytes;
    }
    return bytes;
}

} // namespace platform::memory
