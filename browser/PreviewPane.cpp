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
    lookUp.Drop();
    if (row == nullptr) {
        picture.SetFallback({}, {});
        picture.SetFile({});
        facts.SetCaption({});
        return;
    }
    picture.SetFallback(library::DiskPath(state.TemplatesPath, library::NoPictureFile),
                        strings.LoadString(app::str::NoPreview));
    lookUp = FindPicture(*row, [this](const std::string& file) { picture.SetFile(file); });
    if (lookUp)
        picture.SetFile({}); // that of the row before says nothing about this one
    std::string text = row->text;
    if (!row->inFolder.empty())
        text.append("\r\n").append(row->inFolder);
    if (row->hasDetails)
        text += "\r\n" + SizeText(row->size) + "\r\n" + ModifiedText(clock, locale, row->modified);
    facts.SetCaption(std::move(text));
}

platform::Ticket PreviewPane::FindPicture(const TemplateRow& row,
                                          std::function<void(const std::string& file)> use) const
{
    const std::string name = platform::text::Trimmed(row.text) + ".jpg";
    const auto look = [file = Join(Join(row.folder, library::PreviewsFolder), name), name,
                       none = library::DiskPath(state.TemplatesPath, library::NoPictureFile)](
                          platform::FileSystem& disk) -> platform::Result<std::string> {
        const auto entry = disk.Stat(file);
        const bool isThere = entry && !entry->IsFolder() && platform::text::EqualIgnoringCase(entry->name, name);
        return isThere ? file : none;
    };
    return files.Tell(
        look, [use = std::move(use)](const platform::Result<std::string>& file) { use(file.value_or(std::string{})); });
}

} // namespace browser
