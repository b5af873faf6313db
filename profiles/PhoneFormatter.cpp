#include "profiles/PhoneFormatter.h"

#include "platform/Text.h"

#include <algorithm>

namespace profiles {
namespace {

namespace text = platform::text;

constexpr std::string_view notInNumbers = "!@$%^&*?<>|;`~_/\\[]";
constexpr std::string_view separators = "()-";

enum class First { Any, One, NotOne };

/// One shape: applies when the first `numeric` characters are a number (0: the whole text) and, where it says so, the
/// whole text is none. `head` characters (0: all) fill the mask, the rest follows after a blank.
struct Shape {
    std::size_t shortest, longest; ///< lengths as typed
    std::size_t numeric;
    First first;
    std::size_t head;
    std::string_view mask;
};

constexpr std::size_t whole = 0;
constexpr std::size_t anyLength = static_cast<std::size_t>(-1);

// The first row that fits counts. The masks of nine and of eight places for seven digits are meant: documents made with
// them are in use.
constexpr Shape shapes[] = {
    {7, 7, whole, First::Any, whole, "@@@-@@@@"},
    {8, 8, whole, First::One, whole, "@-@@@-@@@@"},
    {8, 8, whole, First::NotOne, 7, "@@@-@@@@"},
    {8, 8, 7, First::Any, 7, "@@@-@@@@"},
    {9, 9, 8, First::One, 8, "@-@@@-@@@@"},
    {9, 9, 8, First::NotOne, 7, "@@@-@@@@"},
    {9, 9, 7, First::Any, 7, "@@@-@@@@@@"},
    {10, 10, whole, First::Any, whole, "(@@@) @@@-@@@@"},
    {10, 10, 8, First::NotOne, 7, "@@@-@@@@@"},
    {10, 10, 8, First::One, 8, "@-@@@-@@@@"},
    {10, 10, 7, First::Any, 7, "@@@-@@@@"},
    {11, 11, whole, First::One, whole, "@-@@@-@@@-@@@@"},
    {11, 11, whole, First::NotOne, 10, "(@@@) @@@-@@@@"},
    {11, 11, 10, First::Any, 10, "(@@@) @@@-@@@@"},
    {12, anyLength, 11, First::One, 11, "@-@@@-@@@-@@@@"},
    {12, anyLength, 11, First::NotOne, 10, "(@@@) @@@-@@@@"},
    {12, anyLength, 10, First::Any, 10, "(@@@) @@@-@@@@"},
    {12, anyLength, 8, First::One, 8, "@-@@@-@@@@"},
    {12, anyLength, 8, First::NotOne, 7, "@@@-@@@@"},
    {12, anyLength, 7, First::Any, 7, "@@@-@@@@"},
};

/// The head's characters into the places of the mask, from the right; places left over become blanks.
std::string Masked(std::string_view head, std::string_view mask)
{
    std::string result{mask};
    for (auto place = result.rbegin(); place != result.rend(); ++place) {
        if (*place != '@')
            continue;
        *place = head.empty() ? ' ' : head.back();
        if (!head.empty())
            head.remove_suffix(1);
    }
    return result;
}

} // namespace

void PhoneFormatter::TextChanged(std::string_view text)
{
    if (text::Trimmed(text).empty())
        formatNext = true;
}

void PhoneFormatter::BeforeOvertyping(std::string_view selected, std::string_view text)
{
    if (text::Trimmed(selected) == text::Trimmed(text))
        formatNext = true;
}

PhoneFormatter::Outcome PhoneFormatter::Leave(std::string_view typed)
{
    std::string pending = text::Trimmed(typed);
    if (pending.empty())
        return {};
    if (pending.find_first_of(notInNumbers) != std::string::npos)
        return {.refused = true};
    if (pending.find_first_of(separators) != std::string::npos || !formatNext)
        return {};
    formatNext = false;
    return {.text = Format(typed).value_or(std::move(pending))};
}

std::optional<std::string> PhoneFormatter::Format(std::string_view typed) const
{
    const std::size_t length = text::Length(typed);
    const std::string number = text::Trimmed(typed);
    const auto left = [](std::string_view of, std::size_t count) {
        return count == whole ? of : text::Left(of, count);
    };
    const bool startsWithOne = number.starts_with('1');
    const auto fits = [&](const Shape& shape) {
        return length >= shape.shortest && length <= shape.longest &&
               (shape.first == First::Any || (shape.first == First::One) == startsWithOne) &&
               text::IsNumeric(left(number, shape.numeric), decimalSeparator);
    };
    const auto* shape = std::ranges::find_if(shapes, fits);
    if (shape == std::end(shapes))
        return std::nullopt;
    const std::string_view head = left(typed, shape->head);
    std::string result = Masked(head, shape->mask);
    if (shape->head != whole)
        result += " " + text::Trimmed(typed.substr(head.size()));
    return text::Trimmed(result);
}

} // namespace profiles
