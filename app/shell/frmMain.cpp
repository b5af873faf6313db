#include "app/shell/frmMain.h"

#include "app/base/Captions.h"
#include "app/base/StringId.h"
#include "app/base/SupportFiles.h"
#include "app/shell/WindowPlacement.h"
#include "app/shell/frmTemplatesPath.h"
#include "platform/Path.h"

#include <algorithm>
#include <utility>

namespace app {
namespace {

constexpr std::string_view Section = "Browser";

// All lengths in twips.
constexpr int MinimumWidth = 9700;
constexpr ui::Rect DefaultPlacement{1000, 1000, 8750, 7200};
constexpr int DefaultHorzSplitterTop = 5250;
constexpr int DefaultVertSplitterLeft = 1965;
constexpr int SplitterWidth = 75;
constexpr int VertSplitterMargin = 300;       ///< never further left
constexpr int VertSplitterRightMargin = 3000; ///< never closer to the window's right edge
constexpr int HorzSplitterMargin = 900;       ///< least height of the tree
constexpr int LeastPreviewHeight = 2700;      ///< the facts, and a picture that shows something
constexpr int PaneMargin = 60;
constexpr int FactsHeight = 840;        ///< four lines of text
constexpr int LeastStoredHeight = 4500; ///< a window that is hardly more than its title bar is damage, too
constexpr int PlacementLimit = 200'000; ///< a stored coordinate beyond this is damage

struct StoredColumn {
    std::string_view setting;
    int heading; ///< string number
    int width;   ///< default
    bool rightAligned;
};
constexpr StoredColumn columns[] = {
    {"ListViewFileColumnSize", 218, 3300, false},
    {"ListViewFolderColumnSize", 219, 1950, false},
    {"ListViewFileSizeColumnSize", 220, 900, true},
    {"ListViewFileModifiedColumnSize", 221, 2100, false},
};

} // namespace

frmMain::frmMain(Program& program)
    : Form{program.toolkit, "frmMain", Style::Sizable}, program{program},
      templateLibrary{tvTreeView,       program.platform.files, program.platform.locale, program.settings,
                      program.messages, program.progress,       program.strings,         program.state},
      favorites{program.platform.files, program.settings, program.messages,
                program.strings,        program.state,    program.toolkit},
      folders{tvTreeView,       templateLibrary,  favorites,       program.platform.files,
              program.settings, program.messages, program.strings, program.state},
      tabs{program.settings, program.strings, fileTypeTabStrip}, reader{templateLibrary.Contents(),
                                                                        program.platform.files, program.state,
                                                                        program.settings},
      thumbnails{program.platform.files, program.state, reader}, list{lvListView,
                                                                      tabs,
                                                                      sbStatusBar,
                                                                      program.toolkit,
                                                                      program.messages,
                                                                      program.strings,
                                                                      program.platform.clock,
                                                                      program.platform.locale},
      preview{imgPreview,
              lblPreview,
              program.platform.files,
              program.state,
              program.strings,
              program.platform.clock,
              program.platform.locale},
      launcher{program.platform.shell, program.platform.files, program.registry,
               program.messages,       program.toolkit,        program.strings},
      spreadsheets{program.platform.files, program.platform.shell, program.registry}, opener{launcher, spreadsheets,
                                                                                             program.messages},
      recentFiles{program}, recentDocuments{program}, help{program, launcher},
      profileDialogs{program, [this](std::string_view topic) { help.Open(topic); }}
{
    SetCaption(program.state.ProductCaption);
    lblPreview.PlainText = true; // names of files and folders
    std::vector<ui::ListView::Column> listColumns;
    for (const StoredColumn& column : columns)
        listColumns.push_back({std::to_string(column.heading), {}, column.width, column.rightAligned});
    lvListView.SetColumns(std::move(listColumns));
    lvListView.SetView(ui::ListView::View::Details);
    AddCommands();
    BuildMenus();
    WireEvents();
    WireFolders();
}

bool frmMain::Load()
{
    LoadCaptions(*this, program.strings);
    SetIconFile(SupportFile(program, "Icon_16x16"));
    program.progress.Increment();
    RestorePlacement();
    program.progress.Increment();
    tbToolBar.SetButtonCaption("mnuGetNewDesigns", program.Text(str::GetMoreTemplates));
    Realize();
    if (!frmTemplatesPath::EnsureReadable(program)) {
        Unload();
        return false;
    }
    return IsOpen();
}

void frmMain::RestorePlacement()
{
    const Settings& settings = program.settings;
    const bool maximized = settings.Flag(Section, "TSMaximized", false);
    const auto number = [&](std::string_view key, int otherwise) {
        return settings.Number(Section, key, otherwise, -PlacementLimit, PlacementLimit);
    };
    ui::Rect stored{number("MainLeft", DefaultPlacement.left), number("MainTop", DefaultPlacement.top),
                    number("MainWidth", DefaultPlacement.width), number("MainHeight", DefaultPlacement.height)};
    stored.width = std::max(stored.width, MinimumWidth); // widened later, it would reach off the screen again
    stored.height = std::max(stored.height, LeastStoredHeight);
    SetPlacement(PlacementWithin(stored, program.toolkit.WorkAreas()));
    SetState(maximized ? WindowState::Maximized : WindowState::Normal);
}

bool frmMain::LoadTemplateBrowser()
{
    {
        const Busy guard{*this};
        horzSplitterTop =
            program.settings.Number(Section, "HorzSplitterTop", DefaultHorzSplitterTop, 0, PlacementLimit);
        vertSplitterLeft =
            program.settings.Number(Section, "VertSplitterLeft", DefaultVertSplitterLeft, 0, PlacementLimit);
        GetQuenbyFileOption();
        PreviousRunSettings();
        favorites.GetFavoritesFromRegistry();
        recentFiles.GetRecentFilesFromRegistry();
        templateLibrary.FullLoad = true;
        if (LoadTreeView())
            FillList();
        SizeControls();
        RefreshCommands();
    }
    return IsOpen();
}

void frmMain::PostLoad()
{
    (tvTreeView.Selected() != nullptr ? static_cast<ui::Control&>(tvTreeView) : lvListView).SetFocus();
}

void frmMain::PromptForFirstProfile()
{
    const Busy guard{*this};
    profileDialogs.PromptForFirstProfile();
}

void frmMain::PreviousRunSettings()
{
    const Settings& settings = program.settings;
    folderListOn = settings.Flag(Section, "FolderListOn", true);
    previewPaneOn = settings.Flag(Section, "PreviewPaneOn", true);
    list.RestoreViews(static_cast<ui::ListView::View>(settings.Number(
                          Section, "ListViewType", static_cast<int>(ui::ListView::View::LargeIcons), 0, 3)),
                      settings.Flag(Section, "ThumbnailViewOn", false));
    auto listColumns = lvListView.Columns();
    for (std::size_t i = 0; i < std::size(columns); ++i)
        listColumns[i].width = settings.Number(Section, columns[i].setting, columns[i].width, 300, 30'000);
    lvListView.SetColumns(std::move(listColumns));
    tabs.Restore();
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
    templateLibrary.FullLoad = true;
    if (templateLibrary.RebuildTree())
        FillList();
}

void frmMain::ClearViewState()
{
    list.Clear();
    preview.LoadThePreviewPane(nullptr);
    RefreshCommands();
}

void frmMain::WireEvents()
{
    Closing = [this] { return OnClosing(); };
    Resize = [this] { OnResize(); };
    KeyDown = [this](const ui::Key& key) { return OnKey(key); };
    MenuOpening = [this] { RefreshCommands(); };

    tvTreeView.Click = [this] { tvTreeView_Click(); };
    tvTreeView.Expand = [this](ui::TreeView::Node& node) { tvTreeView_Expand(node); };
    tvTreeView.Collapse = [this](ui::TreeView::Node& node) { tvTreeView_Expand(node); };
    tvTreeView.KeyDown = [this](const ui::Key& key) { return OnTreeKey(key); };
    tvTreeView.ContextMenu = [this](ui::Point at) { ShowPopup(mnuTreePopup, at); };
    lvListView.Click = [this] { list.SelectionChanged(); };
    list.Changed = [this] { lvListView_Click(); };
    lvListView.DblClick = [this] { lvListView_DblClick(); };
    lvListView.KeyDown = [this](const ui::Key& key) { return OnListKey(key); };
    lvListView.ContextMenu = [this](ui::Point at) { ShowPopup(mnuListPopup, at); };
    fileTypeTabStrip.Click = [this] { fileTypeTabStrip_Click(); };

    imgVertSplitter.Clamp = [this](int position) { return ClampVertical(position); };
    imgVertSplitter.Moved = [this](int position) {
        vertSplitterLeft = position;
        SizeControls();
    };
    imgHorzSplitter.Clamp = [this](int position) { return ClampHorizontal(position); };
    imgHorzSplitter.Moved = [this](int position) {
        horzSplitterTop = position;
        SizeControls();
    };
    templateLibrary.ClearViews = [this] { ClearViewState(); };
    templateLibrary.LockAccess = [this](bool lock) { LockTreeViewAccess(lock); };
}

void frmMain::tvTreeView_Click()
{
    if (tvTreeView.Selected() == nullptr)
        return;
    templateLibrary.RememberSelection();
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

void frmMain::SelectParent()
{
    if (const auto* node = tvTreeView.Selected(); node != nullptr)
        SelectNode(node->parent);
}

void frmMain::FillList()
{
    const Busy guard{*this};
    list.Show(SelectedRows());
}

std::shared_ptr<browser::RowSource> frmMain::SelectedRows()
{
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

void frmMain::LoadThePreviewPane()
{
    preview.LoadThePreviewPane(previewPaneOn ? list.Selected() : nullptr);
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
}

void frmMain::mnuViewPreviewPane_Click()
{
    previewPaneOn = !previewPaneOn;
    LoadThePreviewPane();
    SizeControls();
}

void frmMain::EnableItemCommands()
{
    RefreshCommands();
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

bool frmMain::OnKey(const ui::Key& key)
{
    if (key.code == ui::KeyCode::F6 && !key.ctrl && !key.alt) {
        MoveFocus();
        return true;
    }
    if (key.code == ui::KeyCode::Tab && key.ctrl && !key.alt) {
        tabs.SelectNext(key.shift);
        return true;
    }
    return false;
}

bool frmMain::OnTreeKey(const ui::Key& key)
{
    if (key == ui::Plain(ui::KeyCode::Delete))
        return commands.Run("mnupopDeletefolder");
    if (key != ui::Plain(ui::KeyCode::Backspace))
        return false;
    SelectParent();
    return true;
}

bool frmMain::OnListKey(const ui::Key& key)
{
    // F2 and Delete are the folder's in the tree. In the list, where the user looks at a template, F2 must not rename
    // the folder, and Delete is about the template.
    if (key == ui::Plain(ui::KeyCode::F2))
        return true;
    if (key == ui::Plain(ui::KeyCode::Delete))
        return commands.Run("mnuRemoveFromFavorites");
    return OnTreeKey(key);
}

void frmMain::MoveFocus()
{
    if (lvListView.HasFocus() && folderListOn) {
        tvTreeView.SetFocus();
        return;
    }
    lvListView.SetFocus();
}

int frmMain::ClampVertical(int position) const
{
    return std::max(std::min(position, Placement().width - VertSplitterRightMargin), VertSplitterMargin);
}

int frmMain::ClampHorizontal(int position) const
{
    const int top = tvTreeView.Bounds().top;
    const int bottom = sbStatusBar.Bounds().top;
    return std::max(std::min(position, bottom - LeastPreviewHeight), top + HorzSplitterMargin);
}

void frmMain::OnResize()
{
    program.progress.Increment();
    if (State() == WindowState::Normal && Placement().width < MinimumWidth) {
        ui::Rect wider = Placement();
        wider.width = MinimumWidth;
        SetPlacement(wider);
        return; // the new size comes back here
    }
    SizeControls();
}

void frmMain::SizeControls()
{
    const ui::Size client = ClientSize();
    const int barHeight = tbToolBar.PreferredSize(client.width).height;
    const int statusHeight = sbStatusBar.PreferredSize(client.width).height;
    tbToolBar.SetBounds({0, 0, client.width, barHeight});
    sbStatusBar.SetBounds({0, client.height - statusHeight, client.width, statusHeight});

    const int top = barHeight + PaneMargin;
    const int bottom = client.height - statusHeight;
    const bool leftShown = folderListOn || previewPaneOn;
    const int leftWidth = leftShown ? std::min(ClampVertical(vertSplitterLeft), client.width - VertSplitterMargin) : 0;
    int treeBottom = bottom;
    if (folderListOn && previewPaneOn) {
        tvTreeView.SetBounds({0, top, leftWidth, bottom - top});
        treeBottom = ClampHorizontal(horzSplitterTop);
    }
    tvTreeView.SetVisible(folderListOn);
    tvTreeView.SetBounds({0, top, leftWidth, treeBottom - top});
    imgHorzSplitter.SetVisible(folderListOn && previewPaneOn);
    imgHorzSplitter.SetBounds({0, treeBottom, leftWidth, SplitterWidth});

    const int previewTop = folderListOn ? treeBottom + SplitterWidth : top;
    const int factsHeight = std::min(FactsHeight, (bottom - previewTop) / 2);
    imgPreview.SetVisible(previewPaneOn);
    lblPreview.SetVisible(previewPaneOn);
    imgPreview.SetBounds({PaneMargin, previewTop + PaneMargin, leftWidth - 2 * PaneMargin,
                          bottom - previewTop - factsHeight - 3 * PaneMargin});
    lblPreview.SetBounds({PaneMargin, bottom - factsHeight - PaneMargin, leftWidth - 2 * PaneMargin, factsHeight});

    imgVertSplitter.SetVisible(leftShown);
    imgVertSplitter.SetBounds({leftWidth, top, SplitterWidth, bottom - top});
    const int right = leftShown ? leftWidth + SplitterWidth : 0;
    const int tabHeight = fileTypeTabStrip.PreferredSize(client.width - right).height;
    fileTypeTabStrip.SetBounds({right, top, client.width - right, tabHeight});
    lvListView.SetBounds({right, top + tabHeight, client.width - right, bottom - top - tabHeight});
}

bool frmMain::OnClosing()
{
    if (busy > 0) {
        closeWhenIdle = true;
        program.progress.Cancelled = true;
        return false;
    }
    // A window that never got as far as being filled has nothing worth keeping.
    if (program.state.MainLoaded)
        SaveState();
    return true;
}

void frmMain::CloseNow() noexcept
{
    try {
        Close();
    } catch (...) {
        Unload();
    }
}

void frmMain::SaveState()
{
    Settings& settings = program.settings;
    bool saved = settings.SaveFlag(Section, "TSMaximized", State() == WindowState::Maximized).has_value();
    const auto number = [&](std::string_view key, int value) {
        saved = settings.SaveNumber(Section, key, value).has_value() && saved;
    };
    number("HorzSplitterTop", horzSplitterTop);
    if (State() != WindowState::Maximized) {
        number("MainLeft", Placement().left);
        number("MainTop", Placement().top);
        number("MainWidth", Placement().width);
        number("MainHeight", Placement().height);
    }
    number("VertSplitterLeft", vertSplitterLeft);
    number("ListViewType", static_cast<int>(list.PlainView()));
    for (std::size_t i = 0; i < std::size(columns); ++i)
        number(columns[i].setting, lvListView.Columns()[i].width);
    saved = settings.SaveFlag(Section, "ThumbnailViewOn", list.ShowsThumbnails()).has_value() && saved;
    saved = settings.SaveFlag(Section, "FolderListOn", folderListOn).has_value() && saved;
    saved = settings.SaveFlag(Section, "PreviewPaneOn", previewPaneOn).has_value() && saved;
    templateLibrary.RememberSelection();
    tabs.RememberSelection();
    if (!saved)
        program.messages.Stop(str::SetValueFailed);
}

} // namespace app
