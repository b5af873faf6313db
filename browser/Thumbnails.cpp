#include "browser/Thumbnails.h"

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

constexpr std::string_view PictureEnding = ".jpg";
constexpr std::string_view BackgroundFile = "background.bmp";

/// Keeps the rows for a load that shows them in another shape.
class Collector final : public RowSink {
public:
    explicit Collector(RowSink& target) : target{target} {}
    void Add(TemplateRows piece) override
    {
        for (TemplateRow& row : piece)
            Rows.push_back(std::move(row));
    }
    bool GoOn() override { return Wanted = target.GoOn(); }

    TemplateRows Rows;
    bool Wanted{true};

private:
    RowSink& target;
};

} // namespace

platform::Result<> Thumbnails::LoadThumbnailImages(const std::string& category, std::string_view tab, RowSink& sink)
{
    FindBackground();
    Load load{reader.PlaceOf(category), {}, {}, tab == FileTypeTabs::AllTab, false, {}};
    Collector templates{sink};
    (void)reader.ReadCategory(category, tab, templates); // without its templates, a picture shows as one that lost its
    if (!templates.Wanted)
        return {};
    load.all = std::move(templates.Rows);
    // Of two templates with one name the picture opens the one that the list has first.
    for (std::size_t i = 0; i < load.all.size(); ++i)
        load.templates.try_emplace(text::Folded(load.all[i].text), i);

    const std::string previews = path::Join(load.category, library::PreviewsFolder);
    const auto pictures = files.List(library::DiskPath(state.TemplatesPath, previews));
    if (!pictures && !platform::IsNotThere(pictures.error()) && pictures.error() != platform::error::InvalidFolder)
        return std::unexpected{pictures.error()};
    if (pictures)
        for (const platform::FileEntry& picture : *pictures)
            if (library::IsPlainFile(picture) && text::EndsWithIgnoringCase(picture.name, PictureEnding)) {
                load.hasPictures = true;
                AddThumbnailImage(load, previews, picture.name);
            }
    AddTheOthers(load, sink);
    return {};
}

void Thumbnails::AddThumbnailImage(Load& load, const std::string& previewsFolder, const std::string& fileName) const
{
    TemplateRow row;
    const std::string name = text::Trimmed(path::WithoutLastFour(fileName));
    if (const auto found = load.templates.find(text::Folded(name)); found != load.templates.end()) {
        row = std::exchange(load.all[found->second], {});
        load.templates.erase(found);
    } else if (load.showsAll && !reader.IsExcluded(name)) {
        // A picture whose template is gone shows, and opening it says that the file was not found.
        row.text = name;
        row.file = name + std::string{library::TemplateExtensions[library::WordTemplate]};
        row.folder = library::DiskPath(state.TemplatesPath, load.category);
        row.inFolder = load.category;
    } else {
        return;
    }
    // The frame always comes from the hard disk, also when the templates come from a CD: it may lie there alone.
    row.thumbnail =
        Composed(library::DiskPath(state.TemplatesPath, path::Join(previewsFolder, fileName)), state.HddTemplatesPath);
    load.rows.push_back(std::move(row));
}

void Thumbnails::AddTheOthers(Load& load, RowSink& sink) const
{
    std::erase_if(load.all, [](const TemplateRow& row) { return row.file.empty(); });
    const bool show = ShowWithoutPicture.value_or(!load.hasPictures);
    sink.TellWithoutPicture({load.all.size(), show});
    if (show)
        for (TemplateRow& row : load.all) {
            row.thumbnail = Composed(PictureOf(row), state.HddTemplatesPath);
            load.rows.push_back(std::move(row));
        }
    sink.Add(std::move(load.rows));
}

std::string Thumbnails::PictureOf(const TemplateRow& row)
{
    return path::Join(path::Join(row.folder, library::PreviewsFolder),
                      text::Trimmed(row.text) + std::string{PictureEnding});
}

void Thumbnails::LoadThumbnailViewForMyFavorites(const library::Favorites& favorites, std::string_view tab,
                                                 RowSink& sink)
{
    FindBackground();
    Collector templates{sink};
    reader.ReadFavorites(favorites, tab, templates);
    AddPictures(templates.Rows);
    sink.Add(std::move(templates.Rows));
}

void Thumbnails::AddPictures(TemplateRows& rows) const
{
    for (TemplateRow& row : rows)
        row.thumbnail = Composed(PictureOf(row), state.TemplatesPath);
}

void Thumbnails::FindBackground()
{
    const auto entry = files.Stat(library::DiskPath(state.TemplatesPath, BackgroundFile));
    UseThumbnailBackground = entry && !entry->IsFolder();
}

std::shared_ptr<const ui::Thumbnail> Thumbnails::Composed(std::string picture, std::string_view frameLocation) const
{
    return std::make_shared<const ui::Thumbnail>(
        std::move(picture), library::DiskPath(state.TemplatesPath, library::NoPictureFile),
        UseThumbnailBackground ? library::DiskPath(frameLocation, BackgroundFile) : std::string{});
}

} // namespace browser
