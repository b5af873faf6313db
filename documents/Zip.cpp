#include "documents/Zip.h"

#include "documents/Inflater.h"
#include "documents/Portions.h"
#include "platform/LittleEndian.h"
#include "platform/Text.h"

#include <algorithm>

namespace documents {
namespace {

using platform::LittleEndian;

// The records of an archive: signatures, sizes and offsets as PKWARE's APPNOTE gives them.
constexpr std::string_view EndSignature{"PK\5\6", 4}, EntrySignature{"PK\1\2", 4}, LocalSignature{"PK\3\4", 4};
constexpr std::size_t EndSize = 22, EntrySize = 46, LocalSize = 30;
constexpr std::size_t MostComment = 65535;
constexpr std::size_t MostEntries = 65535;
constexpr std::uint16_t Encrypted = 1, StoredMethod = 0, DeflatedMethod = 8;

} // namespace

ZipArchive::ZipArchive(platform::ByteSource& source) : bytes{source}
{
    const std::uint64_t size = bytes.Size();
    const std::uint64_t tailStart = size - std::min<std::uint64_t>(size, EndSize + MostComment);
    const std::string tail = ReadBytes(bytes, tailStart, EndSize + MostComment);
    if (tail.size() < EndSize)
        return;
    const std::size_t end = tail.rfind(EndSignature, tail.size() - EndSize);
    if (end == std::string::npos)
        return;
    const auto directorySize = LittleEndian<std::uint32_t>(tail, end + 12);
    const auto directoryOffset = LittleEndian<std::uint32_t>(tail, end + 16);
    const std::uint64_t endPosition = tailStart + end;
    if (std::uint64_t{directorySize} + directoryOffset > endPosition)
        return;
    directoryEnd = endPosition;
    directory = endPosition - directorySize;
    base = directory - directoryOffset;
}

std::optional<std::string> ZipArchive::Member(std::string_view name) const
{
    Portions portions{bytes, directory};
    const auto take = [&](std::size_t count) {
        std::string text;
        for (int byte; text.size() < count && (byte = portions.Get()) >= 0;)
            text += static_cast<char>(byte);
        return text;
    };
    for (std::size_t i = 0; i < MostEntries && portions.Position() < directoryEnd; ++i) {
        const std::string entry = take(EntrySize);
        if (!entry.starts_with(EntrySignature) || entry.size() < EntrySize)
            return std::nullopt;
        const auto nameSize = LittleEndian<std::uint16_t>(entry, 28);
        const std::uint64_t next = portions.Position() + nameSize + LittleEndian<std::uint16_t>(entry, 30) +
                                   LittleEndian<std::uint16_t>(entry, 32);
        if (nameSize != name.size() || !platform::text::EqualIgnoringCase(take(nameSize), name)) {
            portions.Seek(next);
            continue;
        }
        const auto method = LittleEndian<std::uint16_t>(entry, 10);
        const auto packedSize = LittleEndian<std::uint32_t>(entry, 20);
        const std::uint64_t local = base + LittleEndian<std::uint32_t>(entry, 42);
        const std::string header = ReadBytes(bytes, local, LocalSize);
        if ((LittleEndian<std::uint16_t>(entry, 8) & Encrypted) != 0 || !header.starts_with(LocalSignature))
            return std::nullopt;
        // The name and what follows it may be longer there than in the directory.
        const std::uint64_t data =
            local + LocalSize + LittleEndian<std::uint16_t>(header, 26) + LittleEndian<std::uint16_t>(header, 28);
        if (method == DeflatedMethod)
            return InflateAll(bytes, data, packedSize, MostBytes);
        if (method != StoredMethod || packedSize > MostBytes)
            return std::nullopt;
        std::string contents = ReadBytes(bytes, data, packedSize);
        return contents.size() == packedSize ? std::optional{std::move(contents)} : std::nullopt;
    }
    return std::nullopt;
}

} // namespace documents
