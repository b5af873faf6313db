// Texts of any bytes in the fields of a profile.
#include "fuzz/Check.h"
#include "platform/Text.h"
#include "profiles/PhoneFormatter.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <string>
#include <vector>

namespace text = platform::text;
using fuzz::Check;

namespace {

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

    profiles::PhoneFormatter field{decimalSeparator};
    for (const std::string& number : numbers) {
        field.BeforeOvertyping(number.substr(0, number.size() / 2), number);
        field.TextChanged(number);
        const auto outcome = field.Leave(number);
        Check(!outcome.refused || !outcome.text, "what is refused stays as it is");
        if (outcome.text) {
            Check(Typed(*outcome.text) == Typed(number), "nothing typed is lost in the field");
            Check(!field.Leave(*outcome.text).text, "left again it stays");
        }
    }
    return 0;
}
