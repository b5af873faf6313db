#include "documents/PdfSyntax.h"

#include "documents/Facts.h"
#include "documents/TextOf.h"
#include "platform/Utf.h"

#include <algorithm>
#include <charconv>

namespace documents::pdf {
namespace {

constexpr std::string_view Blanks{" \t\r\n\f\0", 6};
constexpr std::string_view Delimiters{"()<>[]{}/% \t\r\n\f\0", 16};

int HexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string HexBytes(std::string_view digits)
{
    std::string bytes;
    int half = -1;
    for (const char c : digits) {
        const int digit = HexDigit(c);
        if (digit < 0)
            continue;
        if (half < 0) {
            half = digit;
        } else {
            bytes += static_cast<char>(half * 16 + digit);
            half = -1;
        }
    }
    if (half >= 0)
        bytes += static_cast<char>(half * 16);
    return bytes;
}

/// Takes what follows a backslash.
void AppendEscape(std::string& bytes, std::string_view& rest)
{
    const char c = rest.front();
    rest.remove_prefix(1);
    if (c >= '0' && c <= '7') {
        int value = c - '0';
        for (int i = 0; i < 2 && !rest.empty() && rest.front() >= '0' && rest.front() <= '7'; ++i) {
            value = value * 8 + (rest.front() - '0');
            rest.remove_prefix(1);
        }
        bytes += static_cast<char>(value);
        return;
    }
    constexpr std::string_view letters = "nrtbf", meanings = "\n\r\t\b\f";
    if (const std::size_t found = letters.find(c); found != std::string_view::npos)
        bytes += meanings[found];
    else if (c == '\r' && rest.starts_with('\n'))
        rest.remove_prefix(1); // a line that goes on
    else if (c != '\r' && c != '\n')
        bytes += c;
}

std::string LiteralBytes(std::string_view rest)
{
    std::string bytes;
    while (!rest.empty()) {
        const char c = rest.front();
        rest.remove_prefix(1);
        if (c == '\\' && !rest.empty())
            AppendEscape(bytes, rest);
        else if (c != '\\')
            bytes += c;
    }
    return bytes;
}

/// Where PDF's own encoding is not that of ISO 8859-1 (ISO 32000, annex D).
constexpr char32_t lowSigns[] = {0x2D8, 0x2C7, 0x2C6, 0x2D9, 0x2DD, 0x2DB, 0x2DA, 0x2DC}; // from 18 on
constexpr char32_t highSigns[] = {0x2022, 0x2020, 0x2021, 0x2026, 0x2014, 0x2013, 0x192,  0x2044, 0x2039,
                                  0x203A, 0x2212, 0x2030, 0x201E, 0x201C, 0x201D, 0x2018, 0x2019, 0x201A,
                                  0x2122, 0xFB01, 0xFB02, 0x141,  0x152,  0x160,  0x178,  0x17D,  0x131,
                                  0x142,  0x153,  0x161,  0x17E,  0xFFFD, 0x20AC}; // from 80 on

char32_t OwnEncoding(unsigned char byte)
{
    if (byte >= 0x18 && byte < 0x20)
        return lowSigns[byte - 0x18];
    if (byte >= 0x80 && byte < 0x80 + std::size(highSigns))
        return highSigns[byte - 0x80];
    return byte;
}

} // namespace

void Lexer::SkipBlanks()
{
    while (next < text.size()) {
        if (text[next] == '%')
            next = std::min(text.find_first_of("\r\n", next), text.size());
        else if (Blanks.find(text[next]) == std::string_view::npos)
            return;
        else
            ++next;
    }
}

/// Behind the parenthesis that closes the one at the position.
std::size_t Lexer::EndOfText() const
{
    std::size_t depth = 0;
    for (std::size_t i = next; i < text.size(); ++i) {
        if (text[i] == '\\')
            ++i;
        else if (text[i] == '(')
            ++depth;
        else if (text[i] == ')' && --depth == 0)
            return i + 1;
    }
    return text.size();
}

Token Lexer::Next()
{
    using Kind = Token::Kind;
    SkipBlanks();
    if (next >= text.size())
        return {};
    const std::string_view rest = text.substr(next);
    Kind kind = Kind::Word;
    std::size_t size = 1;
    if (rest.starts_with("<<") || rest.starts_with(">>")) {
        kind = rest.front() == '<' ? Kind::DictionaryOpen : Kind::DictionaryClose;
        size = 2;
    } else if (rest.front() == '<') {
        kind = Kind::Text;
        size = std::min(rest.find('>'), rest.size() - 1) + 1;
    } else if (rest.front() == '(') {
        kind = Kind::Text;
        size = EndOfText() - next;
    } else if (rest.front() == '[' || rest.front() == ']') {
        kind = rest.front() == '[' ? Kind::ArrayOpen : Kind::ArrayClose;
    } else {
        kind = rest.front() == '/' ? Kind::Name : Kind::Word;
        size = std::min(rest.find_first_of(Delimiters, 1), rest.size());
    }
    next += size;
    return {kind, rest.substr(0, size)};
}

std::string_view Lexer::Value()
{
    using Kind = Token::Kind;
    SkipBlanks();
    const std::size_t start = next;
    std::size_t depth = 0;
    do {
        const Token token = Next();
        if (token.kind == Kind::DictionaryOpen || token.kind == Kind::ArrayOpen)
            ++depth;
        else if ((token.kind == Kind::DictionaryClose || token.kind == Kind::ArrayClose) && depth > 0)
            --depth;
        else if (token.kind == Kind::End)
            break;
    } while (depth > 0);
    // A number may be the first word of a reference.
    const std::size_t end = next;
    if (Number(text.substr(start, end - start)) && (!Number(Next().text) || Next().text != "R"))
        next = end;
    return text.substr(start, next - start);
}

std::string_view Lookup(std::string_view dictionary, std::string_view key)
{
    Lexer lexer{dictionary};
    if (lexer.Next().kind != Token::Kind::DictionaryOpen)
        return {};
    for (Token name = lexer.Next(); name.kind == Token::Kind::Name; name = lexer.Next()) {
        const std::string_view value = lexer.Value();
        if (name.text == key)
            return value;
    }
    return {};
}

std::optional<std::uint64_t> Number(std::string_view value)
{
    std::uint64_t number{};
    const auto [end, problem] = std::from_chars(value.data(), value.data() + value.size(), number);
    if (value.empty() || problem != std::errc{} || end != value.data() + value.size())
        return std::nullopt;
    return number;
}

std::optional<std::uint64_t> Reference(std::string_view value)
{
    Lexer lexer{value};
    const auto number = Number(lexer.Next().text);
    return number && Number(lexer.Next().text) && lexer.Next().text == "R" ? number : std::nullopt;
}

std::string StringBytes(std::string_view value)
{
    if (value.size() < 2 || value.starts_with("<<") || (value.front() != '(' && value.front() != '<'))
        return {};
    const std::string_view inner = value.substr(1, value.size() - 2);
    return value.front() == '(' ? LiteralBytes(inner) : HexBytes(inner);
}

std::string StringText(std::string_view value)
{
    const std::string bytes = StringBytes(value.substr(0, 4 * Facts::MostText)); // what is shown of it is far shorter
    const std::string_view start = bytes;
    if (start.starts_with("\xFE\xFF") || start.starts_with("\xFF\xFE"))
        return FromUtf16(start.substr(2), start.starts_with("\xFE"));
    if (start.starts_with("\xEF\xBB\xBF"))
        return bytes.substr(3);
    std::string text;
    for (const char byte : bytes)
        platform::utf::Append(text, OwnEncoding(static_cast<unsigned char>(byte)));
    return text;
}

} // namespace documents::pdf
