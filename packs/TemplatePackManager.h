#pragma once

#include "app/base/Messages.h"
#include "app/base/RegistryAccess.h"
#include "app/base/Settings.h"
#include "packs/SolutionPack.h"
#include "platform/FileSystem.h"
#include "platform/Registry.h"
#include "ui/Toolkit.h"

#include <functional>
#include <string>
#include <vector>

namespace packs {

/// The installed solution packs: a key each below "Content", written by the pack's installer.
class TemplatePackManager {
public:
    TemplatePackManager(platform::Registry& registry, platform::FileSystem& files, app::Settings& settings,
                        app::Messages& messages, const app::StringTable& strings, const app::StartUpState& state,
                        ui::Toolkit& toolkit)
        : registry{registry}, files{files}, settings{settings}, messages{messages}, strings{strings}, state{state},
          toolkit{toolkit}
    {
    }

    /// All packs in the registry's order. Yields after each; string 174 when they cannot be listed.
    std::vector<SolutionPack> GetTemplatePacks();

    /// Deletes the packs: their folders, then their keys. `releaseLibrary` is called before folders are removed and
    /// `libraryChanged` after it. Either a failure or what was left in place is told at the end. A pack of which a
    /// folder could not be removed keeps its key, so that it can be deleted again.
    void Delete(const std::vector<std::string>& names, const std::function<void()>& releaseLibrary,
                const std::function<void()>& libraryChanged);

private:
    platform::Registry& registry;
    platform::FileSystem& files;
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
    void TellKept(const std::vector<std::string>& kept);
};

} // namespace packs
