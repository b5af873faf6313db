#include "documents/Dates.h"

#include <chrono>
#include <cstddef>

namespace documents {
namespace {

constexpr platform::FileTime StepsASecond = 10'000'000;

/// Takes its pieces off the front of a text.
class Scanner {
public:
    explicit Scanner(std::string_view scanned) : text{scanned} {}

    bool Skip(char wanted)
    {
        const bool found = !text.empty() && text.front() == wanted;
        text.remove_prefix(found ? 1 : 0);
        return found;
    }
    /// Exactly so many digits; nothing is taken when there are fewer.
    std::optional<int> Digits(std::size_t count)
    {
        int value = 0;
        if (text.size() < count)
            return std::nullopt;
        for (const char digit : text.substr(0, count)) {
            if (digit < '0' || digit > '9')
                return std::nullopt;
            value = value * 10 + (digit - '0');
        }
        text.remove_prefix(count);
        return value;
    }
    /// Puts the digits where they belong, if they are there.
    bool Into(int& field, std::size_t count)
    {
        const auto value = Digits(count);
        field = value.value_or(field);
        return value.has_value();
    }
    void SkipFraction()
    {
        if (Skip('.'))
            while (Digits(1)) {
            }
    }

private:
    std::string_view text;
};

/// The moment with the offset that follows: "Z", "+01:00", "-05'30'", or nothing, which makes it local.
std::optional<Date> WithZone(const platform::LocalTime& time, Scanner& rest)
{
    const auto moment = ToFileTime(time);
    if (!moment)
        return std::nullopt;
    if (rest.Skip('Z'))
        return Date{*moment};
    const bool east = rest.Skip('+');
    if (!east && !rest.Skip('-'))
        return Date{*moment, true};
    const int hours = rest.Digits(2).value_or(0);
    if (!rest.Skip(':'))
        rest.Skip('\'');
    const int minutes = rest.Digits(2).value_or(0);
    const platform::FileTime offset = StepsASecond * 60 * (hours * 60 + minutes);
    return Date{*moment + (east ? -offset : offset)};
}

} // namespace

std::optional<platform::FileTime> ToFileTime(const platform::LocalTime& time)
{
    using namespace std::chrono;
    const year_month_day date{year{time.year}, month{static_cast<unsigned>(time.month)},
                              day{static_cast<unsigned>(time.day)}};
    // A leap second is the last one of its minute.
    if (time.year < 1601 || time.year > 9999 || !date.ok() || time.hour < 0 || time.hour > 23 || time.minute < 0 ||
        time.minute > 59 || time.second < 0 || time.second > 60)
        return std::nullopt;
    constexpr sys_days epoch = year{1601} / January / 1;
    const platform::FileTime days = (sys_days{date} - epoch).count();
    const platform::FileTime seconds = ((days * 24 + time.hour) * 60 + time.minute) * 60 + time.second;
    return seconds * StepsASecond;
}

platform::LocalTime OnCalendar(platform::FileTime time)
{
    using namespace std::chrono;
    constexpr platform::FileTime secondsADay = 86400;
    const platform::FileTime total = time / StepsASecond;
    const platform::FileTime day = total / secondsADay - (total % secondsADay < 0 ? 1 : 0);
    const int second = static_cast<int>(total - day * secondsADay);
    const year_month_day date{sys_days{year{1601} / January / 1} + days{day}};
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            second / 3600,
            second / 60 % 60,
            second % 60};
}

std::optional<Date> ParseIsoDate(std::string_view text)
{
    Scanner rest{text};
    platform::LocalTime time{.month = 1, .day = 1};
    if (!rest.Into(time.year, 4))
        return std::nullopt;
    if (rest.Skip('-') && rest.Into(time.month, 2) && rest.Skip('-') && rest.Into(time.day, 2) && rest.Skip('T') &&
        rest.Into(time.hour, 2) && rest.Skip(':') && rest.Into(time.minute, 2) && rest.Skip(':') &&
        rest.Into(time.second, 2))
        rest.SkipFraction();
    return WithZone(time, rest);
}

std::optional<Date> ParsePdfDate(std::string_view text)
{
    Scanner rest{text.starts_with("D:") ? text.substr(2) : text};
    platform::LocalTime time{.month = 1, .day = 1};
    if (!rest.Into(time.year, 4))
        return std::nullopt;
    (void)(rest.Into(time.month, 2) && rest.Into(time.day, 2) && rest.Into(time.hour, 2) && rest.Into(time.minute, 2) &&
           rest.Into(time.second, 2));
    return WithZone(time, rest);
}

} // namespace documents
