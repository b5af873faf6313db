#include "profiles/RegistryTree.h"

#include <ranges>

namespace profiles {

using platform::Hive;
using platform::Registry;
using platform::Result;

namespace {

/// A key below one, or that itself ("" below). No path: a slash is part of a key's name.
std::string KeyIn(std::string_view tree, std::string_view name)
{
    if (tree.empty() || name.empty())
        return std::string{tree}.append(name);
    return std::string{tree}.append(1, '\\').append(name);
}

Result<> Read(Registry& registry, std::string_view tree, const std::string& name, RegistryTree& keys)
{
    const std::string key = KeyIn(tree, name);
    const auto names = registry.ValueNames(Hive::CurrentUser, key);
    if (!names)
        return std::unexpected{names.error()};
    RegistryKey& read = keys.emplace_back(name);
    for (const std::string& valueName : *names) {
        auto value = registry.Query(Hive::CurrentUser, key, valueName);
        if (!value)
            return std::unexpected{value.error()};
        read.values.emplace_back(valueName, std::move(*value));
    }
    const auto below = registry.SubKeys(Hive::CurrentUser, key);
    if (!below)
        return std::unexpected{below.error()};
    for (const std::string& subKey : *below)
        if (const auto done = Read(registry, tree, KeyIn(name, subKey), keys); !done)
            return done;
    return {};
}

} // namespace

Result<RegistryTree> ReadTree(Registry& registry, std::string_view key)
{
    RegistryTree tree;
    if (const auto read = Read(registry, key, "", tree); !read)
        return std::unexpected{read.error()};
    return tree;
}

Result<> WriteTree(Registry& registry, std::string_view top, const RegistryTree& tree)
{
    for (const RegistryKey& key : tree) {
        const std::string place = KeyIn(top, key.name);
        if (const auto created = registry.CreateKey(Hive::CurrentUser, place); !created)
            return created;
        for (const auto& [name, value] : key.values) {
            if (const auto written = registry.Set(Hive::CurrentUser, place, name, value); !written)
                return written;
            const auto stored = registry.Query(Hive::CurrentUser, place, name);
            if (!stored || *stored != value)
                return std::unexpected{stored ? platform::error::GeneralFailure : stored.error()};
        }
    }
    return {};
}

Result<> DeleteTree(Registry& registry, std::string_view key)
{
    const auto alone = registry.DeleteKey(Hive::CurrentUser, key);
    if (alone)
        return {};
    const auto tree = ReadTree(registry, key);
    if (!tree || tree->size() == 1)
        return alone;
    for (const RegistryKey& below : std::views::reverse(*tree))
        if (auto gone = registry.DeleteKey(Hive::CurrentUser, KeyIn(key, below.name)); !gone) {
            (void)WriteTree(registry, key, *tree);
            return gone;
        }
    return {};
}

} // namespace profiles
