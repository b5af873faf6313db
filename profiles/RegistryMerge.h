#pragma once

#include "app/base/RegistryAccess.h"
#include "profiles/RegistryText.h"

#include <string>
#include <utility>
#include <vector>

namespace profiles {

/// Brings the keys of an import into the registry, all of them or none.
class RegistryMerge {
public:
    RegistryMerge(platform::Registry& registry, app::RegistryAccess& access) : registry{registry}, access{access} {}

    /// Notes what is there and what is missing, for Undo.
    platform::Result<> Prepare(const ExportedKeys& wanted);
    /// Writes what is not there as it should be, and reads it back.
    platform::Result<> Complete(const ExportedKeys& wanted);
    /// Puts back what Prepare has noted, whoever changed it since.
    void Undo();

private:
    struct Before {
        std::string key;
        bool existed{};
        std::vector<std::pair<std::string, platform::Result<platform::RegistryValue>>> values;
    };
    platform::Registry& registry;
    app::RegistryAccess& access;
    std::vector<Before> before; ///< parents first

    platform::Result<> Note(std::string key, const ExportedKey& wanted);
};

} // namespace profiles
