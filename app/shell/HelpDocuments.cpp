#include "app/shell/HelpDocuments.h"

#include "app/base/StringId.h"
#include "platform/Path.h"
#include "platform/Text.h"

namespace app {
namespace {

/// The first page of the help that setup puts beside the program.
constexpr std::string_view OwnPage = "Help\\en\\index.html";

} // namespace

void HelpDocuments::Open(std::string_view topic)
{
    std::string document = platform::text::Trimmed(settings.Text("Help", topic));
    if (document.empty()) {
        document = platform::path::Join(state.ProgramFolder, OwnPage);
        if (!files.Stat(document)) {
            messages.Inform(str::HelpFilesMissing);
            return;
        }
    }
    if (!platform::path::IsAbsolute(document) && document.find("://") == std::string::npos)
        document = platform::path::Join(settings.Text("Options", "Installed Path"), document);
    launcher.Launch({.name = document});
}

std::vector<std::string> HelpDocuments::WebLinks() const
{
    std::vector<std::string> links;
    for (const std::string& entry : platform::text::Split(settings.Text("Options", "WebLink"), '|'))
        if (std::string link = platform::text::Trimmed(entry); !link.empty())
            links.push_back(std::move(link));
    return links;
}

} // namespace app
