#pragma once

#include "platform/Registry.h"
#include "platform/memory/FaultPlan.h"

#include <array>
#include <map>
#include <memory>

namespace platform::memory {

/// A registry in memory. Letter case of names is kept but does not count; sub-keys list in the order of their names,
/// values in the order of their creation. The helpers below the overrides count as no call and meet no fault.
class MemoryRegistry final : public Registry {
public:
    explicit MemoryRegistry(FaultPlan& plan);
    ~MemoryRegistry() override;

    Result<RegistryValue> Query(Hive hive, std::string_view key, std::string_view name) override;
    Result<> Set(Hive hive, std::string_view key, std::string_view name, const RegistryValue& value) override;
    Result<> CreateKey(Hive hive, std::string_view key) override;
    Result<> DeleteValue(Hive hive, std::string_view key, std::string_view name) override;
    Result<> DeleteKey(Hive hive, std::string_view key) override;
    Result<std::vector<std::string>> SubKeys(Hive hive, std::string_view key) override;
    Result<std::vector<std::string>> ValueNames(Hive hive, std::string_view key) override;

    /// Writes a value; creates the key.
    void Put(Hive hive, std::string_view key, std::string_view name, const RegistryValue& value);
    void PutString(Hive hive, std::string_view key, std::string_view name, std::string_view text);
    void PutDword(Hive hive, std::string_view key, std::string_view name, std::uint32_t number);
    void AddKey(Hive hive, std::string_view key);
    /// With everything below.
    void RemoveKey(Hive hive, std::string_view key);
    /// A string value's text; "(none)" when it is not there.
    std::string StringAt(Hive hive, std::string_view key, std::string_view name) const;
    /// Opening this key (not the ones below) fails; error{} opens it again.
    void SetClosed(Hive hive, std::string_view key, Error error = error::AccessDenied);

    /// Every write says that it worked, and stores no more than the first half.
    void SetShortWrites(bool lies = true) { shortWrites = lies; }

    /// Every key and value, one line each ("HKCU\A\B" and "HKCU\A\B: name"), with type and data: two snapshots are
    /// equal when nothing has changed.
    std::map<std::string, std::string> Snapshot() const;

private:
    struct Key;
    Key* Find(Hive hive, std::string_view path) const;
    Result<Key*> Open(std::string_view call, Hive hive, std::string_view path, std::string_view name = {}) const;
    Key& Make(Hive hive, std::string_view path);

    FaultPlan& faults;
    bool shortWrites{};
    std::array<std::unique_ptr<Key>, 6> hives;
};

} // namespace platform::memory
