#pragma once

#include "app/base/Messages.h"
#include "app/base/PatientFiles.h"
#include "app/base/Settings.h"
#include "app/base/StringTable.h"
#include "platform/FileSystem.h"
#include "ui/Toolkit.h"

#include <string>
#include <vector>

namespace library {

/// The user's own list of templates: paths relative to the templates path, one value of the settings each.
class Favorites {
public:
    Favorites(app::PatientFiles& files, app::Settings& settings, app::Messages& messages,
              const app::StringTable& strings, const app::StartUpState& state, ui::Toolkit& toolkit)
        : files{files}, settings{settings}, messages{messages}, strings{strings}, state{state}, toolkit{toolkit}
    {
    }

    /// Reads the stored list in registry order. A favourite whose file is gone is deleted from the registry without a
    /// word, but only while the templates folder itself can be read, and is the one in which the favourite was last
    /// seen: neither a drive that is away nor another library costs anybody his list.
    void GetFavoritesFromRegistry();

    const std::vector<std::string>& FavoritesList() const { return favoritesList; }

    /// Adds a template (path relative to the templates path) and stores it. One whose path is part of a stored
    /// favourite's counts as there already: the user is told, by the text of the row that he chose. A template that
    /// is not there, and a failure of the registry, are told and add nothing. True when it was added.
    bool AddToFavorites(const std::string& path, const std::string& rowText);
    /// Asks for every favourite that contains the row's text, the last one first, and removes those that the user
    /// gives up. True when the list is another one now.
    bool RemoveFromFavorites(const std::string& rowText);

    /// Before a category folder is renamed: stores the favourites in it under their new paths as well. False when the
    /// registry refused, which the user has been told; nothing has changed then.
    bool StoreMoved(const std::string& from, const std::string& to);
    /// After it: forgets the old paths, or the new ones when the folder could not be renamed.
    void ForgetMoved(const std::string& from, const std::string& to, bool moved);

private:
    app::PatientFiles& files;
    app::Settings& settings;
    app::Messages& messages;
    const app::StringTable& strings;
    const app::StartUpState& state;
    ui::Toolkit& toolkit;
    std::vector<std::string> favoritesList;

    /// The first stored favourite that contains the path; "" when none does.
    platform::Result<std::string> FindFavorite(const std::string& path) const;
    /// The templates path in use, as it is recorded of a favourite.
    std::string Library() const;
    void StoreLibrary(const std::string& path);
    static bool IsGone(platform::FileSystem& disk, const std::string& file);
    platform::Result<> SaveFavorite(const std::string& path);
    /// False when the favourite is still stored.
    bool DeleteFavorite(const std::string& path);
};

} // namespace library
