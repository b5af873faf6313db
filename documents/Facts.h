#pragma once

#include "platform/FileSystem.h"

#include <optional>
#include <string>

namespace documents {

/// A moment that a document names.
struct Date {
    /// 100-nanosecond steps since 1601-01-01: of UTC, or
    platform::FileTime time{};
    bool isLocal{}; ///< of the wall clock where it was written, of which the document does not tell the zone
    friend bool operator==(const Date&, const Date&) = default;
};

/// What a document says of itself. Texts are UTF-8, trimmed, of at most MostText bytes; "" where it says nothing.
struct Facts {
    static constexpr std::size_t MostText = 4096;

    std::string title, subject, author, keywords, comments, company, manager, category;
    std::optional<Date> created, saved;
    int pages{}; ///< or slides; 0 where it does not say
    friend bool operator==(const Facts&, const Facts&) = default;
};

} // namespace documents
