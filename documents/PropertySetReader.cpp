// The property sets of compound files ([MS-OLEPS]), in which the old office documents tell of themselves.
#include "documents/CompoundFile.h"
#include "documents/Readers.h"
#include "documents/TextOf.h"
#include "platform/LittleEndian.h"

#include <algorithm>
#include <variant>

namespace documents {
namespace {

using platform::LittleEndian;

// Kinds of values.
constexpr std::uint32_t Short = 2, Long = 3, AnsiText = 30, WideText = 31, Moment = 64;

constexpr std::uint32_t CodePageProperty = 1;
constexpr std::uint32_t MostProperties = 1024;
constexpr std::size_t MostTextBytes = 4 * Facts::MostText;

struct Property {
    std::uint32_t number;
    std::variant<std::string Facts::*, std::optional<Date> Facts::*, int Facts::*> fact;
};
constexpr Property summary[] = {
    {2, &Facts::title},    {3, &Facts::subject},  {4, &Facts::author}, {5, &Facts::keywords},
    {6, &Facts::comments}, {12, &Facts::created}, {13, &Facts::saved}, {14, &Facts::pages},
};
constexpr Property documentSummary[] = {
    {2, &Facts::category}, {7, &Facts::pages}, {14, &Facts::manager}, {15, &Facts::company}}; // 7: slides

/// One section of a property set.
class Section {
public:
    Section(platform::ByteSource& stream, const TextDecoder& decoder) : bytes{stream}, decode{decoder}
    {
        start = Number<std::uint32_t>(44); // of the first section; behind its identifier
        count = std::min(Number<std::uint32_t>(start + 4), MostProperties);
        if (const std::uint64_t value = PlaceOf(CodePageProperty); value != 0)
            codePage = Number<std::uint16_t>(value + 4);
    }

    void AddTo(Facts& facts, std::span<const Property> wanted)
    {
        for (const Property& property : wanted)
            if (const std::uint64_t value = PlaceOf(property.number); value != 0)
                std::visit([&](auto fact) { Take(facts.*fact, value); }, property.fact);
    }

private:
    platform::ByteSource& bytes;
    const TextDecoder& decode;
    std::uint64_t start{};
    std::uint32_t count{};
    std::uint32_t codePage{WesternCodePage};

    template <class T>
    T Number(std::uint64_t offset)
    {
        return LittleEndian<T>(ReadBytes(bytes, offset, sizeof(T)), 0);
    }
    /// Of a property's value in the stream; 0 when the section does not have it.
    std::uint64_t PlaceOf(std::uint32_t number)
    {
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::uint64_t row = start + 8 + 8 * std::uint64_t{i};
            if (Number<std::uint32_t>(row) == number)
                return start + Number<std::uint32_t>(row + 4);
        }
        return 0;
    }
    void Take(std::string& fact, std::uint64_t value)
    {
        const auto kind = Number<std::uint32_t>(value);
        if (kind != AnsiText && kind != WideText)
            return;
        const std::uint64_t size = std::uint64_t{Number<std::uint32_t>(value + 4)} * (kind == WideText ? 2 : 1);
        const std::string text =
            ReadBytes(bytes, value + 8, static_cast<std::size_t>(std::min<std::uint64_t>(size, MostTextBytes)));
        fact = kind == WideText ? FromUtf16(text) : Decoded(text, codePage, decode);
    }
    void Take(std::optional<Date>& fact, std::uint64_t value)
    {
        const auto time = Number<std::int64_t>(value + 4);
        constexpr platform::FileTime year1900 = 94354848000000000; // before it, it is a span of time, or nothing
        constexpr platform::FileTime year10000 = 2650467744000000000;
        if (Number<std::uint32_t>(value) == Moment && time >= year1900 && time < year10000)
            fact = Date{time};
    }
    void Take(int& fact, std::uint64_t value)
    {
        const auto kind = Number<std::uint32_t>(value);
        const int number = kind == Long    ? Number<std::int32_t>(value + 4)
                           : kind == Short ? Number<std::int16_t>(value + 4)
                                           : 0;
        fact = std::max({number, fact, 0});
    }
};

} // namespace

Facts ReadCompound(platform::ByteSource& bytes, const TextDecoder& decode)
{
    CompoundFile file{bytes};
    Facts facts;
    const std::pair<std::string_view, std::span<const Property>> sets[] = {
        {"\5SummaryInformation", summary}, {"\5DocumentSummaryInformation", documentSummary}};
    for (const auto& [name, wanted] : sets)
        if (const auto stream = file.Stream(name))
            Section{*stream, decode}.AddTo(facts, wanted);
    return facts;
}

} // namespace documents
