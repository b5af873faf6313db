#include "documents/CompoundFile.h"

#include "documents/TextOf.h"
#include "platform/LittleEndian.h"

#include <algorithm>
#include <utility>

namespace documents {
namespace {

using platform::LittleEndian;

constexpr std::string_view Signature = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
constexpr std::size_t HeaderSize = 512, EntrySize = 128;
constexpr std::uint32_t LastSector = 0xFFFFFFFA; ///< what is larger is no sector
constexpr std::size_t HeaderTableSectors = 109;
constexpr std::uint8_t StreamType = 2, RootType = 5;

// What a document of 2 GB can need. A stream that tells properties is far smaller.
constexpr std::size_t MostTableSectors = 32768;
constexpr std::size_t MostDirectorySectors = 4096;
constexpr std::size_t MostStreamSectors = 8192;
constexpr std::size_t MostEntries = 4096;

} // namespace

struct CompoundFile::Entry {
    std::string name;
    std::uint8_t type{};
    std::uint32_t left{}, right{}, child{};
    Sector first{};
    std::uint64_t size{};
};

/// The bytes of one chain of sectors.
class CompoundFile::StreamBytes final : public platform::ByteSource {
public:
    /// `places` are the offsets of its pieces in the file.
    StreamBytes(platform::ByteSource& source, std::vector<std::uint64_t> places, std::size_t piece,
                std::uint64_t length)
        : file{source}, pieces{std::move(places)}, pieceSize{piece},
          size{std::min<std::uint64_t>(length, pieces.size() * piece)}
    {
    }
    std::uint64_t Size() const override { return size; }
    std::size_t Read(std::uint64_t offset, std::span<char> room) override
    {
        std::size_t filled = 0;
        while (filled < room.size() && offset + filled < size) {
            const std::uint64_t position = offset + filled;
            const std::uint64_t inPiece = position % pieceSize;
            const std::uint64_t most =
                std::min<std::uint64_t>({pieceSize - inPiece, size - position, room.size() - filled});
            const std::size_t count = static_cast<std::size_t>(most);
            const std::uint64_t place = pieces[static_cast<std::size_t>(position / pieceSize)] + inPiece;
            const std::size_t read = file.Read(place, room.subspan(filled, count));
            filled += read;
            if (read < count)
                break;
        }
        return filled;
    }

private:
    platform::ByteSource& file;
    std::vector<std::uint64_t> pieces;
    std::size_t pieceSize;
    std::uint64_t size;
};

CompoundFile::CompoundFile(platform::ByteSource& source) : bytes{source}
{
    const std::string header = ReadBytes(bytes, 0, HeaderSize);
    const auto sectorShift = LittleEndian<std::uint16_t>(header, 30);
    const auto miniShift = LittleEndian<std::uint16_t>(header, 32);
    if (!header.starts_with(Signature) || header.size() < HeaderSize || (sectorShift != 9 && sectorShift != 12) ||
        miniShift != 6)
        return;
    sectorSize = std::size_t{1} << sectorShift;
    miniSize = std::size_t{1} << miniShift;
    miniCutoff = LittleEndian<std::uint32_t>(header, 56);
    ReadTable(header);
    directory = Chain(LittleEndian<std::uint32_t>(header, 48), MostDirectorySectors, tableSectors);
    miniTable = Chain(LittleEndian<std::uint32_t>(header, 60), MostStreamSectors, tableSectors);
    if (const auto root = EntryAt(0); root && root->type == RootType)
        miniStream = Chain(root->first, MostStreamSectors, tableSectors);
}

/// The first sectors of the table stand in the header, the others in a chain of sectors of their own.
void CompoundFile::ReadTable(std::string_view header)
{
    std::size_t count = std::min<std::size_t>(LittleEndian<std::uint32_t>(header, 44), MostTableSectors);
    for (std::size_t i = 0; i < HeaderTableSectors && tableSectors.size() < count; ++i)
        tableSectors.push_back(LittleEndian<std::uint32_t>(header, 76 + 4 * i));
    const std::size_t numbers = sectorSize / 4 - 1;
    Sector next = LittleEndian<std::uint32_t>(header, 68);
    while (tableSectors.size() < count && next < LastSector) {
        const std::string sector = ReadBytes(bytes, PlaceOf(next), sectorSize);
        if (sector.size() < sectorSize)
            return;
        for (std::size_t i = 0; i < numbers && tableSectors.size() < count; ++i)
            tableSectors.push_back(LittleEndian<std::uint32_t>(sector, 4 * i));
        next = LittleEndian<std::uint32_t>(sector, 4 * numbers);
    }
}

CompoundFile::Sector CompoundFile::InTable(const std::vector<Sector>& table, std::uint64_t index)
{
    const std::uint64_t place = index / (sectorSize / 4);
    if (place >= table.size() || table[static_cast<std::size_t>(place)] >= LastSector)
        return LastSector;
    const Sector sector = table[static_cast<std::size_t>(place)];
    if (cachedSector != sector) {
        cached = ReadBytes(bytes, PlaceOf(sector), sectorSize);
        cachedSector = sector;
    }
    const std::size_t at = static_cast<std::size_t>(index % (sectorSize / 4)) * 4;
    return at + 4 <= cached.size() ? LittleEndian<std::uint32_t>(cached, at) : LastSector;
}

std::vector<CompoundFile::Sector> CompoundFile::Chain(Sector first, std::uint64_t most,
                                                      const std::vector<Sector>& table)
{
    std::vector<Sector> chain;
    for (Sector sector = first; sector < LastSector && chain.size() < most; sector = InTable(table, sector))
        chain.push_back(sector);
    return chain;
}

std::optional<CompoundFile::Entry> CompoundFile::EntryAt(std::uint32_t index)
{
    const std::size_t perSector = sectorSize / EntrySize;
    if (index / perSector >= directory.size())
        return std::nullopt;
    const std::string raw =
        ReadBytes(bytes, PlaceOf(directory[index / perSector]) + index % perSector * EntrySize, EntrySize);
    const auto nameSize = LittleEndian<std::uint16_t>(raw, 64);
    if (raw.size() < EntrySize || nameSize > 64)
        return std::nullopt;
    Entry entry;
    entry.name = FromUtf16(std::string_view{raw}.substr(0, nameSize));
    entry.type = LittleEndian<std::uint8_t>(raw, 66);
    entry.left = LittleEndian<std::uint32_t>(raw, 68);
    entry.right = LittleEndian<std::uint32_t>(raw, 72);
    entry.child = LittleEndian<std::uint32_t>(raw, 76);
    entry.first = LittleEndian<std::uint32_t>(raw, 116);
    // Old writers leave rubbish in the upper half of the size where sectors are small.
    entry.size = sectorSize == 512 ? LittleEndian<std::uint32_t>(raw, 120) : LittleEndian<std::uint64_t>(raw, 120);
    return entry;
}

std::unique_ptr<platform::ByteSource> CompoundFile::Stream(std::string_view name)
{
    if (sectorSize == 0)
        return nullptr;
    const auto root = EntryAt(0);
    if (!root || root->type != RootType)
        return nullptr;
    // The entries of the root are a tree: all of it is looked at, in whatever order it was built.
    std::vector<std::uint32_t> ahead{root->child};
    for (std::size_t seen = 0; !ahead.empty() && seen < MostEntries; ++seen) {
        const auto entry = EntryAt(std::exchange(ahead.back(), 0));
        ahead.pop_back();
        if (!entry)
            continue;
        if (entry->type != StreamType || entry->name != name) {
            ahead.push_back(entry->left);
            ahead.push_back(entry->right);
            continue;
        }
        std::vector<std::uint64_t> places;
        if (entry->size >= miniCutoff) {
            for (const Sector sector : Chain(entry->first, MostStreamSectors, tableSectors))
                places.push_back(PlaceOf(sector));
            return std::make_unique<StreamBytes>(bytes, std::move(places), sectorSize, entry->size);
        }
        const std::size_t perSector = sectorSize / miniSize;
        // Not what the header calls small: that can be any number, and a chain that is a loop would be as long.
        const std::uint64_t minis = std::min<std::uint64_t>((entry->size + miniSize - 1) / miniSize, MostStreamSectors);
        for (const Sector mini : Chain(entry->first, minis, miniTable))
            if (mini / perSector < miniStream.size())
                places.push_back(PlaceOf(miniStream[mini / perSector]) + mini % perSector * miniSize);
        return std::make_unique<StreamBytes>(bytes, std::move(places), miniSize, entry->size);
    }
    return nullptr;
}

} // namespace documents
