#include "browser/TemplateList.h"

#include "app/base/StringId.h"
#include "browser/FileTypeTabs.h"
#include "library/CategoryPath.h"
#include "library/TemplateFiles.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>
#include <utility>

namespace browser {
namespace {

using library::TemplateExtensions;
using library::TemplateTypeOf;
namespace path = platform::path;
namespace text = platform::text;

} // namespace

TemplateList::TemplateList(app::Program& program, ui::ListView& view) : program{program}, view{view}
{
    static constexpr const char* typeImages[] = {"word", "excel", "ppt", "pdf", "photo"};
    static_assert(std::size(typeImages) == TemplateExtensions.size());
    for (int i = 0; i < static_cast<int>(std::size(typeImages)); ++i) {
        view.LargeImages.SetNamed(i + 1, typeImages[i]);
        view.SmallImages.SetNamed(i + 3, typeImages[i]);
    }
    // The small pictures of the types stand behind those of a folder.
    view.SmallImages.SetNamed(1, "folder");
    view.SmallImages.SetNamed(2, "folder-open");
    view.SetModel(this);

    std::size_t entry = 0;
    for (std::string& name : text::Split(program.settings.Text("Options", "ExcludedTemplates"), '|'))
        if (!name.empty() && entry < ExcludedNames.size())
            ExcludedNames[entry++] = std::move(name);
}

void TemplateList::FillCategory(const std::string& category, std::string_view tab)
{
    const std::string shownTab{tab};
    if (auto filled = ReadCategory(category, shownTab))
        Show(std::move(*filled), EmptyText(shownTab));
}

std::optional<TemplateList::RowSet> TemplateList::ReadCategory(const std::string& category, std::string_view tab)
{
    Clear();
    const unsigned thisFill = fill;
    const std::string folder = library::DiskPath(program.state.TemplatesPath, category);
    auto listing = program.platform.files.List(folder);
    const std::string shownTab{tab};
    RowSet filled;
    filled.reserve(listing ? listing->size() : 0);
    for (std::size_t type = 0; type < TemplateExtensions.size(); ++type) {
        program.toolkit.DoEvents();
        if (fill != thisFill)
            return std::nullopt; // the user went on to another folder
        if (!listing || !FileTypeTabs::Shows(shownTab, type))
            continue;
        for (platform::FileEntry& entry : *listing) {
            if (!library::IsPlainFile(entry) || TemplateTypeOf(entry.name) != type)
                continue;
            std::string baseName = text::Trimmed(path::WithoutLastFour(text::Trimmed(entry.name)));
            if (!IsExcluded(baseName))
                filled.push_back({std::move(baseName),
                                  std::exchange(entry.name, {}),
                                  folder,
                                  category,
                                  type,
                                  true,
                                  entry.size,
                                  entry.modified,
                                  {}});
        }
    }
    return filled;
}

void TemplateList::FillFavorites(const std::vector<std::string>& favorites, const library::Catalog& catalog,
                                 std::string_view tab)
{
    Show(ReadFavorites(favorites, catalog, tab), EmptyText(tab));
}

TemplateList::RowSet TemplateList::ReadFavorites(const std::vector<std::string>& favorites,
                                                 const library::Catalog& catalog, std::string_view tab)
{
    Clear();
    RowSet filled;
    for (const std::string& favorite : favorites) {
        const auto type = std::ranges::find(TemplateExtensions, path::LastFour(favorite));
        if (type == TemplateExtensions.end())
            continue;
        Row row;
        row.type = static_cast<std::size_t>(type - TemplateExtensions.begin());
        if (!FileTypeTabs::Shows(tab, row.type))
            continue;
        const std::string folder = path::Parent(favorite);
        row.file = path::Name(favorite);
        row.text = path::WithoutLastFour(row.file);
        row.folder = library::DiskPath(program.state.TemplatesPath, folder);
        if (catalog.FindByPath(folder) != nullptr) {
            row.inFolder = folder;
            if (const auto entry = program.platform.files.Stat(FullPath(row))) {
                row.hasDetails = true;
                row.size = entry->size;
                row.modified = entry->modified;
            }
        }
        filled.push_back(std::move(row));
    }
    return filled;
}

void TemplateList::Clear()
{
    ++fill;
    rows.clear();
    view.SetEmptyText({});
    view.Refill();
}

void TemplateList::Show(RowSet shown, std::string emptyText)
{
    rows = std::move(shown);
    if (sortColumn >= 0)
        Sort();
    view.SetEmptyText(rows.empty() ? std::move(emptyText) : std::string{});
    view.Refill();
}

std::string TemplateList::EmptyText(std::string_view tab) const
{
    if (tab == "Word")
        return program.Text(app::str::NoWordTemplates);
    if (tab == "Excel")
        return program.Text(app::str::NoExcelTemplates);
    if (tab == "PPT")
        return program.Text(app::str::NoPowerPointTemplates);
    return "0 " + program.Text(app::str::TemplatesAvailable);
}

void TemplateList::SortBy(int column)
{
    sortAscending = column == sortColumn ? !sortAscending : true;
    sortColumn = column;
    view.SetSort(sortColumn, sortAscending);
    const Row* selected = Selected();
    const std::string selectedPath = selected != nullptr ? FullPath(*selected) : std::string{};
    Sort();
    view.Reordered(Find(selectedPath));
}

void TemplateList::Sort()
{
    const auto order = [this](const Row& a, const Row& b) -> int {
        const auto byNumber = [](auto x, auto y) { return x < y ? -1 : (y < x ? 1 : 0); };
        switch (sortColumn) {
        case FolderColumn:
            return program.platform.locale.Compare(a.inFolder, b.inFolder);
        case SizeColumn:
            return byNumber(a.size, b.size);
        case ModifiedColumn:
            return byNumber(a.modified, b.modified);
        default:
            return program.platform.locale.Compare(a.text, b.text);
        }
    };
    std::ranges::stable_sort(
        rows, [&](const Row& a, const Row& b) { return sortAscending ? order(a, b) < 0 : order(b, a) < 0; });
}

std::string TemplateList::Text(int row, int column) const
{
    const Row& item = At(row);
    switch (column) {
    case FolderColumn:
        return item.inFolder;
    case SizeColumn:
        return item.hasDetails ? SizeText(item.size) : std::string{};
    case ModifiedColumn:
        return item.hasDetails ? ModifiedText(program, item.modified) : std::string{};
    default:
        return item.text;
    }
}

const TemplateList::Row* TemplateList::Selected() const
{
    const int row = view.Selected();
    return row >= 0 && row < Rows() ? &At(row) : nullptr;
}

std::string TemplateList::FullPath(const Row& row)
{
    return path::Join(row.folder, row.file);
}

int TemplateList::Find(std::string_view fullPath) const
{
    const auto found =
        std::ranges::find_if(rows, [&](const Row& row) { return text::EqualIgnoringCase(FullPath(row), fullPath); });
    return found == rows.end() ? -1 : static_cast<int>(found - rows.begin());
}

std::string TemplateList::SizeText(std::uint64_t bytes)
{
    return std::to_string(bytes / 1024) + "KB";
}

std::string TemplateList::ModifiedText(const app::Program& program, platform::FileTime time)
{
    const platform::LocalTime local = program.platform.clock.ToLocal(time);
    return program.platform.locale.ShortDate(local) + " " + program.platform.locale.MediumTime(local);
}

bool TemplateList::IsExcluded(const std::string& baseName) const
{
    for (const std::string& excluded : ExcludedNames) {
        if (excluded.empty())
            return false;
        if (excluded == baseName)
            return true;
    }
    return false;
}

} // namespace browser
