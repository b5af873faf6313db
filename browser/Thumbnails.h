#pragma once

#include "app/base/StartUpState.h"
#include "browser/RowSource.h"
#include "browser/TemplateReader.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace browser {

/// Shows the ready-made pictures of the templates instead of the templates themselves.
class Thumbnails {
public:
    Thumbnails(platform::FileSystem& files, const app::StartUpState& state, const TemplateReader& reader)
        : files{files}, state{state}, reader{reader}
    {
    }

    /// Whether templates without a picture show too, with the library's own one; nothing when the user has not said:
    /// where no template of the folder has one.
    std::optional<bool> ShowWithoutPicture;

    /// One thumbnail for each picture in the category's "Previews" folder, in directory order. "All" shows every
    /// picture, another tab those of the templates that it shows. The templates without a picture follow, or are only
    /// counted. An error: the folder is there and cannot be read.
    platform::Result<> LoadThumbnailImages(const std::string& category, std::string_view tab, RowSink& sink);
    /// One thumbnail for each favourite; its picture lies in "Previews" beside it.
    void LoadThumbnailViewForMyFavorites(const library::Favorites& favorites, std::string_view tab, RowSink& sink);

    // For rows of many folders; their pictures lie in "Previews" beside each.
    /// Looks for the library's background picture, before the first of them.
    void FindBackground();
    void AddPictures(TemplateRows& rows) const;

    /// Whether the pictures are drawn onto the library's background picture; settled by each load.
    bool UseThumbnailBackground{};

private:
    platform::FileSystem& files;
    const app::StartUpState& state;
    const TemplateReader& reader;

    /// What one load has so far.
    struct Load {
        std::string category;
        TemplateRows all;                             ///< of the folder; those that have a picture are moved from
        std::map<std::string, std::size_t> templates; ///< places in `all` by base name, folded
        bool showsAll{};
        bool hasPictures{};
        TemplateRows rows;
    };

    void AddTheOthers(Load& load, RowSink& sink) const;
    /// `previewsFolder` is relative to the templates path.
    void AddThumbnailImage(Load& load, const std::string& previewsFolder, const std::string& fileName) const;
    static std::string PictureOf(const TemplateRow& row);
    std::shared_ptr<const ui::Thumbnail> Composed(std::string picture, std::string_view frameLocation) const;
};

} // namespace browser
