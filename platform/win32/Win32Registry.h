#pragma once

#include "platform/Registry.h"

namespace platform::win32 {

class Win32Registry final : public Registry {
public:
    Result<RegistryValue> Query(Hive hive, std::string_view key, std::string_view name) override;
    Result<> Set(Hive hive, std::string_view key, std::string_view name, const RegistryValue& value) override;
    Result<> CreateKey(Hive hive, std::string_view key) override;
    Result<> DeleteValue(Hive hive, std::string_view key, std::string_view name) override;
    Result<> DeleteKey(Hive hive, std::string_view key) override;
    Result<std::vector<std::string>> SubKeys(Hive hive, std::string_view key) override;
    Result<std::vector<std::string>> ValueNames(Hive hive, std::string_view key) override;
};

} // namespace platform::win32
