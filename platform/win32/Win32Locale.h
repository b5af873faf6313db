#pragma once

#include "platform/Locale.h"

namespace platform::win32 {

class Win32Locale final : public Locale {
public:
    std::string ShortDate(const LocalTime& time) override;
    std::string MediumTime(const LocalTime& time) override;
    std::string SortKey(std::string_view text) const override;
    std::string SearchForm(std::string_view text) const override;
    char DecimalSeparator() override;
    std::string FromAnsi(std::string_view bytes) override;
    std::optional<std::string> FromCodePage(std::uint32_t codePage, std::string_view bytes) const override;
    std::optional<std::string> ToAnsi(std::string_view text) override;
};

} // namespace platform::win32
