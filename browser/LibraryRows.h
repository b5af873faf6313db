#pragma once

#include "app/base/StringId.h"
#include "browser/Thumbnails.h"

#include <string>

namespace browser {

/// A category's templates (its path in the catalogue).
class CategoryRows final : public RowSource {
public:
    CategoryRows(const TemplateReader& reader, Thumbnails& thumbnails, std::string category)
        : reader{reader}, thumbnails{thumbnails}, category{std::move(category)}
    {
    }
    platform::Result<> ReadRows(std::string_view tab, RowSink& sink) override
    {
        return reader.ReadCategory(category, tab, sink);
    }
    platform::Result<> ReadThumbnails(std::string_view tab, RowSink& sink) override
    {
        return thumbnails.LoadThumbnailImages(category, tab, sink);
    }

private:
    const TemplateReader& reader;
    Thumbnails& thumbnails;
    std::string category;
};

/// My Favorites: templates of many folders.
class FavoriteRows final : public RowSource {
public:
    FavoriteRows(const TemplateReader& reader, Thumbnails& thumbnails, const library::Favorites& favorites)
        : reader{reader}, thumbnails{thumbnails}, favorites{favorites}
    {
    }
    platform::Result<> ReadRows(std::string_view tab, RowSink& sink) override
    {
        reader.ReadFavorites(favorites, tab, sink);
        return {};
    }
    platform::Result<> ReadThumbnails(std::string_view tab, RowSink& sink) override
    {
        thumbnails.LoadThumbnailViewForMyFavorites(favorites, tab, sink);
        return {};
    }
    std::uint16_t EmptyText() const override { return app::str::NoFavorites; }

private:
    const TemplateReader& reader;
    Thumbnails& thumbnails;
    const library::Favorites& favorites;
};

} // namespace browser
