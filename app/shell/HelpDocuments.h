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
    HelpDocuments(Settings& settings, Messages& messages, browser::Launcher& launcher, app::PatientFiles& files,
                  const StartUpState& state)
        : settings{settings}, messages{messages}, launcher{launcher}, files{files}, state{state}
    {
    }

    /// Opens the document of a topic: a key of section "Help". A name that is no full path and no address lies in the
    /// installation folder. A topic without a document gets the first page beside the program; without that one, string
    /// 280.
    void Open(std::string_view topic);
    /// Opens an address as it stands.
    void OpenLink(const std::string& address) { launcher.Launch({.name = address}); }

    /// "Options" \ "WebLink", split on "|", without empty entries.
    std::vector<std::string> WebLinks() const;

private:
    Settings& settings;
    Messages& messages;
    browser::Launcher& launcher;
    app::PatientFiles& files;
    const StartUpState& state;
};

} // namespace app
