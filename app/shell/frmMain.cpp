#include "app/shell/frmMain.h"

#include "app/base/Captions.h"
#include "app/base/StringId.h"
#include "app/base/SupportFiles.h"
#include "app/shell/frmTemplatesPath.h"
#include "app/shell/frmWaiting.h"
#include "platform/Scoped.h"

#include <utility>

namespace app {

frmMain::frmMain(Program& program)
    : Form{program.toolkit, "frmMain", Style::Sizable}, program{program},
      templateLibrary{tvTreeView,       program.files,    program.platform.shell, program.platform.locale,
                      program.settings, program.messages, program.progress,       program.strings,
                      program.state},
      favorites{program.files, program.settings, program.messages, program.strings, program.state, program.toolkit},
      folders{tvTreeView,       templateLibrary,        favorites,
              program.files,    program.platform.shell, program.platform.clock,
              program.settings, program.messages,       program.strings,
              program.state},
      tabs{program.settings, program.strings, fileTypeTabStrip},
      reader{templateLibrary.Contents(), program.files, program.state, program.settings},
      thumbnails{program.files, program.state, reader},
      list{lvListView,      program.files,          tabs,
           sbStatusBar,     program.toolkit,        program.messages,
           program.strings, program.platform.clock, program.platform.locale},
      preview{imgPreview,
              lblPreview,
              program.files,
              program.state,
              program.strings,
              program.platform.clock,
              program.platform.locale},
      documents{program.platform.files, program.platform.locale, program.platform.jobs},
      find{findControls, program, templateLibrary, reader, thumbnails, tabs, list, lvListView, documents},
      launcher{program.platform.shell, program.files,   program.registry, program.messages,
               program.toolkit,        program.strings, program.state},
      spreadsheets{program.files, program.platform.shell, program.registry},
      opener{launcher, spreadsheets, program.files, program.messages, program.strings},
      recentFiles{program.settings, program.messages},
      recentDocuments{program.platform.registry, program.files,    program.platform.clock,
                      program.settings,          program.messages, program.strings},
      help{program.settings, program.messages, launcher, program.files, program.state},
      profileDialogs{program, [this](std::string_view topic) { help.Open(topic); }},
      solutionPacks{program,
                    {.releaseLibrary = [this] { folders.ReleaseViews(); },
                     .libraryChanged = [this] { LibraryChanged(); },
                     .openHelp = [this](std::string_view topic) { help.Open(topic); },
                     .openAddress = [this](const std::string& address) { help.OpenLink(address); }}},
      updates{program}, banner{program, imgBanner}, bugReport{program}, panes{Panes(), [this] { SizeControls(); }},
      notice{program.files.ShowWaiting, [this](const std::string& about) {
                 return frmWaiting::Shown(this->program, about, [this] { CloseMeanwhile(); });
             }}
{
    SetCaption(program.state.ProductCaption);
    LimitSizes();
    lblPreview.PlainText = true; // names of files and folders
    lvListView.SetView(ui::ListView::View::Details);
    AddCommands();
    BuildMenus();
    WireEvents();
    WireFolders();
    WireFind();
}

bool frmMain::Load()
{
    LoadCaptions(*this, program.strings);
    commands.FinishToolTips(tbToolBar, program.strings);
    SetIconFile(SupportFile(program, "Icon_16x16"));
    program.progress.Increment();
    RestorePlacement();
    program.progress.Increment();
    tbToolBar.SetButtonCaption("mnuGetNewDesigns", program.Text(str::GetMoreTemplates));
    tbToolBar.SetButtonCaption("mnuReportABug", program.Text(str::ReportABug));
    NameControls();
    Realize();
    if (!frmTemplatesPath::EnsureReadable(program)) {
        Unload();
        return false;
    }
    if (values.bannerOn)
        banner.LoadBrowserBanner();
    return IsOpen();
}

bool frmMain::LoadTemplateBrowser()
{
    {
        const Busy guard{*this};
        GetQuenbyFileOption();
        PreviousRunSettings();
        favorites.GetFavoritesFromRegistry();
        recentFiles.GetRecentFilesFromRegistry();
        RefreshCommands(); // which buttons the bar has, and so its height
        SizeControls(); // before they are filled: a tree that has no width yet scrolls to bring its selection into view
        Show();         // a library that answers slowly keeps nobody from the menus, nor from closing the window
        BringToFront();
        templateLibrary.FullLoad = true;
        if (LoadTreeView()) {
            program.toolkit.DoEvents(); // filling the tree and filling the list take long enough each
            FillList();
        }
        program.toolkit.DoEvents();
        RefreshCommands();
    }
    return IsOpen();
}

void frmMain::PostLoad()
{
    (tvTreeView.Selected() != nullptr && values.folderListOn ? static_cast<ui::Control&>(tvTreeView) : lvListView)
        .SetFocus();
    (void)solutionPacks.IsInstalling(); // one that has outlived an earlier browser
    bugReport.RestoreEditorPreference();
    updates.StartUpdateCheck();
}

void frmMain::PromptForFirstProfile()
{
    const Busy guard{*this};
    profileDialogs.PromptForFirstProfile();
}

void frmMain::GetQuenbyFileOption()
{
    spreadsheets.GetQuenbyFileOption("\\HKEY_CURRENT_USER\\Software\\Quenby\\Calcora\\12\\Properties\\File Options",
                                     "Working Dir");
}

void frmMain::LockTreeViewAccess(bool lock)
{
    tvTreeView.SetEnabled(!lock);
}

bool frmMain::LoadTreeView()
{
    const Busy guard{*this};
    return templateLibrary.LoadTreeView();
}

void frmMain::RefreshLibrary()
{
    if (templateLibrary.Loading())
        return;
    const Busy guard{*this};
    // The user asks for what is on the disk now: new folders show, vanished ones go.
    const std::string before = library::Catalog::RememberedAs(templateLibrary.Tree().Selected());
    templateLibrary.FullLoad = true;
    const platform::Scoped retry{templateLibrary.OffersRetry, true};
    if (!templateLibrary.RebuildTree())
        return;
    if (!before.empty() && library::Catalog::RememberedAs(templateLibrary.Tree().Selected()) == before)
        list.Refresh(SelectedRows());
    else
        FillList();
}

void frmMain::LibraryChanged()
{
    if (!IsOpen())
        return;
    const Busy guard{*this};
    favorites.GetFavoritesFromRegistry(); // those whose template has gone
    templateLibrary.FullLoad = true;      // a load that is under way begins once more
    RefreshLibrary();
}

void frmMain::ClearViewState()
{
    list.Clear();
    preview.LoadThePreviewPane(nullptr);
    RefreshCommands();
}

void frmMain::WireEvents()
{
    ClosesWhileHeld = true;
    Closing = [this] { return OnClosing(); };
    // Under a dialog the close has to wait, for which there is no time then. A tree that is half read is not worth
    // keeping.
    SessionEnds = [this] {
        if (busy > 0 && program.state.MainLoaded && !templateLibrary.Loading())
            SaveState();
    };
    Resize = [this] { OnResize(); };
    KeyDown = [this](const ui::Key& key) { return OnKey(key); };
    MenuOpening = [this] { RefreshCommands(); };

    tvTreeView.Click = [this] { tvTreeView_Click(); };
    tvTreeView.ClickAgain = [this] {
        // Its templates are what the user wants to see; when they are shown, they stay as they are.
        if (find.Rows() != nullptr)
            tvTreeView_Click();
    };
    tvTreeView.Expand = [this](ui::TreeView::Node& node) { tvTreeView_Expand(node); };
    tvTreeView.Collapse = [this](ui::TreeView::Node& node) { tvTreeView_Expand(node); };
    tvTreeView.DblClick = [this](const ui::TreeView::Node&) { OpenSelectedNode(); };
    tvTreeView.KeyDown = [this](const ui::Key& key) { return OnTreeKey(key); };
    tvTreeView.ContextMenu = [this](ui::Point at) { ShowPopup(mnuTreePopup, at); };
    lvListView.Click = [this] { list.SelectionChanged(); };
    list.Changed = [this] { lvListView_Click(); };
    lvListView.DblClick = [this] { lvListView_DblClick(); };
    lvListView.KeyDown = [this](const ui::Key& key) { return OnListKey(key); };
    lvListView.ContextMenu = [this](ui::Point at) {
        ShowPopup(list.Selected() != nullptr ? mnuListPopup : mnuListSpacePopup, at);
    };
    lvListView.HeaderContextMenu = [this](ui::Point at) { ShowPopup(mnuColumnsPopup, at); };
    imgBanner.Click = [this] { help.OpenLink(banner.Link()); };
    banner.Changed = [this] {
        if (!banner.HasPicture() && imgBanner.HasFocus())
            lvListView.SetFocus();
        SizeControls();
    };
    updates.BannerChanged = [this] {
        if (values.bannerOn)
            banner.LoadBrowserBanner();
    };

    fileTypeTabStrip.Click = [this] { fileTypeTabStrip_Click(); };

    templateLibrary.ClearViews = [this] { ClearViewState(); };
    templateLibrary.LockAccess = [this](bool lock) { LockTreeViewAccess(lock); };
    templateLibrary.Loaded = [this] { find.LibraryLoaded(); };
}

void frmMain::tvTreeView_Click()
{
    if (tvTreeView.Selected() == nullptr)
        return;
    templateLibrary.RememberSelection();
    find.FolderChosen();
    FillList();
}

void frmMain::tvTreeView_Expand(ui::TreeView::Node& node)
{
    // A category without an icon of its own always shows the standard one, open or closed.
    const auto* folder = templateLibrary.Tree().Of(node);
    if (folder != nullptr && folder->IsTopLevelCategory() && folder->iconFile.empty())
        tvTreeView.SetImages(node, library::treeimage::Category, library::treeimage::Category);
    if (tvTreeView.Selected() == &node)
        return;
    SelectNode(&node);
}

void frmMain::SelectNode(ui::TreeView::Node* node)
{
    if (node == nullptr)
        return;
    tvTreeView.Select(node);
    tvTreeView.EnsureVisible(*node);
    tvTreeView_Click();
}

bool frmMain::OpenSelectedNode()
{
    // Not when it is selected: the arrow keys pass over it, and no browser may open for that.
    const auto* folder = templateLibrary.Tree().Selected();
    if (folder == nullptr || folder->kind != library::Catalog::Kind::GetMore)
        return false;
    solutionPacks.GetMore();
    return true;
}

void frmMain::FillList()
{
    const Busy guard{*this};
    list.Show(SelectedRows());
}

void frmMain::ToggleColumn(std::size_t index)
{
    constexpr int shownAgain = 1500; // twips
    auto columns = lvListView.Columns();
    columns[index].width = columns[index].width > 0 ? 0 : shownAgain;
    lvListView.SetColumns(std::move(columns));
    RefreshCommands();
}

std::shared_ptr<browser::RowSource> frmMain::SelectedRows()
{
    if (auto found = find.Rows())
        return found;
    const auto* folder = templateLibrary.Tree().Selected();
    if (folder != nullptr && folder->IsCategory())
        return std::make_shared<browser::CategoryRows>(reader, thumbnails, folder->path);
    if (FavoritesSelected())
        return std::make_shared<browser::FavoriteRows>(reader, thumbnails, favorites);
    return nullptr;
}

void frmMain::LoadThumbnailImages()
{
    const Busy guard{*this};
    list.SetView(ui::ListView::View::Thumbnails);
}

void frmMain::LoadThumbnailViewForMyFavorites()
{
    LoadThumbnailImages();
}

bool frmMain::GetSystemResolution()
{
    constexpr ui::Size tooSmall{640, 480}; // pixels: string 277 asks for more
    const ui::Size screen = program.toolkit.ScreenSize();
    if (screen.width > tooSmall.width && screen.height > tooSmall.height)
        return true;
    program.messages.Inform(str::ResolutionTooLow);
    return false;
}

void frmMain::lvListView_Click()
{
    LoadThePreviewPane();
    RefreshCommands();
}

void frmMain::SwitchBanner(bool on)
{
    values.bannerOn = on;
    if (on)
        banner.LoadBrowserBanner();
    else
        banner.SwitchOff();
    RefreshCommands();
}

void frmMain::mnuReportABug_Click()
{
    std::size_t inLibrary = 0;
    templateLibrary.Contents().ForEach([&](const library::Catalog::Folder&) {
        ++inLibrary;
        return true;
    });
    bugReport.ReportABugViaOutlook({
        {"Folders", std::to_string(inLibrary)},
        {"Templates in the list", std::to_string(list.Templates().Rows())},
        {"Favorites", std::to_string(favorites.FavoritesList().size())},
        {"Recent files", std::to_string(recentFiles.List().size())},
    });
}

void frmMain::LoadThePreviewPane()
{
    preview.LoadThePreviewPane(values.previewPaneOn ? list.Selected() : nullptr);
    SizeControls(); // as many lines as the facts need now
}

void frmMain::lvListView_DblClick()
{
    if (const std::string path = list.SelectedPath(); !path.empty())
        opener.Open(path);
}

void frmMain::fileTypeTabStrip_Click()
{
    const Busy guard{*this};
    tabs.RememberSelection();
    list.Refill();
    find.TabChosen();
}

void frmMain::mnuViewPreviewPane_Click()
{
    values.previewPaneOn = !values.previewPaneOn;
    LoadThePreviewPane();
    SizeControls();
}

void frmMain::mnuListViewMode_Click(ui::ListView::View view)
{
    const Busy guard{*this};
    if (view != ui::ListView::View::Thumbnails)
        list.SetView(view);
    else if (!GetSystemResolution())
        return;
    else if (FavoritesSelected())
        LoadThumbnailViewForMyFavorites();
    else
        LoadThumbnailImages();
    RefreshCommands();
}

void frmMain::RefreshCommands()
{
    commands.Refresh(MenuBar);
    for (ui::Menu* popup : Popups)
        commands.Refresh(*popup);
    commands.Refresh(tbToolBar);
}

} // namespace app
