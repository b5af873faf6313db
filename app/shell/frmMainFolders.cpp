// What the main window does with folders, favourites, and what the user opened last.
#include "app/shell/frmMain.h"

#include "app/base/StringId.h"
#include "app/shell/frmAbout.h"
#include "app/shell/frmTemplatesPath.h"
#include "browser/DocumentPropertiesForm.h"
#include "browser/frmOptionsHistory.h"
#include "browser/frmRecentDocuments.h"
#include "library/CategoryPath.h"
#include "library/TemplateFiles.h"
#include "packs/FileVersionInfo.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>

namespace app {
namespace {

/// The path about which the user has said that it is right although nothing is in it.
constexpr std::string_view EmptyLibrarySetting = "Empty Templates Path";

} // namespace

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
        folders.Rename(templateLibrary.Tree().Of(node), text);
    };
    tvTreeView.Drop = [this](ui::TreeView::Node& node, ui::Control& source) { tvTreeView_Drop(node, source); };
    lvListView.DropTarget = &tvTreeView;
    imgPreview.DropTarget = &tvTreeView;
    launcher.WhileOpening = [this] { return std::make_shared<Busy>(*this); };
    opener.Opened = [this](const std::string& path) {
        recentFiles.AddRecentFileToList(path);
        if (!library::TemplateTypeOf(path))
            recentDocuments.Add(path);
        RefreshCommands();
    };
    opener.OpenedItself = [this](const std::string& path) {
        list.Tell(platform::text::Replaced(program.Text(str::TemplateItselfOpened), "%1", platform::path::Name(path)));
    };
    opener.Created = [this](const std::string& path) { recentDocuments.Add(path); };
}

void frmMain::ReloadTree(const std::string& category)
{
    const Busy guard{*this};
    if (!LoadTreeView())
        return;
    if (const auto* folder = templateLibrary.Contents().FindRemembered(category))
        templateLibrary.Tree().Select(folder);
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
    else if (templateLibrary.Tree().Of(node) == templateLibrary.Contents().Favorites())
        mnuAddToFavorites_Click();
    else
        program.messages.Inform(program.Text(str::DropRefused) + "\r\n" + program.Text(str::DropOnlyFavorites));
}

bool frmMain::FavoritesSelected() const
{
    return templateLibrary.Tree().IsFavoritesSelected();
}

void frmMain::mnuAddToFavorites_Click()
{
    const Busy guard{*this};
    const auto* row = list.Selected();
    if (row == nullptr)
        return;
    const std::string path = browser::FullPath(*row);
    const std::size_t root = library::DiskPath(program.state.TemplatesPath, "").size(); // its last "\\" included
    const std::string name = row->text;
    if (favorites.AddToFavorites(path.substr(std::min(root, path.size())), name))
        list.Tell(platform::text::Replaced(program.Text(str::AddedToFavorites), "%1", name));
}

void frmMain::mnuRemoveFromFavorites_Click()
{
    const Busy guard{*this};
    const auto* row = list.Selected();
    if (row != nullptr && favorites.RemoveFromFavorites(std::string{row->text}) && FavoritesSelected())
        FillList();
}

void frmMain::mnuFileProperties_Click()
{
    using Wish = browser::DocumentPropertiesForm::Wish;
    const std::string path = list.SelectedPath();
    if (path.empty())
        return;
    const Busy guard{*this};
    browser::DocumentPropertiesForm form{program, documents, path};
    form.ShowModal();
    if (form.Wished() == Wish::NewDocument)
        opener.CreateDocument(path);
    else if (form.Wished() == Wish::OpenTemplate)
        opener.Open(path);
}

void frmMain::mnuHelpAbout_Click()
{
    const Busy guard{*this};
    frmAbout form{program, help, [](platform::FileSystem& files, const std::string& path) {
                      return packs::FileVersionInfo::Read(files, path).value_or(std::string{});
                  }};
    form.ShowModal();
}

void frmMain::mnuRecentDocuments_Click()
{
    const Busy guard{*this};
    browser::frmRecentDocuments form{program, recentDocuments,
                                     [this](const std::string& path) { return OpenDocument(path); },
                                     [this] { mnuHistory_Click(); }};
    form.ShowModal();
}

void frmMain::mnuHistory_Click()
{
    const Busy guard{*this};
    browser::frmOptionsHistory form{program, recentDocuments, [this] { help.Open("Recent Documents HTML"); }};
    form.ShowModal();
}

void frmMain::mnuTemplatesPath_Click()
{
    const Busy guard{*this};
    if (!ChooseTemplatesPath(program))
        return;
    ClearViewState();
    templateLibrary.FullLoad = true;
    const bool isLoaded = LoadTreeView(); // first: until then the tree's folders are those of the former library
    favorites.GetFavoritesFromRegistry();
    if (isLoaded)
        FillList();
    RefreshCommands();
}

void frmMain::AskAboutEmptyLibrary()
{
    const std::string folder{platform::path::WithoutTrailingSeparator(program.state.TemplatesPath)};
    if (templateLibrary.HoldsTemplates() || templateLibrary.NoFoldersFound ||
        program.settings.Text("Browser", EmptyLibrarySetting) == folder)
        return;
    const Busy guard{*this};
    if (program.messages.Ask(platform::text::Replaced(program.Text(str::EmptyLibraryQuestion), "%1", folder)))
        mnuTemplatesPath_Click();
    else
        (void)program.settings.Save("Browser", EmptyLibrarySetting, folder);
}

bool frmMain::OpenDocument(const std::string& path)
{
    if (launcher.IsOpening())
        return false;
    // A spreadsheet's program is started by name, and would be so for a document that is gone.
    if (library::TemplateTypeOf(path) == library::SpreadsheetTemplate) {
        const auto entry = program.files.Stat(path);
        if (entry && !entry->IsFolder())
            return opener.OpenRecorded(path);
    }
    if (launcher.OpenDocument(path))
        return true;
    program.messages.Inform(str::LaunchDocumentFailed);
    return false;
}

void frmMain::mnuFile_Click(std::size_t number)
{
    if (number <= recentFiles.List().size())
        (void)opener.OpenRecorded(std::string{recentFiles.List()[number - 1]});
}

} // namespace app
