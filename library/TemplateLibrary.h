#pragma once

#include "app/base/Messages.h"
#include "app/base/Settings.h"
#include "library/Catalog.h"
#include "library/FolderTable.h"
#include "library/FolderTree.h"
#include "platform/Shell.h"
#include "ui/TreeView.h"

#include <functional>
#include <string>
#include <vector>

namespace library {

/// The library as the main window shows it: reads the folders from the disk into the folder table and the tree view.
class TemplateLibrary {
public:
    TemplateLibrary(ui::TreeView& tree, app::PatientFiles& files, platform::Shell& shell, platform::Locale& locale,
                    app::Settings& settings, app::Messages& messages, app::LoadProgress& progress,
                    const app::StringTable& strings, const app::StartUpState& state);

    /// Set before a load that must read the disk, which clears it; set in the middle of a load, because the disk has
    /// changed, it makes the load begin once more.
    bool FullLoad{true};
    /// The last load found no category folder.
    bool NoFoldersFound{};
    /// Called when a load found no category folder, to empty the views that show one.
    std::function<void()> ClearViews;

    /// A load that finds no category folder asks whether to try again, with the path, instead of only telling it: for
    /// one that the user asked for.
    bool OffersRetry{};

    /// Called with true before a load and with false when it has ended, however it ends.
    std::function<void(bool lock)> LockAccess;
    /// A load has ended.
    std::function<void()> Loaded;

    /// With FullLoad set: folder walk, folder table pass, tree pass; otherwise the tree pass alone. True when at least
    /// one category folder was found, or when a load is under way already (the second one is refused).
    bool LoadTreeView();
    /// Remembers the selected folder and loads the tree.
    bool RebuildTree();
    /// Stores the selected node as the one to come back to.
    void RememberSelection();

    /// Whether the last load from the disk found a template.
    bool HoldsTemplates() const { return table.HoldsTemplates(); }
    bool Loading() const { return loading; }
    /// The library as data.
    const Catalog& Contents() const { return catalog; }
    /// Which folder is selected in the tree view.
    FolderTree& Tree() { return folderTree; }
    const FolderTree& Tree() const { return folderTree; }
    const FolderTable& Table() const { return table; }

    /// The hidden combo of all folders, in walk order; its text is the folder to come back to.
    struct FolderCombo {
        std::vector<std::string> items;
        int selected{-1};
        std::string text;
    };
    const FolderCombo& TemplateFoldersCombo() const { return combo; }

private:
    app::PatientFiles& files;
    platform::Shell& shell;
    app::Settings& settings;
    app::Messages& messages;
    app::LoadProgress& progress;
    const app::StringTable& strings;
    const app::StartUpState& state;
    FolderTable table;
    Catalog catalog;
    FolderTree folderTree;
    FolderCombo combo;
    bool loading{};

    void LoadOnce();
    bool ReadFolders(FolderListings& listings);
    /// True when the user wants the load to be tried again.
    bool TellNoFolders();
    void BuildTreeFromFolderTable(FolderListings& listings);
    void SelectLastBrowsed();
    void RestoreCombo();
};

} // namespace library
