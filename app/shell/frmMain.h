#pragma once

#include "app/base/Program.h"
#include "app/shell/CommandTable.h"
#include "app/shell/HelpDocuments.h"
#include "app/shell/PaneLayout.h"
#include "app/shell/WindowValues.h"
#include "browser/FileTypeTabs.h"
#include "browser/Launcher.h"
#include "browser/LibraryRows.h"
#include "browser/ListPane.h"
#include "browser/PreviewPane.h"
#include "browser/RecentDocuments.h"
#include "browser/RecentFiles.h"
#include "browser/SpreadsheetFolder.h"
#include "browser/TemplateOpener.h"
#include "library/DocumentFacts.h"
#include "library/Favorites.h"
#include "library/FolderOperations.h"
#include "library/TemplateLibrary.h"
#include "online/Banner.h"
#include "online/BugReport.h"
#include "online/UpdateNotification.h"
#include "packs/SolutionPacks.h"
#include "platform/Scoped.h"
#include "profiles/ProfileDialogs.h"
#include "search/FindPane.h"
#include "ui/Form.h"
#include "ui/Image.h"
#include "ui/Label.h"
#include "ui/ListView.h"
#include "ui/Splitter.h"
#include "ui/StatusBar.h"
#include "ui/TabStrip.h"
#include "ui/ToolBar.h"
#include "ui/TreeView.h"

namespace app {

/// The browser's main window: it owns the controls, lays them out, routes the commands, and leaves the work to its
/// collaborators.
class frmMain final : public ui::Form {
public:
    explicit frmMain(Program& program);

    /// Captions, icon, placement, options. False when the templates path cannot be used and the user quits, or the
    /// session ends meanwhile: the window has then unloaded itself.
    bool Load();
    /// Restores the splitters and fills the tree and the list. False when the window was closed meanwhile.
    bool LoadTemplateBrowser();
    /// What is left to do once the browser is ready and seen.
    void PostLoad();

    void SizeControls();
    void PreviousRunSettings();
    void LockTreeViewAccess(bool lock);
    bool LoadTreeView();
    void RefreshLibrary();
    /// Folders of the library have come or gone without the window's doing.
    void LibraryChanged();
    void ClearViewState();
    void GetQuenbyFileOption();
    void LoadThePreviewPane();
    /// Shows the banner pane, or hides it for good.
    void SwitchBanner(bool on);
    /// Composes a mail to the makers, with what the window knows.
    void mnuReportABug_Click();
    /// Shows the selected category, or My Favorites, as thumbnails.
    void LoadThumbnailImages();
    void LoadThumbnailViewForMyFavorites();
    /// Whether the screen has room for the thumbnail view; string 277 when it has not.
    bool GetSystemResolution();
    /// Menus and tool bar follow what the window shows and has selected.
    void RefreshCommands();

    void tvTreeView_Click();
    void tvTreeView_Expand(ui::TreeView::Node& node);
    void lvListView_Click();
    void lvListView_DblClick();
    void fileTypeTabStrip_Click();
    void mnuViewPreviewPane_Click();
    /// Shows the recent documents.
    void mnuRecentDocuments_Click();
    /// A library without templates may be the wrong folder: asks once for each such path.
    void AskAboutEmptyLibrary();
    /// Invites a new user to enter a profile.
    void PromptForFirstProfile();

    ui::ToolBar tbToolBar{*this};
    search::FindControls findControls{*this};
    ui::TreeView tvTreeView{*this};
    ui::Splitter imgHorzSplitter{*this, ui::Splitter::Direction::UpDown};
    ui::Image imgPreview{*this};
    ui::Label lblPreview{*this};
    ui::Splitter imgVertSplitter{*this, ui::Splitter::Direction::LeftRight};
    ui::TabStrip fileTypeTabStrip{*this};
    ui::ListView lvListView{*this};
    ui::Image imgBanner{*this};
    ui::StatusBar sbStatusBar{*this};
    ui::Menu mnuTreePopup;
    ui::Menu mnuListPopup;
    ui::Menu mnuListSpacePopup; ///< beside the rows
    ui::Menu mnuColumnsPopup;   ///< on the headings

    const library::Favorites& Favorites() const { return favorites; }
    const browser::RecentFiles& RecentFiles() const { return recentFiles; }
    library::TemplateLibrary& Library() { return templateLibrary; }
    search::FindPane& Find() { return find; }
    const browser::ListPane& List() const { return list; }
    const browser::TemplateList& Templates() const { return list.Templates(); }
    const CommandTable& Commands() const { return commands; }

private:
    Program& program;
    library::TemplateLibrary templateLibrary;
    library::Favorites favorites;
    library::FolderOperations folders;
    browser::FileTypeTabs tabs;
    browser::TemplateReader reader;
    browser::Thumbnails thumbnails;
    browser::ListPane list;
    browser::PreviewPane preview;
    library::DocumentFacts documents;
    search::FindPane find;
    browser::Launcher launcher;
    browser::SpreadsheetFolder spreadsheets;
    browser::TemplateOpener opener;
    browser::RecentFiles recentFiles;
    browser::RecentDocuments recentDocuments;
    HelpDocuments help;
    profiles::ProfileDialogs profileDialogs;
    packs::SolutionPacks solutionPacks;
    online::UpdateNotification updates;
    online::Banner banner;
    online::BugReport bugReport;
    CommandTable commands;

    static constexpr std::string_view OpenBranchesSetting = "OpenFolders";
    static constexpr std::string_view WithoutPictureSetting = "ShowTemplatesWithoutPicture";

    WindowValues values; ///< as they were read; splitters and panes as they are
    PaneLayout panes;
    int busy{};           ///< routines on the stack that yield
    bool closeWhenIdle{}; ///< the window was closed in the middle of one of them
    platform::Scoped<decltype(PatientFiles::ShowWaiting)> notice;

    /// Marks a routine that yields. A close that comes while one is on the stack waits until the last of them is done,
    /// because it would take the window away under their feet.
    class Busy {
    public:
        explicit Busy(frmMain& mainForm) : form{mainForm} { ++form.busy; }
        Busy(const Busy&) = delete;
        Busy& operator=(const Busy&) = delete;
        ~Busy()
        {
            if (--form.busy == 0 && form.closeWhenIdle) {
                form.program.progress.Cancelled = false;
                form.program.messages.Silent = false;
                form.CloseNow();
            }
        }

    private:
        frmMain& form;
    };

    void AddCommands();
    void AddTemplateCommands();
    void AddFolderCommands();
    void AddFileCommands();
    void AddViewCommands();
    void AddListCommands();
    void AddHelpCommands();
    void AddProfileAndPackCommands();
    void AddPopUpCommands();
    void BuildMenus();
    void WireEvents();
    void WireFolders();
    void WireFind();
    /// For screen readers: no label says what these show.
    void NameControls();
    void tvTreeView_Drop(ui::TreeView::Node& node, ui::Control& source);
    void mnupopDeletefolder_Click();
    void mnuAddToFavorites_Click();
    void mnuRemoveFromFavorites_Click();
    /// Shows what the selected template says of itself.
    void mnuFileProperties_Click();
    /// Shows which product this is, and of what version.
    void mnuHelpAbout_Click();
    /// Shows the list's templates one by one in a window of their own.
    void mnuFilePreview_Click();
    /// Asks how long recent documents are remembered.
    void mnuHistory_Click();
    /// Lets the user choose another templates path, and shows what is there.
    void mnuTemplatesPath_Click();
    /// Opens a recent file, 1 to 10.
    void mnuFile_Click(std::size_t number);
    /// Offers the file to other programs on the clipboard.
    void Copy(const std::string& path);
    void ReloadTree(const std::string& category);
    bool FavoritesSelected() const;
    bool OpenDocument(const std::string& path);
    void RestorePlacement();
    void SaveState();
    bool OnClosing();
    /// The close that has waited; it must not fail.
    void CloseNow() noexcept;
    /// The close that the user wants although something that he began is still waited for.
    void CloseMeanwhile();
    void OnResize();
    bool OnKey(const ui::Key& key);
    bool OnTreeKey(const ui::Key& key);
    bool OnListKey(const ui::Key& key);
    bool OnAnyPaneKey(const ui::Key& key);
    void ToggleBranch();
    void FillList();
    void SelectNode(ui::TreeView::Node* node);
    /// The node that stands for a web page; false for the others, which show their folder when they are selected.
    bool OpenSelectedNode();
    void SelectParent();
    void MoveFocus();
    void mnuListViewMode_Click(ui::ListView::View view);
    std::shared_ptr<browser::RowSource> SelectedRows();
    /// Before anything is laid out.
    void LimitSizes();
    Pane Panes();
    int WindowWidth() const;
    /// Outer width in which everything that is shown has room, twips.
    int LeastWidth();
    void ToggleColumn(std::size_t index);
};

} // namespace app
