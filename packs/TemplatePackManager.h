#pragma once

#include "app/base/Messages.h"
#include "app/base/PatientFiles.h"
#include "app/base/RegistryAccess.h"
#include "app/base/Settings.h"
#include "packs/SolutionPack.h"
#include "platform/Registry.h"
#include "ui/Toolkit.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace packs {

/// The installed solution packs: a key each below "Content", written by the pack's installer.
class TemplatePackManager {
public:
    TemplatePackManager(platform::Registry& registry, app::PatientFiles& files, app::Settings& settings,
                        app::Messages& messages, const app::StringTable& strings, const app::StartUpState& state,
                        ui::Toolkit& toolkit)
        : registry{registry}, files{files}, settings{settings}, messages{messages}, strings{strings}, state{state},
          toolkit{toolkit}
    {
    }

    /// All packs in the registry's order. Yields after each; string 174 when they cannot be listed.
    std::vector<SolutionPack> GetTemplatePacks();

    /// Deletes the packs: their folders, then their keys. `releaseLibrary` is called before folders are removed and
    /// `libraryChanged` after it. What could not be removed, and what is somebody else's and was left in place, is told
    /// at the end; the keys go all the same.
    void Delete(const std::vector<std::string>& names, const std::function<void()>& releaseLibrary,
                const std::function<void()>& libraryChanged);

private:
    platform::Registry& registry;
    app::PatientFiles& files;
    app::Settings& settings;
    app::Messages& messages;
    const app::StringTable& strings;
    const app::StartUpState& state;
    ui::Toolkit& toolkit;

    /// None when there is no such key: nothing was ever installed.
    platform::Result<std::vector<std::string>> Names() const;
    /// Values that are not there are empty; an error when that is not known.
    platform::Result<SolutionPack> Read(const std::string& name) const;
    platform::Result<> DeleteKeys(const std::vector<std::string>& names);
    /// The text with the paths below it; "" when there are none.
    std::string Named(std::uint16_t text, const std::vector<std::string>& paths) const;
};

} // namespace packs
