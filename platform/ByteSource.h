#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace platform {

/// The bytes of one file, read by ranges. One thread at a time asks.
class ByteSource {
public:
    virtual ~ByteSource() = default;

    /// When it was opened; it may have shrunk since.
    virtual std::uint64_t Size() const = 0;
    /// Fills `room` from `offset` on: how many bytes there were. Fewer than asked for at the end of the file, or when
    /// it cannot be read there.
    virtual std::size_t Read(std::uint64_t offset, std::span<char> room) = 0;
};

/// Bytes that are in memory and stay there.
class TextSource final : public ByteSource {
public:
    explicit TextSource(std::string_view bytes) : text{bytes} {}
    std::uint64_t Size() const override { return text.size(); }
    std::size_t Read(std::uint64_t offset, std::span<char> room) override
    {
        if (offset >= text.size())
            return 0;
        return text.copy(room.data(), room.size(), static_cast<std::size_t>(offset));
    }

private:
    std::string_view text;
};

/// As many bytes from `offset` on as there are, up to `count`.
inline std::string ReadBytes(ByteSource& source, std::uint64_t offset, std::size_t count)
{
    std::string text(count, '\0');
    text.resize(source.Read(offset, text));
    return text;
}

} // namespace platform
