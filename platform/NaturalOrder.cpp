#include "platform/NaturalOrder.h"

#include <algorithm>

namespace platform {
namespace {

constexpr std::string_view Digits = "0123456789";

/// Takes the first run of digits, or of other characters, off the text.
std::string_view TakeRun(std::string_view& text)
{
    const bool isNumber = Digits.contains(text.front());
    const auto end = isNumber ? text.find_first_not_of(Digits) : text.find_first_of(Digits);
    const std::string_view run = text.substr(0, end);
    text.remove_prefix(run.size());
    return run;
}

int CompareNumbers(std::string_view a, std::string_view b)
{
    a.remove_prefix(std::min(a.find_first_not_of('0'), a.size()));
    b.remove_prefix(std::min(b.find_first_not_of('0'), b.size()));
    if (a.size() != b.size()) // of any length, so it is compared as text
        return a.size() < b.size() ? -1 : 1;
    return a.compare(b);
}

} // namespace

int CompareNaturally(Locale& locale, std::string_view a, std::string_view b)
{
    const std::string_view wholeA = a, wholeB = b;
    while (!a.empty() && !b.empty()) {
        const bool areNumbers = Digits.contains(a.front()) && Digits.contains(b.front());
        const std::string_view runA = TakeRun(a), runB = TakeRun(b);
        const int order = areNumbers ? CompareNumbers(runA, runB) : locale.Compare(runA, runB);
        if (order != 0)
            return order;
    }
    if (a.empty() && b.empty())
        return locale.Compare(wholeA, wholeB); // "1" and "01" are not the same
    return a.empty() ? -1 : 1;
}

} // namespace platform
