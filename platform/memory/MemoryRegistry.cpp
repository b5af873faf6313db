#include "platform/memory/MemoryRegistry.h"

#include "platform/NameOrder.h"
#include "platform/Text.h"

#include <algorithm>

namespace platform::memory {

struct MemoryRegistry::Key {
    struct Value {
        std::string name;
        RegistryValue content;
    };

    std::string name;
    Key* parent{};
    std::map<std::string, std::unique_ptr<Key>> subKeys; ///< by NameOrderKey
    std::vector<Value> values;
    Error openError{};

    auto ValueNamed(std::string_view wanted)
    {
        return std::ranges::find_if(values, [=](const Value& v) { return text::EqualIgnoringCase(v.name, wanted); });
    }

    std::string Path() const { return parent ? parent->Path() + '\\' + name : name; }
};

namespace {

constexpr std::array<const char*, 6> hiveNames{"HKCR", "HKCU", "HKLM", "HKU", "HKCC", "HKDD"};
constexpr std::size_t longestKeyName = 255; // UTF-16 units, of the system's registry

std::unexpected<Error> Fail(Error error)
{
    return std::unexpected{error};
}

std::vector<std::string> Names(std::string_view path)
{
    std::vector<std::string> names = text::Split(path, '\\');
    std::erase(names, "");
    return names;
}

} // namespace

MemoryRegistry::MemoryRegistry(FaultPlan& plan) : faults{plan}
{
    for (std::size_t i = 0; i < hives.size(); ++i) {
        hives[i] = std::make_unique<Key>();
        hives[i]->name = hiveNames[i];
    }
}

MemoryRegistry::~MemoryRegistry() = default;

MemoryRegistry::Key* MemoryRegistry::Find(Hive hive, std::string_view path) const
{
    Key* key = hives[static_cast<std::size_t>(hive)].get();
    for (const std::string& name : Names(path)) {
        const auto found = key->subKeys.find(NameOrderKey(name));
        if (found == key->subKeys.end())
            return nullptr;
        key = found->second.get();
    }
    return key;
}

MemoryRegistry::Key& MemoryRegistry::Make(Hive hive, std::string_view path)
{
    Key* key = hives[static_cast<std::size_t>(hive)].get();
    for (const std::string& name : Names(path)) {
        auto& subKey = key->subKeys[NameOrderKey(name)];
        if (!subKey) {
            subKey = std::make_unique<Key>();
            subKey->name = name;
            subKey->parent = key;
        }
        key = subKey.get();
    }
    return *key;
}

Result<MemoryRegistry::Key*> MemoryRegistry::Open(std::string_view call, Hive hive, std::string_view path,
                                                  std::string_view name) const
{
    std::string subject = hiveNames[static_cast<std::size_t>(hive)];
    subject.append(1, '\\').append(path).append(": ").append(name);
    if (const auto fault = faults.Enter(call, subject))
        return Fail(*fault);
    const bool tooLong =
        std::ranges::any_of(Names(path), [](const auto& part) { return text::Length(part) > longestKeyName; });
    if (tooLong || path.contains('\0') || name.contains('\0'))
        return Fail(error::InvalidParameter);
    Key* key = Find(hive, path);
    if (!key)
        return Fail(error::FileNotFound);
    if (key->openError.code != 0)
        return Fail(key->openError);
    return key;
}

Result<RegistryValue> MemoryRegistry::Query(Hive hive, std::string_view key, std::string_view name)
{
    const auto opened = Open("Registry.Query", hive, key, name);
    if (!opened)
        return Fail(opened.error());
    const auto value = (*opened)->ValueNamed(name);
    if (value == (*opened)->values.end())
        return Fail(error::FileNotFound);
    return value->content;
}

Result<> MemoryRegistry::Set(Hive hive, std::string_view key, std::string_view name, const RegistryValue& value)
{
    const auto opened = Open("Registry.Set", hive, key, name);
    if (!opened)
        return Fail(opened.error());
    const std::size_t length = shortWrites ? value.data.size() / 2 : value.data.size();
    Put(hive, key, name, {value.type, value.data.substr(0, length)});
    return {};
}

Result<> MemoryRegistry::CreateKey(Hive hive, std::string_view key)
{
    const auto opened = Open("Registry.CreateKey", hive, key);
    if (opened)
        return {};
    if (opened.error() != error::FileNotFound || Find(hive, key))
        return Fail(opened.error());
    Make(hive, key);
    return {};
}

Result<> MemoryRegistry::DeleteValue(Hive hive, std::string_view key, std::string_view name)
{
    const auto opened = Open("Registry.DeleteValue", hive, key, name);
    if (!opened)
        return Fail(opened.error());
    const auto value = (*opened)->ValueNamed(name);
    if (value == (*opened)->values.end())
        return Fail(error::FileNotFound);
    (*opened)->values.erase(value);
    return {};
}

Result<> MemoryRegistry::DeleteKey(Hive hive, std::string_view key)
{
    const auto opened = Open("Registry.DeleteKey", hive, key);
    if (!opened)
        return Fail(opened.error());
    if (!(*opened)->parent || !(*opened)->subKeys.empty())
        return Fail(error::AccessDenied);
    RemoveKey(hive, key);
    return {};
}

Result<std::vector<std::string>> MemoryRegistry::SubKeys(Hive hive, std::string_view key)
{
    const auto opened = Open("Registry.SubKeys", hive, key);
    if (!opened)
        return Fail(opened.error());
    std::vector<std::string> names;
    for (const auto& [order, subKey] : (*opened)->subKeys)
        names.push_back(subKey->name);
    return names;
}

Result<std::vector<std::string>> MemoryRegistry::ValueNames(Hive hive, std::string_view key)
{
    const auto opened = Open("Registry.ValueNames", hive, key);
    if (!opened)
        return Fail(opened.error());
    std::vector<std::string> names;
    for (const auto& value : (*opened)->values)
        names.push_back(value.name);
    return names;
}

void MemoryRegistry::Put(Hive hive, std::string_view key, std::string_view name, const RegistryValue& value)
{
    Key& made = Make(hive, key);
    const auto found = made.ValueNamed(name);
    if (found != made.values.end())
        found->content = value;
    else
        made.values.push_back({std::string{name}, value});
}

void MemoryRegistry::PutString(Hive hive, std::string_view key, std::string_view name, std::string_view text)
{
    Put(hive, key, name, {ValueType::String, std::string{text}});
}

void MemoryRegistry::PutDword(Hive hive, std::string_view key, std::string_view name, std::uint32_t number)
{
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(number >> shift & 0xFF);
    Put(hive, key, name, {ValueType::Dword, bytes});
}

void MemoryRegistry::AddKey(Hive hive, std::string_view key)
{
    Make(hive, key);
}

void MemoryRegistry::RemoveKey(Hive hive, std::string_view key)
{
    if (Key* found = Find(hive, key); found && found->parent)
        found->parent->subKeys.erase(NameOrderKey(found->name));
}

std::string MemoryRegistry::StringAt(Hive hive, std::string_view key, std::string_view name) const
{
    Key* found = Find(hive, key);
    if (!found)
        return "(none)";
    const auto value = found->ValueNamed(name);
    return value == found->values.end() ? "(none)" : value->content.data;
}

void MemoryRegistry::SetClosed(Hive hive, std::string_view key, Error error)
{
    Make(hive, key).openError = error;
}

std::map<std::string, std::string> MemoryRegistry::Snapshot() const
{
    std::map<std::string, std::string> lines;
    const auto add = [&](const Key& key, const auto& self) -> void {
        const std::string path = key.Path();
        if (key.parent)
            lines[path] = "key";
        for (const auto& value : key.values) {
            const auto type = static_cast<std::uint32_t>(value.content.type);
            lines[path + ": " + value.name] = "type " + std::to_string(type) + ": " + value.content.data;
        }
        for (const auto& [order, subKey] : key.subKeys)
            self(*subKey, self);
    };
    for (const auto& hive : hives)
        add(*hive, add);
    return lines;
}

} // namespace platform::memory
