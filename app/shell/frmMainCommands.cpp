// The main window's commands and the menus made from them.
#include "app/shell/frmMain.h"

#include "app/base/StringId.h"
#include "library/TemplateFiles.h"
#include "platform/Text.h"

namespace app {
namespace {

using View = ui::ListView::View;

struct ViewCommand {
    const char* name;
    int caption;
    int toolTip;
    const char* image;
    View view;
    char digit; ///< of its key
};
constexpr ViewCommand viewCommands[] = {
    {"mnuViewLargeIcons", 114, 142, "view-large", View::LargeIcons, '1'},
    {"mnuViewSmallIcons", 115, 143, "view-small", View::SmallIcons, '2'},
    {"mnuViewList", 116, 144, "view-list", View::List, '3'},
    {"mnuViewDetails", 117, 145, "view-details", View::Details, '4'},
    {"mnuViewThumbnails", 118, 146, "view-thumbnails", View::Thumbnails, '5'},
};

} // namespace

void frmMain::AddCommands()
{
    AddTemplateCommands();
    AddFolderCommands();
    AddFileCommands();
    AddViewCommands();
    AddListCommands();
    AddHelpCommands();
    AddProfileAndPackCommands();
    AddPopUpCommands(); // last: they are copies of others
}

// clang-format off
void frmMain::AddTemplateCommands()
{
    const auto hasItems = [this] { return list.Templates().Rows() > 0; };
    const auto hasSelection = [this] { return list.Selected() != nullptr; };
    const auto createDocument = [this] {
        const Busy guard{*this};
        opener.CreateDocument(list.SelectedPath());
    };

    commands.Add({.name = "mnuFileNew", .caption = 102, .toolTip = 141, .image = "new", .key = ui::Ctrl('N'),
                  .run = createDocument, .enabled = hasSelection});
    commands.Add({.name = "mnuFileNewDocument", .caption = 226, .key = ui::Ctrl('N'),
                  .run = createDocument, .enabled = hasSelection});
    commands.Add({.name = "mnuFileNewTemplate", .caption = 227, .run = [this] { lvListView_DblClick(); },
                  .enabled = hasSelection});
    commands.Add({.name = "mnuFileOpen", .caption = 561, .toolTip = 562, .image = "open", .key = ui::Ctrl('O'),
                  .run = [this] { lvListView_DblClick(); }, .enabled = hasItems});
    commands.Add({.name = "mnuFileProperties", .caption = 133, .toolTip = 175, .image = "properties",
                  .key = {ui::KeyCode::Enter, false, false, true}, .run = [this] { mnuFileProperties_Click(); },
                  .enabled = hasSelection});
    commands.Add({.name = "mnuFilePreview", .caption = 103, .toolTip = 563, .image = "preview",
                  .run = [this] { mnuFilePreview_Click(); }, .enabled = hasItems});
    commands.Add({.name = "mnuEditCopy", .caption = 705, .key = ui::Ctrl('C'),
                  .run = [this] { Copy(list.SelectedPath()); }, .enabled = hasSelection});
    commands.Add({.name = "mnuAddToFavorites", .caption = 355, .toolTip = 355, .image = "add-favorite",
                  .key = ui::Ctrl('D'), .run = [this] { mnuAddToFavorites_Click(); }, .enabled = hasSelection,
                  .visible = [this] { return !FavoritesSelected(); }});
    commands.Add({.name = "mnuRemoveFromFavorites", .caption = 354, .toolTip = 354, .image = "remove-favorite",
                  .run = [this] { mnuRemoveFromFavorites_Click(); }, .enabled = hasSelection,
                  .visible = [this] { return FavoritesSelected(); }});
}

void frmMain::AddFolderCommands()
{
    commands.Add({.name = "mnuEditFind", .caption = 109, .toolTip = 165, .image = "find", .key = ui::Ctrl('F'),
                  .run = [this] { find.Open(); }, .checked = [this] { return find.IsOpen(); }});
    commands.Add({.name = "mnuRefreshTV", .caption = 105, .toolTip = 105, .image = "refresh",
                  .key = ui::Plain(ui::KeyCode::F5), .run = [this] {
                      if (!tvTreeView.EditedLabel()) // the name that is being typed would be lost
                          RefreshLibrary();
                  },
                  .enabled = [this] { return !templateLibrary.Loading(); }});
    const auto canChangeFolder = [this] {
        return tvTreeView.Selected() != nullptr && values.folderListOn && !templateLibrary.Loading();
    };
    const auto isNoCategory = [this] {
        const auto* folder = templateLibrary.Tree().Selected();
        return folder == nullptr || !folder->IsCategory();
    };
    commands.Add({.name = "mnupopRenamefolder", .caption = 526, .toolTip = 526, .image = "rename",
                  .key = ui::Plain(ui::KeyCode::F2), .run = [this] { folders.StartRename(); },
                  .enabled = canChangeFolder, .dimmed = isNoCategory});
    commands.Add({.name = "mnupopDeletefolder", .caption = 525, .toolTip = 525, .image = "delete",
                  .run = [this] { mnupopDeletefolder_Click(); }, .enabled = canChangeFolder,
                  .dimmed = isNoCategory});
    commands.Add({.name = "mnuTemplatesPath", .caption = 325, .run = [this] { mnuTemplatesPath_Click(); },
                  .enabled = [this] { return !templateLibrary.Loading() && !program.state.FindPaneOpen; }});
}

void frmMain::AddFileCommands()
{
    commands.Add({.name = "mnuRecentDocuments", .caption = 379, .toolTip = 479, .image = "recent",
                  .run = [this] { mnuRecentDocuments_Click(); }});
    commands.Add({.name = "mnuHistory", .caption = 615, .toolTip = 479, .run = [this] { mnuHistory_Click(); }});
    commands.Add({.name = "mnuRecentSeparator", .visible = [this] { return !recentFiles.List().empty(); }});
    for (std::size_t number = 1; number <= browser::RecentFiles::Limit; ++number)
        commands.Add({.name = "mnuFile" + std::to_string(number), .run = [this, number] { mnuFile_Click(number); },
                      .visible = [this, number] { return number <= recentFiles.List().size(); },
                      .textNow = [this, number] { return recentFiles.MenuText(number); }});
    commands.Add({.name = "mnuFileExit", .caption = 104, .image = "exit",
                  .key = {ui::KeyCode::F4, false, false, true}, .run = [this] { Close(); }});
}

void frmMain::AddViewCommands()
{
    for (const ViewCommand& view : viewCommands)
        commands.Add({.name = view.name, .caption = view.caption, .toolTip = view.toolTip, .image = view.image,
                      .key = ui::Ctrl(view.digit), .run = [this, mode = view.view] { mnuListViewMode_Click(mode); },
                      // The view that shows is never grey, also where it has nothing to show.
                      .enabled = [this, mode = view.view] {
                          return mode != View::Thumbnails || list.Templates().Rows() > 0 ||
                                 lvListView.GetView() == mode;
                      },
                      .checked = [this, mode = view.view] { return lvListView.GetView() == mode; }});
    commands.Add({.name = "mnuViewFolderList", .caption = 119, .toolTip = 147, .image = "folder-list",
                  .run = [this] {
                      values.folderListOn = !values.folderListOn;
                      if (!values.folderListOn && tvTreeView.HasFocus())
                          lvListView.SetFocus();
                      SizeControls();
                      RefreshCommands();
                  },
                  .checked = [this] { return values.folderListOn; }});
    commands.Add({.name = "mnuViewPreviewPane", .caption = 120, .toolTip = 148, .image = "preview-pane",
                  .run = [this] {
                      mnuViewPreviewPane_Click();
                      RefreshCommands();
                  },
                  .checked = [this] { return values.previewPaneOn; }});
    commands.Add({.name = "mnuHideBanner", .caption = 661, .run = [this] { SwitchBanner(false); },
                  .visible = [this] { return values.bannerOn; }});
    commands.Add({.name = "mnuShowBanner", .caption = 662, .run = [this] { SwitchBanner(true); },
                  .visible = [this] { return !values.bannerOn; }});
}

void frmMain::AddListCommands()
{
    commands.Add({.name = "mnuViewWithoutPicture", .caption = 610,
                  .run = [this] {
                      const bool show = !list.ShowsWithoutPicture().value_or(false);
                      thumbnails.ShowWithoutPicture = show;
                      (void)program.settings.SaveFlag("Browser", WithoutPictureSetting, show);
                      FillList();
                  },
                  .enabled = [this] { return list.ShowsWithoutPicture().has_value(); },
                  .checked = [this] { return list.ShowsWithoutPicture().value_or(false); }});
    for (const library::TemplateKind& kind : library::TemplateKinds)
        if (!kind.tab.empty())
            commands.Add({.name = std::string{kind.tabCommand}, .caption = kind.tabCommandCaption,
                          .toolTip = kind.tabToolTip, .image = std::string{kind.image},
                          .run = [this, key = kind.tab] {
                              if (tabs.Toggle(key))
                                  fileTypeTabStrip_Click();
                              RefreshCommands();
                          },
                          .checked = [this, key = kind.tab] { return tabs.IsShown(key); }});
    constexpr const char* columnCommands[] = {"mnuColumnFolder", "mnuColumnSize", "mnuColumnModified"};
    for (std::size_t column = 1; column <= std::size(columnCommands); ++column)
        commands.Add({.name = columnCommands[column - 1],
                      .caption = 218 + static_cast<int>(column),
                      .run = [this, column] { ToggleColumn(column); },
                      .checked = [this, column] { return lvListView.Columns()[column].width > 0; }});
}

void frmMain::AddHelpCommands()
{
    const auto openHelp = [this](std::string_view topic) {
        return [this, topic] {
            const Busy guard{*this};
            help.Open(topic);
        };
    };
    commands.Add({.name = "mnuHelpContents", .caption = 128, .toolTip = 342, .image = "help",
                  .key = ui::Plain(ui::KeyCode::F1), .run = openHelp("General HTML")});
    commands.Add({.name = "mnuHelpSearch", .caption = 129, .run = openHelp("Using Find HTML")});
    commands.Add({.name = "mnuHelpAbout", .caption = 130, .toolTip = 443, .image = "about",
                  .run = [this] { mnuHelpAbout_Click(); }});
    commands.Add({.name = "mnuReportABug", .caption = 524, .toolTip = 524, .image = "bug",
                  .run = [this] { mnuReportABug_Click(); }, .enabled = [this] { return !bugReport.UnderWay(); },
                  .visible = [this] { return program.settings.Text("Options", "ReportABug") == "1"; }});
    for (const std::string& link : help.WebLinks())
        commands.Add({.name = "mnuWebLink " + link,
                      .text = platform::text::Replaced(link, "&", "&&"),
                      .run = [this, link] { help.OpenLink(link); }});
}

void frmMain::AddProfileAndPackCommands()
{
    const auto withProfiles = [this](void (profiles::ProfileDialogs::*open)()) {
        return [this, open] {
            const Busy guard{*this};
            (profileDialogs.*open)();
        };
    };
    commands.Add({.name = "mnuProfileEdit", .caption = 374, .toolTip = 417, .image = "profiles", .key = ui::Ctrl('E'),
                  .run = withProfiles(&profiles::ProfileDialogs::EditProfile)});
    commands.Add({.name = "mnuProfileManage", .caption = 375, .toolTip = 375, .image = "profiles", .key = ui::Ctrl('M'),
                  .run = withProfiles(&profiles::ProfileDialogs::ManageProfiles)});
    commands.Add({.name = "mnuProfileImportExport", .caption = 376, .toolTip = 482, .key = ui::Ctrl('I'),
                  .run = withProfiles(&profiles::ProfileDialogs::ImportOrExport)});
    commands.Add({.name = "mnuInstallNewTemplates", .caption = 393, .toolTip = 467, .image = "packs",
                  .run = [this] {
                      const Busy guard{*this};
                      solutionPacks.Install();
                  }});
    commands.Add({.name = "mnuSolutionPackManager", .caption = 396, .toolTip = 449, .image = "packs",
                  .run = [this] {
                      const Busy guard{*this};
                      solutionPacks.ShowManager();
                  }});
    commands.Add({.name = "mnuGetNewDesigns", .caption = 394, .toolTip = 388, .image = "more",
                  .run = [this] { solutionPacks.GetMore(); }});
}
// clang-format on

void frmMain::AddPopUpCommands()
{
    // What the list's pop-up menu has in common with the menu bar, by names of its own.
    for (const auto& [popup, command] : {std::pair{"mnuPopUpOpenTemplate", "mnuFileOpen"},
                                         {"mnuPopAddToFavorites", "mnuAddToFavorites"},
                                         {"mnuPopRemoveFromFavorites", "mnuRemoveFromFavorites"}}) {
        Command same = *commands.Find(command);
        same.name = popup;
        same.key = {};
        commands.Add(std::move(same));
    }
}

void frmMain::BuildMenus()
{
    std::vector<std::string> helpEntries{"mnuHelpContents", "mnuHelpSearch", "-"};
    const std::vector<std::string> links = help.WebLinks();
    for (const std::string& link : links)
        helpEntries.push_back("mnuWebLink " + link);
    if (!links.empty())
        helpEntries.emplace_back("-");
    helpEntries.insert(helpEntries.end(), {"mnuReportABug", "mnuHelpAbout"});

    const std::vector<CommandTable::MenuLayout> menus{
        {"mnuFile",
         101,
         {"mnuNew>", "mnuFileOpen", "mnuFilePreview", "mnuFileProperties", "-", "mnuFileExit", "-mnuRecentSeparator",
          "mnuFile1", "mnuFile2", "mnuFile3", "mnuFile4", "mnuFile5", "mnuFile6", "mnuFile7", "mnuFile8", "mnuFile9",
          "mnuFile10"}},
        {"mnuEdit",
         108,
         {"mnuEditCopy", "mnuEditFind", "-", "mnuAddToFavorites", "mnuRemoveFromFavorites", "-", "mnupopRenamefolder",
          "mnupopDeletefolder"}},
        {"mnuView",
         113,
         {"mnuViewLargeIcons", "mnuViewSmallIcons", "mnuViewList", "mnuViewDetails", "mnuViewThumbnails",
          "mnuViewWithoutPicture", "-", "mnuViewFolderList", "mnuViewPreviewPane", "mnuHideBanner", "mnuShowBanner",
          "-", "mnuRefreshTV"}},
        {"mnuOptions",
         121,
         {"mnuSettingsWord", "mnuSettingsPPT", "mnuSettingsXL", "mnuSettingsPhoto", "-", "mnuHistory",
          "mnuTemplatesPath"}},
        {"mnuProfiles", 373, {"mnuProfileEdit", "mnuProfileManage", "mnuProfileImportExport"}},
        {"mnuTools",
         392,
         {"mnuRecentDocuments", "-", "mnuInstallNewTemplates", "mnuSolutionPackManager", "mnuGetNewDesigns"}},
        {"mnuHelp", 127, helpEntries},
    };
    const std::vector<CommandTable::MenuLayout> subMenus{
        {"mnuNew", 102, {"mnuFileNewDocument", "mnuFileNewTemplate"}},
    };
    for (const CommandTable::MenuLayout& menu : menus)
        commands.Fill(MenuBar.Add(std::make_unique<ui::Menu>(menu.name, ui::Tag{menu.caption})), menu.entries,
                      subMenus);

    commands.Fill(mnuTreePopup, {"mnuRefreshTV", "-", "mnupopRenamefolder", "mnupopDeletefolder"});
    commands.Fill(mnuListPopup, {"mnuPopUpOpenTemplate", "mnuFileNew", "mnuFilePreview", "mnuEditCopy", "-",
                                 "mnuPopAddToFavorites", "mnuPopRemoveFromFavorites", "-", "mnuFileProperties"});
    mnuListPopup.Find("mnuPopUpOpenTemplate")->Default = true;
    commands.Fill(mnuListSpacePopup, {"mnuViewLargeIcons", "mnuViewSmallIcons", "mnuViewList", "mnuViewDetails",
                                      "mnuViewThumbnails", "-", "mnuRefreshTV"});
    commands.Fill(mnuColumnsPopup, {"mnuColumnFolder", "mnuColumnSize", "mnuColumnModified"});
    Popups = {&mnuTreePopup, &mnuListPopup, &mnuListSpacePopup, &mnuColumnsPopup};

    commands.FillToolBar(tbToolBar, {"mnuFileNew",
                                     "mnuFileOpen",
                                     "mnuFilePreview",
                                     "-",
                                     "mnuAddToFavorites",
                                     "mnuRemoveFromFavorites",
                                     "mnuEditFind",
                                     "-",
                                     "mnuViewLargeIcons",
                                     "mnuViewSmallIcons",
                                     "mnuViewList",
                                     "mnuViewDetails",
                                     "mnuViewThumbnails",
                                     "-",
                                     "mnuViewFolderList",
                                     "mnuViewPreviewPane",
                                     "-",
                                     "mnuSettingsWord",
                                     "mnuSettingsXL",
                                     "mnuSettingsPPT",
                                     "mnuSettingsPhoto",
                                     "-",
                                     "mnuRefreshTV",
                                     "-",
                                     "mnuSolutionPackManager",
                                     "mnuGetNewDesigns",
                                     "mnuReportABug"});
}

} // namespace app
