#include "app/base/RegistryAccess.h"

#include "app/base/StringId.h"
#include "platform/LittleEndian.h"
#include "platform/Text.h"

#include <utility>

namespace app {
namespace {

using platform::Hive;
using platform::RegistryValue;
using platform::ValueType;

/// What a query reads at most, in characters or bytes. Values of other programs that are longer count as not there.
constexpr std::size_t QueryBuffer = 255;

} // namespace

std::optional<RegistryAccess::Value> RegistryAccess::QueryValue(Hive hive, std::string_view subKey,
                                                                std::string_view name) const
{
    const auto stored = registry.Query(hive, subKey, name);
    if (!stored)
        return std::nullopt;
    switch (stored->type) {
    case ValueType::String:
    case ValueType::ExpandString:
        if (platform::text::Length(stored->data) > QueryBuffer)
            return std::nullopt;
        return stored->data;
    case ValueType::Dword:
        if (stored->data.size() != 4)
            return std::nullopt;
        return platform::LittleEndian<std::uint32_t>(stored->data, 0);
    case ValueType::Binary:
        if (stored->data.size() > QueryBuffer)
            return std::nullopt;
        return std::vector<std::uint8_t>(stored->data.begin(), stored->data.end());
    default:
        return std::nullopt;
    }
}

std::optional<RegistryAccess::Value> RegistryAccess::QueryValueByPath(std::string_view fullPath,
                                                                      std::string_view name) const
{
    const auto place = SplitPath(fullPath);
    return place ? QueryValue(place->first, place->second, name) : std::nullopt;
}

std::string RegistryAccess::QueryTextByPath(std::string_view fullPath, std::string_view name) const
{
    const auto value = QueryValueByPath(fullPath, name);
    const auto* text = value ? std::get_if<std::string>(&*value) : nullptr;
    return text != nullptr ? *text : std::string{};
}

bool RegistryAccess::SetValue(Hive hive, std::string_view subKey, std::string_view name, const Value& value)
{
    RegistryValue stored;
    if (const auto* text = std::get_if<std::string>(&value)) {
        stored.data = *text;
    } else if (const auto* number = std::get_if<std::uint32_t>(&value)) {
        stored.type = ValueType::Dword;
        for (unsigned shift = 0; shift < 32; shift += 8)
            stored.data += static_cast<char>(*number >> shift & 0xFF);
    } else {
        const auto& bytes = std::get<std::vector<std::uint8_t>>(value);
        stored.type = ValueType::Binary;
        stored.data.assign(bytes.begin(), bytes.end());
    }
    if (registry.Set(hive, subKey, name, stored))
        return true;
    messages.Stop(str::SetValueFailed);
    return false;
}

bool RegistryAccess::CreateKey(std::string_view subKey)
{
    return registry.CreateKey(Hive::CurrentUser, subKey).has_value();
}

bool RegistryAccess::DeleteKey(Hive hive, std::string_view subKey)
{
    if (registry.DeleteKey(hive, subKey))
        return true;
    messages.Stop(str::DeleteValueFailed);
    return false;
}

std::vector<std::string> RegistryAccess::EnumSubKeys(Hive hive, std::string_view subKey)
{
    auto names = registry.SubKeys(hive, subKey);
    if (!names) {
        messages.Plain(str::EnumerationFailed);
        return {};
    }
    for (std::size_t i = 0; i < names->size(); ++i)
        toolkit.DoEvents();
    return std::move(*names);
}

std::optional<std::pair<Hive, std::string>> RegistryAccess::SplitPath(std::string_view fullPath)
{
    static constexpr std::pair<std::string_view, Hive> hives[] = {
        {"HKEY_CLASSES_ROOT", Hive::ClassesRoot},     {"HKEY_CURRENT_USER", Hive::CurrentUser},
        {"HKEY_LOCAL_MACHINE", Hive::LocalMachine},   {"HKEY_USERS", Hive::Users},
        {"HKEY_CURRENT_CONFIG", Hive::CurrentConfig}, {"HKEY_DYN_DATA", Hive::DynData},
    };
    if (fullPath.starts_with('\\'))
        fullPath.remove_prefix(1);
    const auto end = std::min(fullPath.find('\\'), fullPath.size());
    for (const auto& [name, hive] : hives)
        if (fullPath.substr(0, end) == name)
            return std::pair{hive, std::string{fullPath.substr(std::min(end + 1, fullPath.size()))}};
    return std::nullopt;
}

} // namespace app
