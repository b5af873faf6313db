#include "platform/Text.h"

#include "platform/Utf.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace platform::text {

namespace {

/// Capitals first, first + step ... last, whose small letters lie `offset` further on.
struct CapitalRun {
    char16_t first, last;
    int step, offset;
};

// From Unicode's simple lower-case mapping of the Latin, Greek, Cyrillic and Armenian letters below U+2000. Without
// U+0130 and U+03F4, whose small letters belong to other capitals: two different names must stay different.
constexpr CapitalRun capitalRuns[] = {
    {0xC0, 0xD6, 1, 32},       {0xD8, 0xDE, 1, 32},      {0x100, 0x12E, 2, 1},      {0x132, 0x136, 2, 1},
    {0x139, 0x147, 2, 1},      {0x14A, 0x176, 2, 1},     {0x178, 0x178, 1, -121},   {0x179, 0x17D, 2, 1},
    {0x181, 0x181, 1, 210},    {0x182, 0x184, 2, 1},     {0x186, 0x186, 1, 206},    {0x187, 0x187, 1, 1},
    {0x189, 0x18A, 1, 205},    {0x18B, 0x18B, 1, 1},     {0x18E, 0x18E, 1, 79},     {0x18F, 0x18F, 1, 202},
    {0x190, 0x190, 1, 203},    {0x191, 0x191, 1, 1},     {0x193, 0x193, 1, 205},    {0x194, 0x194, 1, 207},
    {0x196, 0x196, 1, 211},    {0x197, 0x197, 1, 209},   {0x198, 0x198, 1, 1},      {0x19C, 0x19C, 1, 211},
    {0x19D, 0x19D, 1, 213},    {0x19F, 0x19F, 1, 214},   {0x1A0, 0x1A4, 2, 1},      {0x1A6, 0x1A6, 1, 218},
    {0x1A7, 0x1A7, 1, 1},      {0x1A9, 0x1A9, 1, 218},   {0x1AC, 0x1AC, 1, 1},      {0x1AE, 0x1AE, 1, 218},
    {0x1AF, 0x1AF, 1, 1},      {0x1B1, 0x1B2, 1, 217},   {0x1B3, 0x1B5, 2, 1},      {0x1B7, 0x1B7, 1, 219},
    {0x1B8, 0x1B8, 1, 1},      {0x1BC, 0x1BC, 1, 1},     {0x1C4, 0x1C4, 1, 2},      {0x1C5, 0x1C5, 1, 1},
    {0x1C7, 0x1C7, 1, 2},      {0x1C8, 0x1C8, 1, 1},     {0x1CA, 0x1CA, 1, 2},      {0x1CB, 0x1DB, 2, 1},
    {0x1DE, 0x1EE, 2, 1},      {0x1F1, 0x1F1, 1, 2},     {0x1F2, 0x1F4, 2, 1},      {0x1F6, 0x1F6, 1, -97},
    {0x1F7, 0x1F7, 1, -56},    {0x1F8, 0x21E, 2, 1},     {0x220, 0x220, 1, -130},   {0x222, 0x232, 2, 1},
    {0x23A, 0x23A, 1, 10795},  {0x23B, 0x23B, 1, 1},     {0x23D, 0x23D, 1, -163},   {0x23E, 0x23E, 1, 10792},
    {0x241, 0x241, 1, 1},      {0x243, 0x243, 1, -195},  {0x244, 0x244, 1, 69},     {0x245, 0x245, 1, 71},
    {0x246, 0x24E, 2, 1},      {0x370, 0x372, 2, 1},     {0x376, 0x376, 1, 1},      {0x37F, 0x37F, 1, 116},
    {0x386, 0x386, 1, 38},     {0x388, 0x38A, 1, 37},    {0x38C, 0x38C, 1, 64},     {0x38E, 0x38F, 1, 63},
    {0x391, 0x3A1, 1, 32},     {0x3A3, 0x3AB, 1, 32},    {0x3CF, 0x3CF, 1, 8},      {0x3D8, 0x3E0, 2, 1},
    {0x3F7, 0x3F7, 1, 1},      {0x3F9, 0x3F9, 1, -7},    {0x3FA, 0x3FA, 1, 1},      {0x3FD, 0x3FF, 1, -130},
    {0x400, 0x40F, 1, 80},     {0x410, 0x42F, 1, 32},    {0x460, 0x480, 2, 1},      {0x48A, 0x4BE, 2, 1},
    {0x4C0, 0x4C0, 1, 15},     {0x4C1, 0x4CD, 2, 1},     {0x4D0, 0x52E, 2, 1},      {0x531, 0x556, 1, 48},
    {0x1E00, 0x1E94, 2, 1},    {0x1EA0, 0x1EFE, 2, 1},   {0x1F08, 0x1F0F, 1, -8},   {0x1F18, 0x1F1D, 1, -8},
    {0x1F28, 0x1F2F, 1, -8},   {0x1F38, 0x1F3F, 1, -8},  {0x1F48, 0x1F4D, 1, -8},   {0x1F59, 0x1F5F, 2, -8},
    {0x1F68, 0x1F6F, 1, -8},   {0x1F88, 0x1F8F, 1, -8},  {0x1F98, 0x1F9F, 1, -8},   {0x1FA8, 0x1FAF, 1, -8},
    {0x1FB8, 0x1FB9, 1, -8},   {0x1FBA, 0x1FBB, 1, -74}, {0x1FBC, 0x1FBC, 1, -9},   {0x1FC8, 0x1FCB, 1, -86},
    {0x1FCC, 0x1FCC, 1, -9},   {0x1FD8, 0x1FD9, 1, -8},  {0x1FDA, 0x1FDB, 1, -100}, {0x1FE8, 0x1FE9, 1, -8},
    {0x1FEA, 0x1FEB, 1, -112}, {0x1FEC, 0x1FEC, 1, -7},  {0x1FF8, 0x1FF9, 1, -128}, {0x1FFA, 0x1FFB, 1, -126},
    {0x1FFC, 0x1FFC, 1, -9}};

char32_t SmallLetter(char32_t character)
{
    if (character < 0x80)
        return character >= 'A' && character <= 'Z' ? character + ('a' - 'A') : character;
    const auto* run = std::ranges::lower_bound(capitalRuns, character, {}, &CapitalRun::last);
    if (run == std::end(capitalRuns) || character < run->first || (character - run->first) % unsigned(run->step) != 0)
        return character;
    return static_cast<char32_t>(static_cast<int>(character) + run->offset);
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsSign(char c)
{
    return c == '+' || c == '-';
}

std::string_view TrimmedView(std::string_view text)
{
    while (text.starts_with(' '))
        text.remove_prefix(1);
    while (text.ends_with(' '))
        text.remove_suffix(1);
    return text;
}

} // namespace

std::string Trimmed(std::string_view text)
{
    return std::string{TrimmedView(text)};
}

std::string Folded(std::string_view text)
{
    std::string folded;
    folded.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const utf::Decoded decoded = utf::Decode(text, position);
        if (decoded.valid)
            utf::Append(folded, SmallLetter(decoded.character));
        else
            folded += text[position];
        position += decoded.bytes;
    }
    return folded;
}

bool EqualIgnoringCase(std::string_view a, std::string_view b)
{
    std::size_t i = 0, j = 0;
    while (i < a.size() && j < b.size()) {
        const utf::Decoded first = utf::Decode(a, i);
        const utf::Decoded second = utf::Decode(b, j);
        if (first.valid != second.valid || SmallLetter(first.character) != SmallLetter(second.character) ||
            (!first.valid && a[i] != b[j]))
            return false;
        i += first.bytes;
        j += second.bytes;
    }
    return i == a.size() && j == b.size();
}

bool ContainsIgnoringCase(std::string_view text, std::string_view part)
{
    return Folded(text).contains(Folded(part));
}

bool EndsWithIgnoringCase(std::string_view text, std::string_view ending)
{
    return Folded(text).ends_with(Folded(ending));
}

std::vector<std::string> Split(std::string_view text, char separator)
{
    std::vector<std::string> pieces;
    for (;;) {
        const std::size_t end = text.find(separator);
        pieces.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return pieces;
        text.remove_prefix(end + 1);
    }
}

std::string Replaced(std::string text, std::string_view what, std::string_view by)
{
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
    return text;
}

std::size_t Length(std::string_view text)
{
    std::size_t units = 0;
    for (std::size_t position = 0; position < text.size();) {
        const utf::Decoded decoded = utf::Decode(text, position);
        units += decoded.Units();
        position += decoded.bytes;
    }
    return units;
}

std::string_view Left(std::string_view text, std::size_t units)
{
    std::size_t position = 0;
    while (position < text.size()) {
        const utf::Decoded decoded = utf::Decode(text, position);
        if (decoded.Units() > units)
            break;
        units -= decoded.Units();
        position += decoded.bytes;
    }
    return text.substr(0, position);
}

bool IsNumeric(std::string_view text, char decimalSeparator)
{
    text = TrimmedView(text);
    if (!text.empty() && IsSign(text.front()))
        text.remove_prefix(1);
    else if (!text.empty() && IsSign(text.back()))
        text.remove_suffix(1);
    text = TrimmedView(text);
    return std::ranges::count(text, decimalSeparator) <= 1 && std::ranges::any_of(text, IsDigit) &&
           std::ranges::all_of(text, [=](char c) { return IsDigit(c) || c == decimalSeparator; });
}

int ToInt(std::string_view text, int otherwise, int low, int high)
{
    text = TrimmedView(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    if (text.empty() || !IsDigit(text.front()))
        return std::clamp(otherwise, low, high);
    long long number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure != std::errc{}) // more digits than any number here can have
        return negative ? low : high;
    return static_cast<int>(std::clamp<long long>(negative ? -number : number, low, high));
}

bool ToBool(std::string_view text, bool otherwise)
{
    text = TrimmedView(text);
    if (EqualIgnoringCase(text, "True"))
        return true;
    if (EqualIgnoringCase(text, "False"))
        return false;
    if (!IsNumeric(text))
        return otherwise;
    return std::ranges::any_of(text, [](char c) { return c >= '1' && c <= '9'; });
}

} // namespace platform::text
