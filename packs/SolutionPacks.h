#pragma once

#include "app/base/Program.h"
#include "packs/PackInstaller.h"
#include "packs/TemplatePackManager.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace packs {

class frmContentPackManager;

/// What the browser can do with solution packs, and what they work with.
class SolutionPacks {
public:
    /// What others do for the packs.
    struct Services {
        /// Whatever shows files of the library must let go of them.
        std::function<void()> releaseLibrary;
        /// The library on the disk has changed.
        std::function<void()> libraryChanged;
        std::function<void(std::string_view topic)> openHelp;
        /// Opens a web address, or tells that it cannot.
        std::function<void(const std::string& address)> openAddress;
    };

    SolutionPacks(app::Program& program, Services services);

    void ShowManager();
    void Install() { installer.Install(); }
    /// Opens the web page with more packs.
    void GetMore();
    void Help() { services.openHelp("Template Pack HTML"); }
    /// Takes up the watch over an installer that an earlier browser has started. True when one runs.
    bool IsInstalling() { return installer.IsRunning(); }

    TemplatePackManager& Manager() { return manager; }
    /// Deletes the packs, and brings the library's view up to date.
    void Delete(const std::vector<std::string>& names);

private:
    app::Program& program;
    Services services;
    TemplatePackManager manager;
    PackInstaller installer;
    frmContentPackManager* shown{};
};

} // namespace packs
