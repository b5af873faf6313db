#include "documents/TextOf.h"

#include "platform/Utf.h"

namespace documents {
namespace {

namespace utf = platform::utf;

bool IsBlank(char32_t character)
{
    return character <= ' ' || character == 0xA0;
}

/// Line breaks of all kinds become "\n", which text boxes are given as their own.
bool IsShown(char32_t character)
{
    return character >= ' ' ? character != 0x7F && (character < 0xD800 || character > 0xDFFF)
                            : character == '\n' || character == '\t';
}

} // namespace

std::string Clean(std::string_view text)
{
    std::string clean;
    std::size_t end = 0; // behind the last character that is no blank
    for (std::size_t i = 0; i < text.size();) {
        utf::Decoded decoded = utf::Decode(text, i);
        i += decoded.bytes;
        if (decoded.character == '\r') {
            if (i < text.size() && text[i] == '\n')
                continue;
            decoded.character = '\n';
        }
        if (!IsShown(decoded.character) || (clean.empty() && IsBlank(decoded.character)))
            continue;
        utf::Append(clean, decoded.character);
        if (clean.size() > Facts::MostText)
            break;
        if (!IsBlank(decoded.character))
            end = clean.size();
    }
    clean.resize(end);
    return clean;
}

std::string FromUtf16(std::string_view bytes, bool highByteFirst)
{
    std::u16string units;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        const auto unit = static_cast<char16_t>(highByteFirst ? first << 8 | second : second << 8 | first);
        if (unit == 0)
            break;
        units += unit;
    }
    return utf::ToUtf8<char16_t>(units);
}

std::string Decoded(std::string_view bytes, std::uint32_t codePage, const TextDecoder& decode)
{
    if (codePage == Utf16CodePage)
        return FromUtf16(bytes);
    bytes = bytes.substr(0, bytes.find('\0'));
    if (codePage == Utf8CodePage)
        return std::string{bytes};
    if (auto text = decode(codePage, bytes))
        return *std::move(text);
    std::string text;
    for (const char byte : bytes)
        utf::Append(text, static_cast<unsigned char>(byte));
    return text;
}

void AddToList(std::string& list, std::string_view text)
{
    if (text.empty() || list.size() > Facts::MostText)
        return;
    if (!list.empty())
        list += ", ";
    list += text;
}

} // namespace documents
