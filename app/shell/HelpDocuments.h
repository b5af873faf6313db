#pragma once

#include "app/base/Messages.h"
#include "app/base/Settings.h"
#include "browser/Launcher.h"

#include <string>
#include <string_view>
#include <vector>

namespace app {

/// The help documents and web links that the settings name.
class HelpDocuments {
public:
    HelpDocuments(Settings& settings, Messages& messages, browser::Launcher& launcher)
        : settings{settings}, messages{messages}, launcher{launcher}
    {
    }

    /// Opens the document of a topic: a key of section "Help". A topic without a document gets string 280. A name that
    /// is no full path and no address lies in the installation folder.
    void Open(std::string_view topic);
    /// Opens an address as it stands.
    void OpenLink(const std::string& address) { launcher.Launch({.name = address}); }

    /// "Options" \ "WebLink", split on "|", without empty entries.
    std::vector<std::string> WebLinks() const;

private:
    Settings& settings;
    Messages& messages;
    browser::Launcher& launcher;
};

} // namespace app
