// Files of files: archives and compound files.
#pragma once

#include "tests/documents/Packed.h"

#include <string>
#include <vector>

namespace documents {

struct Member {
    std::string name;
    std::string contents;
    bool packed{true};
};

/// A zip archive of these files.
inline std::string Zip(const std::vector<Member>& members, const std::string& before = "",
                       const std::string& comment = "")
{
    std::string file = before, directory;
    for (const Member& member : members) {
        const std::string data = member.packed ? Packed(member.contents) : member.contents;
        const std::string common = Short(20) + Short(0) + Short(member.packed ? 8 : 0) + Long(0) + Long(0) +
                                   Long(data.size()) + Long(member.contents.size()) + Short(member.name.size());
        directory += "PK\1\2" + Short(20) + common + Short(4) + Short(0) + Short(0) + Short(0) + Long(0) +
                     Long(file.size() - before.size()) + member.name + "more";
        file += "PK\3\4" + common + Short(2) + member.name + "xx" + data;
    }
    const std::size_t start = file.size() - before.size();
    return file + directory + "PK\5\6" + Long(0) + Short(members.size()) + Short(members.size()) +
           Long(directory.size()) + Long(start) + Short(comment.size()) + comment;
}

inline std::string Padded(std::string text, std::size_t unit)
{
    text.resize((text.size() + unit - 1) / unit * unit);
    return text;
}

inline std::string DirectoryEntry(const std::string& name, int type, std::uint64_t left, std::uint64_t right,
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

/// The two sets in a compound file: the first, of less than 4096 bytes, in mini sectors, as both usually are, the
/// second in sectors. A folder in it holds a stream of the first one's name.
inline std::string Compound(const std::string& summary, const std::string& documentSummary)
{
    constexpr std::uint32_t end = 0xFFFFFFFE, free = 0xFFFFFFFF, table = 0xFFFFFFFD;
    constexpr std::size_t sector = 512, miniSector = 64;
    const std::string minis = Padded(summary, miniSector), miniSectors = Padded(minis, sector),
                      set = Padded(documentSummary + std::string(4096, '\0'), sector);
    // Sectors: the table, the directory (two), the table of mini sectors, the mini sectors, the second set.
    constexpr std::size_t directoryAt = 1, miniTableAt = 3, minisAt = 4;
    const std::size_t setAt = minisAt + miniSectors.size() / sector;
    const std::string name = "\5SummaryInformation";
    const std::string directory =
        DirectoryEntry("Root Entry", 5, free, free, 2, minisAt, minis.size()) +
        DirectoryEntry("Inner", 1, free, 4, 5, 0, 0) + DirectoryEntry("WordDocument", 2, 1, 3, free, 0, 0) +
        DirectoryEntry("\5DocumentSummaryInformation", 2, free, free, free, setAt, set.size()) +
        DirectoryEntry(name, 2, free, free, free, 0, summary.size()) +
        DirectoryEntry(name, 2, free, free, free, 1, miniSector);
    const auto chain = [](std::size_t first, std::size_t count) {
        std::string links;
        for (std::size_t i = 1; i <= count; ++i)
            links += Long(i == count ? end : first + i);
        return links;
    };
    const auto filled = [](std::string text) {
        text.resize(sector, '\xFF');
        return text;
    };
    const std::string header = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + std::string(16, '\0') + Short(0x3E) + Short(3) +
                               Short(0xFFFE) + Short(9) + Short(6) + std::string(6, '\0') + Long(0) + Long(1) +
                               Long(directoryAt) + Long(0) + Long(4096) + Long(miniTableAt) + Long(1) + Long(end) +
                               Long(0) + Long(0);
    return filled(header) +
           filled(Long(table) + chain(directoryAt, 2) + chain(miniTableAt, 1) +
                  chain(minisAt, miniSectors.size() / sector) + chain(setAt, set.size() / sector)) +
           Padded(directory, sector) + filled(chain(0, minis.size() / miniSector)) + miniSectors + set;
}

} // namespace documents
