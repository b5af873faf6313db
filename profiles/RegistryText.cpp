#include "profiles/RegistryText.h"

#include "platform/Text.h"
#include "platform/Utf.h"
#include "profiles/ProfileManager.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>

namespace profiles {

namespace text = platform::text;
namespace utf = platform::utf;
using platform::RegistryValue;
using platform::ValueType;

namespace {

constexpr std::string_view signature = "REGEDIT4";
constexpr std::string_view utf8Mark = "; UTF-8";
constexpr std::string_view hiveName = "HKEY_CURRENT_USER\\";

/// How the characters of a file are stored.
class Encoding {
public:
    Encoding(platform::Locale& locale, bool utf8) : locale{locale}, utf8{utf8} {}
    bool IsUtf8() const { return utf8; }
    std::optional<std::string> Encoded(std::string_view characters) const
    {
        return utf8 ? std::string{characters} : locale.ToAnsi(characters);
    }
    std::string Decoded(std::string_view bytes) const { return utf8 ? std::string{bytes} : locale.FromAnsi(bytes); }

private:
    platform::Locale& locale;
    bool utf8;
};

std::string Utf16Bytes(std::string_view characters)
{
    std::string bytes;
    for (const char16_t unit : utf::ToUtf16<char16_t>(characters)) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

std::string FromUtf16Bytes(std::string_view bytes)
{
    std::u16string units;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        units +=
            static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) | static_cast<unsigned char>(bytes[i + 1]) << 8);
    return utf::ToUtf8<char16_t>(units);
}

// Writing.

std::string Quoted(std::string_view characters)
{
    std::string result = "\"";
    for (const char c : characters) {
        if (c == '"' || c == '\\')
            result += '\\';
        result += c;
    }
    return result + '"';
}

std::string HexDigits(std::uint32_t number, std::size_t width)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result;
    do {
        result.insert(result.begin(), digits[number & 0xF]);
        number >>= 4;
    } while (number != 0 || result.size() < width);
    return result;
}

std::string HexList(std::string_view bytes)
{
    std::string result;
    for (const char byte : bytes) {
        if (!result.empty())
            result += ',';
        result += HexDigits(static_cast<unsigned char>(byte), 2);
    }
    return result;
}

bool HasControlCharacter(std::string_view characters)
{
    return std::ranges::any_of(characters, [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

/// Nothing when the encoding lacks a character.
std::optional<std::string> DataText(const RegistryValue& value, const Encoding& encoding)
{
    std::optional<std::string> bytes;
    switch (value.type) {
    case ValueType::String:
        if (!HasControlCharacter(value.data)) // the others would end the line
            return encoding.Encoded(Quoted(value.data));
        [[fallthrough]];
    case ValueType::ExpandString:
        bytes = encoding.Encoded(value.data);
        if (bytes)
            *bytes += '\0';
        break;
    case ValueType::MultiString:
        bytes = encoding.Encoded(FromUtf16Bytes(value.data));
        break;
    case ValueType::Binary:
        return "hex:" + HexList(value.data);
    case ValueType::Dword:
        if (value.data.size() == 4) {
            std::uint32_t number = 0;
            for (std::size_t i = 4; i-- > 0;)
                number = number << 8 | static_cast<unsigned char>(value.data[i]);
            return "dword:" + HexDigits(number, 8);
        }
        bytes = value.data;
        break;
    default:
        bytes = value.data;
    }
    if (!bytes)
        return std::nullopt;
    return "hex(" + HexDigits(static_cast<std::uint32_t>(value.type), 1) + "):" + HexList(*bytes);
}

std::optional<std::string> Written(const ExportedKeys& keys, const Encoding& encoding)
{
    std::string file{signature};
    file += "\r\n";
    if (encoding.IsUtf8())
        file.append(utf8Mark).append("\r\n");
    for (const ExportedKey& key : keys) {
        const auto name = encoding.Encoded(key.name.empty() ? FullProfilesKey() : FullProfilesKey() + "\\" + key.name);
        if (!name)
            return std::nullopt;
        file.append("\r\n[").append(*name).append("]\r\n");
        for (const auto& [valueName, value] : key.values) {
            const auto shown = encoding.Encoded(valueName.empty() ? "@" : Quoted(valueName));
            const auto data = DataText(value, encoding);
            if (!shown || !data)
                return std::nullopt;
            file.append(*shown).append("=").append(*data).append("\r\n");
        }
    }
    file += "\r\n";
    return file;
}

// Reading.

/// The text in quotes that `line` begins with; takes it off. Nothing when there is none or it does not end.
std::optional<std::string> TakeQuoted(std::string_view& line)
{
    if (!line.starts_with('"'))
        return std::nullopt;
    std::string result;
    for (std::size_t i = 1; i < line.size(); ++i) {
        if (line[i] == '"') {
            line.remove_prefix(i + 1);
            return result;
        }
        if (line[i] == '\\') {
            ++i;
            if (i == line.size() || (line[i] != '\\' && line[i] != '"'))
                return std::nullopt;
        }
        result += line[i];
    }
    return std::nullopt;
}

std::optional<std::uint32_t> HexNumber(std::string_view digits)
{
    std::uint32_t number{};
    const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    if (failure != std::errc{} || end != digits.data() + digits.size() || digits.size() > 8)
        return std::nullopt;
    return number;
}

std::optional<std::string> HexBytes(std::string_view list)
{
    std::string bytes;
    if (list.empty())
        return bytes;
    for (;;) {
        const auto comma = std::min(list.find(','), list.size());
        const auto number = HexNumber(list.substr(0, comma));
        if (!number || *number > 0xFF)
            return std::nullopt;
        bytes += static_cast<char>(*number);
        if (comma == list.size())
            return bytes;
        list.remove_prefix(comma + 1);
    }
}

std::optional<RegistryValue> HexValue(std::string_view data, const Encoding& encoding)
{
    auto type = static_cast<std::uint32_t>(ValueType::Binary);
    data.remove_prefix(3);
    if (data.starts_with('(')) {
        const auto end = data.find(')');
        const auto number = end == std::string_view::npos ? std::nullopt : HexNumber(data.substr(1, end - 1));
        if (!number)
            return std::nullopt;
        type = *number;
        data.remove_prefix(end + 1);
    }
    if (!data.starts_with(':'))
        return std::nullopt;
    auto bytes = HexBytes(data.substr(1));
    if (!bytes)
        return std::nullopt;
    RegistryValue value{static_cast<ValueType>(type), std::move(*bytes)};
    if (value.type == ValueType::String || value.type == ValueType::ExpandString)
        value.data = encoding.Decoded(std::string_view{value.data}.substr(0, value.data.find('\0')));
    else if (value.type == ValueType::MultiString)
        value.data = Utf16Bytes(encoding.Decoded(value.data));
    return value;
}

std::optional<RegistryValue> ReadData(std::string_view data, const Encoding& encoding)
{
    if (data.starts_with("hex"))
        return HexValue(data, encoding);
    if (data.starts_with("dword:")) {
        const auto number = HexNumber(data.substr(6));
        if (!number)
            return std::nullopt;
        RegistryValue value{ValueType::Dword, {}};
        for (unsigned shift = 0; shift < 32; shift += 8)
            value.data += static_cast<char>(*number >> shift & 0xFF);
        return value;
    }
    auto characters = TakeQuoted(data);
    if (!characters || !data.empty() || characters->contains('\0'))
        return std::nullopt;
    return RegistryValue{ValueType::String, encoding.Decoded(*characters)};
}

/// The name below the profiles key that a key line holds.
std::optional<std::string> ReadKeyName(std::string_view line, const Encoding& encoding)
{
    if (!line.ends_with(']') || line.contains('\0'))
        return std::nullopt;
    const std::string name = encoding.Decoded(line.substr(1, line.size() - 2));
    const std::string top = FullProfilesKey();
    if (!text::EqualIgnoringCase(std::string_view{name}.substr(0, top.size()), top))
        return std::nullopt;
    if (name.size() == top.size())
        return "";
    if (name[top.size()] != '\\')
        return std::nullopt;
    std::string below = name.substr(top.size() + 1);
    const auto parts = text::Split(below, '\\');
    const bool isOdd = std::ranges::any_of(parts, &std::string::empty) || HasControlCharacter(below);
    return isOdd ? std::nullopt : std::optional{std::move(below)};
}

/// The lines of a file one by one; a line of bytes that ends in "\" goes on in the next.
class Lines {
public:
    explicit Lines(std::string_view file) : rest{file} {}

    bool Next(std::string& line)
    {
        if (rest.empty())
            return false;
        line = Take();
        const bool goesOn = line.contains("=hex");
        while (goesOn && line.ends_with('\\') && !rest.empty()) {
            line.pop_back();
            std::string_view more = Take();
            more.remove_prefix(std::min(more.find_first_not_of(" \t"), more.size()));
            line += more;
        }
        return true;
    }

private:
    std::string_view rest;

    std::string_view Take()
    {
        const auto end = std::min(rest.find('\n'), rest.size());
        std::string_view line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        return line;
    }
};

} // namespace

std::string FullProfilesKey()
{
    return std::string{hiveName}.append(ProfilesKey);
}

std::string WriteRegistryText(const ExportedKeys& keys, platform::Locale& locale)
{
    if (auto ansi = Written(keys, {locale, false}))
        return std::move(*ansi);
    return Written(keys, {locale, true}).value_or("");
}

bool IsPlainRegistryText(std::string_view bytes, const ExportedKeys& keys, platform::Locale& locale)
{
    const auto hasBracket = [](const ExportedKey& key) { return key.name.find_first_of("[]") != std::string::npos; };
    return std::ranges::none_of(keys, hasBracket) && Written(keys, {locale, false}) == bytes;
}

ExportedKeys ReadRegistryText(std::string_view bytes, platform::Locale& locale)
{
    const Encoding encoding{locale, bytes.starts_with(std::string{signature}.append("\r\n").append(utf8Mark))};
    ExportedKeys keys;
    bool isOurs = false;
    Lines lines{bytes};
    std::string line;
    while (lines.Next(line)) {
        if (line.starts_with('[')) {
            auto name = ReadKeyName(line, encoding);
            isOurs = name.has_value();
            if (isOurs)
                keys.push_back({std::move(*name), {}});
            continue;
        }
        if (!isOurs)
            continue;
        std::string_view rest = line;
        std::optional<std::string> name;
        if (rest.starts_with('@')) {
            name.emplace();
            rest.remove_prefix(1);
        } else {
            name = TakeQuoted(rest);
        }
        if (!name || name->contains('\0') || !rest.starts_with('='))
            continue;
        if (auto value = ReadData(rest.substr(1), encoding))
            keys.back().values.emplace_back(encoding.Decoded(*name), std::move(*value));
    }
    return keys;
}

} // namespace profiles
