#include "tests/documents/Packed.h"
#include "tests/documents/ReadText.h"

#include <vector>

namespace documents {
namespace {

constexpr std::uint32_t End = 0xFFFFFFFE, Free = 0xFFFFFFFF, Table = 0xFFFFFFFD;

std::string Padded(std::string text, std::size_t unit)
{
    text.resize((text.size() + unit - 1) / unit * unit);
    return text;
}

std::string DirectoryEntry(const std::string& name, int type, std::uint64_t left, std::uint64_t right,
                           std::uint64_t child, std::uint64_t first, std::uint64_t size)
{
    std::string wide;
    for (const char c : name)
        wide += Short(static_cast<unsigned char>(c));
    std::string entry = wide + std::string(64 - wide.size(), '\0') + Short(wide.size() + 2) +
                        Number(static_cast<std::uint64_t>(type), 1) + Number(1, 1) + Long(left) + Long(right) +
                        Long(child);
    return entry + std::string(36, '\0') + Long(first) + Long(size) + Long(0);
}

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

/// The two sets in a compound file: the first in mini sectors, as both usually are, the second in sectors. A folder in
/// it holds a stream of the first one's name.
std::string Compound(const std::string& summary, std::string documentSummary)
{
    documentSummary = Padded(documentSummary + std::string(4096, '\0'), 512);
    const std::string mini = Padded(summary, 64), miniSectors = Padded(mini, 512);
    const std::string name = "\5SummaryInformation";
    const std::string directory =
        DirectoryEntry("Root Entry", 5, Free, Free, 2, 3, mini.size()) + DirectoryEntry("Inner", 1, Free, 4, 5, 0, 0) +
        DirectoryEntry("WordDocument", 2, 1, 3, Free, 0, 0) +
        DirectoryEntry("\5DocumentSummaryInformation", 2, Free, Free, Free, 3 + miniSectors.size() / 512,
                       documentSummary.size()) +
        DirectoryEntry(name, 2, Free, Free, Free, 0, summary.size()) + DirectoryEntry(name, 2, Free, Free, Free, 1, 64);
    // Sectors: the table, the directory (two), the table of mini sectors, the mini sectors, the second set.
    std::vector<std::uint32_t> next{Table, 2, End};
    const std::string padded = Padded(directory, 512);
    next = {Table};
    const auto chain = [&](std::size_t sectors) {
        for (std::size_t i = 1; i <= sectors; ++i)
            next.push_back(i == sectors ? End : static_cast<std::uint32_t>(next.size() + 1));
    };
    std::string miniTable;
    for (std::size_t i = 1; i <= mini.size() / 64; ++i)
        miniTable += Long(i == mini.size() / 64 ? End : i);
    chain(padded.size() / 512);
    const std::size_t miniTableAt = next.size();
    chain(1);
    const std::size_t miniAt = next.size();
    chain(miniSectors.size() / 512);
    const std::size_t setAt = next.size();
    chain(documentSummary.size() / 512);
    std::string table;
    for (const std::uint32_t sector : next)
        table += Long(sector);
    table.resize(512, '\xFF');

    std::string fixed = padded; // now it is known where things lie
    fixed.replace(116, 4, Long(miniAt));
    fixed.replace(3 * 128 + 116, 4, Long(setAt));
    std::string header = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + std::string(16, '\0') + Short(0x3E) + Short(3) +
                         Short(0xFFFE) + Short(9) + Short(6) + std::string(6, '\0') + Long(0) + Long(1) + Long(1) +
                         Long(0) + Long(4096) + Long(miniTableAt) + Long(1) + Long(End) + Long(0) + Long(0);
    header.resize(512, '\xFF');
    miniTable.resize(512, '\xFF');
    return header + table + fixed + miniTable + miniSectors + documentSummary;
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
