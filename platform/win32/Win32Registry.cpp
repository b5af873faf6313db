#include "platform/win32/Win32Registry.h"

#include "platform/Text.h"
#include "platform/win32/Handle.h"
#include "platform/win32/Native.h"

#include <algorithm>
#include <cstring>

namespace platform::win32 {

namespace {

HKEY RootOf(Hive hive)
{
    switch (hive) {
    case Hive::ClassesRoot:
        return HKEY_CLASSES_ROOT;
    case Hive::CurrentUser:
        return HKEY_CURRENT_USER;
    case Hive::LocalMachine:
        return HKEY_LOCAL_MACHINE;
    case Hive::Users:
        return HKEY_USERS;
    case Hive::CurrentConfig:
        return HKEY_CURRENT_CONFIG;
    case Hive::DynData:
        return HKEY_DYN_DATA;
    }
    return nullptr;
}

std::unexpected<Error> Fail(LSTATUS status)
{
    return std::unexpected{Error{static_cast<std::uint32_t>(status)}};
}

Result<> Outcome(LSTATUS status)
{
    return status == ERROR_SUCCESS ? Result<>{} : Fail(status);
}

/// A NUL inside would cut the name and so reach another one.
Result<std::wstring> ToName(std::string_view name)
{
    if (name.contains('\0'))
        return std::unexpected{error::InvalidParameter};
    return ToUtf16(name);
}

constexpr std::size_t longestKeyName = 255; // UTF-16 units, of the system's registry

/// The key's path with its separators folded.
Result<std::wstring> ToKeyPath(std::string_view key)
{
    std::string path;
    for (const std::string& name : text::Split(key, '\\')) {
        if (text::Length(name) > longestKeyName)
            return std::unexpected{error::InvalidParameter};
        if (!name.empty())
            path.append(path.empty() ? "" : "\\").append(name);
    }
    return ToName(path);
}

Result<KeyHandle> Open(Hive hive, std::string_view key, REGSAM access)
{
    const auto path = ToKeyPath(key);
    if (!path)
        return std::unexpected{path.error()};
    KeyHandle opened;
    const LSTATUS status = RegOpenKeyExW(RootOf(hive), path->c_str(), 0, access, opened.Receive());
    if (status != ERROR_SUCCESS)
        return Fail(status);
    return opened;
}

bool IsText(ValueType type)
{
    return type == ValueType::String || type == ValueType::ExpandString;
}

/// Whatever was stored: an odd last byte and any number of terminators, none included, are left out.
std::string StoredText(std::string_view bytes)
{
    std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
    while (text.ends_with(L'\0'))
        text.pop_back();
    return ToUtf8(text);
}

/// Collects names from an enumerating function, which takes (index, buffer, its length) and returns a status.
template <class Enumerate>
Result<std::vector<std::string>> CollectNames(Enumerate enumerate)
{
    std::vector<std::string> names;
    std::wstring buffer(256, L'\0'); // the longest key name and its terminator; names of values can be longer
    for (DWORD index = 0;;) {
        DWORD length = static_cast<DWORD>(buffer.size());
        const LSTATUS status = enumerate(index, buffer.data(), &length);
        if (status == ERROR_NO_MORE_ITEMS)
            return names;
        if (status == ERROR_MORE_DATA) {
            buffer.resize(buffer.size() * 2);
            continue;
        }
        if (status != ERROR_SUCCESS)
            return Fail(status);
        names.push_back(ToUtf8({buffer.data(), length}));
        ++index;
    }
}

} // namespace

Result<RegistryValue> Win32Registry::Query(Hive hive, std::string_view key, std::string_view name)
{
    const auto opened = Open(hive, key, KEY_QUERY_VALUE);
    if (!opened)
        return std::unexpected{opened.error()};
    const auto valueName = ToName(name);
    if (!valueName)
        return std::unexpected{valueName.error()};

    std::string bytes(512, '\0');
    for (;;) {
        DWORD type{};
        DWORD size = static_cast<DWORD>(bytes.size());
        const LSTATUS status = RegQueryValueExW(opened->Get(), valueName->c_str(), nullptr, &type,
                                                reinterpret_cast<BYTE*>(bytes.data()), &size);
        if (status == ERROR_MORE_DATA) {
            bytes.resize(std::max<std::size_t>(size, bytes.size() * 2)); // it can grow again before the next call
            continue;
        }
        if (status != ERROR_SUCCESS)
            return Fail(status);
        bytes.resize(size);
        const auto valueType = static_cast<ValueType>(type);
        return RegistryValue{valueType, IsText(valueType) ? StoredText(bytes) : bytes};
    }
}

Result<> Win32Registry::Set(Hive hive, std::string_view key, std::string_view name, const RegistryValue& value)
{
    const auto opened = Open(hive, key, KEY_SET_VALUE);
    if (!opened)
        return std::unexpected{opened.error()};
    const auto valueName = ToName(name);
    if (!valueName)
        return std::unexpected{valueName.error()};

    const auto write = [&](const void* data, std::size_t size) {
        return Outcome(RegSetValueExW(opened->Get(), valueName->c_str(), 0, static_cast<DWORD>(value.type),
                                      static_cast<const BYTE*>(data), static_cast<DWORD>(size)));
    };
    if (!IsText(value.type))
        return write(value.data.data(), value.data.size());
    const std::wstring text = ToUtf16(value.data);
    return write(text.c_str(), (text.size() + 1) * sizeof(wchar_t));
}

Result<> Win32Registry::CreateKey(Hive hive, std::string_view key)
{
    const auto path = ToKeyPath(key);
    if (!path)
        return std::unexpected{path.error()};
    KeyHandle created;
    return Outcome(RegCreateKeyExW(RootOf(hive), path->c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_READ, nullptr,
                                   created.Receive(), nullptr));
}

Result<> Win32Registry::DeleteValue(Hive hive, std::string_view key, std::string_view name)
{
    const auto opened = Open(hive, key, KEY_SET_VALUE);
    if (!opened)
        return std::unexpected{opened.error()};
    const auto valueName = ToName(name);
    if (!valueName)
        return std::unexpected{valueName.error()};
    return Outcome(RegDeleteValueW(opened->Get(), valueName->c_str()));
}

Result<> Win32Registry::DeleteKey(Hive hive, std::string_view key)
{
    const auto path = ToKeyPath(key);
    if (!path)
        return std::unexpected{path.error()};
    if (path->empty()) // would mean the hive itself
        return std::unexpected{error::AccessDenied};
    return Outcome(RegDeleteKeyW(RootOf(hive), path->c_str()));
}

Result<std::vector<std::string>> Win32Registry::SubKeys(Hive hive, std::string_view key)
{
    const auto opened = Open(hive, key, KEY_ENUMERATE_SUB_KEYS);
    if (!opened)
        return std::unexpected{opened.error()};
    return CollectNames([&](DWORD index, wchar_t* name, DWORD* length) {
        return RegEnumKeyExW(opened->Get(), index, name, length, nullptr, nullptr, nullptr, nullptr);
    });
}

Result<std::vector<std::string>> Win32Registry::ValueNames(Hive hive, std::string_view key)
{
    const auto opened = Open(hive, key, KEY_QUERY_VALUE);
    if (!opened)
        return std::unexpected{opened.error()};
    return CollectNames([&](DWORD index, wchar_t* name, DWORD* length) {
        return RegEnumValueW(opened->Get(), index, name, length, nullptr, nullptr, nullptr, nullptr);
    });
}

} // namespace platform::win32
