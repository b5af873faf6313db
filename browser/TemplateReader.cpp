#include "browser/TemplateReader.h"

#include "browser/FileTypeTabs.h"
#include "library/CategoryPath.h"
#include "library/TemplateFiles.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace browser {

using library::TemplateExtensions;
using library::TemplateTypeOf;
namespace path = platform::path;
namespace text = platform::text;

TemplateReader::TemplateReader(const library::Catalog& catalog, app::PatientFiles& files,
                               const app::StartUpState& state, const app::Settings& settings)
    : catalog{catalog}, files{files}, state{state}
{
    std::size_t entry = 0;
    for (std::string& name : text::Split(settings.Text("Options", "ExcludedTemplates"), '|'))
        if (!name.empty() && entry < ExcludedNames.size())
            ExcludedNames[entry++] = std::move(name);
}

bool TemplateReader::IsExcluded(const std::string& baseName) const
{
    for (const std::string& excluded : ExcludedNames) {
        if (excluded.empty())
            return false;
        if (excluded == baseName)
            return true;
    }
    return false;
}

platform::Result<> TemplateReader::ReadCategory(const std::string& category, std::string_view tab, RowSink& sink) const
{
    if (catalog.FindByPath(category) == nullptr)
        return std::unexpected{platform::error::PathNotFound};
    const std::string place = catalog.PlaceOf(category);
    const SharedText folder{library::DiskPath(state.TemplatesPath, place)};
    const SharedText inFolder{place};
    auto listing = catalog.FilesIn(place);
    std::array<std::vector<platform::FileEntry*>, TemplateExtensions.size()> ofType;
    if (listing)
        for (platform::FileEntry& entry : *listing)
            if (const auto type = TemplateTypeOf(entry.name))
                ofType[*type].push_back(&entry);
    std::size_t count = 0;
    for (std::size_t type = 0; type < TemplateExtensions.size(); ++type) {
        if (!FileTypeTabs::Shows(tab, type))
            ofType[type].clear();
        count += ofType[type].size();
    }
    // Handed over at once: with each piece the list would be counted, sorted and searched anew.
    TemplateRows rows;
    rows.reserve(count);
    for (std::size_t type = 0; type < TemplateExtensions.size(); ++type) {
        if (!sink.GoOn())
            return {};
        for (platform::FileEntry* entry : ofType[type]) {
            std::string baseName = text::Trimmed(path::WithoutLastFour(text::Trimmed(entry->name)));
            if (IsExcluded(baseName))
                continue;
            TemplateRow& row = rows.emplace_back(std::move(baseName), std::move(entry->name), folder, type);
            SetListItemDetails(row, inFolder, entry->size, entry->modified);
        }
    }
    sink.Add(std::move(rows));
    return listing ? platform::Result<>{} : std::unexpected{listing.error()};
}

void TemplateReader::ReadFavorites(const library::Favorites& favorites, std::string_view tab, RowSink& sink) const
{
    TemplateRows rows;
    for (const std::string& favorite : favorites.FavoritesList()) {
        const auto type = std::ranges::find(TemplateExtensions, path::LastFour(favorite));
        if (type == TemplateExtensions.end())
            continue;
        TemplateRow row;
        row.type = static_cast<std::size_t>(type - TemplateExtensions.begin());
        if (!FileTypeTabs::Shows(tab, row.type))
            continue;
        const std::string folder = path::Parent(favorite);
        row.file = path::Name(favorite);
        row.text = path::WithoutLastFour(row.file);
        row.folder = library::DiskPath(state.TemplatesPath, folder);
        if (catalog.FindByPath(folder) != nullptr)
            row.inFolder = folder;
        rows.push_back(std::move(row));
    }
    AddDetails(rows);
    if (sink.GoOn())
        sink.Add(std::move(rows));
}

void TemplateReader::AddDetails(TemplateRows& rows) const
{
    std::vector<std::string> paths(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (!rows[i].inFolder.empty())
            paths[i] = FullPath(rows[i]);
    using Entries = std::vector<platform::Result<platform::FileEntry>>;
    const auto entries = files.Ask([paths = std::move(paths)](platform::FileSystem& disk) -> platform::Result<Entries> {
        Entries found;
        for (const std::string& file : paths)
            found.push_back(file.empty() ? std::unexpected{platform::error::FileNotFound} : disk.Stat(file));
        return found;
    });
    for (std::size_t i = 0; entries && i < rows.size(); ++i)
        if (const auto& entry = (*entries)[i])
            SetListItemDetails(rows[i], rows[i].inFolder, entry->size, entry->modified);
}

std::string TemplateReader::PlaceOf(const std::string& category) const
{
    return catalog.FindByPath(category) != nullptr ? catalog.PlaceOf(category) : category;
}

} // namespace browser
