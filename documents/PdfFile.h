#pragma once

#include "platform/ByteSource.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace documents {

/// The objects of a PDF file by their numbers. The tables that tell where they lie are searched in the file each time:
/// memory does not grow with them.
class PdfFile {
public:
    explicit PdfFile(platform::ByteSource& source);

    /// The value of a key in the newest trailer that has it; "" when none does.
    std::string Trailer(std::string_view key) const;
    /// An object's text, its first MostText bytes; "" when there is none. Of a stream its dictionary.
    std::string Object(std::uint64_t number);
    /// The value itself, or the object that it refers to.
    std::string Resolved(std::string_view value);
    /// The contents of an object that is a stream; "" when they are longer than MostText, packed in an unknown way, or
    /// broken.
    std::string Stream(std::uint64_t number);

    static constexpr std::size_t MostText = std::size_t{128} * 1024;

private:
    /// One table of places: of the file as it was first written, or of one of its changes.
    struct Table {
        std::uint64_t offset{}; ///< of the table's own words
        std::string trailer;
        bool isStream{};
    };
    struct Place {
        enum class Kind { Free, InFile, InStream };
        Kind kind{};
        std::uint64_t where{}; ///< offset, or the number of the stream
    };
    class Contents;

    platform::ByteSource& bytes;
    std::uint64_t base{}; ///< what stands before the file's own first byte
    std::int64_t unpackable;
    std::vector<Table> tables; ///< the newest first

    std::string TextAt(std::uint64_t offset, std::size_t count) const;
    /// Behind "12 0 obj"; nothing when that is not what stands there.
    std::optional<std::uint64_t> BodyOf(std::uint64_t offset, std::optional<std::uint64_t> number) const;
    void ReadTables();
    std::optional<Table> TableAt(std::uint64_t offset) const;
    std::optional<Table> PlainTableAt(std::uint64_t offset) const;
    Place Find(std::uint64_t number);
    std::optional<Place> FindIn(const Table& table, std::uint64_t number);
    std::optional<Place> FindInPlain(const Table& table, std::uint64_t number) const;
    std::optional<Place> FindInStream(const Table& table, std::uint64_t number);
    std::string FromStream(std::uint64_t stream, std::uint64_t number);
    /// The contents of the stream whose body begins there.
    std::optional<Contents> Open(std::uint64_t body);
};

} // namespace documents
