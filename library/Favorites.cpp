#include "library/Favorites.h"

#include "app/base/StringId.h"
#include "library/CategoryPath.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>
#include <set>
#include <utility>

namespace library {
namespace {

using platform::text::ContainsIgnoringCase;

constexpr std::string_view Section = "Browser\\Favorites";
/// The library of each favourite that is known to be, or have been, in one: its templates path.
constexpr std::string_view LibrarySection = "Browser\\Favorites Library";

} // namespace

void Favorites::GetFavoritesFromRegistry()
{
    auto names = settings.Names(Section);
    if (!names)
        return;
    const std::string asked = state.TemplatesPath;
    const auto gone = files.Ask([names = std::move(*names), templatesPath = asked](
                                    platform::FileSystem& disk) -> platform::Result<std::set<std::string>> {
        if (const auto library = disk.List(DiskPath(templatesPath, "")); !library)
            return std::unexpected{library.error()};
        std::set<std::string> found;
        for (const std::string& name : names)
            if (!name.empty() && IsGone(disk, DiskPath(templatesPath, name)))
                found.insert(name);
        if (!found.empty()) // the system tells of a drive that went meanwhile in the same words
            if (const auto still = disk.List(DiskPath(templatesPath, "")); !still)
                return std::unexpected{still.error()};
        return found;
    });
    if (state.TemplatesPath != asked) // they are read again by whoever has changed it
        return;
    // While that was waited for, the user may have added some and removed others.
    const auto stored = settings.Names(Section);
    if (!stored)
        return;
    const bool canPrune = gone.has_value();
    favoritesList.clear();
    for (const std::string& name : *stored) {
        if (name.empty())
            continue;
        if (!canPrune || !gone->contains(name)) {
            favoritesList.push_back(name);
            if (canPrune)
                StoreLibrary(name);
            continue;
        }
        // One of another library waits, unseen, until that one is in use again.
        const auto library = settings.Read(LibrarySection, name);
        if (library && (library->empty() || *library == Library())) {
            (void)settings.Delete(Section, name);
            (void)settings.Delete(LibrarySection, name);
        }
    }
}

std::string Favorites::Library() const
{
    return platform::text::Folded(platform::path::WithoutTrailingSeparator(state.TemplatesPath));
}

void Favorites::StoreLibrary(const std::string& path)
{
    if (settings.Text(LibrarySection, path) != Library())
        (void)settings.Save(LibrarySection, path, Library());
}

bool Favorites::IsGone(platform::FileSystem& disk, const std::string& file)
{
    using namespace platform;
    const auto entry = disk.Stat(file);
    if (entry)
        return entry->IsFolder();
    // A name that the system does not allow was never a file; other failures say nothing about the file.
    return IsNotThere(entry.error()) || entry.error() == error::InvalidName;
}

bool Favorites::AddToFavorites(const std::string& path, const std::string& rowText)
{
    // Asked first: meanwhile the user may give the same command again.
    const bool isGone = IsGone(files, DiskPath(state.TemplatesPath, path));
    const auto match = FindFavorite(path);
    if (!match) {
        messages.Plain(app::str::EnumerationFailed);
    } else if (!match->empty()) {
        messages.Inform(rowText + " " + strings.LoadString(app::str::AlreadyFavorite));
    } else if (isGone) {
        messages.Inform(app::str::TemplateNotFound); // deleted meanwhile, or only its picture is left
    } else if (!SaveFavorite(path)) {
        messages.Stop(app::str::SetValueFailed);
    } else {
        StoreLibrary(path);
        favoritesList.push_back(path);
        return true;
    }
    return false;
}

platform::Result<std::string> Favorites::FindFavorite(const std::string& path) const
{
    const auto stored = settings.Names(Section);
    if (!stored)
        return std::unexpected{stored.error()};
    // Containment, not equality: whatever is part of a favourite counts as one.
    const auto match =
        std::ranges::find_if(*stored, [&](const std::string& name) { return ContainsIgnoringCase(name, path); });
    return match == stored->end() ? std::string{} : *match;
}

bool Favorites::RemoveFromFavorites(const std::string& rowText)
{
    const std::vector<std::string> before = favoritesList;
    for (auto favorite = before.rbegin(); favorite != before.rend(); ++favorite) {
        // The box and the deletion yield: the list may be shorter than it was.
        if (!ContainsIgnoringCase(*favorite, rowText) ||
            std::ranges::find(favoritesList, *favorite) == favoritesList.end() ||
            !messages.Ask(app::str::RemoveFavoriteQuestion))
            continue;
        if (DeleteFavorite(*favorite))
            std::erase(favoritesList, *favorite);
    }
    return favoritesList != before;
}

bool Favorites::StoreMoved(const std::string& from, const std::string& to)
{
    for (const std::string& favorite : favoritesList)
        if (const auto moved = MovedPath(favorite, from, to); moved && !SaveFavorite(*moved)) {
            ForgetMoved(from, to, false);
            messages.Stop(app::str::SetValueFailed);
            return false;
        }
    return true;
}

void Favorites::ForgetMoved(const std::string& from, const std::string& to, bool moved)
{
    for (std::string& favorite : favoritesList)
        if (auto path = MovedPath(favorite, from, to)) {
            (void)settings.Delete(Section, moved ? favorite : *path);
            (void)settings.Delete(LibrarySection, moved ? favorite : *path);
            if (moved) {
                favorite = std::move(*path);
                StoreLibrary(favorite);
            }
        }
}

platform::Result<> Favorites::SaveFavorite(const std::string& path)
{
    return settings.Save(Section, path, "");
}

bool Favorites::DeleteFavorite(const std::string& path)
{
    const auto deleted = settings.Delete(Section, path);
    toolkit.DoEvents();
    toolkit.DoEvents();
    if (deleted) {
        (void)settings.Delete(LibrarySection, path);
        return true;
    }
    if (deleted.error() == platform::error::FileNotFound) {
        // Somebody else changed the store: nothing that the list says can be counted on any more.
        messages.Inform(app::str::TemplateNotFound);
        favoritesList.clear();
    } else {
        messages.Stop(app::str::DeleteValueFailed);
    }
    return false;
}

} // namespace library
