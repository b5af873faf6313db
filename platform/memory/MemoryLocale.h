#pragma once

#include "platform/Locale.h"

namespace platform::memory {

/// The regional settings of the United States.
class MemoryLocale final : public Locale {
public:
    std::string ShortDate(const LocalTime& time) override;  ///< "3/7/2004"
    std::string MediumTime(const LocalTime& time) override; ///< "05:07 PM"
    std::string SortKey(std::string_view text) const override;
    std::string SearchForm(std::string_view text) const override; ///< Latin, Greek, Cyrillic, Hebrew, Arabic, kana
    char DecimalSeparator() override { return '.'; }
    std::string FromAnsi(std::string_view bytes) override; ///< ISO 8859-1, or a double-byte code page
    std::optional<std::string> FromCodePage(std::uint32_t codePage,
                                            std::string_view bytes) const override; ///< 1252, 65001
    std::optional<std::string> ToAnsi(std::string_view text) override;

    /// A code page of the kind that East Asia uses: ASCII in one byte, and the ideographs from U+4E00 on in order, in
    /// two bytes of which the second can be a letter, a bracket or a backslash (81 5C is U+4E1C).
    void SetDoubleByte() { doubleByte = true; }

private:
    bool doubleByte{};
};

} // namespace platform::memory
