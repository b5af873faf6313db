#pragma once

#include "platform/ByteSource.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace documents {

/// A compound file ([MS-CFB]): streams in chains of sectors, like a small disk. It is read where it lies; every chain
/// is followed for no longer than the file is large.
class CompoundFile {
public:
    explicit CompoundFile(platform::ByteSource& source);

    /// A stream of the root folder by its name (UTF-8); null when there is none, or its chain is broken at its start.
    std::unique_ptr<platform::ByteSource> Stream(std::string_view name);

private:
    class StreamBytes;
    struct Entry;
    using Sector = std::uint32_t;

    platform::ByteSource& bytes;
    std::size_t sectorSize{}; ///< 0: no compound file
    std::size_t miniSize{};
    std::uint32_t miniCutoff{};       ///< shorter streams lie in mini sectors
    std::vector<Sector> tableSectors; ///< that hold the table of the next sectors
    std::vector<Sector> directory;
    std::vector<Sector> miniTable;
    std::vector<Sector> miniStream;
    std::string cached; ///< the sector of a table that was asked last
    std::optional<Sector> cachedSector;

    std::uint64_t PlaceOf(Sector sector) const { return (std::uint64_t{sector} + 1) * sectorSize; }
    /// The n-th number in a table that lies in these sectors.
    Sector InTable(const std::vector<Sector>& table, std::uint64_t index);
    std::vector<Sector> Chain(Sector first, std::uint64_t most, const std::vector<Sector>& table);
    void ReadTable(std::string_view header);
    std::optional<Entry> EntryAt(std::uint32_t index);
};

} // namespace documents
