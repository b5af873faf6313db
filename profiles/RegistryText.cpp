#include "profiles/RegistryText.h"

#include "platform/LittleEndian.h"
#include "platform/Text.h"
#include "platform/Utf.h"
#include "profiles/FieldChecks.h"
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
constexpr std::string_view version5 = "Windows Registry Editor Version 5.";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view hiveName = "HKEY_CURRENT_USER\\";
constexpr std::size_t longestKeyName = 255; ///< UTF-16 units, of the system's registry
constexpr std::size_t longestValueName = 16'383;

/// As the registry keeps it: bytes that belong to no character become the sign for that.
std::string ValidUtf8(std::string_view bytes)
{
    return utf::ToUtf8<char16_t>(utf::ToUtf16<char16_t>(bytes));
}

/// How the characters of a file are stored.
class Encoding {
public:
    Encoding(platform::Locale& locale, bool utf8) : locale{locale}, utf8{utf8} {}
    bool IsUtf8() const { return utf8; }
    std::optional<std::string> Encoded(std::string_view characters) const
    {
        return utf8 ? std::string{characters} : locale.ToAnsi(characters);
    }
    std::string Decoded(std::string_view bytes) const { return utf8 ? ValidUtf8(bytes) : locale.FromAnsi(bytes); }

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
        if (value.data.size() == 4)
            return "dword:" + HexDigits(platform::LittleEndian<std::uint32_t>(value.data, 0), 8);
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
        if (HasControlCharacter(key.name))
            continue;
        const auto name = encoding.Encoded(key.name.empty() ? FullProfilesKey() : FullProfilesKey() + "\\" + key.name);
        if (!name)
            return std::nullopt;
        file.append("\r\n[").append(*name).append("]\r\n");
        for (const auto& [valueName, value] : key.values) {
            if (HasControlCharacter(valueName))
                continue;
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

/// The lines of a file one by one. A registry editor takes each of CR and LF for an end.
class Lines {
public:
    explicit Lines(std::string_view file) : rest{file} {}

    bool Next(std::string_view& line)
    {
        if (rest.empty())
            return false;
        const auto end = std::min(rest.find_first_of("\r\n"), rest.size());
        line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        return true;
    }

private:
    std::string_view rest;
};

void SkipBlanks(std::string_view& rest)
{
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
}

/// Nothing but blanks and a comment follows.
bool EndsHere(std::string_view rest)
{
    SkipBlanks(rest);
    return rest.empty() || rest.starts_with(';');
}

bool TakeIgnoringCase(std::string_view& rest, std::string_view word)
{
    if (!text::EqualIgnoringCase(rest.substr(0, word.size()), word))
        return false;
    rest.remove_prefix(word.size());
    return true;
}

/// What stands above the first key tells how the rest is stored.
struct Form {
    bool utf8{};
    bool wide{}; ///< texts that are written as bytes are UTF-16
};

Form FormOf(std::string_view bytes)
{
    Form form{.utf8 = bytes.starts_with(byteOrderMark)};
    if (form.utf8)
        bytes.remove_prefix(byteOrderMark.size());
    bool known = false;
    Lines lines{bytes};
    std::string_view line;
    while (lines.Next(line)) {
        SkipBlanks(line);
        if (line.starts_with('['))
            break;
        form.wide = form.wide || (!known && line.starts_with(version5));
        known = known || form.wide || line.starts_with(signature);
        form.utf8 = form.utf8 || (line.starts_with(utf8Mark) && EndsHere(line.substr(utf8Mark.size())));
    }
    return form;
}

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

/// The digits that `rest` begins with; takes them off.
std::optional<std::uint32_t> TakeHexNumber(std::string_view& rest, std::size_t mostDigits)
{
    std::uint32_t number{};
    const auto [end, failure] = std::from_chars(rest.data(), rest.data() + rest.size(), number, 16);
    const auto length = static_cast<std::size_t>(end - rest.data());
    if (failure != std::errc{} || length > mostDigits)
        return std::nullopt;
    rest.remove_prefix(length);
    return number;
}

/// A key line, taken apart.
struct KeyLine {
    bool isOurs{};         ///< at or below the profiles key
    bool isUnderstood{};   ///< and a key that can be taken
    std::string_view name; ///< below the profiles key; else what stands behind its name
};

KeyLine ReadKeyLine(std::string_view line)
{
    const auto end = line.rfind(']');
    std::string_view name = line.substr(1, end == std::string_view::npos ? end : end - 1);
    const bool isDeletion = name.starts_with('-');
    name.remove_prefix(isDeletion ? 1 : 0);
    if (!TakeIgnoringCase(name, FullProfilesKey()) || !(name.empty() || name.starts_with('\\')))
        return {};
    const bool isWhole = end != std::string_view::npos && !isDeletion && EndsHere(line.substr(end + 1));
    if (name.empty())
        return {true, isWhole, name};
    name.remove_prefix(1);
    const bool isOdd =
        name.empty() || name.contains('\\') || HasControlCharacter(name) || text::Length(name) > longestKeyName;
    return {true, isWhole && !isOdd, name};
}

class Reader {
public:
    Reader(std::string_view file, const Encoding& encoding, bool wide) : lines{file}, encoding{encoding}, wide{wide} {}

    RegistryText Read()
    {
        RegistryText result;
        bool isOurs = false;
        for (std::string_view line; lines.Next(line);) {
            SkipBlanks(line);
            if (line.starts_with('[')) {
                const KeyLine key = ReadKeyLine(line);
                isOurs = key.isUnderstood && result.keys.size() < LargestNumberOfKeys;
                if (isOurs)
                    result.keys.push_back({std::string{key.name}, {}});
                else if (key.isOurs)
                    result.leftOut.Add(key.name.empty() ? line : key.name);
            } else if (isOurs && !EndsHere(line)) {
                if (auto value = ReadValue(line))
                    result.keys.back().values.push_back(std::move(*value));
                else
                    result.leftOut.Add(line);
            }
        }
        return result;
    }

private:
    Lines lines;
    const Encoding& encoding;
    bool wide;

    std::optional<std::pair<std::string, RegistryValue>> ReadValue(std::string_view line)
    {
        std::optional<std::string> name;
        if (line.starts_with('@')) {
            name.emplace();
            line.remove_prefix(1);
        } else {
            name = TakeQuoted(line);
        }
        SkipBlanks(line);
        if (!name || HasControlCharacter(*name) || text::Length(*name) > longestValueName || !line.starts_with('='))
            return std::nullopt;
        line.remove_prefix(1);
        SkipBlanks(line);
        auto value = ReadData(line);
        return value ? std::optional{std::pair{std::move(*name), std::move(*value)}} : std::nullopt;
    }

    std::optional<RegistryValue> ReadData(std::string_view data)
    {
        if (TakeIgnoringCase(data, "hex"))
            return ReadHex(data);
        if (TakeIgnoringCase(data, "dword:")) {
            SkipBlanks(data);
            const auto number = TakeHexNumber(data, 8);
            if (!number || !EndsHere(data))
                return std::nullopt;
            RegistryValue value{ValueType::Dword, {}};
            for (unsigned shift = 0; shift < 32; shift += 8)
                value.data += static_cast<char>(*number >> shift & 0xFF);
            return value;
        }
        auto characters = TakeQuoted(data);
        if (!characters || !EndsHere(data) || characters->contains('\0'))
            return std::nullopt;
        return RegistryValue{ValueType::String, std::move(*characters)};
    }

    std::optional<RegistryValue> ReadHex(std::string_view data)
    {
        auto type = static_cast<std::uint32_t>(ValueType::Binary);
        if (data.starts_with('(')) {
            data.remove_prefix(1);
            const auto number = TakeHexNumber(data, 8);
            if (!number || !data.starts_with(')'))
                return std::nullopt;
            type = *number;
            data.remove_prefix(1);
        }
        if (!data.starts_with(':'))
            return std::nullopt;
        auto bytes = ReadBytes(data.substr(1));
        return bytes ? AsStored(static_cast<ValueType>(type), std::move(*bytes)) : std::nullopt;
    }

    /// Two digits a byte with commas between, the last of which may be followed by nothing; a line that ends in "\"
    /// goes on in the next one that holds something, unless no byte stands there.
    std::optional<std::string> ReadBytes(std::string_view list)
    {
        std::string bytes;
        for (;;) {
            SkipBlanks(list);
            if (list.starts_with('\\')) {
                if (!EndsHere(list.substr(1)) || !GoesOn(list))
                    return std::nullopt;
            } else if (EndsHere(list)) {
                return bytes;
            }
            const auto byte = TakeHexNumber(list, 2);
            SkipBlanks(list);
            if (!byte || !(list.starts_with(',') || list.starts_with('\\') || EndsHere(list)))
                return std::nullopt;
            bytes += static_cast<char>(*byte);
            list.remove_prefix(list.starts_with(',') ? 1 : 0);
        }
    }

    bool GoesOn(std::string_view& list)
    {
        constexpr std::string_view hexDigits = "0123456789abcdefABCDEF";
        Lines ahead = lines;
        do {
            if (!ahead.Next(list))
                return false;
            SkipBlanks(list);
        } while (EndsHere(list));
        if (!hexDigits.contains(list.front()))
            return false; // a line of its own
        lines = ahead;
        return true;
    }

    std::optional<RegistryValue> AsStored(ValueType type, std::string bytes) const
    {
        const bool isText = type == ValueType::String || type == ValueType::ExpandString;
        if ((isText || type == ValueType::MultiString) && wide && bytes.size() % 2 != 0)
            return std::nullopt;
        if (isText) {
            bytes = wide ? FromUtf16Bytes(bytes) : encoding.Decoded(bytes);
            while (bytes.ends_with('\0')) // the registry's own terminators are no part of a text
                bytes.pop_back();
        } else if (type == ValueType::MultiString && !wide) {
            bytes = Utf16Bytes(encoding.Decoded(bytes));
        }
        return RegistryValue{type, std::move(bytes)};
    }
};

/// Bytes that have a meaning of their own to who knows no characters of two bytes.
auto Signs(std::string_view bytes)
{
    return std::ranges::count_if(bytes, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

} // namespace

void LeftOut::Add(std::string_view name)
{
    constexpr std::size_t most = 10, longest = 80; // what a message can show
    if (names.size() == most) {
        more = true;
        return;
    }
    std::string shown{text::Left(name, longest)};
    std::ranges::replace_if(shown, [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
    names.push_back(shown.size() < name.size() ? shown + "..." : std::move(shown));
}

void LeftOut::Add(const LeftOut& others)
{
    for (const std::string& name : others.names)
        Add(name);
    more = more || others.more;
}

std::string LeftOut::Text() const
{
    std::string lines;
    for (const std::string& name : names)
        lines += "\r\n" + name;
    return more ? lines + "\r\n..." : lines;
}

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

bool CanBeWritten(const std::string& valueName, const RegistryValue& value, platform::Locale& locale)
{
    const ExportedKeys keys{{"", {{valueName, value}}}};
    return ReadRegistryText(WriteRegistryText(keys, locale), locale).keys == keys;
}

bool CanBeWritten(const std::string& keyName, platform::Locale& locale)
{
    const ExportedKeys keys{{keyName, {}}};
    return ReadRegistryText(WriteRegistryText(keys, locale), locale).keys == keys;
}

bool IsPlainRegistryText(std::string_view bytes, const ExportedKeys& keys, platform::Locale& locale)
{
    const auto isOdd = [](const ExportedKey& key) {
        return key.name.find_first_of("[]") != std::string::npos || HasControlCharacter(key.name) ||
               std::ranges::any_of(key.values, [](const auto& value) { return HasControlCharacter(value.first); });
    };
    return std::ranges::none_of(keys, isOdd) && Written(keys, {locale, false}) == bytes &&
           Signs(bytes) == Signs(locale.FromAnsi(bytes));
}

RegistryText ReadRegistryText(std::string_view bytes, platform::Locale& locale)
{
    const Form form = FormOf(bytes);
    if (bytes.starts_with(byteOrderMark))
        bytes.remove_prefix(byteOrderMark.size());
    const Encoding encoding{locale, form.utf8};
    // Decoded first: the second byte of a character may look like a quote or a backslash.
    const std::string characters = encoding.Decoded(bytes);
    return Reader{characters, encoding, form.wide}.Read();
}

} // namespace profiles
