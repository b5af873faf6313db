#pragma once

#include "app/base/Program.h"
#include "browser/Launcher.h"

#include <string>
#include <string_view>
#include <vector>

namespace app {

/// The help documents and web links that the settings name.
class HelpDocuments {
public:
    HelpDocuments(Program& program, browser::Launcher& launcher) : program{program}, launcher{launcher} {}

    /// Opens the document of a topic: a key of section "Help". A topic without a document gets string 280. A name that
    /// is no full path and no address lies in the installation folder.
    void Open(std::string_view topic);
    /// Opens an address as it stands.
    void OpenLink(const std::string& address) { launcher.Launch({.name = address}); }

    /// "Options" \ "WebLink", split on "|", without empty entries.
    std::vector<std::string> WebLinks() const;

private:
    Program& program;
    browser::Launcher& launcher;
};

} // namespace app
