#include "browser/TemplateOpener.h"

#include "app/base/StringId.h"
#include "platform/Path.h"

namespace browser {

namespace path = platform::path;

void TemplateOpener::Open(const std::string& file)
{
    if (!file.empty() && Launch(file) && Opened)
        Opened(file);
}

bool TemplateOpener::OpenAgain(const std::string& file)
{
    return Launch(file);
}

void TemplateOpener::CreateDocument(const std::string& file)
{
    const auto copy = spreadsheets.SaveFile(path::Name(file), path::Parent(file));
    if (!copy) {
        messages.Inform(platform::IsNotThere(copy.error()) ? app::str::FileNotFound : app::str::PathFileAccessError);
        return;
    }
    if (copy->empty()) {
        Open(file);
        return;
    }
    if (!Launch(*copy))
        return;
    if (Created)
        Created(*copy);
    if (Opened)
        Opened(file);
}

bool TemplateOpener::Launch(const std::string& file)
{
    const auto outcome = launcher.Launch(file);
    if (outcome.raised) {
        messages.Inform("Unable to launch '" + std::string{path::Name(file)} +
                        "'. Please check if the associated application to launch the file is installed on the machine "
                        "and try again");
        return false;
    }
    return outcome.result == 0;
}

} // namespace browser
