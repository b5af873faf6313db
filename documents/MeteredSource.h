#pragma once

#include "platform/ByteSource.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace documents {

/// A file as the readers see it: what lies close together is fetched at once, and there is an end to what is fetched,
/// however a hostile file sends its reader to and fro.
class MeteredSource final : public platform::ByteSource {
public:
    explicit MeteredSource(platform::ByteSource& source) : file{source}, pages(PageCount) {}

    std::uint64_t Size() const override { return file.Size(); }
    std::size_t Read(std::uint64_t offset, std::span<char> room) override;

private:
    static constexpr std::size_t PageSize = 4096, PageCount = 8;
    /// Bytes, of which each call costs some more. A property is found after a few pages.
    static constexpr std::int64_t Budget = 16 << 20, CostOfCall = 64;

    struct Page {
        std::uint64_t number{UINT64_MAX};
        std::size_t size{};
        std::array<char, PageSize> bytes;
    };

    platform::ByteSource& file;
    std::vector<Page> pages; ///< each at the place that its number gives
    std::int64_t left{Budget};
};

} // namespace documents
