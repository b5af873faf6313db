// What the main window does with folders, favourites, and what the user opened last.
#include "app/shell/frmMain.h"

#include "app/base/StringId.h"
#include "library/CategoryPath.h"
#include "library/TemplateFiles.h"

#include <algorithm>

namespace app {

void frmMain::WireFolders()
{
    folders.ReleaseViews = [this] {
        tabs.RememberSelection();
        ClearViewState();
    };
    folders.Reload = [this](const std::string& category) { ReloadTree(category); };
    folders.Renamed = [this](const std::string& from, const std::string& to) {
        recentFiles.FolderRenamed(from, to);
        RefreshCommands();
    };
    tvTreeView.AfterLabelEdit = [this](ui::TreeView::Node& node, const std::string& text) {
        const Busy guard{*this};
        folders.Rename(node, text);
    };
    tvTreeView.Drop = [this](ui::TreeView::Node& node, ui::Control& source) { tvTreeView_Drop(node, source); };
    lvListView.DropTarget = &tvTreeView;
    imgPreview.DropTarget = &tvTreeView;
    opener.Opened = [this](const std::string& path) {
        recentFiles.AddRecentFileToList(path);
        if (!library::TemplateTypeOf(path))
            recentDocuments.Add(path);
        RefreshCommands();
    };
    opener.Created = [this](const std::string& path) { recentDocuments.Add(path); };
}

void frmMain::ReloadTree(const std::string& category)
{
    const Busy guard{*this};
    if (!LoadTreeView())
        return;
    if (auto* node = templateLibrary.Tree().FindRemembered(category)) {
        tvTreeView.Select(node);
        tvTreeView.EnsureVisible(*node);
    }
    templateLibrary.RememberSelection();
    FillList();
}

void frmMain::mnupopDeletefolder_Click()
{
    const Busy guard{*this};
    folders.DeleteSelected();
}

void frmMain::tvTreeView_Drop(ui::TreeView::Node& node, ui::Control& source)
{
    if (&source == &imgPreview)
        program.messages.Inform(str::DragFromPreview);
    else if (templateLibrary.Tree().IsFavorites(node))
        mnuAddToFavorites_Click();
    else
        program.messages.Inform(program.Text(str::DropRefused) + "\r\n" + program.Text(str::DropOnlyFavorites));
}

bool frmMain::FavoritesSelected() const
{
    const auto* node = tvTreeView.Selected();
    return node != nullptr && templateLibrary.Tree().IsFavorites(*node);
}

void frmMain::mnuAddToFavorites_Click()
{
    const auto* row = templates.Selected();
    if (row == nullptr)
        return;
    const std::string path = browser::TemplateList::FullPath(*row);
    const std::size_t root = library::DiskPath(program.state.TemplatesPath, "").size(); // its last "\\" included
    favorites.AddToFavorites(library::WithoutCreateNew(path.substr(std::min(root, path.size())),
                                                       program.Text(str::CreateNew)), row->text);
}

void frmMain::mnuRemoveFromFavorites_Click()
{
    const Busy guard{*this};
    const auto* row = templates.Selected();
    if (row != nullptr && favorites.RemoveFromFavorites(std::string{row->text}) && FavoritesSelected())
        FillList();
}

void frmMain::mnuFile_Click(std::size_t number)
{
    if (number <= recentFiles.List().size())
        opener.OpenAgain(std::string{recentFiles.List()[number - 1]});
}

} // namespace app
