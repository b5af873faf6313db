#include "packs/VersionResource.h"

#include "platform/LittleEndian.h"
#include "platform/Text.h"
#include "platform/Utf.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace packs {
namespace {

// Where things stand in an executable: the numbers of winnt.h.
constexpr std::size_t DosHeaderSize = 64, HeaderAddressAt = 0x3C;
constexpr std::size_t FileHeaderSize = 24, SectionCountAt = 6, OptionalSizeAt = 20; // with the signature before it
constexpr std::size_t DirectoriesAt = 96, DirectoriesAt64 = 112, DirectorySize = 8;
constexpr std::uint32_t Is64Bit = 0x20B, ResourceDirectory = 2;
constexpr std::size_t SectionSize = 40, SectionAddressAt = 12, SectionFileSizeAt = 16, SectionFileAt = 20;
constexpr std::size_t ResourceHeaderSize = 16, NamedEntriesAt = 12, NumberedEntriesAt = 14, EntrySize = 8;
constexpr std::uint32_t VersionType = 16, VersionNumber = 1, SubDirectory = 0x80000000;

// What no honest file goes past. A block tells its length in 16 bits.
constexpr std::size_t MostSections = 96, MostEntries = 4096, MostLanguages = 64, LongestBlock = 0xFFFF;

constexpr std::size_t LongestText = 255; ///< characters: what the text is read into

constexpr auto Number16 = platform::LittleEndian<std::uint16_t>;
constexpr auto Number32 = platform::LittleEndian<std::uint32_t>;

/// Four hexadecimal digits.
std::string Hex(std::uint32_t number)
{
    std::string digits;
    for (int shift = 12; shift >= 0; shift -= 4)
        digits += "0123456789ABCDEF"[number >> shift & 0xF];
    return digits;
}

std::size_t Aligned(std::size_t at)
{
    return (at + 3) & ~std::size_t{3};
}

/// An executable file, as far as it leads to its resources.
class Executable {
public:
    explicit Executable(platform::ByteSource& source) : file{source} { ReadHeaders(); }

    struct Span {
        std::uint32_t address{}, size{}; ///< in the memory that the program would have
    };
    /// The version resource in each of its languages.
    std::vector<Span> VersionBlocks() const;
    /// "" for a span that lies in no section.
    std::string BytesOf(Span span) const;

private:
    struct Section {
        std::uint32_t address{}, size{}, offset{};
    };
    struct Entry {
        std::uint32_t number{}, target{};
    };

    platform::ByteSource& file;
    std::vector<Section> sections;
    std::optional<std::uint64_t> resources; ///< where they begin in the file

    void ReadHeaders();
    std::optional<std::uint64_t> OffsetOf(std::uint32_t address) const;
    std::vector<Entry> ReadDirectory(std::uint32_t target) const;
    std::optional<std::uint32_t> BelowEntry(const std::vector<Entry>& directory, std::uint32_t number) const;
};

void Executable::ReadHeaders()
{
    const std::string dosHeader = ReadBytes(file, 0, DosHeaderSize);
    if (!dosHeader.starts_with("MZ"))
        return;
    const std::uint64_t header = Number32(dosHeader, HeaderAddressAt);
    const std::string fileHeader = ReadBytes(file, header, FileHeaderSize);
    if (!fileHeader.starts_with(std::string_view{"PE\0\0", 4}))
        return;
    const std::size_t optionalSize = Number16(fileHeader, OptionalSizeAt);
    const std::string optional = ReadBytes(file, header + FileHeaderSize, optionalSize);
    const std::size_t directories = Number16(optional, 0) == Is64Bit ? DirectoriesAt64 : DirectoriesAt;
    if (Number32(optional, directories - 4) <= ResourceDirectory)
        return;
    const std::size_t count = std::min<std::size_t>(Number16(fileHeader, SectionCountAt), MostSections);
    const std::string table = ReadBytes(file, header + FileHeaderSize + optionalSize, count * SectionSize);
    for (std::size_t at = 0; at + SectionSize <= table.size(); at += SectionSize)
        sections.push_back({Number32(table, at + SectionAddressAt), Number32(table, at + SectionFileSizeAt),
                            Number32(table, at + SectionFileAt)});
    resources = OffsetOf(Number32(optional, directories + ResourceDirectory * DirectorySize));
}

std::optional<std::uint64_t> Executable::OffsetOf(std::uint32_t address) const
{
    for (const Section& section : sections)
        if (address >= section.address && address - section.address < section.size)
            return std::uint64_t{section.offset} + (address - section.address);
    return std::nullopt;
}

std::vector<Executable::Entry> Executable::ReadDirectory(std::uint32_t target) const
{
    const std::uint64_t place = *resources + (target & ~SubDirectory);
    const std::string header = ReadBytes(file, place, ResourceHeaderSize);
    const std::size_t count = std::size_t{Number16(header, NamedEntriesAt)} + Number16(header, NumberedEntriesAt);
    const std::string table = ReadBytes(file, place + ResourceHeaderSize, std::min(count, MostEntries) * EntrySize);
    std::vector<Entry> entries;
    for (std::size_t at = 0; at + EntrySize <= table.size(); at += EntrySize)
        entries.push_back({Number32(table, at), Number32(table, at + 4)});
    return entries;
}

std::optional<std::uint32_t> Executable::BelowEntry(const std::vector<Entry>& directory, std::uint32_t number) const
{
    const auto found = std::ranges::find(directory, number, &Entry::number);
    return found != directory.end() && (found->target & SubDirectory) != 0 ? std::optional{found->target}
                                                                           : std::nullopt;
}

std::vector<Executable::Span> Executable::VersionBlocks() const
{
    std::vector<Span> blocks;
    if (!resources)
        return blocks;
    const auto names = BelowEntry(ReadDirectory(SubDirectory), VersionType);
    const auto languages = names ? BelowEntry(ReadDirectory(*names), VersionNumber) : std::nullopt;
    if (!languages)
        return blocks;
    for (const Entry& language : ReadDirectory(*languages)) {
        if ((language.target & SubDirectory) != 0 || blocks.size() == MostLanguages)
            continue;
        const std::string entry = ReadBytes(file, *resources + language.target, ResourceHeaderSize);
        blocks.push_back({Number32(entry, 0), Number32(entry, 4)});
    }
    return blocks;
}

std::string Executable::BytesOf(Span span) const
{
    const auto offset = OffsetOf(span.address);
    const std::size_t size = std::min<std::size_t>(span.size, LongestBlock);
    std::string bytes = offset ? ReadBytes(file, *offset, size) : std::string{};
    return bytes.size() == size ? bytes : std::string{};
}

/// One node of a version block: a key, a value and further nodes.
struct Node {
    std::string key;
    std::string_view value;
    std::string_view text;         ///< the value and what follows: of texts, the length is told in several ways
    std::size_t children{}, end{}; ///< where in the block
};

/// The UTF-16 text up to its terminator.
std::string TextOf(std::string_view bytes)
{
    std::u16string text;
    for (std::size_t at = 0; at + 2 <= bytes.size(); at += 2) {
        const auto unit = static_cast<char16_t>(Number16(bytes, at));
        if (unit == 0)
            break;
        text += unit;
    }
    return platform::utf::ToUtf8<char16_t>(text);
}

/// The node at a place of the block that ends with its parent at the latest.
std::optional<Node> NodeAt(std::string_view block, std::size_t at, std::size_t parentEnd)
{
    constexpr std::size_t headSize = 6; // length, value's length, value's type
    if (at + headSize > parentEnd || Number16(block, at) < headSize)
        return std::nullopt;
    Node node;
    node.end = std::min<std::size_t>(at + Number16(block, at), parentEnd);
    const std::size_t unit = Number16(block, at + 4) == 1 ? 2 : 1; // texts are measured in characters
    std::size_t keyEnd = at + headSize;
    while (keyEnd + 2 <= node.end && Number16(block, keyEnd) != 0)
        keyEnd += 2;
    node.key = TextOf(block.substr(at + headSize, keyEnd - at - headSize));
    const std::size_t start = std::min(Aligned(keyEnd + 2), node.end);
    node.value = block.substr(start, std::min(Number16(block, at + 2) * unit, node.end - start));
    node.text = block.substr(start, node.end - start);
    node.children = Aligned(start + node.value.size());
    return node;
}

std::optional<Node> ChildOf(std::string_view block, const std::optional<Node>& parent, std::string_view key)
{
    if (!parent)
        return std::nullopt;
    auto child = NodeAt(block, parent->children, parent->end);
    while (child && !platform::text::EqualIgnoringCase(child->key, key))
        child = NodeAt(block, Aligned(child->end), parent->end);
    return child;
}

/// The text in the first of the block's languages that has one.
std::optional<std::string> ProductVersionIn(std::string_view block)
{
    const auto root = NodeAt(block, 0, block.size());
    const auto translation = ChildOf(block, ChildOf(block, root, "VarFileInfo"), "Translation");
    if (!translation)
        return std::nullopt;
    const auto texts = ChildOf(block, root, "StringFileInfo");
    const std::string_view languages = translation->value;
    for (std::size_t at = 0; at + 4 <= languages.size(); at += 4) {
        const std::string table = Hex(Number16(languages, at)) + Hex(Number16(languages, at + 2));
        if (const auto version = ChildOf(block, ChildOf(block, texts, table), "ProductVersion"))
            return std::string{platform::text::Left(TextOf(version->text), LongestText)};
    }
    return std::nullopt;
}

} // namespace

std::expected<std::string, VersionFailure> ProductVersionOf(platform::ByteSource& file)
{
    const Executable executable{file};
    auto failure = VersionFailure::NoInformation;
    for (const Executable::Span& span : executable.VersionBlocks()) {
        const std::string block = executable.BytesOf(span);
        if (const auto version = ProductVersionIn(block))
            return *version;
        if (block.empty() && failure == VersionFailure::NoInformation)
            failure = VersionFailure::Unreadable;
        else if (!block.empty())
            failure = VersionFailure::NoValue;
    }
    return std::unexpected{failure};
}

} // namespace packs
