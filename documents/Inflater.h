#pragma once

#include "documents/Portions.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace documents {

/// Unpacks a deflated stream (RFC 1951) as it is asked for: memory does not grow with what comes out.
class Inflater {
public:
    /// What stands in `source` from `offset` on, up to `length` bytes.
    Inflater(platform::ByteSource& source, std::uint64_t offset, std::uint64_t length);

    /// The next bytes: fewer than asked for only at the end, or where the stream is broken.
    std::size_t Read(std::span<char> room);
    /// It has come to its proper end.
    bool IsFinished() const { return state == State::Finished; }
    /// Blocks that have begun. One takes as long as some dozens of bytes that come out, and may bring none: a stream of
    /// many that bring next to nothing is broken off.
    std::uint64_t Blocks() const { return blocks; }
    static constexpr std::uint64_t BytesABlock = 64; ///< that come out of an honest one at least, nearly always

private:
    enum class State { Header, Stored, Codes, Copying, Finished, Broken };

    /// A prefix code, given by the number of codes of each length and the symbols in their order.
    struct Code {
        std::array<std::uint16_t, 16> counts{};
        std::array<std::uint16_t, 288> symbols{};

        /// How far the codes fall short of using every bit pattern; negative when they are too many.
        int Build(std::span<const std::uint8_t> lengths);
        /// Whether no code is longer than one bit: the one kind that may fall short.
        bool IsTiny(std::size_t size) const { return counts[0] + counts[1] == static_cast<int>(size); }
    };

    int Bits(int count); ///< low bit first; -1 at the end of the input
    int Symbol(const Code& code);
    State BeginBlock();
    State BeginStored();
    State BeginFixed();
    State BeginDynamic();
    State TakeSymbol(char& literal, bool& isLiteral);
    void Put(char byte);

    Portions input;
    std::uint64_t left; ///< bytes of the input
    std::uint32_t bitBuffer{};
    int bitCount{};
    State state{State::Header};
    bool isLastBlock{};
    std::size_t copyLength{};   ///< bytes left of a stored block or of a repetition
    std::size_t copyDistance{}; ///< of the repetition
    Code literals, distances;
    std::vector<char> window; ///< what has come out last, in a ring
    std::uint64_t written{};
    std::uint64_t blocks{};
};

/// All that comes out of a stream; nothing when it is broken or longer than `limit`.
std::optional<std::string> InflateAll(platform::ByteSource& source, std::uint64_t offset, std::uint64_t length,
                                      std::size_t limit);

} // namespace documents
