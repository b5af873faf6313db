#include "platform/memory/MemoryClock.h"

#include <chrono>

namespace platform::memory {

namespace {

using namespace std::chrono;
using Steps = duration<FileTime, std::ratio<1, 10'000'000>>;
constexpr sys_days epoch{1601y / 1 / 1}; // of the system's file times

} // namespace

LocalTime MemoryClock::ToLocal(FileTime time)
{
    const auto moment = epoch + Steps{time} + minutes{offsetMinutes};
    const auto day = floor<days>(moment);
    const year_month_day date{day};
    const hh_mm_ss clock{floor<seconds>(moment - day)};
    return {.year = static_cast<int>(date.year()),
            .month = static_cast<int>(static_cast<unsigned>(date.month())),
            .day = static_cast<int>(static_cast<unsigned>(date.day())),
            .hour = static_cast<int>(clock.hours().count()),
            .minute = static_cast<int>(clock.minutes().count()),
            .second = static_cast<int>(clock.seconds().count())};
}

void MemoryClock::Sleep(std::uint32_t time)
{
    now += duration_cast<Steps>(milliseconds{time}).count();
    if (OnSleep)
        OnSleep();
}

FileTime MemoryClock::At(const LocalTime& utc)
{
    const sys_days date{year{utc.year} / month{static_cast<unsigned>(utc.month)} / day{static_cast<unsigned>(utc.day)}};
    return Steps{date - epoch + hours{utc.hour} + minutes{utc.minute} + seconds{utc.second}}.count();
}

} // namespace platform::memory
