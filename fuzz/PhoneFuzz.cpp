// Texts of any bytes in the fields of a profile.
#include "fuzz/Check.h"
#include "platform/Text.h"
#include "profiles/FieldChecks.h"
#include "profiles/PhoneFormatter.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <string>
#include <vector>

namespace text = platform::text;
using fuzz::Check;

namespace {

constexpr std::string_view refused = "!@$%^&*?<>|;`~_/\\[]";
constexpr std::string_view separators = "()-";
constexpr std::string_view addedByMasks = "()- ";

/// Phone numbers are what makes the formatter work: the characters that matter to it are likely.
std::string LikelyNumber(FuzzedDataProvider& input)
{
    static constexpr std::string_view alphabet = "0123456789115550000 .,+-()x*/#\t";
    std::string number;
    for (std::size_t left = input.ConsumeIntegralInRange<std::size_t>(0, 24); left > 0; --left) {
        const auto at = input.ConsumeIntegralInRange<std::size_t>(0, alphabet.size());
        number += at == alphabet.size() ? input.ConsumeRandomLengthString(4) : std::string{alphabet[at]};
    }
    return number;
}

/// What the user typed: everything but the characters that the masks put in.
std::string Typed(std::string_view number)
{
    std::string kept{number};
    std::erase_if(kept, [](char c) { return addedByMasks.contains(c); });
    return kept;
}

void CheckFormatted(const profiles::PhoneFormatter& formatter, const std::string& number)
{
    const auto formatted = formatter.Format(number);
    Check(formatter.Format(number) == formatted, "the same text has the same shape");
    if (!formatted)
        return;
    Check(Typed(*formatted) == Typed(number), "nothing typed is lost, added or moved");
    Check(text::Trimmed(*formatted) == *formatted, "no blanks around");
    // The longest mask adds four characters to its digits, the blank before the rest one more, and places of a mask
    // that stay empty are blanks.
    Check(text::Length(*formatted) <= text::Length(number) + 12, "the text hardly grows");
    Check(text::Length(number) >= 7, "short texts have no shape");
}

void CheckLife(profiles::PhoneFormatter formatter, const std::vector<std::string>& numbers)
{
    bool turn = true; // the formatter's, by the rules
    for (const std::string& number : numbers) {
        formatter.BeforeOvertyping(number.substr(0, number.size() / 2), number);
        turn = turn || text::Trimmed(number.substr(0, number.size() / 2)) == text::Trimmed(number);
        formatter.TextChanged(number);
        const std::string pending = text::Trimmed(number);
        turn = turn || pending.empty();
        const auto outcome = formatter.Leave(number);
        const bool isRefused = pending.find_first_of(refused) != std::string::npos;
        const bool isShaped = pending.find_first_of(separators) != std::string::npos;
        Check(outcome.refused == isRefused, "refused for its characters alone");
        Check(outcome.text.has_value() == (turn && !pending.empty() && !isRefused && !isShaped),
              "formatted in its turn");
        if (outcome.text) {
            turn = false;
            Check(*outcome.text == formatter.Format(number).value_or(pending), "its shape, or itself");
            Check(!formatter.Leave(*outcome.text).text, "left again it stays");
        }
    }
}

bool IsOneOf(char c, std::string_view others)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || others.contains(c);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    FuzzedDataProvider input{bytes, size};
    const char decimalSeparator = input.ConsumeBool() ? '.' : ',';
    const profiles::PhoneFormatter formatter{decimalSeparator};
    std::vector<std::string> numbers;
    for (std::size_t left = input.ConsumeIntegralInRange<std::size_t>(1, 6); left > 0; --left)
        numbers.push_back(LikelyNumber(input));
    const std::string any = input.ConsumeRemainingBytesAsString();
    for (const std::string& number : numbers)
        CheckFormatted(formatter, number);
    CheckFormatted(formatter, any);
    CheckLife(formatter, numbers);

    for (const std::string& field : {numbers.front(), any}) {
        Check(profiles::IsStateText(field) == std::ranges::all_of(field, [](char c) { return IsOneOf(c, " "); }),
              "letters and blanks");
        Check(profiles::IsZipText(field) ==
                  std::ranges::all_of(field, [](char c) { return IsOneOf(c, " -0123456789"); }),
              "letters, digits, blanks and hyphens");
    }
    return 0;
}
