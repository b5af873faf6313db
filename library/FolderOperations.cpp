#include "library/FolderOperations.h"

#include "app/base/StringId.h"
#include "library/CategoryPath.h"
#include "library/FolderName.h"
#include "library/FolderRemoval.h"
#include "platform/Path.h"
#include "platform/Text.h"

namespace library {
namespace {

namespace path = platform::path;
using app::str::CloseFindPane;

bool IsTopLevel(const Catalog::Folder* folder)
{
    return folder == nullptr || folder->parent == nullptr;
}

} // namespace

FolderOperations::FolderOperations(app::Program& program, ui::TreeView& tree, TemplateLibrary& library,
                                   Favorites& favorites)
    : program{program}, tree{tree}, library{library}, favorites{favorites}
{
    tree.BeforeLabelEdit = [this](ui::TreeView::Node& node, std::string& text) {
        const Catalog::Folder* folder = this->library.Tree().Of(node);
        if (!CanRename(folder))
            return false;
        text = path::Name(folder->path); // without what the tree adds to show an e-book
        return true;
    };
}

void FolderOperations::StartRename()
{
    if (tree.Selected() == nullptr || library.Loading())
        return;
    if (program.state.FindPaneOpen)
        program.messages.Inform(program.Text(app::str::RenameWithFindPane) + "\r" + program.Text(CloseFindPane));
    else if (IsTopLevel(library.Tree().Selected()))
        program.messages.Inform(app::str::RenameTopLevel);
    else
        tree.StartLabelEdit();
}

bool FolderOperations::CanRename(const Catalog::Folder* folder) const
{
    return !library.Loading() && !program.state.FindPaneOpen && !IsTopLevel(folder);
}

void FolderOperations::Rename(const Catalog::Folder* folder, const std::string& newName)
{
    if (!CanRename(folder))
        return;
    const std::string from = folder->path;
    if (newName == path::Name(from))
        return;
    if (const auto refusal = RefusalOf(from, newName)) {
        program.messages.Inform(*refusal);
        ReloadAt(from);
        return;
    }
    const std::string to = path::Join(path::Parent(from), newName);
    if (!Move(from, to)) {
        ReloadAt(from);
        return;
    }
    if (Renamed)
        Renamed(DiskPath(program.state.TemplatesPath, from), DiskPath(program.state.TemplatesPath, to));
    library.FullLoad = true;
    ReloadAt(to);
}

std::optional<std::string> FolderOperations::RefusalOf(const std::string& category, const std::string& newName) const
{
    const std::string taken = program.Text(app::str::CannotRename) + std::string{path::Name(category)} +
                              program.Text(app::str::FolderNameTaken);
    if (newName == program.Text(app::str::MyFavorites) || newName == program.Text(app::str::GetMoreTemplates))
        return taken;
    if (newName.empty())
        return program.Text(app::str::EnterFolderName);
    if (platform::text::Length(newName) > LongestFolderName)
        return program.Text(app::str::FolderNameTooLong);
    const std::string forbidden = program.Text(app::str::FolderNameCharacters) + "\r\n\\ / : * ? \" < > |";
    if (HasForbiddenCharacter(newName))
        return forbidden;
    if (newName.starts_with('.'))
        return program.Text(app::str::FolderNameStart) + ".";
    if (IsNoFolderName(newName))
        return forbidden;
    // Folders of these names are the library's own: it would not show the category any more.
    if (platform::text::EqualIgnoringCase(newName, "Previews") || newName == program.Text(app::str::CreateNew) ||
        newName == program.Text(app::str::RecentDocumentsSearch))
        return taken;
    if (program.platform.files.Stat(DiskPath(program.state.TemplatesPath, path::Join(path::Parent(category), newName))))
        return taken;
    return std::nullopt;
}

bool FolderOperations::Move(const std::string& from, const std::string& to)
{
    // The favourites are stored under both paths while the folder moves, so that none is lost wherever this ends: the
    // next start drops those whose file is not there.
    if (!favorites.StoreMoved(from, to))
        return false;
    const bool isMoved =
        program.platform.files
            .Move(DiskPath(program.state.TemplatesPath, from), DiskPath(program.state.TemplatesPath, to))
            .has_value();
    favorites.ForgetMoved(from, to, isMoved);
    if (!isMoved)
        program.messages.Inform(program.Text(app::str::RenameFailed) + "\r\n" + program.Text(app::str::CloseTemplates));
    return isMoved;
}

void FolderOperations::DeleteSelected()
{
    if (tree.Selected() == nullptr || library.Loading())
        return;
    if (program.state.FindPaneOpen) {
        program.messages.Inform(program.Text(app::str::DeleteWithFindPane) + "\r" + program.Text(CloseFindPane));
        return;
    }
    const Catalog::Folder* folder = library.Tree().Selected();
    if (IsTopLevel(folder)) {
        program.messages.Inform(app::str::DeleteTopLevel);
        return;
    }
    const std::string category = folder->path;
    if (!program.messages.Ask(program.Text(app::str::DeleteFolderQuestion) + "\"" + std::string{path::Name(category)} +
                              "\"" + program.Text(app::str::DeleteFolderContents)))
        return;
    if (ReleaseViews)
        ReleaseViews();
    const bool isRemoved = FolderRemoval{program.platform.files, program.state.TemplatesPath}.Remove(category);
    favorites.GetFavoritesFromRegistry(); // those that lay in the folder are gone
    library.FullLoad = true;
    ReloadAt(path::Parent(category));
    if (!isRemoved)
        program.messages.Stop(program.Text(app::str::DeleteFailed) + "\r" + program.Text(app::str::CloseTemplates));
}

void FolderOperations::ReloadAt(const std::string& category)
{
    (void)program.settings.Save("Browser", "LastFolderBrowsed", category);
    if (Reload)
        Reload(category);
}

} // namespace library
