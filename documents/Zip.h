#pragma once

#include "platform/ByteSource.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace documents {

/// A zip archive with its directory at the end. It is searched where it lies: memory does not grow with it.
class ZipArchive {
public:
    explicit ZipArchive(platform::ByteSource& source);

    /// The contents of a file of this name, letter case of ASCII ignored. Nothing when there is none, or when it is
    /// broken, encrypted, packed in another way than deflated, or longer than MostBytes.
    std::optional<std::string> Member(std::string_view name) const;

    static constexpr std::size_t MostBytes =
        std::size_t{128} * 1024; ///< of a member; what tells properties is far smaller

private:
    platform::ByteSource& bytes;
    std::uint64_t directory{}; ///< where it begins
    std::uint64_t directoryEnd{};
    std::uint64_t base{}; ///< bytes before the archive, which its offsets do not count
};

} // namespace documents
