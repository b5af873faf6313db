#pragma once

#include "platform/Error.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

enum class Hive { ClassesRoot, CurrentUser, LocalMachine, Users, CurrentConfig, DynData };

/// The registry's value types (the numbers of winnt.h); others occur and are passed through as they are.
enum class ValueType : std::uint32_t { None = 0, String = 1, ExpandString = 2, Binary = 3, Dword = 4, MultiString = 7 };

struct RegistryValue {
    ValueType type{ValueType::String};
    /// UTF-8 text without the terminator for String and ExpandString, the stored bytes for every other type.
    std::string data;

    friend bool operator==(const RegistryValue&, const RegistryValue&) = default;
};

/// The system's registry. Key paths are UTF-8, names joined with "\", without the hive and without a leading "\".
/// Every call opens the key that it needs and closes it again.
class Registry {
public:
    virtual ~Registry() = default;

    /// error::FileNotFound when the key or the value is not there.
    virtual Result<RegistryValue> Query(Hive hive, std::string_view key, std::string_view name) = 0;
    /// Writes into an existing key; error::FileNotFound when it is not there.
    virtual Result<> Set(Hive hive, std::string_view key, std::string_view name, const RegistryValue& value) = 0;
    /// Creates the key with all its parents; success when it is there already.
    virtual Result<> CreateKey(Hive hive, std::string_view key) = 0;
    /// error::FileNotFound when the key or the value is not there.
    virtual Result<> DeleteValue(Hive hive, std::string_view key, std::string_view name) = 0;
    /// Deletes the key with its values; error::AccessDenied while it has sub-keys.
    virtual Result<> DeleteKey(Hive hive, std::string_view key) = 0;
    /// Names in registry order; error::FileNotFound when the key is not there.
    virtual Result<std::vector<std::string>> SubKeys(Hive hive, std::string_view key) = 0;
    virtual Result<std::vector<std::string>> ValueNames(Hive hive, std::string_view key) = 0;
};

} // namespace platform
