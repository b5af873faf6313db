#include "library/Favorites.h"

#include "app/base/StringId.h"
#include "library/CategoryPath.h"

namespace library {

void Favorites::GetFavoritesFromRegistry()
{
    favoritesList.clear();
    const auto place = app::RegistryAccess::SplitPath(program.Text(app::str::FavoritesKey));
    if (!place)
        return;
    const auto stored = program.platform.registry.ValueNames(place->first, place->second);
    if (!stored)
        return;
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

} // namespace library
