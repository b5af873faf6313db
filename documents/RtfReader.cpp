// The information group of a rich text document.
#include "documents/Dates.h"
#include "documents/Portions.h"
#include "documents/Readers.h"
#include "documents/TextOf.h"

#include "platform/Utf.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace documents {
namespace {

/// Fonts, styles and lists stand before the group; whoever has more of them than this has none.
constexpr std::uint64_t MostBytes = 4u << 20;

constexpr std::pair<std::string_view, std::string Facts::*> textGroups[] = {
    {"title", &Facts::title},       {"subject", &Facts::subject},   {"author", &Facts::author},
    {"keywords", &Facts::keywords}, {"doccomm", &Facts::comments},  {"company", &Facts::company},
    {"manager", &Facts::manager},   {"category", &Facts::category},
};
constexpr std::pair<std::string_view, std::optional<Date> Facts::*> dateGroups[] = {
    {"creatim", &Facts::created},
    {"revtim", &Facts::saved},
};
constexpr std::pair<std::string_view, int platform::LocalTime::*> dateParts[] = {
    {"yr", &platform::LocalTime::year}, {"mo", &platform::LocalTime::month},   {"dy", &platform::LocalTime::day},
    {"hr", &platform::LocalTime::hour}, {"min", &platform::LocalTime::minute}, {"sec", &platform::LocalTime::second},
};
/// Characters that have a word, in other code pages than theirs too.
constexpr std::pair<std::string_view, char16_t> characterWords[] = {
    {"lquote", 0x2018}, {"rquote", 0x2019}, {"ldblquote", 0x201C}, {"rdblquote", 0x201D},
    {"endash", 0x2013}, {"emdash", 0x2014}, {"bullet", 0x2022},
};
/// Code pages of the old systems that a document may name instead of a number.
constexpr std::pair<std::string_view, std::uint32_t> characterSets[] = {
    {"ansi", WesternCodePage}, {"mac", 10000}, {"pc", 437}, {"pca", 850}};

template <class Table>
const auto* Row(const Table& table, std::string_view name)
{
    const auto found = std::ranges::find(table, name, [](const auto& row) { return row.first; });
    return found == std::end(table) ? nullptr : &found->second;
}

class InfoGroup {
public:
    InfoGroup(platform::ByteSource& source, const TextDecoder& decoder) : bytes{source}, decode{decoder} {}

    Facts Read()
    {
        for (int byte; !done && bytes.Position() < MostBytes && (byte = bytes.Get()) >= 0;) {
            switch (byte) {
            case '{':
                if (depth >= 0 && depth < MostScopes)
                    outerSizes.at(static_cast<std::size_t>(depth)) = fallbackSize;
                ++depth;
                fallback = 0;
                break;
            case '}':
                EndGroup();
                break;
            case '\\':
                Control();
                break;
            case '\r':
            case '\n':
                break;
            default:
                AddByte(static_cast<char>(byte));
            }
        }
        return std::move(facts);
    }

private:
    Portions bytes;
    const TextDecoder& decode;
    Facts facts;
    int depth{};
    int infoDepth{}; ///< of the information group; 0 before it
    int itemDepth{}; ///< of the item that is being read; 0 outside of any
    bool done{};
    bool isUnicodeVersion{}; ///< the item that comes next
    std::string Facts::* text{};
    std::optional<Date> Facts::* date{};
    platform::LocalTime time;
    std::string shown;   ///< of the item, as far as it is decoded
    std::string encoded; ///< what follows it
    std::uint32_t codePage{WesternCodePage};
    char32_t firstHalf{}; ///< of a character that takes two UTF-16 units
    int fallback{};       ///< characters to pass over: they stand for a Unicode character that was read
    int fallbackSize{1};  ///< of each Unicode character, up to the end of the group
    static constexpr int MostScopes = 64;
    std::array<int, MostScopes> outerSizes{}; ///< of the groups around it

    void AddByte(char byte)
    {
        if (text == nullptr)
            return;
        if (fallback > 0) {
            --fallback;
        } else if (encoded.size() + shown.size() < 4 * Facts::MostText) {
            encoded += byte;
            firstHalf = 0;
        }
    }
    void Flush()
    {
        shown += Decoded(encoded, codePage, decode);
        encoded.clear();
    }
    void EndGroup()
    {
        fallback = 0;
        if (itemDepth != 0 && depth == itemDepth) {
            Flush();
            // The first of several counts, some programs put the last editor into a second one; but a second one that
            // is for readers of Unicode has the characters that the first one lacks.
            if (text != nullptr && !shown.empty() && ((facts.*text).empty() || isUnicodeVersion))
                facts.*text = shown;
            isUnicodeVersion = false;
            if (date != nullptr)
                if (const auto moment = ToFileTime(time))
                    facts.*date = Date{*moment, true};
            text = nullptr;
            date = nullptr;
            itemDepth = 0;
        }
        done = infoDepth != 0 && depth <= infoDepth;
        --depth;
        if (depth >= 0 && depth < MostScopes)
            fallbackSize = outerSizes.at(static_cast<std::size_t>(depth));
    }
    void Control()
    {
        const int first = bytes.Get();
        if (first == '\'') {
            const int high = HexDigit(bytes.Get());
            const int low = HexDigit(bytes.Get());
            if (high >= 0 && low >= 0)
                AddByte(static_cast<char>(high * 16 + low));
            return;
        }
        if (!IsLetter(first)) {
            if (first == '\\' || first == '{' || first == '}')
                AddByte(static_cast<char>(first));
            else if (first == '~')
                AddByte(' ');
            else if (first == '_')
                AddByte('-');
            return;
        }
        std::string word(1, static_cast<char>(first));
        while (IsLetter(bytes.Peek()) && word.size() < 32)
            word += static_cast<char>(bytes.Get());
        const bool negative = bytes.Peek() == '-';
        if (negative)
            bytes.Get();
        std::int64_t number = 0;
        bool hasNumber = false;
        for (int digit = bytes.Peek(); digit >= '0' && digit <= '9'; digit = bytes.Peek()) {
            number = std::min<std::int64_t>(number * 10 + (bytes.Get() - '0'), 1 << 30);
            hasNumber = true;
        }
        if (bytes.Peek() == ' ')
            bytes.Get();
        Word(word, static_cast<int>(negative ? -number : number), hasNumber);
    }
    void Word(std::string_view word, int number, bool hasNumber)
    {
        if (word == "bin" && number > 0) {
            bytes.Seek(bytes.Position() + static_cast<std::uint64_t>(number));
        } else if (word == "uc" && hasNumber) {
            fallbackSize = std::clamp(number, 0, 16);
        } else if (infoDepth == 0) {
            if (word == "info")
                infoDepth = depth;
            else if (word == "ansicpg" && number > 0)
                codePage = static_cast<std::uint32_t>(number);
            else if (const auto* named = Row(characterSets, word))
                codePage = *named;
        } else if (itemDepth == 0) {
            BeginItem(word, number);
        } else if (date != nullptr) {
            if (const auto* part = Row(dateParts, word))
                time.** part = number;
        } else if (text != nullptr) {
            InText(word, number);
        }
    }
    void BeginItem(std::string_view word, int number)
    {
        if (word == "nofpages") {
            facts.pages = std::max(number, 0);
            return;
        }
        if (word == "ud")
            isUnicodeVersion = true;
        if (const auto* field = Row(textGroups, word))
            text = *field;
        else if (const auto* moment = Row(dateGroups, word))
            date = *moment;
        else
            return;
        itemDepth = depth;
        shown.clear();
        encoded.clear();
        time = {.month = 1, .day = 1};
    }
    void InText(std::string_view word, int number)
    {
        if (word == "u") {
            Flush();
            if (shown.size() < 4 * Facts::MostText)
                AddUnit(static_cast<char16_t>(number));
            fallback = fallbackSize;
        } else if (const auto* character = Row(characterWords, word)) {
            if (fallback > 0) {
                --fallback;
                return;
            }
            Flush();
            if (shown.size() < 4 * Facts::MostText)
                AddUnit(*character);
        } else if (word == "par" || word == "line") {
            AddByte('\n');
        } else if (word == "tab") {
            AddByte('\t');
        }
    }
    /// Half a pair waits for the other half.
    void AddUnit(char32_t unit)
    {
        if (firstHalf != 0 && unit >= 0xDC00 && unit < 0xE000) {
            platform::utf::Append(shown, 0x10000 + ((firstHalf - 0xD800) << 10) + (unit - 0xDC00));
            firstHalf = 0;
            return;
        }
        firstHalf = unit >= 0xD800 && unit < 0xDC00 ? unit : 0;
        if (firstHalf == 0)
            platform::utf::Append(shown, unit);
    }
    static bool IsLetter(int byte) { return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z'); }
    static int HexDigit(int byte)
    {
        if (byte >= '0' && byte <= '9')
            return byte - '0';
        const int letter = byte | 0x20;
        return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
    }
};

} // namespace

Facts ReadRtf(platform::ByteSource& bytes, const TextDecoder& decode)
{
    return InfoGroup{bytes, decode}.Read();
}

} // namespace documents
