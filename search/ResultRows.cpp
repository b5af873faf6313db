#include "search/ResultRows.h"

#include "app/base/StringId.h"
#include "browser/FileTypeTabs.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>
#include <utility>

namespace search {
namespace {

/// The first rows stand at once; the others follow in pieces that grow, as each piece makes the list count its rows and
/// look for the selected one again.
constexpr std::size_t RowsAtFirst = 200;
constexpr std::size_t RowsAtOnce = 3200;

} // namespace

template <class Finish>
void ResultRows::Read(std::string_view tab, browser::RowSink& sink, Finish finish)
{
    browser::TemplateRows piece;
    std::size_t size = RowsAtFirst;
    bool isFirst = true;
    const auto hand = [&] {
        if (!std::exchange(isFirst, false) && !sink.GoOn())
            return false;
        size = std::min(2 * size, RowsAtOnce);
        finish(piece);
        sink.Add(std::exchange(piece, {}));
        return true;
    };
    for (const std::uint32_t entry : results.entries) {
        if (!IsShown(entry, tab))
            continue;
        piece.push_back(RowOf(entry));
        if (piece.size() == size && !hand())
            return;
    }
    if (!piece.empty())
        hand();
}

platform::Result<> ResultRows::ReadRows(std::string_view tab, browser::RowSink& sink)
{
    Read(tab, sink, [](const browser::TemplateRows&) {});
    return {};
}

platform::Result<> ResultRows::ReadThumbnails(std::string_view tab, browser::RowSink& sink)
{
    thumbnails.FindBackground();
    Read(tab, sink, [this](browser::TemplateRows& rows) { thumbnails.AddPictures(rows); });
    return {};
}

std::optional<browser::RowSource::Texts> ResultRows::TextsFor(int rows) const
{
    return Texts{strings.LoadString(results.isComplete ? app::str::NothingFound : app::str::Searching),
                 FoundText(strings, static_cast<std::size_t>(rows), results.searched)};
}

std::size_t ResultRows::Count(std::string_view tab) const
{
    return static_cast<std::size_t>(
        std::ranges::count_if(results.entries, [&](std::uint32_t entry) { return IsShown(entry, tab); }));
}

std::string ResultRows::FoundText(const app::StringTable& strings, std::size_t found, std::size_t searched)
{
    return platform::text::Trimmed(strings.LoadString(app::str::Found) + std::to_string(found) +
                                   strings.LoadString(app::str::FoundFrom) + std::to_string(searched) +
                                   strings.LoadString(app::str::FoundFiles));
}

bool ResultRows::IsShown(std::uint32_t entry, std::string_view tab) const
{
    const std::size_t type = results.index->Entries()[entry].type;
    return results.types[type] && browser::FileTypeTabs::Shows(tab, type);
}

browser::TemplateRow ResultRows::RowOf(std::uint32_t number) const
{
    const Index::Entry& entry = results.index->Entries()[number];
    const browser::SharedText folder{results.index->Folders()[entry.folder].disk};
    browser::TemplateRow row{.text = platform::text::Trimmed(platform::path::WithoutLastFour(entry.file)),
                             .file = entry.file,
                             .folder = folder,
                             .type = entry.type};
    browser::SetListItemDetails(row, folder, entry.size, entry.modified);
    return row;
}

} // namespace search
