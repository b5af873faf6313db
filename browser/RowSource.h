#pragma once

#include "browser/TemplateRow.h"
#include "platform/Error.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace browser {

/// Where a source puts its rows.
class RowSink {
public:
    virtual ~RowSink() = default;
    /// The next rows, behind those that came before.
    virtual void Add(TemplateRows piece) = 0;
    /// Lets the user act. False when something else is to be shown by now: the source returns and adds nothing more.
    virtual bool GoOn() = 0;

    /// Templates that have no picture of their own among the thumbnails.
    struct WithoutPicture {
        std::size_t count{};
        bool areShown{};
    };
    virtual void TellWithoutPicture(WithoutPicture) {}
};

/// What the list can show. It hands its rows over as they come, in one piece or several, and asks between them whether
/// they are still wanted. An error says that they could not be read.
class RowSource {
public:
    virtual ~RowSource() = default;
    /// The templates of the types that `tab` shows.
    virtual platform::Result<> ReadRows(std::string_view tab, RowSink& sink) = 0;
    /// The same as thumbnails.
    virtual platform::Result<> ReadThumbnails(std::string_view tab, RowSink& sink) = 0;
    /// Number of the text for a list without a row of any type; 0 for the general one.
    virtual std::uint16_t EmptyText() const { return 0; }

    /// Whether the order of the rows says something: no column sorts them until the user chooses one.
    virtual bool IsRanked() const { return false; }
    /// What the list says instead of what it says of a folder.
    struct Texts {
        std::string empty;  ///< in place of the rows that there are none of
        std::string status; ///< of this many rows
    };
    virtual std::optional<Texts> TextsFor(int) const { return std::nullopt; }
};

} // namespace browser
