#include "library/TemplateLibrary.h"

#include "app/base/StringId.h"
#include "library/FolderWalk.h"
#include "library/LibraryFolder.h"
#include "platform/Path.h"
#include "platform/Scoped.h"
#include "platform/Text.h"

#include <algorithm>
#include <utility>

namespace library {

TemplateLibrary::TemplateLibrary(ui::TreeView& tree, app::PatientFiles& files, platform::Shell& shell,
                                 platform::Locale& locale, app::Settings& settings, app::Messages& messages,
                                 app::LoadProgress& progress, const app::StringTable& strings,
                                 const app::StartUpState& state)
    : files{files}, shell{shell}, settings{settings}, messages{messages}, progress{progress}, strings{strings},
      state{state}, table{files}, catalog{strings, files, locale}, folderTree{tree, catalog}
{
}

bool TemplateLibrary::LoadTreeView()
{
    // The passes yield: a click that asks for a load in the middle of one must not build the tree twice over.
    if (loading)
        return true;
    {
        const platform::Scoped now{loading, true};
        struct Unlock {
            TemplateLibrary& library;
            ~Unlock()
            {
                if (library.LockAccess)
                    library.LockAccess(false);
            }
        } const unlock{*this};
        if (LockAccess)
            LockAccess(true);

        do
            LoadOnce();
        while (FullLoad && !progress.Cancelled);
    }
    if (Loaded)
        Loaded();
    return !NoFoldersFound;
}

void TemplateLibrary::LoadOnce()
{
    FolderListings listings{files, state.TemplatesPath};
    const bool reads = std::exchange(FullLoad, false);
    while ((NoFoldersFound = reads && !ReadFolders(listings)) && TellNoFolders())
        listings.Forget();
    if (NoFoldersFound)
        return;
    if (!progress.Cancelled)
        BuildTreeFromFolderTable(listings);
    RestoreCombo();
}

bool TemplateLibrary::ReadFolders(FolderListings& listings)
{
    FolderWalk walk{strings, progress, listings};
    const platform::Scoped ahead{
        listings.FollowersOf, decltype(listings.FollowersOf){[&walk](const std::string& folder, const auto& listing) {
            return walk.FollowersOf(folder, listing);
        }}};
    walk.Run();
    combo = {walk.FolderNames(), -1, {}};
    if (walk.Roots().empty()) {
        table.ClearFolderTable();
        catalog.Clear();
        folderTree.Show();
        if (ClearViews)
            ClearViews();
        return false;
    }
    table.BuildFolderTable(walk, listings, progress);
    if (MayBeTidied(shell, state.TemplatesPath))
        table.RemoveEmptyFolders(state.TemplatesPath);
    return true;
}

bool TemplateLibrary::TellNoFolders()
{
    if (progress.Cancelled)
        return false;
    if (OffersRetry)
        return messages.AskToRetry(strings.LoadString(app::str::NoTemplateFolders) + "\r\n\r\n" +
                                   std::string{platform::path::WithoutTrailingSeparator(state.TemplatesPath)});
    messages.Stop(app::str::NoTemplateFolders);
    return false;
}

void TemplateLibrary::BuildTreeFromFolderTable(FolderListings& listings)
{
    if (!catalog.Build(table, listings, progress, state.TemplatesPath))
        return;
    const auto update = folderTree.Update(); // where nothing changed, the tree must not scroll
    folderTree.Show();
    SelectLastBrowsed();
}

void TemplateLibrary::SelectLastBrowsed()
{
    const std::string last = settings.Text("Browser", "LastFolderBrowsed");
    const Catalog::Folder* folder =
        last.empty() || last == strings.LoadString(app::str::ProductCaption) ? nullptr : catalog.FindRemembered(last);
    if (folder == nullptr)
        folder = catalog.FirstCategory();
    folderTree.Select(folder != nullptr ? folder : catalog.Favorites());
}

bool TemplateLibrary::RebuildTree()
{
    if (!loading)
        RememberSelection();
    return LoadTreeView();
}

void TemplateLibrary::RememberSelection()
{
    if (const std::string remembered = Catalog::RememberedAs(folderTree.Selected()); !remembered.empty())
        (void)settings.Save("Browser", "LastFolderBrowsed", platform::text::Trimmed(remembered));
}

void TemplateLibrary::RestoreCombo()
{
    const std::string last = settings.Text("Browser", "LastFolderBrowsed");
    if (last.empty())
        return;
    const auto item = std::ranges::find(combo.items, last);
    if (item != combo.items.end()) {
        combo.selected = static_cast<int>(item - combo.items.begin());
        combo.text = last;
    } else if (last != strings.LoadString(app::str::ProductCaption)) {
        combo.selected = -1;
        combo.text = last;
    }
}

} // namespace library
