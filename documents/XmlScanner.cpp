#include "documents/XmlScanner.h"

#include "documents/TextOf.h"
#include "platform/Utf.h"

#include <charconv>
#include <utility>

namespace documents {
namespace {

constexpr std::string_view Blanks = " \t\r\n";
constexpr std::size_t MostUtf16 = 65536; ///< bytes: as UTF-8 they may take half as much again

constexpr std::pair<std::string_view, char> entities[] = {
    {"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}};

void AppendEntity(std::string& text, std::string_view entity)
{
    for (const auto& [name, character] : entities)
        if (entity == name)
            text += character;
    if (!entity.starts_with('#'))
        return;
    const bool isHex = entity.starts_with("#x");
    entity.remove_prefix(isHex ? 2 : 1);
    std::uint32_t number{};
    const auto [end, problem] = std::from_chars(entity.data(), entity.data() + entity.size(), number, isHex ? 16 : 10);
    if (problem == std::errc{} && number > 0 && number <= 0x10FFFF)
        platform::utf::Append(text, number);
}

std::string WithoutEntities(std::string_view raw)
{
    constexpr std::size_t longest = 12;
    std::string text;
    while (!raw.empty()) {
        const std::size_t start = raw.find('&');
        text += raw.substr(0, start);
        if (start == std::string_view::npos)
            break;
        raw.remove_prefix(start + 1);
        const std::size_t end = raw.substr(0, longest).find(';');
        if (end == std::string_view::npos) {
            text += '&';
            continue;
        }
        AppendEntity(text, raw.substr(0, end));
        raw.remove_prefix(end + 1);
    }
    return text;
}

} // namespace

std::string_view XmlScanner::TakeUntil(std::string_view end)
{
    const std::size_t found = rest.find(end);
    const std::string_view taken = rest.substr(0, found);
    rest.remove_prefix(found == std::string_view::npos ? rest.size() : found + end.size());
    return taken;
}

/// "<!DOCTYPE ... [ ... ]>" with everything that is declared in it.
void XmlScanner::SkipDeclaration()
{
    const std::size_t end = rest.find_first_of("[>");
    if (end != std::string_view::npos && rest[end] == '[')
        TakeUntil("]");
    TakeUntil(">");
}

/// What stands in a tag up to its end; a ">" in quotes is none.
std::string_view XmlScanner::TakeTag()
{
    char quote = 0;
    for (std::size_t i = 0; i < rest.size(); ++i) {
        const char c = rest[i];
        if (quote != 0)
            quote = c == quote ? '\0' : quote;
        else if (c == '"' || c == '\'')
            quote = c;
        else if (c == '>') {
            const std::string_view tag = rest.substr(0, i);
            rest.remove_prefix(i + 1);
            return tag;
        }
    }
    return std::exchange(rest, {});
}

XmlScanner::Piece XmlScanner::Next()
{
    if (std::exchange(closeNext, false))
        return Piece::Close;
    while (!rest.empty()) {
        if (!rest.starts_with('<')) {
            const std::string_view raw = rest.substr(0, rest.find('<'));
            rest.remove_prefix(raw.size());
            text = WithoutEntities(raw);
            return Piece::Text;
        }
        rest.remove_prefix(1);
        if (rest.starts_with("![CDATA[")) {
            rest.remove_prefix(8);
            text = TakeUntil("]]>");
            return Piece::Text;
        }
        if (rest.starts_with("!--")) {
            TakeUntil("-->");
        } else if (rest.starts_with('!')) {
            SkipDeclaration();
        } else if (rest.starts_with('?')) {
            TakeUntil("?>");
        } else {
            std::string_view tag = TakeTag();
            const bool closes = tag.starts_with('/');
            closeNext = !closes && tag.ends_with('/');
            if (closes)
                tag.remove_prefix(1);
            if (closeNext)
                tag.remove_suffix(1);
            name = tag.substr(0, tag.find_first_of(Blanks));
            attributes = tag.substr(name.size());
            return closes ? Piece::Close : Piece::Open;
        }
    }
    return Piece::End;
}

std::string XmlScanner::Attribute(std::string_view wanted) const
{
    std::string_view left = attributes;
    for (;;) {
        const std::size_t equals = left.find('=');
        if (equals == std::string_view::npos)
            return {};
        std::string_view key = left.substr(0, equals);
        key.remove_prefix(std::min(key.find_first_not_of(Blanks), key.size()));
        key = key.substr(0, key.find_first_of(Blanks));
        left.remove_prefix(equals + 1);
        const std::size_t start = left.find_first_of("\"'");
        if (start == std::string_view::npos)
            return {};
        const std::size_t end = left.find(left[start], start + 1);
        const std::string_view value = left.substr(start + 1, end - start - 1);
        if (IsNamed(key, wanted))
            return WithoutEntities(value);
        if (end == std::string_view::npos)
            return {};
        left.remove_prefix(end + 1);
    }
}

std::string XmlText(std::string bytes)
{
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"))
        return FromUtf16(std::string_view{bytes}.substr(2, MostUtf16), bytes.starts_with("\xFE"));
    return bytes;
}

bool IsNamed(std::string_view name, std::string_view wanted)
{
    return name == wanted || name.substr(name.find(':') + 1) == wanted;
}

} // namespace documents
