#include "platform/NaturalOrder.h"

namespace platform {
namespace {

constexpr std::string_view Digits = "0123456789";
constexpr char End = '\0'; ///< less than what any run begins with

/// Takes the first run of digits, or of other characters, off the text.
std::string_view TakeRun(std::string_view& text)
{
    const bool isNumber = Digits.contains(text.front());
    const auto end = isNumber ? text.find_first_not_of(Digits) : text.find_first_of(Digits);
    const std::string_view run = text.substr(0, end);
    text.remove_prefix(run.size());
    return run;
}

} // namespace

NaturalOrder::NaturalOrder(const Locale& locale) : locale{locale}, digits{locale.SortKey("0").front()} {}

std::string NaturalOrder::KeyOf(std::string_view name) const
{
    std::string key, zeros;
    while (!name.empty()) {
        std::string_view run = TakeRun(name);
        if (!Digits.contains(run.front())) {
            key += locale.SortKey(run);
            continue;
        }
        // As a number of any length: the one with more digits is the greater one.
        const std::size_t leading = std::min(run.find_first_not_of('0'), run.size());
        run.remove_prefix(leading);
        key += digits;
        key += static_cast<char>(run.size() >> 8 & 0xFF);
        key += static_cast<char>(run.size() & 0xFF);
        key += run;
        zeros += static_cast<char>(0xFF - std::min<std::size_t>(leading, 0xFF)); // "01" is not "1", and comes before it
    }
    key += End;
    return key + zeros;
}

} // namespace platform
