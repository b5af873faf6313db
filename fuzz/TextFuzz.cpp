// Texts of any bytes.
#include "fuzz/Check.h"
#include "platform/CommandLine.h"
#include "platform/Text.h"
#include "platform/Utf.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <vector>

using namespace platform;
using fuzz::Check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    FuzzedDataProvider input{bytes, size};
    const auto [low, high] = std::minmax({input.ConsumeIntegral<int>(), input.ConsumeIntegral<int>()});
    const int otherwise = input.ConsumeIntegral<int>();
    const auto units = input.ConsumeIntegralInRange<std::size_t>(0, 64);
    const std::string a = input.ConsumeRandomLengthString();
    const std::string b = input.ConsumeRemainingBytesAsString();

    const std::string folded = text::Folded(a);
    Check(text::Folded(folded) == folded, "folded twice is folded once");
    Check(text::EqualIgnoringCase(a, folded), "letter case does not count");
    Check(text::EqualIgnoringCase(a, b) == (folded == text::Folded(b)), "both comparisons agree");
    Check(text::EqualIgnoringCase(a, b) == text::EqualIgnoringCase(b, a), "the order does not matter");
    // The bar keeps bytes that belong to no character from becoming one together.
    Check(text::ContainsIgnoringCase(b + "|" + folded + "|" + b, a), "a part is found");
    Check(text::EndsWithIgnoringCase(b + "|" + folded, a), "an ending is found");

    const std::string_view left = text::Left(a, units);
    Check(a.starts_with(left) && text::Length(left) <= units, "the left part is short enough");
    Check(text::Length(left) + text::Length(std::string_view{a}.substr(left.size())) == text::Length(a), "no cut");
    Check(left.size() == a.size() || text::Length(left) + 2 > units, "the left part is as long as can be");
    const auto utf16 = utf::ToUtf16<char16_t>(a);
    Check(text::Length(a) == utf16.size(), "the length is that of UTF-16");
    std::u16string wild(b.size() / 2, u'\0');
    for (std::size_t i = 0; i < wild.size(); ++i)
        wild[i] =
            static_cast<char16_t>(static_cast<unsigned char>(b[2 * i]) << 8 | static_cast<unsigned char>(b[2 * i + 1]));
    Check(utf::ToUtf16<char16_t>(utf::ToUtf8<char16_t>(wild)) == wild, "UTF-16 comes back unchanged");

    const int number = text::ToInt(a, otherwise, low, high);
    Check(number >= low && number <= high, "a number is in range");

    const std::string trimmed = text::Trimmed(a);
    Check(!trimmed.starts_with(' ') && !trimmed.ends_with(' ') && text::Trimmed(trimmed) == trimmed,
          "no blanks are left");
    const std::vector<std::string> arguments{"a", a, b};
    Check(command_line::Split(command_line::Join(arguments)) == arguments, "a command line is read back");
    std::string joined;
    for (const std::string& piece : text::Split(a, '|'))
        joined += piece + "|";
    Check(joined == a + "|", "the pieces make the text");
    return 0;
}
