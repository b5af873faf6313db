#include "browser/PreviewPane.h"

#include "app/base/StringId.h"
#include "library/CategoryPath.h"
#include "library/TemplateFiles.h"
#include "platform/Path.h"
#include "platform/Text.h"

namespace browser {

using platform::path::Join;

void PreviewPane::LoadThePreviewPane(const TemplateRow* row)
{
    if (row == nullptr) {
        picture.SetFallback({}, {});
        picture.SetFile({});
        facts.SetCaption({});
        return;
    }
    picture.SetFallback(library::DiskPath(state.TemplatesPath, "NF.jpg"), strings.LoadString(app::str::NoPreview));
    picture.SetFile(PictureOf(*row));
    std::string text = row->text;
    if (!row->inFolder.empty())
        text += "\r\n" + row->inFolder;
    if (row->hasDetails)
        text += "\r\n" + SizeText(row->size) + "\r\n" + ModifiedText(clock, locale, row->modified);
    facts.SetCaption(std::move(text));
}

std::string PreviewPane::PictureOf(const TemplateRow& row) const
{
    const std::string name = platform::text::Trimmed(row.text) + ".jpg";
    std::string file = Join(Join(row.folder, library::PreviewsFolder), name);
    const auto entry = files.Stat(file);
    if (entry && !entry->IsFolder() && platform::text::EqualIgnoringCase(entry->name, name))
        return file;
    return library::DiskPath(state.TemplatesPath, "NF.jpg");
}

} // namespace browser
