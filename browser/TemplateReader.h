#pragma once

#include "app/base/PatientFiles.h"
#include "app/base/Settings.h"
#include "app/base/StartUpState.h"
#include "browser/RowSource.h"
#include "library/Catalog.h"
#include "library/Favorites.h"

#include <array>
#include <string>
#include <string_view>

namespace browser {

/// Reads the library's templates as rows.
class TemplateReader {
public:
    TemplateReader(const library::Catalog& catalog, app::PatientFiles& files, const app::StartUpState& state,
                   const app::Settings& settings);

    /// Base names that are never listed; the first empty entry ends them.
    std::array<std::string, 20> ExcludedNames;
    bool IsExcluded(const std::string& baseName) const;

    /// A category's files (its path in the catalogue), those of one ending after the other.
    platform::Result<> ReadCategory(const std::string& category, std::string_view tab, RowSink& sink) const;
    /// The favourites whose ending, letter case counting, is a template's.
    void ReadFavorites(const library::Favorites& favorites, std::string_view tab, RowSink& sink) const;

    /// Where a category's files lie, relative to the templates path.
    std::string PlaceOf(const std::string& category) const;

private:
    const library::Catalog& catalog;
    app::PatientFiles& files;
    const app::StartUpState& state;

    /// Sizes and times of those in the library.
    void AddDetails(TemplateRows& rows) const;
};

} // namespace browser
