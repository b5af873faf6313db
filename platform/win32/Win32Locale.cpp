#include "platform/win32/Win32Locale.h"

#include "platform/Accents.h"
#include "platform/win32/Native.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace platform::win32 {

namespace {

SYSTEMTIME ToSystemTime(const LocalTime& time)
{
    const auto word = [](int number) { return static_cast<WORD>(number); };
    SYSTEMTIME result{};
    result.wYear = word(time.year);
    result.wMonth = word(time.month);
    result.wDay = word(time.day);
    result.wHour = word(time.hour);
    result.wMinute = word(time.minute);
    result.wSecond = word(time.second);
    return result;
}

/// What a formatting function wrote, which counts its terminator; "" when it failed.
std::string Formatted(const wchar_t* text, int lengthWithTerminator)
{
    return lengthWithTerminator > 0 ? ToUtf8({text, static_cast<std::size_t>(lengthWithTerminator) - 1})
                                    : std::string{};
}

/// One of the user's regional settings (LOCALE_...); "" when it cannot be read.
std::wstring Setting(LCTYPE which)
{
    wchar_t text[16];
    const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, which, text, static_cast<int>(std::size(text)));
    return length > 1 ? std::wstring(text, static_cast<std::size_t>(length) - 1) : std::wstring{};
}

/// In another of the system's normal forms; as it was where the text is none (half a surrogate pair).
std::wstring Normalized(NORM_FORM form, std::wstring text)
{
    constexpr std::size_t growth = 18; // times the length: the longest that one character becomes
    std::wstring other(text.size() * growth, L'\0');
    const int length =
        NormalizeString(form, text.data(), static_cast<int>(text.size()), other.data(), static_cast<int>(other.size()));
    if (length <= 0)
        return text;
    other.resize(static_cast<std::size_t>(length));
    return other;
}

} // namespace

std::string Win32Locale::SearchForm(std::string_view text) const
{
    // Most names have plain letters only, for which the system need not be asked.
    if (std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
        std::string small{text};
        for (char& c : small)
            c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
        return small;
    }
    std::wstring form = Normalized(NormalizationKD, ToUtf16(text));
    const int length = static_cast<int>(form.size());
    LCMapStringW(LOCALE_INVARIANT, LCMAP_LOWERCASE, form.data(), length, form.data(), length);
    std::erase_if(form, [](wchar_t c) { return IsAccent(c); });
    // Together again: syllables of Hangul, and the kana whose mark makes another letter.
    return ToUtf8(Normalized(NormalizationC, std::move(form)));
}

std::string Win32Locale::ShortDate(const LocalTime& time)
{
    const SYSTEMTIME moment = ToSystemTime(time);
    wchar_t text[128];
    return Formatted(text, GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &moment, nullptr, text,
                                          static_cast<int>(std::size(text))));
}

std::string Win32Locale::MediumTime(const LocalTime& time)
{
    const SYSTEMTIME moment = ToSystemTime(time);
    const std::wstring marker = Setting(time.hour < 12 ? LOCALE_S1159 : LOCALE_S2359);
    const std::wstring separator = Setting(LOCALE_STIME);
    // Quoted: a separator may be a letter of the format.
    const std::wstring format = (marker.empty() ? L"HH'" : L"hh'") + separator + (marker.empty() ? L"'mm" : L"'mm tt");
    wchar_t text[128];
    return Formatted(
        text, GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &moment, format.c_str(), text, static_cast<int>(std::size(text))));
}

std::string Win32Locale::SortKey(std::string_view text) const
{
    const std::wstring native = ToUtf16(text);
    if (native.empty())
        return {};
    const auto map = [&](char* key, std::size_t bytes) {
        const int length =
            LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_SORTKEY | NORM_IGNORECASE, native.data(),
                         static_cast<int>(native.size()), reinterpret_cast<wchar_t*>(key), static_cast<int>(bytes));
        return static_cast<std::size_t>(std::max(length, 0));
    };
    // Mostly enough, so that the system need not be asked how long the key is.
    std::string key(native.size() * 4 + 16, '\0');
    std::size_t length = map(key.data(), key.size());
    if (length == 0 && GetLastError() == ERROR_INSUFFICIENT_BUFFER) {
        key.resize(map(nullptr, 0));
        length = map(key.data(), key.size());
    }
    if (length == 0) // what the system cannot sort stands by its bytes
        return std::string{text}.append(1, '\0');
    key.resize(length);
    return key;
}

char Win32Locale::DecimalSeparator()
{
    wchar_t text[8];
    const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, text, static_cast<int>(std::size(text)));
    return length > 1 && text[0] < 0x80 ? static_cast<char>(text[0]) : '.';
}

std::string Win32Locale::FromAnsi(std::string_view bytes)
{
    return FromCodePage(CP_ACP, bytes).value_or(std::string{});
}

std::optional<std::string> Win32Locale::FromCodePage(std::uint32_t codePage, std::string_view bytes) const
{
    if (bytes.empty())
        return std::string{};
    const int length = static_cast<int>(bytes.size());
    const int units = MultiByteToWideChar(codePage, 0, bytes.data(), length, nullptr, 0);
    if (units <= 0)
        return std::nullopt;
    std::wstring text(static_cast<std::size_t>(units), L'\0');
    MultiByteToWideChar(codePage, 0, bytes.data(), length, text.data(), units);
    return ToUtf8(text);
}

std::optional<std::string> Win32Locale::ToAnsi(std::string_view text)
{
    const std::wstring wide = ToUtf16(text);
    const int length = static_cast<int>(wide.size());
    std::string bytes(wide.size() * 4, '\0'); // no code page takes more for one unit
    const int written = WideCharToMultiByte(CP_ACP, 0, wide.data(), length, bytes.data(),
                                            static_cast<int>(bytes.size()), nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(written));
    // What comes back different had no character of its own: the system puts a similar one, or "?".
    if (FromAnsi(bytes) != text)
        return std::nullopt;
    return bytes;
}

} // namespace platform::win32
