#include "search/Words.h"

#include "platform/Utf.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

namespace search {
namespace {

namespace utf = platform::utf;

/// A longer word is looked for as it stands.
constexpr std::size_t LongestMisspelt = 40;

struct Range {
    char32_t first, last;
};

bool IsIn(char32_t character, std::span<const Range> ranges)
{
    const auto range = std::ranges::lower_bound(ranges, character, {}, &Range::last);
    return range != ranges.end() && character >= range->first;
}

/// What is no letter or digit beyond ASCII: signs of Latin-1, punctuation of Armenian, Hebrew, Arabic and India,
/// currencies and symbols, the punctuation of East Asia and its kana's middle dot, emoji.
constexpr Range signs[] = {{0x80, 0xA9},     {0xAB, 0xB1},      {0xB4, 0xB4},     {0xB6, 0xB8},     {0xBB, 0xBF},
                           {0xD7, 0xD7},     {0xF7, 0xF7},      {0x55A, 0x55F},   {0x589, 0x58A},   {0x5BE, 0x5BE},
                           {0x5C0, 0x5C0},   {0x5C3, 0x5C3},    {0x5C6, 0x5C6},   {0x5F3, 0x5F4},   {0x60C, 0x60D},
                           {0x61B, 0x61F},   {0x66A, 0x66D},    {0x6D4, 0x6D4},   {0x964, 0x965},   {0x2000, 0x206F},
                           {0x20A0, 0x20CF}, {0x2190, 0x2BFF},  {0x3000, 0x3004}, {0x3008, 0x3020}, {0x3030, 0x3030},
                           {0x30FB, 0x30FB}, {0xFE00, 0xFE1F},  {0xFE30, 0xFE6F}, {0xFF00, 0xFF0F}, {0xFF1A, 0xFF20},
                           {0xFF5F, 0xFF65}, {0x1F000, 0x1FAFF}};

/// Thai, Lao, Burmese, Khmer; ideographs and kana.
constexpr Range unspaced[] = {{0x0E00, 0x0EFF}, {0x1000, 0x109F}, {0x1780, 0x17FF}, {0x2E80, 0x2FDF},
                              {0x3005, 0x3007}, {0x3021, 0x302F}, {0x3040, 0x30FF}, {0x31F0, 0x31FF},
                              {0x3400, 0x4DBF}, {0x4E00, 0x9FFF}, {0xF900, 0xFAFF}, {0x20000, 0x3FFFF}};

bool IsDigit(char32_t character)
{
    return character >= '0' && character <= '9';
}

bool IsLetter(char32_t character)
{
    if (character < 0x80)
        return (character >= 'a' && character <= 'z') || IsDigit(character);
    return !IsIn(character, signs);
}

bool IsUnspaced(char32_t character)
{
    return character >= 0x0E00 && IsIn(character, unspaced);
}

char32_t CharacterBefore(std::string_view text, std::size_t position)
{
    std::size_t start = position - 1;
    while (start > 0 && position - start < 4 && (static_cast<unsigned char>(text[start]) & 0xC0) == 0x80)
        --start;
    return utf::Decode(text, start).character;
}

std::u32string Characters(std::string_view text)
{
    std::u32string characters;
    for (std::size_t position = 0; position < text.size();) {
        const utf::Decoded decoded = utf::Decode(text, position);
        characters += decoded.character;
        position += decoded.bytes;
    }
    return characters;
}

/// Calls `use` with each word until it gives true; whether it did.
template <class Use>
bool AnyWord(std::string_view text, Use use)
{
    std::size_t start = 0;
    for (std::size_t position = 0; position <= text.size();) {
        const utf::Decoded decoded = position < text.size() ? utf::Decode(text, position) : utf::Decoded{' ', 1, true};
        if (!IsLetter(decoded.character)) {
            if (position > start && use(text.substr(start, position - start)))
                return true;
            start = position + decoded.bytes;
        }
        position += decoded.bytes;
    }
    return false;
}

/// Whether a word of this kind may be misspelt: of a short one too much would be near, another number is another thing,
/// and a sign that is a word is never nearly another.
bool MayErr(const std::u32string& word)
{
    constexpr std::size_t shortest = 4;
    return word.size() >= shortest && word.size() <= LongestMisspelt &&
           std::ranges::none_of(word, [](char32_t c) { return IsDigit(c) || IsUnspaced(c); });
}

/// Whether `text` begins with `wanted` but for one letter. What is short, and what is wrong in its last
/// letter, is held against whole words: otherwise far too many would begin nearly so.
bool BeginsNearly(const std::u32string& wanted, std::string_view word)
{
    char32_t letters[LongestMisspelt + 2];
    std::size_t count = 0;
    for (std::size_t at = 0; at < word.size() && count < wanted.size() + 2;) {
        const utf::Decoded decoded = utf::Decode(word, at);
        letters[count++] = decoded.character;
        at += decoded.bytes;
    }
    const std::u32string_view text{letters, count};
    constexpr std::size_t longEnough = 5;
    const bool isShort = wanted.size() < longEnough;
    const auto [mine, its] = std::ranges::mismatch(wanted, text);
    const auto at = static_cast<std::size_t>(mine - wanted.begin());
    const auto fits = [&](std::size_t skipMine, std::size_t skipIts) {
        if (at + skipMine > wanted.size() || at + skipIts > text.size())
            return false;
        const std::u32string_view restMine = std::u32string_view{wanted}.substr(at + skipMine);
        const std::u32string_view restIts = text.substr(at + skipIts);
        return restMine.empty() || isShort ? restIts == restMine : restIts.starts_with(restMine);
    };
    if (fits(1, 1) || fits(0, 1) || fits(1, 0))
        return true;
    return at + 1 < wanted.size() && at + 1 < text.size() && wanted[at] == text[at + 1] && wanted[at + 1] == text[at] &&
           fits(2, 2);
}

} // namespace

std::string Folded(const platform::Locale& locale, std::string_view text)
{
    constexpr std::pair<char32_t, std::string_view> plain[] = {{0xDF, "ss"}, {0xE6, "ae"},  {0xF0, "d"},  {0xF8, "o"},
                                                               {0xFE, "th"}, {0x111, "d"},  {0x127, "h"}, {0x131, "i"},
                                                               {0x142, "l"}, {0x153, "oe"}, {0x167, "t"}, {0x3C2, "σ"}};
    const std::string form = locale.SearchForm(text);
    std::string folded;
    folded.reserve(form.size());
    for (std::size_t position = 0; position < form.size();) {
        if (static_cast<unsigned char>(form[position]) < 0x80) {
            folded += form[position++];
            continue;
        }
        const utf::Decoded decoded = utf::Decode(form, position);
        const auto* found = std::ranges::find(plain, decoded.character, &std::pair<char32_t, std::string_view>::first);
        if (found != std::end(plain))
            folded += found->second;
        else
            folded.append(form, position, decoded.bytes);
        position += decoded.bytes;
    }
    return folded;
}

std::vector<std::string> WordsOf(std::string_view folded)
{
    std::vector<std::string> words;
    AnyWord(folded, [&](std::string_view word) {
        words.emplace_back(word);
        return false;
    });
    return words;
}

bool StartsWord(std::string_view text, std::size_t position)
{
    return position == 0 || !IsLetter(CharacterBefore(text, position)) ||
           (position < text.size() && IsUnspaced(utf::Decode(text, position).character));
}

bool EndsWord(std::string_view text, std::size_t position)
{
    return position >= text.size() || !IsLetter(utf::Decode(text, position).character) ||
           (position > 0 && IsUnspaced(CharacterBefore(text, position)));
}

Word::Word(std::string folded) : text{std::move(folded)}, characters{Characters(text)}
{
    if (!MayErr(characters))
        characters.clear();
}

Fit Word::In(std::string_view folded) const
{
    bool isInside = false;
    for (std::size_t at = folded.find(text); at != std::string_view::npos; at = folded.find(text, at + 1)) {
        if (StartsWord(folded, at))
            return Fit::Beginning;
        isInside = true;
    }
    if (isInside)
        return Fit::Inside;
    if (characters.empty())
        return Fit::None;
    return AnyWord(folded, [this](std::string_view word) { return BeginsNearly(characters, word); }) ? Fit::OneWrong
                                                                                                     : Fit::None;
}

} // namespace search
