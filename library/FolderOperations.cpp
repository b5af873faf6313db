#include "library/FolderOperations.h"

#include "app/base/StringId.h"
#include "library/CategoryPath.h"
#include "library/FolderRemoval.h"
#include "library/FolderWalk.h"
#include "library/TemplateFiles.h"
#include "platform/FileName.h"
#include "platform/Path.h"
#include "platform/Scoped.h"
#include "platform/Text.h"

namespace library {
namespace {

namespace path = platform::path;
using app::str::CloseFindPane;
using platform::text::Replaced;

constexpr std::size_t LongestFolderName = 40; ///< characters

bool IsTopLevel(const Catalog::Folder* folder)
{
    return folder == nullptr || folder->parent == nullptr;
}

} // namespace

FolderOperations::FolderOperations(ui::TreeView& tree, TemplateLibrary& library, Favorites& favorites,
                                   app::PatientFiles& files, platform::Shell& shell, platform::Clock& clock,
                                   app::Settings& settings, app::Messages& messages, const app::StringTable& strings,
                                   const app::StartUpState& state)
    : tree{tree}, library{library}, favorites{favorites}, files{files}, shell{shell}, clock{clock}, settings{settings},
      messages{messages}, strings{strings}, state{state}
{
    tree.BeforeLabelEdit = [this](ui::TreeView::Node& node, std::string& text) {
        const Catalog::Folder* folder = this->library.Tree().Of(node);
        if (!CanRename(folder))
            return false;
        // Without what the tree adds to show an e-book.
        text = typed ? *typed : std::string{path::Name(folder->path)};
        return true;
    };
}

void FolderOperations::StartRename()
{
    if (tree.Selected() == nullptr || library.Loading())
        return;
    if (state.FindPaneOpen)
        RefuseWithFindPane();
    else if (IsTopLevel(library.Tree().Selected()))
        messages.Inform(app::str::RenameTopLevel);
    else
        tree.StartLabelEdit();
}

void FolderOperations::RefuseWithFindPane()
{
    messages.Inform(strings.LoadString(app::str::RenameWithFindPane) + "\r" + strings.LoadString(CloseFindPane));
}

bool FolderOperations::CanRename(const Catalog::Folder* folder) const
{
    return !library.Loading() && !state.FindPaneOpen && !IsTopLevel(folder);
}

void FolderOperations::Rename(const Catalog::Folder* folder, const std::string& newName)
{
    if (state.FindPaneOpen && !IsTopLevel(folder) && newName != path::Name(folder->path))
        RefuseWithFindPane(); // it was opened while the name was typed
    if (!CanRename(folder))
        return;
    const std::string from = folder->path;
    if (newName == path::Name(from))
        return;
    const std::string to = path::Join(path::Parent(from), newName);
    if (!Renames(from, newName, to)) {
        EditAgain(from, newName);
        return;
    }
    if (Renamed)
        Renamed(DiskPath(state.TemplatesPath, from), DiskPath(state.TemplatesPath, to));
    ReloadAt(to);
}

bool FolderOperations::Renames(const std::string& from, const std::string& newName, const std::string& to)
{
    const app::PatientFiles::Operation whole{files};
    if (const auto refusal = RefusalOf(from, newName)) {
        messages.Inform(*refusal);
        return false;
    }
    const auto stopper = FolderWalk::Hides(files, state.TemplatesPath, path::Parent(from), newName);
    if (stopper && messages.Ask(Replaced(Replaced(strings.LoadString(app::str::HiddenNameQuestion), "%1", newName),
                                         "%2", *stopper)))
        return false;
    // Also after a failure: the folder may be called otherwise, or be gone.
    library.FullLoad = true;
    return Move(from, to);
}

void FolderOperations::EditAgain(const std::string& category, const std::string& newName)
{
    ReloadAt(category);
    const Catalog::Folder* folder = library.Tree().Selected();
    if (folder == nullptr || folder->path != category)
        return; // it is gone
    const platform::Scoped offered{typed, std::optional{newName}};
    tree.StartLabelEdit();
}

std::optional<std::string> FolderOperations::RefusalOf(const std::string& category, const std::string& newName) const
{
    const std::string taken = strings.LoadString(app::str::CannotRename) + std::string{path::Name(category)} +
                              strings.LoadString(app::str::FolderNameTaken);
    if (newName == strings.LoadString(app::str::MyFavorites) ||
        newName == strings.LoadString(app::str::GetMoreTemplates))
        return taken;
    if (newName.empty())
        return strings.LoadString(app::str::EnterFolderName);
    if (platform::text::Length(newName) > LongestFolderName)
        return strings.LoadString(app::str::FolderNameTooLong);
    const std::string forbidden =
        strings.LoadString(app::str::FolderNameCharacters) + "\r\n" + platform::file_name::ForbiddenShown;
    if (platform::file_name::HasForbiddenCharacter(newName))
        return forbidden;
    if (newName.starts_with('.'))
        return strings.LoadString(app::str::FolderNameStart) + ".";
    if (platform::file_name::HasControlCharacter(newName))
        return forbidden;
    if (platform::file_name::IsShortened(newName))
        return strings.LoadString(app::str::FolderNameEnd);
    if (platform::file_name::IsDevice(newName))
        return Replaced(strings.LoadString(app::str::FolderNameDevice), "%1", newName);
    // Folders of these names are the library's own: it would not show the category any more.
    if (platform::text::EqualIgnoringCase(newName, PreviewsFolder) ||
        newName == strings.LoadString(app::str::CreateNew) ||
        newName == strings.LoadString(app::str::RecentDocumentsSearch))
        return taken;
    if (files.Stat(DiskPath(state.TemplatesPath, path::Join(path::Parent(category), newName))))
        return taken;
    return std::nullopt;
}

bool FolderOperations::Move(const std::string& from, const std::string& to)
{
    // The favourites are stored under both paths while the folder moves, so that none is lost wherever this ends: the
    // next start drops those whose file is not there.
    if (!favorites.StoreMoved(from, to))
        return false;
    const auto moved = MoveOnceLetGo(DiskPath(state.TemplatesPath, from), DiskPath(state.TemplatesPath, to));
    if (!moved && moved.error() == platform::error::Cancelled)
        return false; // nobody knows yet
    const bool isMoved = moved.has_value();
    favorites.ForgetMoved(from, to, isMoved);
    if (!isMoved)
        messages.Inform(strings.LoadString(app::str::RenameFailed) + "\r\n" +
                        strings.LoadString(app::str::CloseTemplates));
    return isMoved;
}

/// The pictures that are just being read for the views hold the folder for a moment, and so may scanners and indexers.
platform::Result<> FolderOperations::MoveOnceLetGo(const std::string& from, const std::string& to)
{
    constexpr std::uint32_t step = 50, most = 1000; // milliseconds
    if (ReleaseViews)
        ReleaseViews();
    auto moved = files.Move(from, to);
    const auto isHeld = [&] {
        return moved.error() == platform::error::SharingViolation || moved.error() == platform::error::AccessDenied;
    };
    for (std::uint32_t waited = 0; !moved && isHeld() && waited < most; waited += step) {
        (void)files.Ask([&world = clock](platform::FileSystem&) -> platform::Result<> {
            world.Sleep(step);
            return {};
        });
        moved = files.Move(from, to);
    }
    return moved;
}

void FolderOperations::DeleteSelected()
{
    if (tree.EditedLabel())
        return; // the name that is being typed is of the folder that would go
    if (tree.Selected() == nullptr || library.Loading())
        return;
    if (state.FindPaneOpen) {
        messages.Inform(strings.LoadString(app::str::DeleteWithFindPane) + "\r" + strings.LoadString(CloseFindPane));
        return;
    }
    const Catalog::Folder* folder = library.Tree().Selected();
    if (IsTopLevel(folder)) {
        messages.Inform(app::str::DeleteTopLevel);
        return;
    }
    const std::string category = folder->path;
    FolderRemoval removal{files, shell, state.TemplatesPath};
    if (!messages.Ask(DeleteQuestion(category, removal), ui::Answer::No))
        return;
    if (ReleaseViews)
        ReleaseViews();
    const auto removed = removal.Remove(category);
    const bool isTakenBack = !removed && removed.error() == platform::error::Declined;
    favorites.GetFavoritesFromRegistry(); // those that lay in the folder are gone
    library.FullLoad = true;
    ReloadAt(isTakenBack ? category : std::string{path::Parent(category)});
    if (!removed && !isTakenBack)
        messages.Stop(strings.LoadString(app::str::DeleteFailed) + "\r" + strings.LoadString(app::str::CloseTemplates));
}

std::string FolderOperations::DeleteQuestion(const std::string& category, FolderRemoval& removal) const
{
    std::string question = strings.LoadString(app::str::DeleteFolderQuestion) + "\"" +
                           std::string{path::Name(category)} + "\"" +
                           strings.LoadString(app::str::DeleteFolderContents);
    if (const auto count = removal.CountTemplates(category))
        question += "\r\n\r\n" + (*count == 1 ? strings.LoadString(app::str::TemplateToDelete)
                                              : Replaced(strings.LoadString(app::str::TemplatesToDelete), "%1",
                                                         std::to_string(*count)));
    return question;
}

void FolderOperations::ReloadAt(const std::string& category)
{
    (void)settings.Save("Browser", "LastFolderBrowsed", category);
    if (Reload)
        Reload(category);
}

} // namespace library
