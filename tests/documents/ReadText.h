#pragma once

#include "documents/Read.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace documents {

/// What these bytes say of themselves. Code page 932 knows one character.
inline Facts FactsOf(std::string_view bytes)
{
    platform::TextSource source{bytes};
    return Read(source, [](std::uint32_t codePage, std::string_view text) -> std::optional<std::string> {
        if (codePage == 932)
            return text == "\x93\xFA" ? "日" : "?";
        return std::nullopt;
    });
}

inline void PrintTo(const Facts& facts, std::ostream* out)
{
    for (const std::string& text : {facts.title, facts.subject, facts.author, facts.keywords, facts.comments,
                                    facts.company, facts.manager, facts.category})
        *out << testing::PrintToString(text) << ' ';
    for (const auto& date : {facts.created, facts.saved})
        *out << (date ? date->time : 0) << (date && date->isLocal ? " local " : " ");
    *out << facts.pages;
}

/// Steps of 100 nanoseconds: of a day of 2004, and the time in it.
constexpr platform::FileTime At(int dayOfYear, int hour, int minute, int second = 0)
{
    constexpr platform::FileTime newYear2004 = 127173888000000000;
    return newYear2004 + (((dayOfYear - 1) * 24LL + hour) * 60 + minute) * 600'000'000LL + second * 10'000'000LL;
}

} // namespace documents
