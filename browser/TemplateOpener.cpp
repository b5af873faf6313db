#include "browser/TemplateOpener.h"

#include "app/base/StringId.h"
#include "platform/Path.h"

namespace browser {

namespace path = platform::path;

void TemplateOpener::Open(const std::string& file)
{
    if (!file.empty() && Succeeded(Launch({.name = file})) && Opened)
        Opened(file);
}

bool TemplateOpener::OpenRecorded(const std::string& file)
{
    return Succeeded(Launch({.name = file, .isOwn = true}));
}

void TemplateOpener::CreateDocument(const std::string& file)
{
    if (launcher.IsOpening())
        return;
    const auto copy = spreadsheets.SaveFile(path::Name(file), path::Parent(file));
    if (!copy) {
        messages.Inform(platform::IsNotThere(copy.error()) ? app::str::FileNotFound : app::str::PathFileAccessError);
        return;
    }
    const bool isCopied = !copy->empty();
    const Launcher::Target target{.name = isCopied ? *copy : file, .verb = platform::Verb::New, .isOwn = isCopied};
    const auto outcome = Launch(target);
    if (!outcome.opened) {
        if (isCopied)
            (void)files.DeleteFile(*copy);
        return;
    }
    if (isCopied && Created)
        Created(*copy);
    if (Opened)
        Opened(file);
    if (outcome.openedItself && !isCopied && OpenedItself)
        OpenedItself(file);
}

Launcher::Outcome TemplateOpener::Launch(const Launcher::Target& target)
{
    const auto outcome = launcher.Launch(target);
    if (outcome.raised)
        messages.Inform(strings.LoadString(app::str::UnableToLaunch) + std::string{path::Name(target.name)} +
                        strings.LoadString(app::str::NotAbleToLaunchEnd));
    return outcome;
}

} // namespace browser
