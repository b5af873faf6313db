#pragma once

#include <string>

namespace app {

/// What one start of the browser settles once and everything else reads.
struct StartUpState {
    std::string HostKind;                        ///< "EXE" when the browser runs by itself
    std::string StartArg2, StartArg3, StartArg4; ///< kept for the host, unchanged
    std::string ProductCaption;                  ///< title of every message box, section of Support.ini
    std::string ProductName;
    std::string SettingsAppName;                      ///< application name of the settings store
    std::string MsoVersion;                           ///< accepted Office generation
    std::string TemplatesPath;                        ///< where templates are read from, with a trailing "\"
    std::string HddTemplatesPath, CdromTemplatesPath; ///< as stored
    std::string ShowPathToggle;                       ///< as stored; nothing depends on it
    bool AccessHddTemplates{};
    bool TemplatesPathError{};
    bool FindPaneOpen{};
    bool BrowserReady{};
    bool MainLoaded{};         ///< the main window has been loaded and filled
    std::string ProgramFolder; ///< where the program lies, without a trailing separator
};

} // namespace app
