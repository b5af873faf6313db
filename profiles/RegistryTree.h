#pragma once

#include "platform/Registry.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace profiles {

/// One key of the user's hive with its values.
struct RegistryKey {
    std::string name; ///< below the tree's key; "" is that key itself
    std::vector<std::pair<std::string, platform::RegistryValue>> values;
    friend bool operator==(const RegistryKey&, const RegistryKey&) = default;
};
using RegistryTree = std::vector<RegistryKey>; ///< each key before those below it

platform::Result<RegistryTree> ReadTree(platform::Registry& registry, std::string_view key);
/// Creates the keys and values, and reads the values back.
platform::Result<> WriteTree(platform::Registry& registry, std::string_view key, const RegistryTree& tree);
/// With everything below the key, or, as far as the registry works, nothing.
platform::Result<> DeleteTree(platform::Registry& registry, std::string_view key);

} // namespace profiles
