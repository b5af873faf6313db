#pragma once

#include "app/base/Messages.h"
#include "platform/Registry.h"
#include "ui/Toolkit.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace app {

/// Raw registry access for keys that other programs own or that the setup wrote. Failures are told to the user.
class RegistryAccess {
public:
    /// Text of a string value, the number of a 4-byte one, the bytes of a binary one.
    using Value = std::variant<std::string, std::uint32_t, std::vector<std::uint8_t>>;

    RegistryAccess(platform::Registry& registry, Messages& messages, ui::Toolkit& toolkit)
        : registry{registry}, messages{messages}, toolkit{toolkit}
    {
    }

    /// Nothing when the value is missing, of another type, or longer than 255 characters (or bytes).
    std::optional<Value> QueryValue(platform::Hive hive, std::string_view subKey, std::string_view name) const;
    /// The first component of the path names the hive ("HKEY_CURRENT_USER"); a leading "\" is allowed.
    std::optional<Value> QueryValueByPath(std::string_view fullPath, std::string_view name) const;
    /// A string value by full path; "" when QueryValueByPath finds none.
    std::string QueryTextByPath(std::string_view fullPath, std::string_view name) const;

    /// Writes a text or a number into an existing key; string 173 on failure.
    bool SetValue(platform::Hive hive, std::string_view subKey, std::string_view name, const Value& value);
    /// Below HKEY_CURRENT_USER.
    bool CreateKey(std::string_view subKey);
    /// String 182 on failure.
    bool DeleteKey(platform::Hive hive, std::string_view subKey);
    /// String 174 and an empty list on failure. Yields after each entry.
    std::vector<std::string> EnumSubKeys(platform::Hive hive, std::string_view subKey);

    /// Splits a full path into its hive and the rest; nothing for an unknown hive.
    static std::optional<std::pair<platform::Hive, std::string>> SplitPath(std::string_view fullPath);

private:
    platform::Registry& registry;
    Messages& messages;
    ui::Toolkit& toolkit;
};

} // namespace app
