#pragma once

#include "app/base/Program.h"
#include "browser/TemplateList.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace browser {

/// Fills the list with the ready-made pictures of the templates instead of the templates themselves.
class Thumbnails {
public:
    Thumbnails(app::Program& program, TemplateList& list) : program{program}, list{list} {}

    /// One thumbnail for each picture in the category's "Previews" folder, in directory order. "All" shows every
    /// picture, another tab those of the templates that it shows. A folder that cannot be read is told (string 278).
    void LoadThumbnailImages(const std::string& category, std::string_view tab);
    /// One thumbnail for each favourite; its picture lies in "Previews" beside it.
    void LoadThumbnailViewForMyFavorites(const std::vector<std::string>& favorites, const library::Catalog& catalog,
                                         std::string_view tab);

    /// Whether the pictures are drawn onto the library's background picture; settled by each load.
    bool UseThumbnailBackground{};

private:
    app::Program& program;
    TemplateList& list;

    /// What one load has so far.
    struct Load {
        std::string category;
        std::map<std::string, TemplateList::Row> templates; ///< of the folder, by base name, folded
        bool showsAll{};
        TemplateList::RowSet rows;
    };

    void FindBackground();
    /// `previewsFolder` is relative to the templates path.
    void AddThumbnailImage(Load& load, const std::string& previewsFolder, const std::string& fileName) const;
    ui::Thumbnail Composed(std::string picture, std::string_view frameLocation) const;
    void Show(TemplateList::RowSet rows);
};

} // namespace browser
