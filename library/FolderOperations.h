#pragma once

#include "library/Favorites.h"
#include "library/TemplateLibrary.h"
#include "platform/Clock.h"
#include "ui/TreeView.h"

#include <functional>
#include <optional>
#include <string>

namespace library {

class FolderRemoval;

/// What the user may do to the category folders: give one a new name, delete one. Works on the tree's selected node.
class FolderOperations {
public:
    FolderOperations(ui::TreeView& tree, TemplateLibrary& library, Favorites& favorites, app::PatientFiles& files,
                     platform::Shell& shell, platform::Clock& clock, app::Settings& settings, app::Messages& messages,
                     const app::StringTable& strings, const app::StartUpState& state);

    /// Called before a folder is renamed or deleted: whatever shows its files must let go of them.
    std::function<void()> ReleaseViews;
    /// Called to load the tree again (the library says whether from the disk) and to select this category.
    std::function<void(const std::string& category)> Reload;
    /// Called after a folder got its new name; full paths on disk.
    std::function<void(const std::string& from, const std::string& to)> Renamed;

    /// Opens the selected node's label for a new name, or says why not.
    void StartRename();
    /// Whether the folder can be given another name at all; says nothing.
    bool CanRename(const Catalog::Folder* folder) const;
    void RefuseWithFindPane();
    /// Gives the folder the name that the user typed. A refusal, and a failure of the disk, are told, leave everything
    /// as it was, and open the label again with what was typed. A name under which the library would not find the
    /// folder is asked about.
    void Rename(const Catalog::Folder* folder, const std::string& newName);
    /// Asks, then deletes the selected folder with its templates.
    void DeleteSelected();

    /// Why `newName` cannot take the place of the category's name, in the words for the user; nothing when it can.
    std::optional<std::string> RefusalOf(const std::string& category, const std::string& newName) const;

private:
    ui::TreeView& tree;
    TemplateLibrary& library;
    Favorites& favorites;
    app::PatientFiles& files;
    platform::Shell& shell;
    platform::Clock& clock;
    app::Settings& settings;
    app::Messages& messages;
    const app::StringTable& strings;
    const app::StartUpState& state;
    std::optional<std::string> typed; ///< offered when a label opens again

    void EditAgain(const std::string& category, const std::string& newName);
    /// Checks the name and moves the folder. False when it has its old name, which the user has been told.
    bool Renames(const std::string& from, const std::string& newName, const std::string& to);
    /// Moves the folder on the disk, and with it the favourites in it. Tells a failure.
    bool Move(const std::string& from, const std::string& to);
    platform::Result<> MoveOnceLetGo(const std::string& from, const std::string& to);
    /// With the number of templates that would go.
    std::string DeleteQuestion(const std::string& category, FolderRemoval& removal) const;
    void ReloadAt(const std::string& category);
};

} // namespace library
