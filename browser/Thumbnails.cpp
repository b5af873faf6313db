#include "browser/Thumbnails.h"

#include "app/base/StringId.h"
#include "browser/FileTypeTabs.h"
#include "library/CategoryPath.h"
#include "library/TemplateFiles.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <utility>

namespace browser {
namespace {

namespace path = platform::path;
namespace text = platform::text;

constexpr std::string_view Previews = "Previews";
constexpr std::string_view PictureEnding = ".jpg";
constexpr std::string_view BackgroundFile = "background.bmp";

bool IsMissing(platform::Error error)
{
    return error == platform::error::FileNotFound || error == platform::error::PathNotFound ||
           error == platform::error::InvalidFolder;
}

} // namespace

void Thumbnails::LoadThumbnailImages(const std::string& category, std::string_view tab)
{
    FindBackground();
    Load load{category, {}, tab == FileTypeTabs::AllTab, {}};
    auto templates = list.ReadCategory(category, tab);
    if (!templates)
        return; // the user went on to another folder
    // Of two templates with one name the picture opens the one that the list has first.
    for (TemplateList::Row& row : *templates)
        load.templates.try_emplace(text::Folded(row.text), std::move(row));

    const std::string previews = path::Join(load.category, Previews);
    const auto pictures = program.platform.files.List(library::DiskPath(program.state.TemplatesPath, previews));
    if (pictures)
        for (const platform::FileEntry& picture : *pictures)
            if (library::IsPlainFile(picture) && text::EndsWithIgnoringCase(picture.name, PictureEnding))
                AddThumbnailImage(load, previews, picture.name);
    Show(std::move(load.rows));
    if (!pictures && !IsMissing(pictures.error()))
        program.messages.Inform(app::str::ThumbnailsUnavailable);
}

void Thumbnails::AddThumbnailImage(Load& load, const std::string& previewsFolder, const std::string& fileName) const
{
    TemplateList::Row row;
    const std::string name = text::Trimmed(path::WithoutLastFour(fileName));
    if (const auto found = load.templates.find(text::Folded(name)); found != load.templates.end()) {
        row = found->second;
    } else if (load.showsAll && !list.IsExcluded(name)) {
        // A picture whose template is gone shows, and opening it says that the file was not found.
        row.text = name;
        row.file = name + std::string{library::TemplateExtensions[library::WordTemplate]};
        row.folder = library::DiskPath(program.state.TemplatesPath, load.category);
        row.inFolder = load.category;
    } else {
        return;
    }
    // The frame always comes from the hard disk, also when the templates come from a CD: it may lie there alone.
    row.thumbnail = Composed(library::DiskPath(program.state.TemplatesPath, path::Join(previewsFolder, fileName)),
                             program.state.HddTemplatesPath);
    load.rows.push_back(std::move(row));
}

void Thumbnails::LoadThumbnailViewForMyFavorites(const std::vector<std::string>& favorites,
                                                 const library::Catalog& catalog, std::string_view tab)
{
    FindBackground();
    TemplateList::RowSet rows = list.ReadFavorites(favorites, catalog, tab);
    for (TemplateList::Row& row : rows)
        row.thumbnail =
            Composed(path::Join(path::Join(row.folder, Previews), text::Trimmed(row.text) + std::string{PictureEnding}),
                     program.state.TemplatesPath);
    Show(std::move(rows));
}

void Thumbnails::FindBackground()
{
    const auto entry = program.platform.files.Stat(library::DiskPath(program.state.TemplatesPath, BackgroundFile));
    UseThumbnailBackground = entry && !entry->IsFolder();
}

ui::Thumbnail Thumbnails::Composed(std::string picture, std::string_view frameLocation) const
{
    return {std::move(picture), library::DiskPath(program.state.TemplatesPath, "NF.jpg"),
            UseThumbnailBackground ? library::DiskPath(frameLocation, BackgroundFile) : std::string{}};
}

void Thumbnails::Show(TemplateList::RowSet rows)
{
    list.Show(std::move(rows), program.Text(app::str::Empty));
}

} // namespace browser
