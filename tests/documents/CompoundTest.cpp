#include "tests/documents/Containers.h"
#include "tests/documents/ReadText.h"

#include <vector>

namespace documents {
namespace {

/// A property set with one section of these values, which are given with their kinds.
std::string PropertySet(const std::vector<std::pair<std::uint32_t, std::string>>& values)
{
    std::string rows, data;
    for (const auto& [number, value] : values) {
        rows += Long(number) + Long(8 + 8 * values.size() + data.size());
        data += Padded(value, 4);
    }
    return Short(0xFFFE) + Short(0) + Long(0x20105) + std::string(16, '\0') + Long(1) + std::string(16, '\0') +
           Long(48) + Long(8 + rows.size() + data.size()) + Long(values.size()) + rows + data;
}

std::string Ansi(const std::string& text)
{
    return Long(30) + Long(text.size() + 1) + text + '\0';
}

const std::string summary = PropertySet({{1, Long(2) + Short(932) + Short(0)},
                                         {2, Ansi("\x93\xFA")},
                                         {3, Ansi("S")},
                                         {4, Long(31) + Long(4) + Short('A') + Short(0x65E5) + Short('n') + Short(0)},
                                         {5, Long(2) + Long(0)}, // of a kind that no text has
                                         {12, Long(64) + Number(At(67, 17, 7, 9), 8)},
                                         {13, Long(64) + Number(0, 8)},
                                         {14, Long(3) + Long(12)}});
const std::string documentSummary = PropertySet({{2, Ansi("K")}, {14, Ansi("M")}, {15, Ansi("C")}});
const Facts both{.title = "日",
                 .subject = "?",
                 .author = "A日n",
                 .company = "C",
                 .manager = "M",
                 .category = "K",
                 .created = Date{At(67, 17, 7, 9)},
                 .pages = 12};

TEST(CompoundTest, ReadsThePropertySetsOfTheRoot)
{
    EXPECT_EQ(FactsOf(Compound(summary, documentSummary)), both);
}

TEST(CompoundTest, LoopsEndTheReading)
{
    std::string loops =
        Compound(summary, documentSummary); // every sector follows itself, every entry is its own neighbour
    for (std::size_t i = 0; i < 128; ++i)
        loops.replace(512 + 4 * i, 4, Long(i));
    for (std::size_t entry = 0; entry < 6; ++entry)
        for (const std::size_t link : {68U, 72U, 76U})
            loops.replace(1024 + 128 * entry + link, 4, Long(entry));
    EXPECT_EQ(FactsOf(loops), Facts{});
}

} // namespace
} // namespace documents
