#include "documents/Inflater.h"

#include <algorithm>

namespace documents {
namespace {

constexpr std::size_t WindowSize = 32768;
constexpr int MostBits = 15; ///< of a code
constexpr int EndOfBlock = 256;
constexpr std::size_t LiteralCodes = 288, UsableLiterals = 286, DistanceCodes = 30;

// The base of each length and distance, and how many bits follow to be added to it (RFC 1951, 3.2.5).
constexpr std::uint16_t lengthBases[] = {3,  4,  5,  6,  7,  8,  9,  10, 11,  13,  15,  17,  19,  23, 27,
                                         31, 35, 43, 51, 59, 67, 83, 99, 115, 131, 163, 195, 227, 258};
constexpr std::uint8_t lengthBits[] = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2,
                                       2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 0};
constexpr std::uint16_t distanceBases[] = {1,    2,    3,    4,    5,    7,    9,    13,    17,    25,
                                           33,   49,   65,   97,   129,  193,  257,  385,   513,   769,
                                           1025, 1537, 2049, 3073, 4097, 6145, 8193, 12289, 16385, 24577};
constexpr std::uint8_t distanceBits[] = {0, 0, 0, 0, 1, 1, 2, 2,  3,  3,  4,  4,  5,  5,  6,
                                         6, 7, 7, 8, 8, 9, 9, 10, 10, 11, 11, 12, 12, 13, 13};
/// The order in which a block gives the lengths of the code for its code lengths.
constexpr std::uint8_t lengthOrder[] = {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};

} // namespace

Inflater::Inflater(platform::ByteSource& source, std::uint64_t offset, std::uint64_t length)
    : input{source, offset}, left{length}, window(WindowSize)
{
}

int Inflater::Code::Build(std::span<const std::uint8_t> lengths)
{
    counts.fill(0);
    for (const std::uint8_t length : lengths)
        ++counts[length];
    if (counts[0] == lengths.size())
        return 0; // no codes at all; nothing can be read with it
    int free = 1;
    for (int bits = 1; bits <= MostBits; ++bits) {
        free = free * 2 - counts[static_cast<std::size_t>(bits)];
        if (free < 0)
            return free;
    }
    std::array<std::uint16_t, 16> next{};
    for (std::size_t bits = 1; bits < MostBits; ++bits)
        next[bits + 1] = static_cast<std::uint16_t>(next[bits] + counts[bits]);
    for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol)
        if (lengths[symbol] != 0)
            symbols[next[lengths[symbol]]++] = static_cast<std::uint16_t>(symbol);
    return free;
}

int Inflater::Bits(int count)
{
    while (bitCount < count) {
        const int byte = left > 0 ? input.Get() : -1;
        if (byte < 0)
            return -1;
        --left;
        bitBuffer |= static_cast<std::uint32_t>(byte) << bitCount;
        bitCount += 8;
    }
    const auto bits = static_cast<int>(bitBuffer & ((1u << count) - 1));
    bitBuffer >>= count;
    bitCount -= count;
    return bits;
}

int Inflater::Symbol(const Code& code)
{
    int value = 0, first = 0, index = 0;
    for (std::size_t length = 1; length <= MostBits; ++length) {
        const int bit = Bits(1);
        if (bit < 0)
            return -1;
        value |= bit;
        const int count = code.counts[length];
        if (value - count < first)
            return code.symbols[static_cast<std::size_t>(index + value - first)];
        index += count;
        first = (first + count) * 2;
        value *= 2;
    }
    return -1;
}

Inflater::State Inflater::BeginBlock()
{
    constexpr std::uint64_t anyway = 1024;
    if (isLastBlock)
        return State::Finished;
    if (++blocks > anyway + written / BytesABlock)
        return State::Broken;
    isLastBlock = Bits(1) == 1;
    switch (Bits(2)) {
    case 0:
        return BeginStored();
    case 1:
        return BeginFixed();
    case 2:
        return BeginDynamic();
    default:
        return State::Broken;
    }
}

Inflater::State Inflater::BeginStored()
{
    bitBuffer = 0; // it begins with a whole byte
    bitCount = 0;
    const int length = Bits(16);
    const int complement = Bits(16);
    if (length < 0 || complement != (~length & 0xFFFF))
        return State::Broken;
    copyLength = static_cast<std::size_t>(length);
    return State::Stored;
}

Inflater::State Inflater::BeginFixed()
{
    std::array<std::uint8_t, LiteralCodes> lengths{};
    std::fill_n(lengths.begin(), 144, std::uint8_t{8});
    std::fill_n(lengths.begin() + 144, 112, std::uint8_t{9});
    std::fill_n(lengths.begin() + 256, 24, std::uint8_t{7});
    std::fill_n(lengths.begin() + 280, 8, std::uint8_t{8});
    (void)literals.Build(lengths);
    std::fill_n(lengths.begin(), DistanceCodes, std::uint8_t{5});
    (void)distances.Build(std::span{lengths}.first(DistanceCodes));
    return State::Codes;
}

Inflater::State Inflater::BeginDynamic()
{
    const int literalCount = Bits(5) + 257;
    const int distanceCount = Bits(5) + 1;
    const int orderCount = Bits(4) + 4;
    if (left == 0 && bitCount < 0)
        return State::Broken;
    const auto codes = static_cast<std::size_t>(literalCount);
    const auto all = codes + static_cast<std::size_t>(distanceCount);
    if (codes > UsableLiterals || all - codes > DistanceCodes)
        return State::Broken;

    std::array<std::uint8_t, UsableLiterals + DistanceCodes> lengths{};
    for (std::size_t i = 0; i < static_cast<std::size_t>(orderCount); ++i) {
        const int length = Bits(3);
        if (length < 0)
            return State::Broken;
        lengths[lengthOrder[i]] = static_cast<std::uint8_t>(length);
    }
    if (literals.Build(std::span{lengths}.first(std::size(lengthOrder))) != 0)
        return State::Broken;

    lengths.fill(0);
    for (std::size_t filled = 0; filled < all;) {
        const int symbol = Symbol(literals);
        if (symbol < 0)
            return State::Broken;
        if (symbol < 16) {
            lengths[filled++] = static_cast<std::uint8_t>(symbol);
            continue;
        }
        // 16 repeats the length before, 17 and 18 a length of 0, short and long.
        if (symbol == 16 && filled == 0)
            return State::Broken;
        const std::uint8_t repeated = symbol == 16 ? lengths[filled - 1] : std::uint8_t{0};
        const int more = Bits(symbol == 16 ? 2 : symbol == 17 ? 3 : 7);
        const std::size_t times = static_cast<std::size_t>(more) + (symbol == 18 ? 11 : 3);
        if (more < 0 || times > all - filled)
            return State::Broken;
        std::fill_n(lengths.begin() + static_cast<std::ptrdiff_t>(filled), times, repeated);
        filled += times;
    }
    if (lengths[EndOfBlock] == 0)
        return State::Broken;
    const int literalsFree = literals.Build(std::span{lengths}.first(codes));
    if (literalsFree < 0 || (literalsFree > 0 && !literals.IsTiny(codes)))
        return State::Broken;
    const int distancesFree = distances.Build(std::span{lengths}.subspan(codes, all - codes));
    if (distancesFree < 0 || (distancesFree > 0 && !distances.IsTiny(all - codes)))
        return State::Broken;
    return State::Codes;
}

Inflater::State Inflater::TakeSymbol(char& literal, bool& isLiteral)
{
    const int symbol = Symbol(literals);
    if (symbol < 0)
        return State::Broken;
    isLiteral = symbol < EndOfBlock;
    literal = static_cast<char>(symbol);
    if (isLiteral)
        return State::Codes;
    if (symbol == EndOfBlock)
        return State::Header;
    const auto lengthIndex = static_cast<std::size_t>(symbol - EndOfBlock - 1);
    if (lengthIndex >= std::size(lengthBases))
        return State::Broken;
    const int moreLength = Bits(lengthBits[lengthIndex]);
    const int distance = moreLength < 0 ? -1 : Symbol(distances);
    if (distance < 0)
        return State::Broken;
    const auto distanceIndex = static_cast<std::size_t>(distance);
    const int moreDistance = Bits(distanceBits[distanceIndex]);
    if (moreDistance < 0)
        return State::Broken;
    copyLength = lengthBases[lengthIndex] + static_cast<std::size_t>(moreLength);
    copyDistance = distanceBases[distanceIndex] + static_cast<std::size_t>(moreDistance);
    return copyDistance <= written ? State::Copying : State::Broken;
}

void Inflater::Put(char byte)
{
    window[written++ % WindowSize] = byte;
}

std::size_t Inflater::Read(std::span<char> room)
{
    std::size_t filled = 0;
    while (filled < room.size()) {
        switch (state) {
        case State::Header:
            state = BeginBlock();
            break;
        case State::Codes: {
            char literal{};
            bool isLiteral{};
            state = TakeSymbol(literal, isLiteral);
            if (isLiteral)
                Put(room[filled++] = literal);
            break;
        }
        case State::Copying:
            Put(room[filled++] = window[(written - copyDistance) % WindowSize]);
            if (--copyLength == 0)
                state = State::Codes;
            break;
        case State::Stored: {
            if (copyLength == 0) {
                state = State::Header;
                break;
            }
            const int byte = Bits(8);
            if (byte < 0) {
                state = State::Broken;
                break;
            }
            Put(room[filled++] = static_cast<char>(byte));
            --copyLength;
            break;
        }
        case State::Finished:
        case State::Broken:
            return filled;
        }
    }
    return filled;
}

std::optional<std::string> InflateAll(platform::ByteSource& source, std::uint64_t offset, std::uint64_t length,
                                      std::size_t limit)
{
    Inflater inflater{source, offset, length};
    std::string text;
    constexpr std::size_t portion = 8192;
    for (;;) {
        const std::size_t filled = text.size();
        text.resize(filled + portion);
        text.resize(filled + inflater.Read(std::span{text}.subspan(filled)));
        if (text.size() > limit)
            return std::nullopt;
        if (text.size() < filled + portion)
            break;
    }
    return inflater.IsFinished() ? std::optional{std::move(text)} : std::nullopt;
}

} // namespace documents
