#include "app/base/Settings.h"

#include "platform/Text.h"

namespace app {
namespace {

using platform::Hive;
using platform::RegistryValue;
using platform::ValueType;

std::string SectionKey(std::string_view app, std::string_view section)
{
    std::string key = "Software\\VB and VBA Program Settings\\";
    key.append(app).append("\\").append(section);
    return key;
}

} // namespace

std::string Settings::GetSetting(std::string_view app, std::string_view section, std::string_view key,
                                 std::string_view otherwise) const
{
    auto found = Find(app, section, key);
    return found && *found ? std::move(**found) : std::string{otherwise};
}

platform::Result<std::optional<std::string>> Settings::Find(std::string_view app, std::string_view section,
                                                            std::string_view key) const
{
    auto value = registry.Query(Hive::CurrentUser, SectionKey(app, section), key);
    if (!value && value.error() != platform::error::FileNotFound)
        return std::unexpected{value.error()};
    if (!value || (value->type != ValueType::String && value->type != ValueType::ExpandString))
        return std::nullopt;
    return std::move(value->data);
}

platform::Result<> Settings::SaveSetting(std::string_view app, std::string_view section, std::string_view key,
                                         std::string_view value)
{
    const std::string subKey = SectionKey(app, section);
    const RegistryValue data{ValueType::String, std::string{value}};
    if (auto saved = registry.Set(Hive::CurrentUser, subKey, key, data);
        saved || saved.error() != platform::error::FileNotFound)
        return saved;
    if (auto created = registry.CreateKey(Hive::CurrentUser, subKey); !created)
        return created;
    return registry.Set(Hive::CurrentUser, subKey, key, data);
}

platform::Result<> Settings::DeleteSetting(std::string_view app, std::string_view section, std::string_view key)
{
    return registry.DeleteValue(Hive::CurrentUser, SectionKey(app, section), key);
}

platform::Result<> Settings::DeleteSetting(std::string_view app, std::string_view section)
{
    return registry.DeleteKey(Hive::CurrentUser, SectionKey(app, section));
}

std::string Settings::KeyOf(std::string_view section) const
{
    return SectionKey(state.SettingsAppName, section);
}

std::string Settings::Text(std::string_view section, std::string_view key, std::string_view otherwise) const
{
    return GetSetting(state.SettingsAppName, section, key, otherwise);
}

platform::Result<std::string> Settings::Read(std::string_view section, std::string_view key) const
{
    auto found = Find(state.SettingsAppName, section, key);
    if (!found)
        return std::unexpected{found.error()};
    return std::move(*found).value_or("");
}

int Settings::Number(std::string_view section, std::string_view key, int otherwise, int low, int high) const
{
    return platform::text::ToInt(Text(section, key), otherwise, low, high);
}

bool Settings::Flag(std::string_view section, std::string_view key, bool otherwise) const
{
    return platform::text::ToBool(Text(section, key), otherwise);
}

platform::Result<> Settings::Save(std::string_view section, std::string_view key, std::string_view value)
{
    return SaveSetting(state.SettingsAppName, section, key, value);
}

platform::Result<std::vector<std::string>> Settings::Names(std::string_view section) const
{
    auto names = registry.ValueNames(Hive::CurrentUser, SectionKey(state.SettingsAppName, section));
    if (!names && names.error() == platform::error::FileNotFound)
        return std::vector<std::string>{};
    return names;
}

platform::Result<> Settings::Delete(std::string_view section, std::string_view key)
{
    return DeleteSetting(state.SettingsAppName, section, key);
}

platform::Result<> Settings::SaveNumber(std::string_view section, std::string_view key, int value)
{
    return Save(section, key, std::to_string(value));
}

platform::Result<> Settings::SaveFlag(std::string_view section, std::string_view key, bool value)
{
    return Save(section, key, value ? "True" : "False");
}

} // namespace app
