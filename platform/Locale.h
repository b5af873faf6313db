#pragma once

#include "platform/Clock.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// The user's regional settings.
class Locale {
public:
    virtual ~Locale() = default;

    /// The user's short date format ("Short Date").
    virtual std::string ShortDate(const LocalTime& time) = 0;
    /// Hours of the 12-hour clock with two digits, minutes, the user's AM/PM text ("Medium Time": "05:07 PM"); where
    /// the user has none, hours of the 24-hour clock ("17:07"). With the user's separator.
    virtual std::string MediumTime(const LocalTime& time) = 0;
    /// Bytes in whose order the user's language sorts names, letter case ignored, of any thread. None of nothing; else
    /// they begin with more than 0, and none are the beginning of others.
    virtual std::string SortKey(std::string_view text) const = 0;
    /// The text as searching compares it, of any thread: without letter case, accents, points of vowels, and the
    /// difference between wide and narrow characters. Sounds that are letters of their own (those of kana) stay.
    virtual std::string SearchForm(std::string_view text) const = 0;
    /// One character.
    virtual char DecimalSeparator() = 0;

    /// Text in the system's 8-bit code page, which old text files are written in.
    virtual std::string FromAnsi(std::string_view bytes) = 0;
    /// Text in a code page by its number (1252, 65001 ...), of any thread; nothing when the system does not have it.
    virtual std::optional<std::string> FromCodePage(std::uint32_t codePage, std::string_view bytes) const = 0;
    /// Nothing when the code page lacks one of the characters: text is never changed on its way.
    virtual std::optional<std::string> ToAnsi(std::string_view text) = 0;
};

} // namespace platform
