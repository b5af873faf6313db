#include "library/FolderTable.h"

#include "library/CategoryPath.h"
#include "library/TemplateFiles.h"
#include "platform/Text.h"

#include <algorithm>
#include <deque>

namespace library {
namespace {

constexpr std::string_view True = "True";
constexpr std::string_view False = "False";

} // namespace

void FolderTable::ClearFolderTable()
{
    for (auto& row : cells)
        row.fill({});
    firstRow.clear();
    emptyFolders.clear();
    templatesFound = eBooksFound = 0;
}

void FolderTable::BuildFolderTable(const FolderWalk& walk, FolderListings& listings, app::LoadProgress& progress)
{
    ClearFolderTable();
    // Level by level: a parent's row stands before its children's.
    std::deque<std::size_t> waiting(walk.Roots().begin(), walk.Roots().end());
    for (std::size_t row = 1; !waiting.empty() && row < Rows; ++row) {
        const FolderWalk::Node& node = walk.Nodes()[waiting.front()];
        waiting.pop_front();
        AddRow(row, walk, node);
        if (!progress.Increment())
            break;
        const auto& listing = listings.Of(node.path);
        if (!listing && listing.error() == platform::error::Timeout) {
            MarkWithAncestors(row); // the user must see that there is something
            continue;
        }
        if (!listing)
            break;
        TestFolderForTemplates(row, *listing);
        if (listing->empty() && !node.behindLink)
            emptyFolders.push_back(node.path);
        std::ranges::copy(node.children, std::back_inserter(waiting));
    }
}

void FolderTable::RemoveEmptyFolders(const std::string& templatesPath)
{
    if (templatesFound == eBooksFound)
        return;
    // An empty category is litter. Only the call that the system refuses for a folder with anything in it is used,
    // what lies behind a link (it may have become one since the walk) belongs to somebody else, and a refusal changes
    // nothing.
    for (const std::string& path : emptyFolders)
        if (IsOwnFolder(files, templatesPath, path))
            (void)files.RemoveFolder(DiskPath(templatesPath, path));
}

void FolderTable::AddRow(std::size_t row, const FolderWalk& walk, const FolderWalk::Node& node)
{
    auto& cell = cells[row];
    cell[Name] = node.name;
    cell[HasTemplates] = False;
    if (node.parent >= 0) {
        const FolderWalk::Node& parent = walk.Nodes()[static_cast<std::size_t>(node.parent)];
        cell[Path] = node.path;
        cell[ParentRow] =
            std::to_string(FindFolderRow(parent.parent < 0 ? std::string_view{} : parent.path, parent.name));
    }
    firstRow.try_emplace({cell[Path], cell[Name]}, row);
    cells[0][Name] = std::to_string(row);
}

void FolderTable::TestFolderForTemplates(std::size_t row, const std::vector<platform::FileEntry>& listing)
{
    std::array<bool, TemplateExtensions.size()> found{};
    for (const platform::FileEntry& entry : listing)
        if (IsPlainFile(entry))
            if (const auto type = TemplateTypeOf(entry.name))
                found[*type] = true;
    for (const bool isThere : found)
        if (isThere) {
            MarkWithAncestors(row);
            ++TemplateTypeCount;
            ++templatesFound;
        }
    eBooksFound += found[PdfTemplate] ? 1 : 0;
}

void FolderTable::MarkWithAncestors(std::size_t row)
{
    while (row > 0) {
        cells[row][HasTemplates] = True;
        row = ParentOf(row);
    }
}

std::size_t FolderTable::FindFolderRow(std::string_view path, std::string_view name) const
{
    const auto found = firstRow.find(std::pair<std::string, std::string>{path, name});
    return found == firstRow.end() ? 0 : found->second;
}

std::size_t FolderTable::Count() const
{
    return static_cast<std::size_t>(platform::text::ToInt(cells[0][Name], 0, 0, static_cast<int>(Rows) - 1));
}

const std::string& FolderTable::PathOf(std::size_t row) const
{
    const auto& cell = cells.at(row);
    return cell[Path].empty() ? cell[Name] : cell[Path];
}

std::size_t FolderTable::ParentOf(std::size_t row) const
{
    return static_cast<std::size_t>(platform::text::ToInt(cells.at(row)[ParentRow], 0, 0, static_cast<int>(Rows) - 1));
}

} // namespace library
