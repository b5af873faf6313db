#pragma once

#include "app/base/Program.h"

#include <string>
#include <vector>

namespace library {

/// The user's own list of templates: paths relative to the templates path, one registry value each.
class Favorites {
public:
    explicit Favorites(app::Program& program) : program{program} {}

    /// Reads the stored list in registry order. A favourite whose file is gone is deleted from the registry without a
    /// word, but only while the templates folder itself can be read: a drive that is away costs nobody his list.
    void GetFavoritesFromRegistry();

    const std::vector<std::string>& List() const { return favoritesList; }

private:
    app::Program& program;
    std::vector<std::string> favoritesList;
};

} // namespace library
