#include "library/TemplateLibrary.h"

#include "app/base/StringId.h"
#include "library/FolderWalk.h"
#include "platform/Text.h"

#include <algorithm>

namespace library {

TemplateLibrary::TemplateLibrary(app::Program& program, ui::TreeView& tree)
    : program{program}, table{program.platform.files},
      catalog{program.strings, program.platform.files, program.platform.locale}, folderTree{tree, catalog}
{
}

bool TemplateLibrary::LoadTreeView()
{
    // The passes yield: a click that asks for a load in the middle of one must not build the tree twice over.
    if (loading)
        return true;
    struct Guard {
        bool& flag;
        explicit Guard(bool& guarded) : flag{guarded} { flag = true; }
        ~Guard() { flag = false; }
    } guard{loading};

    FolderListings listings{program.platform.files};
    NoFoldersFound = FullLoad && !ReadFolders(listings);
    FullLoad = false;
    if (NoFoldersFound)
        return false;
    if (!program.progress.Cancelled)
        BuildTreeFromFolderTable(listings);
    RestoreCombo();
    return true;
}

bool TemplateLibrary::ReadFolders(FolderListings& listings)
{
    FolderWalk walk{program.strings, program.progress, listings, program.state.TemplatesPath};
    walk.Run();
    combo = {walk.FolderNames(), -1, {}};
    if (walk.Roots().empty()) {
        table.ClearFolderTable();
        catalog.Clear();
        folderTree.Show();
        if (ClearViews)
            ClearViews();
        if (!program.progress.Cancelled)
            program.messages.Stop(app::str::NoTemplateFolders);
        return false;
    }
    table.BuildFolderTable(walk, listings, program.progress, program.state.TemplatesPath);
    return true;
}

void TemplateLibrary::BuildTreeFromFolderTable(FolderListings& listings)
{
    if (!catalog.Build(table, listings, program.progress, program.state.TemplatesPath))
        return;
    folderTree.Show();
    SelectLastBrowsed();
}

void TemplateLibrary::SelectLastBrowsed()
{
    const std::string last = program.settings.Text("Browser", "LastFolderBrowsed");
    const Catalog::Folder* folder =
        last.empty() || last == program.Text(app::str::ProductCaption) ? nullptr : catalog.FindRemembered(last);
    if (folder == nullptr)
        folder = catalog.FirstCategory();
    folderTree.Select(folder != nullptr ? folder : catalog.Favorites());
}

void TemplateLibrary::RebuildTree()
{
    if (loading)
        return;
    RememberSelection();
    LoadTreeView();
}

void TemplateLibrary::RememberSelection()
{
    const Catalog::Folder* folder = folderTree.Selected();
    if (folder == nullptr)
        return;
    if (const std::string remembered = Catalog::RememberedAs(*folder); !remembered.empty())
        (void)program.settings.Save("Browser", "LastFolderBrowsed", platform::text::Trimmed(remembered));
}

void TemplateLibrary::RestoreCombo()
{
    const std::string last = program.settings.Text("Browser", "LastFolderBrowsed");
    if (last.empty())
        return;
    const auto item = std::ranges::find(combo.items, last);
    if (item != combo.items.end()) {
        combo.selected = static_cast<int>(item - combo.items.begin());
        combo.text = last;
    } else if (last != program.Text(app::str::ProductCaption)) {
        combo.selected = -1;
        combo.text = last;
    }
}

} // namespace library
