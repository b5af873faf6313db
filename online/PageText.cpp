#include "online/PageText.h"

#include "platform/Text.h"
#include "platform/Utf.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace online {
namespace {

using platform::text::EqualIgnoringCase;
using platform::text::Folded;

constexpr std::string_view Blanks = " \t\r\n\f";

struct NamedCharacter {
    std::string_view name;
    char32_t character;
};
constexpr NamedCharacter namedCharacters[] = {
    {"amp", '&'},      {"lt", '<'},       {"gt", '>'},        {"quot", '"'},     {"apos", '\''},    {"nbsp", ' '},
    {"copy", 0xA9},    {"reg", 0xAE},     {"trade", 0x2122},  {"euro", 0x20AC},  {"pound", 0xA3},   {"sect", 0xA7},
    {"laquo", 0xAB},   {"raquo", 0xBB},   {"lsquo", 0x2018},  {"rsquo", 0x2019}, {"ldquo", 0x201C}, {"rdquo", 0x201D},
    {"ndash", 0x2013}, {"mdash", 0x2014}, {"hellip", 0x2026}, {"bull", 0x2022},  {"Auml", 0xC4},    {"auml", 0xE4},
    {"Ouml", 0xD6},    {"ouml", 0xF6},    {"Uuml", 0xDC},     {"uuml", 0xFC},    {"szlig", 0xDF},   {"Eacute", 0xC9},
    {"eacute", 0xE9},  {"egrave", 0xE8},  {"ecirc", 0xEA},    {"agrave", 0xE0},  {"ccedil", 0xE7},  {"ntilde", 0xF1},
};

/// The character that a reference stands for, given what is between its "&" and ";".
std::optional<char32_t> Referenced(std::string_view reference)
{
    if (!reference.starts_with('#')) {
        const auto found = std::ranges::find(namedCharacters, reference, &NamedCharacter::name);
        return found == std::end(namedCharacters) ? std::nullopt : std::optional{found->character};
    }
    reference.remove_prefix(1);
    const bool isHex = reference.starts_with('x') || reference.starts_with('X');
    if (isHex)
        reference.remove_prefix(1);
    if (reference.empty() || reference.size() > 7)
        return std::nullopt;
    char32_t number = 0;
    for (const char c : Folded(reference)) {
        const int digit = c >= '0' && c <= '9' ? c - '0' : isHex && c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
        if (digit < 0)
            return std::nullopt;
        number = number * (isHex ? 16 : 10) + static_cast<char32_t>(digit);
    }
    const bool isCharacter = number > 0 && number <= 0x10FFFF && (number < 0xD800 || number > 0xDFFF);
    return isCharacter ? number : platform::utf::Replacement;
}

/// Line ends and tabs stay; other control characters are blanks, and so are the marks that turn the direction of
/// writing, by which an address could be made to look like another.
bool IsPlain(char32_t c)
{
    if (c == '\t' || c == '\n' || c == '\r')
        return true;
    return c >= 0x20 && c != 0x7F && (c < 0x80 || c > 0x9F) && (c < 0x202A || c > 0x202E) && (c < 0x2066 || c > 0x2069);
}

/// Bytes as they stand in the page, as text.
std::string Plain(std::string_view raw)
{
    constexpr std::size_t longestReference = 9;
    std::string text;
    text.reserve(raw.size());
    for (std::size_t i = 0; i < raw.size();) {
        auto decoded = platform::utf::Decode(raw, i);
        if (decoded.character == '&') {
            const std::size_t end = raw.substr(i + 1, longestReference + 1).find(';');
            const auto character = end == std::string_view::npos ? std::nullopt : Referenced(raw.substr(i + 1, end));
            if (character) {
                decoded.character = *character;
                decoded.bytes = end + 2;
            }
        }
        platform::utf::Append(text, IsPlain(decoded.character) ? decoded.character : U' ');
        i += decoded.bytes;
    }
    return text;
}

} // namespace

/// Walks once through a page.
class PageReader {
public:
    PageReader(std::string_view html, PageText& result) : rest{html.substr(0, PageText::Longest)}, page{result} {}

    void Read()
    {
        while (true) {
            const std::size_t open = rest.find('<');
            if (open == std::string_view::npos)
                return;
            rest.remove_prefix(open + 1);
            if (rest.starts_with("!--"))
                SkipPast("-->", 3);
            else if (rest.starts_with('!') || rest.starts_with('?'))
                SkipPast(">", 0);
            else if (!rest.empty() && (IsLetter(rest[0]) || rest[0] == '/'))
                ReadTag();
        }
    }

private:
    struct Attribute {
        std::string_view name, value;
    };

    std::string_view rest;
    PageText& page;
    std::string link; ///< of the "a" that is open
    bool hasTitle{};

    static bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

    void SkipPast(std::string_view mark, std::size_t from)
    {
        const std::size_t found = rest.find(mark, from);
        rest.remove_prefix(found == std::string_view::npos ? rest.size() : found + mark.size());
    }

    std::string_view TakeUntil(std::string_view marks)
    {
        const std::size_t length = std::min(rest.find_first_of(marks), rest.size());
        const std::string_view taken = rest.substr(0, length);
        rest.remove_prefix(length);
        return taken;
    }

    void SkipBlanks() { rest.remove_prefix(std::min(rest.find_first_not_of(Blanks), rest.size())); }

    std::string_view TakeValue()
    {
        SkipBlanks();
        if (!rest.starts_with('"') && !rest.starts_with('\''))
            return TakeUntil(" \t\r\n\f>");
        const char quote = rest[0];
        rest.remove_prefix(1);
        const std::string_view value = TakeUntil({&quote, 1});
        rest.remove_prefix(std::min<std::size_t>(1, rest.size()));
        return value;
    }

    /// What stands up to the end tag of an element whose contents are not read as tags.
    std::string_view TakeContents(std::string_view tag)
    {
        const std::string_view all = rest;
        for (std::size_t at = all.find("</"); at != std::string_view::npos; at = all.find("</", at + 2)) {
            const std::string_view end = all.substr(at + 2);
            if (!EqualIgnoringCase(end.substr(0, tag.size()), tag) ||
                (end.size() > tag.size() && !(std::string{Blanks} + "/>").contains(end[tag.size()])))
                continue;
            rest = end;
            SkipPast(">", 0);
            return all.substr(0, at);
        }
        rest = {};
        return all;
    }

    void ReadTag()
    {
        const std::string tag = Folded(TakeUntil(std::string{Blanks} + ">"));
        std::vector<Attribute> attributes;
        while (true) {
            rest.remove_prefix(std::min(rest.find_first_not_of(std::string{Blanks} + "/"), rest.size()));
            if (rest.empty())
                return; // a tag that breaks off is none
            if (rest[0] == '>')
                break;
            const std::string_view name = rest;
            rest.remove_prefix(1); // even a stray "=" is the beginning of a name
            Attribute attribute{.name = name.substr(0, 1 + TakeUntil(std::string{Blanks} + "=/>").size())};
            SkipBlanks();
            if (rest.starts_with('=')) {
                rest.remove_prefix(1);
                attribute.value = TakeValue();
            }
            attributes.push_back(attribute);
        }
        rest.remove_prefix(1);
        Take(tag.substr(0, tag.find('/', 1)), attributes);
    }

    static std::string ValueOf(const std::vector<Attribute>& attributes, std::string_view name)
    {
        const auto found = std::ranges::find_if(
            attributes, [&](const Attribute& attribute) { return EqualIgnoringCase(attribute.name, name); });
        return found == attributes.end() ? std::string{} : Plain(found->value);
    }

    void Take(std::string_view tag, const std::vector<Attribute>& attributes)
    {
        if (tag == "/a")
            link.clear();
        if (tag.starts_with('/'))
            return;
        PageText::Element element{ValueOf(attributes, "name"), ValueOf(attributes, "id"), ValueOf(attributes, "value")};
        if (tag == "textarea")
            element.value = Plain(TakeContents(tag));
        if ((!element.name.empty() || !element.id.empty()) && page.elements.size() < PageText::MostElements)
            page.elements.push_back(std::move(element));
        if (tag == "script" || tag == "style") {
            (void)TakeContents(tag);
        } else if (tag == "title") {
            const std::string_view contents = TakeContents(tag);
            if (!std::exchange(hasTitle, true))
                page.title = Plain(contents);
        } else if (tag == "a") {
            link = ValueOf(attributes, "href");
        } else if (tag == "img" && page.picture.source.empty()) {
            page.picture = {ValueOf(attributes, "src"), link, ValueOf(attributes, "alt")};
        }
    }
};

PageText::PageText(std::string_view html)
{
    PageReader{html, *this}.Read();
}

const PageText::Element* PageText::Find(std::string_view name) const
{
    const auto found = std::ranges::find_if(elements, [&](const Element& element) {
        return EqualIgnoringCase(element.name, name) || EqualIgnoringCase(element.id, name);
    });
    return found == elements.end() ? nullptr : &*found;
}

std::string PageText::Value(std::string_view name, std::size_t longest) const
{
    const Element* const found = Find(name);
    return found == nullptr ? std::string{} : std::string{platform::text::Left(found->value, longest)};
}

bool PageText::Has(std::string_view name) const
{
    return Find(name) != nullptr;
}

} // namespace online
