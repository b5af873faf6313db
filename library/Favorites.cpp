#include "library/Favorites.h"

#include "app/base/StringId.h"
#include "library/CategoryPath.h"
#include "platform/Text.h"

#include <algorithm>
#include <optional>

namespace library {
namespace {

using platform::text::ContainsIgnoringCase;

constexpr std::string_view Section = "Browser\\Favorites";

/// The path that a favourite has once the folder it lies in is renamed; nothing when it lies elsewhere.
std::optional<std::string> MovedPath(std::string_view favorite, const std::string& from, const std::string& to)
{
    if (favorite.size() <= from.size() || favorite[from.size()] != '\\' ||
        !platform::text::EqualIgnoringCase(favorite.substr(0, from.size()), from))
        return std::nullopt;
    return to + std::string{favorite.substr(from.size())};
}

} // namespace

void Favorites::GetFavoritesFromRegistry()
{
    const auto place = app::RegistryAccess::SplitPath(program.Text(app::str::FavoritesKey));
    const auto stored = StoredNames();
    if (!place || !stored)
        return;
    favoritesList.clear();
    const bool canPrune = program.platform.files.List(DiskPath(program.state.TemplatesPath, "")).has_value();
    for (const std::string& name : *stored) {
        if (name.empty())
            continue;
        const auto entry = program.platform.files.Stat(DiskPath(program.state.TemplatesPath, name));
        const bool isGone = !entry && (entry.error() == platform::error::FileNotFound ||
                                       entry.error() == platform::error::PathNotFound);
        if (canPrune && (isGone || (entry && entry->IsFolder())))
            (void)program.platform.registry.DeleteValue(place->first, place->second, name);
        else
            favoritesList.push_back(name);
    }
}

void Favorites::AddToFavorites(const std::string& path, const std::string& rowText)
{
    const auto stored = StoredNames();
    if (!stored) {
        program.messages.Plain(app::str::EnumerationFailed);
        return;
    }
    // Containment, not equality: whatever is part of a favourite counts as one.
    if (std::ranges::any_of(*stored, [&](const std::string& name) { return ContainsIgnoringCase(name, path); })) {
        program.messages.Inform(rowText + " " + program.Text(app::str::AlreadyFavorite));
        return;
    }
    if (SaveFavorite(path))
        favoritesList.push_back(path);
    else
        program.messages.Stop(app::str::SetValueFailed);
}

bool Favorites::RemoveFromFavorites(const std::string& rowText)
{
    const std::vector<std::string> before = favoritesList;
    for (auto favorite = before.rbegin(); favorite != before.rend(); ++favorite) {
        // The box and the deletion yield: the list may be shorter than it was.
        if (std::ranges::find(favoritesList, *favorite) == favoritesList.end() ||
            !ContainsIgnoringCase(*favorite, rowText) || !program.messages.Ask(app::str::RemoveFavoriteQuestion))
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
            program.messages.Stop(app::str::SetValueFailed);
            return false;
        }
    return true;
}

void Favorites::ForgetMoved(const std::string& from, const std::string& to, bool moved)
{
    for (std::string& favorite : favoritesList)
        if (auto path = MovedPath(favorite, from, to)) {
            (void)program.settings.DeleteSetting(program.state.SettingsAppName, Section, moved ? favorite : *path);
            if (moved)
                favorite = std::move(*path);
        }
}

platform::Result<std::vector<std::string>> Favorites::StoredNames() const
{
    const auto place = app::RegistryAccess::SplitPath(program.Text(app::str::FavoritesKey));
    if (!place)
        return std::vector<std::string>{};
    auto stored = program.platform.registry.ValueNames(place->first, place->second);
    if (!stored && stored.error() == platform::error::FileNotFound)
        return std::vector<std::string>{}; // nobody has had a favourite yet
    return stored;
}

platform::Result<> Favorites::SaveFavorite(const std::string& path)
{
    return program.settings.Save(Section, path, "");
}

bool Favorites::DeleteFavorite(const std::string& path)
{
    const auto deleted = program.settings.DeleteSetting(program.state.SettingsAppName, Section, path);
    program.toolkit.DoEvents();
    program.toolkit.DoEvents();
    if (deleted)
        return true;
    if (deleted.error() == platform::error::FileNotFound) {
        // Somebody else changed the store: nothing that the list says can be counted on any more.
        program.messages.Inform(app::str::TemplateNotFound);
        favoritesList.clear();
    } else {
        program.messages.Stop(app::str::DeleteValueFailed);
    }
    return false;
}

} // namespace library
