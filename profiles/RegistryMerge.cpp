#include "profiles/RegistryMerge.h"

#include "profiles/ProfileManager.h"

#include <ranges>

namespace profiles {

namespace error = platform::error;
using platform::Hive;
using platform::RegistryValue;
using platform::Result;

Result<> RegistryMerge::Prepare(const ExportedKeys& wanted)
{
    const std::string_view top = ProfilesKey;
    for (std::size_t end = top.find('\\'); end != std::string_view::npos; end = top.find('\\', end + 1))
        if (const auto noted = Note(std::string{top.substr(0, end)}, {}); !noted)
            return noted;
    if (const auto noted = Note(std::string{top}, {}); !noted)
        return noted;
    for (const ExportedKey& key : wanted)
        if (const auto noted = Note(ProfileKey(key.name), key); !noted)
            return noted;
    return {};
}

Result<> RegistryMerge::Note(std::string key, const ExportedKey& wanted)
{
    Before& old = before.emplace_back(std::move(key));
    const auto names = registry.ValueNames(Hive::CurrentUser, old.key);
    if (!names && names.error() != error::FileNotFound)
        return std::unexpected{names.error()};
    old.existed = names.has_value();
    for (const auto& [name, value] : wanted.values) {
        auto stored = registry.Query(Hive::CurrentUser, old.key, name);
        if (!stored && stored.error() != error::FileNotFound)
            return std::unexpected{stored.error()};
        old.values.emplace_back(name, std::move(stored));
    }
    return {};
}

Result<> RegistryMerge::Complete(const ExportedKeys& wanted)
{
    for (const ExportedKey& key : wanted) {
        const std::string path = ProfileKey(key.name);
        if (!access.CreateKey(path))
            return std::unexpected{error::GeneralFailure};
        for (const auto& [name, value] : key.values) {
            if (registry.Query(Hive::CurrentUser, path, name) == Result<RegistryValue>{value})
                continue;
            if (const auto written = registry.Set(Hive::CurrentUser, path, name, value); !written)
                return written;
            if (registry.Query(Hive::CurrentUser, path, name) != Result<RegistryValue>{value})
                return std::unexpected{error::GeneralFailure};
        }
    }
    return {};
}

void RegistryMerge::Undo()
{
    for (const Before& old : std::views::reverse(before)) {
        if (!old.existed)
            (void)registry.DeleteKey(Hive::CurrentUser, old.key);
        for (const auto& [name, stored] : old.values | std::views::filter([&](const auto&) { return old.existed; }))
            (void)(stored ? registry.Set(Hive::CurrentUser, old.key, name, *stored)
                          : registry.DeleteValue(Hive::CurrentUser, old.key, name));
    }
}

} // namespace profiles
