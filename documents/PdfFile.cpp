#include "documents/PdfFile.h"

#include "documents/Inflater.h"
#include "documents/PdfSyntax.h"
#include "platform/ByteSource.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace documents {
namespace {

using pdf::Lexer;
using pdf::Lookup;
using pdf::Number;
using pdf::Reference;
using pdf::Token;

// Bounds on what is looked at, far beyond what files of these kinds have.
constexpr std::size_t MostTables = 256;
constexpr std::size_t MostTrailer = 8192;      ///< bytes of a trailer or a stream's dictionary
constexpr std::size_t MostTrailers = 65536;    ///< bytes of all trailers together
constexpr std::size_t MostSections = 4096;     ///< of one table
constexpr std::size_t MostPredictedRow = 256;  ///< bytes
constexpr std::int64_t MostUnpacked = 8 << 20; ///< bytes, of all streams together, each time they are gone through
constexpr std::size_t TailSize = 1024;         ///< the end of the file, where the newest table is named
constexpr std::string_view Blanks = " \t\r\n";
constexpr std::size_t PlainEntry = 20; ///< bytes of a place in a table

std::uint64_t NumberOr(std::string_view value, std::uint64_t otherwise)
{
    return Number(value).value_or(otherwise);
}

} // namespace

/// What a stream holds, unpacked as it is asked for.
class PdfFile::Contents {
public:
    Contents(platform::ByteSource& source, std::uint64_t from, std::uint64_t size, bool packed, std::size_t row,
             std::int64_t& budget)
        : file{source}, offset{from}, left{size}, rowSize{row}, unpackable{budget}
    {
        if (packed) // behind the two bytes of zlib's own head
            inflater.emplace(source, from + 2, size > 2 ? size - 2 : 0);
    }

    std::size_t Read(std::span<char> room)
    {
        if (rowSize == 0)
            return ReadRaw(room);
        std::size_t filled = 0;
        while (filled < room.size()) {
            if (inRow == row.size() && !NextRow())
                break;
            room[filled++] = row[inRow++];
        }
        return filled;
    }
    bool Skip(std::uint64_t count)
    {
        std::array<char, 512> room{};
        while (count > 0) {
            const auto portion = static_cast<std::size_t>(std::min<std::uint64_t>(count, room.size()));
            if (Read(std::span{room}.first(portion)) < portion)
                return false;
            count -= portion;
        }
        return true;
    }
    std::string ReadText(std::size_t count)
    {
        std::string text(count, '\0');
        text.resize(Read(text));
        return text;
    }

private:
    platform::ByteSource& file;
    std::uint64_t offset;
    std::uint64_t left;
    std::size_t rowSize; ///< of the rows that are told by their differences; 0: of none
    std::optional<Inflater> inflater;
    std::string row;
    std::size_t inRow{};
    std::int64_t& unpackable; ///< bytes, by the file's readers all together

    std::size_t ReadRaw(std::span<char> room)
    {
        unpackable -= static_cast<std::int64_t>(room.size());
        if (unpackable < 0)
            return 0;
        if (inflater) {
            const std::uint64_t before = inflater->Blocks();
            const std::size_t read = inflater->Read(room);
            unpackable -= static_cast<std::int64_t>((inflater->Blocks() - before) * Inflater::BytesABlock);
            return read;
        }
        const auto most = static_cast<std::size_t>(std::min<std::uint64_t>(room.size(), left));
        const std::size_t read = file.Read(offset, room.first(most));
        offset += read;
        left -= read;
        return read;
    }
    /// Each row begins with the way its differences are meant, as in PNG pictures: of the byte to the left, of the one
    /// above, of both.
    bool NextRow()
    {
        std::string coded(rowSize + 1, '\0');
        if (ReadRaw(coded) < coded.size())
            return false;
        row.resize(rowSize); // the first row has nothing above it
        char left0 = 0, aboveLeft = 0;
        for (std::size_t i = 0; i < rowSize; ++i) {
            const char above = row[i];
            row[i] = static_cast<char>(coded[i + 1] + Predicted(coded[0], left0, above, aboveLeft));
            left0 = row[i];
            aboveLeft = above;
        }
        inRow = 0;
        return true;
    }
    static int Predicted(char way, char leftByte, char aboveByte, char cornerByte)
    {
        const int a = static_cast<unsigned char>(leftByte);
        const int b = static_cast<unsigned char>(aboveByte);
        const int c = static_cast<unsigned char>(cornerByte);
        switch (way) {
        case 1:
            return a;
        case 2:
            return b;
        case 3:
            return (a + b) / 2;
        case 4: {
            const int toA = std::abs(b - c), toB = std::abs(a - c), toC = std::abs(a + b - 2 * c);
            return toA <= toB && toA <= toC ? a : toB <= toC ? b : c;
        }
        default:
            return 0;
        }
    }
};

PdfFile::PdfFile(platform::ByteSource& source) : bytes{source}, unpackable{MostUnpacked}
{
    const std::size_t header = ReadBytes(bytes, 0, TailSize).find("%PDF-");
    base = header == std::string::npos ? 0 : header;
    ReadTables();
}

std::string PdfFile::TextAt(std::uint64_t offset, std::size_t count) const
{
    return offset > bytes.Size() ? std::string{} : ReadBytes(bytes, base + offset, count);
}

void PdfFile::ReadTables()
{
    const std::uint64_t size = bytes.Size();
    const std::string tail = ReadBytes(bytes, size - std::min<std::uint64_t>(size, TailSize), TailSize);
    const std::size_t start = tail.rfind("startxref");
    if (start == std::string::npos)
        return;
    std::vector<std::uint64_t> ahead{NumberOr(Lexer{tail, start + 9}.Next().text, size)};
    // Many programs count from the start of the file although something stands before it.
    if (base != 0 && !TableAt(ahead[0]))
        base = 0;
    std::vector<std::uint64_t> seen;
    std::size_t kept = 0;
    while (!ahead.empty() && tables.size() < MostTables && kept < MostTrailers) {
        const std::uint64_t offset = std::exchange(ahead.back(), 0);
        ahead.pop_back();
        if (std::ranges::find(seen, offset) != seen.end())
            continue;
        seen.push_back(offset);
        auto table = TableAt(offset);
        if (!table)
            continue;
        // Of a file for old and new programs the table for the new ones comes before the older tables.
        for (const char* key : {"/Prev", "/XRefStm"})
            if (const auto next = Number(Lookup(table->trailer, key)))
                ahead.push_back(*next);
        kept += table->trailer.size();
        tables.push_back(*std::move(table));
    }
}

std::optional<std::uint64_t> PdfFile::BodyOf(std::uint64_t offset, std::optional<std::uint64_t> number) const
{
    const std::string text = TextAt(offset, 64);
    Lexer lexer{text};
    const auto found = Number(lexer.Next().text);
    if (!found || (number && found != number) || !Number(lexer.Next().text) || lexer.Next().text != "obj")
        return std::nullopt;
    return offset + lexer.Position();
}

std::optional<PdfFile::Table> PdfFile::TableAt(std::uint64_t offset) const
{
    if (auto table = PlainTableAt(offset))
        return table;
    const auto body = BodyOf(offset, std::nullopt);
    if (!body)
        return std::nullopt;
    const std::string text = TextAt(*body, MostTrailer);
    std::string dictionary{Lexer{text}.Value()};
    if (Lookup(dictionary, "/Type") != "/XRef")
        return std::nullopt;
    return Table{*body, std::move(dictionary), true};
}

std::optional<PdfFile::Table> PdfFile::PlainTableAt(std::uint64_t offset) const
{
    const std::string start = TextAt(offset, 64);
    Lexer lexer{start};
    if (lexer.Next().text != "xref")
        return std::nullopt;
    std::uint64_t at = offset + lexer.Position();
    const Table table{at, {}, false};
    for (std::size_t i = 0; i < MostSections; ++i) {
        const std::string text = TextAt(at, 64);
        Lexer section{text};
        const Token first = section.Next();
        if (first.text == "trailer") {
            std::string trailer = TextAt(at + section.Position(), MostTrailer);
            const std::string_view dictionary = Lexer{trailer}.Value();
            return Table{table.offset, std::string{dictionary}, false};
        }
        const auto count = Number(section.Next().text);
        if (!Number(first.text) || !count || *count > bytes.Size())
            return std::nullopt;
        at += std::min(text.find_first_not_of(Blanks, section.Position()), text.size());
        at += *count * PlainEntry;
    }
    return std::nullopt;
}

PdfFile::Place PdfFile::Find(std::uint64_t number)
{
    for (const Table& table : tables)
        if (const auto place = FindIn(table, number))
            return *place;
    return {};
}

std::optional<PdfFile::Place> PdfFile::FindIn(const Table& table, std::uint64_t number)
{
    return table.isStream ? FindInStream(table, number) : FindInPlain(table, number);
}

std::optional<PdfFile::Place> PdfFile::FindInPlain(const Table& table, std::uint64_t number) const
{
    std::uint64_t at = table.offset;
    for (std::size_t i = 0; i < MostSections; ++i) {
        const std::string text = TextAt(at, 64);
        Lexer section{text};
        const auto first = Number(section.Next().text);
        const auto count = Number(section.Next().text);
        if (!first || !count || *count > bytes.Size())
            return std::nullopt;
        at += std::min(text.find_first_not_of(Blanks, section.Position()), text.size());
        if (number >= *first && number - *first < *count) {
            const std::string entry = TextAt(at + (number - *first) * PlainEntry, PlainEntry);
            Lexer words{entry};
            const auto offset = Number(words.Next().text);
            words.Next(); // how often the number was given again
            const bool used = words.Next().text == "n";
            // What is free in the table for old programs may have its place in the one for new ones.
            return used && offset ? std::optional{Place{Place::Kind::InFile, *offset}} : std::nullopt;
        }
        at += *count * PlainEntry;
    }
    return std::nullopt;
}

std::optional<PdfFile::Place> PdfFile::FindInStream(const Table& table, std::uint64_t number)
{
    // Three fields an entry: the kind of place, and two that depend on it.
    std::array<std::uint64_t, 3> widths{};
    Lexer widthWords{Lookup(table.trailer, "/W")};
    widthWords.Next();
    for (std::uint64_t& width : widths) {
        width = NumberOr(widthWords.Next().text, 9);
        if (width > 8)
            return std::nullopt;
    }
    const std::uint64_t entrySize = widths[0] + widths[1] + widths[2];

    // How many entries stand before this one.
    std::string index{Lookup(table.trailer, "/Index")};
    if (index.empty())
        index = "[0 " + std::string{Lookup(table.trailer, "/Size")} + "]";
    Lexer sections{index};
    sections.Next();
    std::uint64_t before = 0;
    for (std::size_t i = 0; i < MostSections; ++i) {
        const auto first = Number(sections.Next().text);
        const auto count = Number(sections.Next().text);
        if (!first || !count || *count > bytes.Size() * 8)
            return std::nullopt;
        if (number < *first || number - *first >= *count) {
            before += *count;
            continue;
        }
        auto contents = Open(table.offset);
        if (!contents || !contents->Skip((before + number - *first) * entrySize))
            return std::nullopt;
        const std::string entry = contents->ReadText(static_cast<std::size_t>(entrySize));
        if (entry.size() < entrySize)
            return std::nullopt;
        std::array<std::uint64_t, 3> fields{};
        std::size_t at = 0;
        for (std::size_t field = 0; field < fields.size(); ++field)
            for (std::uint64_t byte = 0; byte < widths[field]; ++byte)
                fields[field] = fields[field] << 8 | static_cast<unsigned char>(entry[at++]);
        switch (widths[0] == 0 ? 1 : fields[0]) { // 1 where the kind is left out
        case 1:
            return Place{Place::Kind::InFile, fields[1]};
        case 2:
            return Place{Place::Kind::InStream, fields[1]};
        default:
            return Place{};
        }
    }
    return std::nullopt;
}

std::optional<PdfFile::Contents> PdfFile::Open(std::uint64_t body)
{
    const std::string text = TextAt(body, MostTrailer);
    Lexer lexer{text};
    const std::string_view dictionary = lexer.Value();
    if (lexer.Next().text != "stream")
        return std::nullopt;
    std::size_t data = lexer.Position();
    if (data < text.size() && text[data] == '\r')
        ++data;
    if (data < text.size() && text[data] == '\n')
        ++data;

    const std::uint64_t start = base + body + data;
    const std::uint64_t most = start < bytes.Size() ? bytes.Size() - start : 0;
    // A length that stands elsewhere is not looked for: what is packed knows its own end.
    const std::uint64_t size = std::min(NumberOr(Lookup(dictionary, "/Length"), most), most);

    std::string_view filter = Lookup(dictionary, "/Filter");
    std::string_view parameters = Lookup(dictionary, "/DecodeParms");
    for (std::string_view* list : {&filter, &parameters}) {
        if (!list->starts_with('['))
            continue;
        Lexer items{*list, 1};
        const std::string_view only = items.Value();
        if (items.Next().kind != Token::Kind::ArrayClose)
            return std::nullopt; // packed twice
        *list = only;
    }
    const bool packed = filter == "/FlateDecode" || filter == "/Fl";
    if (!packed && !filter.empty())
        return std::nullopt;
    std::size_t rowSize = 0;
    const std::uint64_t predictor = NumberOr(Lookup(parameters, "/Predictor"), 1);
    if (predictor > 1) {
        constexpr std::uint64_t firstOfPng = 10;
        const std::uint64_t columns = NumberOr(Lookup(parameters, "/Columns"), 1);
        const bool bytewise = NumberOr(Lookup(parameters, "/Colors"), 1) == 1 &&
                              NumberOr(Lookup(parameters, "/BitsPerComponent"), 8) == 8;
        if (predictor < firstOfPng || !bytewise || columns == 0 || columns > MostPredictedRow)
            return std::nullopt;
        rowSize = static_cast<std::size_t>(columns);
    }
    return std::optional<Contents>{std::in_place, bytes, start, size, packed, rowSize, unpackable};
}

/// An object that stands in a stream with others. The stream begins with pairs of numbers: of an object, and of where
/// it begins behind them.
std::string PdfFile::FromStream(std::uint64_t stream, std::uint64_t number)
{
    const Place place = Find(stream);
    const auto body = place.kind == Place::Kind::InFile ? BodyOf(place.where, stream) : std::nullopt;
    auto contents = body ? Open(*body) : std::nullopt;
    if (!contents)
        return {};
    const std::string dictionary = TextAt(*body, MostTrailer);
    const std::uint64_t first = NumberOr(Lookup(dictionary, "/First"), MostText + 1);
    if (Lookup(dictionary, "/Type") != "/ObjStm" || first > MostText)
        return {};
    const std::string pairs = contents->ReadText(static_cast<std::size_t>(first));
    Lexer words{pairs};
    for (;;) {
        const auto object = Number(words.Next().text);
        const auto offset = Number(words.Next().text);
        if (!object || !offset)
            return {};
        if (*object == number)
            return contents->Skip(*offset) ? contents->ReadText(MostText) : std::string{};
    }
}

std::string PdfFile::Trailer(std::string_view key) const
{
    for (const Table& table : tables)
        if (const std::string_view value = Lookup(table.trailer, key); !value.empty())
            return std::string{value};
    return {};
}

std::string PdfFile::Object(std::uint64_t number)
{
    const Place place = Find(number);
    if (place.kind == Place::Kind::InStream)
        return FromStream(place.where, number);
    const auto body = place.kind == Place::Kind::InFile ? BodyOf(place.where, number) : std::nullopt;
    return body ? TextAt(*body, MostText) : std::string{};
}

std::string PdfFile::Resolved(std::string_view value)
{
    const auto number = Reference(value);
    if (!number)
        return std::string{value};
    const std::string object = Object(*number);
    return std::string{Lexer{object}.Value()};
}

std::string PdfFile::Stream(std::uint64_t number)
{
    const Place place = Find(number);
    const auto body = place.kind == Place::Kind::InFile ? BodyOf(place.where, number) : std::nullopt;
    auto contents = body ? Open(*body) : std::nullopt;
    if (!contents)
        return {};
    std::string text = contents->ReadText(MostText + 1);
    if (text.size() <= MostText)
        return text;
    // One whose length stands elsewhere goes on to the end of the file.
    const std::size_t end = text.find("endstream");
    return end == std::string::npos ? std::string{} : text.substr(0, end);
}

} // namespace documents
