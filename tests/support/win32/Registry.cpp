#include "tests/support/win32/Registry.h"

namespace support {
namespace {

std::wstring AwayFrom(const std::wstring& key)
{
    return key + L" before the test";
}

} // namespace

RegistryTree ReadRegistry(HKEY root, const std::wstring& path, REGSAM view)
{
    RegistryTree tree;
    HKEY key{};
    if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ | view, &key) != ERROR_SUCCESS)
        return tree;
    tree[path];
    std::wstring name(16384, L'\0');
    for (DWORD i = 0;; ++i) {
        DWORD length = 16384, type = 0, size = 0;
        if (RegEnumValueW(key, i, name.data(), &length, nullptr, &type, nullptr, &size) != ERROR_SUCCESS)
            break;
        std::string data(size, '\0');
        RegQueryValueExW(key, name.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(data.data()), &size);
        tree[path + L"\\=" + name.c_str()] = {type, std::move(data)};
    }
    for (DWORD i = 0; RegEnumKeyW(key, i, name.data(), 256) == ERROR_SUCCESS; ++i)
        tree.merge(ReadRegistry(root, path + L"\\" + name.c_str(), view));
    RegCloseKey(key);
    return tree;
}

std::wstring TextAt(HKEY root, const std::wstring& key, const std::wstring& name)
{
    wchar_t text[512]{};
    DWORD bytes = sizeof text;
    RegGetValueW(root, key.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, text, &bytes);
    return text;
}

void SetText(HKEY root, const std::wstring& key, const std::wstring& name, const std::wstring& text)
{
    RegSetKeyValueW(root, key.c_str(), name.c_str(), REG_SZ, text.c_str(),
                    static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

BorrowedKey::BorrowedKey(HKEY keyRoot, std::wstring borrowed) : root{keyRoot}, key{std::move(borrowed)}
{
    CopyTo(key, AwayFrom(key));
    RegDeleteTreeW(root, key.c_str());
}

BorrowedKey::~BorrowedKey()
{
    RegDeleteTreeW(root, key.c_str());
    CopyTo(AwayFrom(key), key);
    RegDeleteTreeW(root, AwayFrom(key).c_str());
}

void BorrowedKey::CopyTo(const std::wstring& from, const std::wstring& to) const
{
    HKEY source{};
    HKEY target{};
    if (RegOpenKeyExW(root, from.c_str(), 0, KEY_READ, &source) != ERROR_SUCCESS)
        return;
    RegCreateKeyExW(root, to.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &target, nullptr);
    RegCopyTreeW(source, nullptr, target);
    RegCloseKey(source);
    RegCloseKey(target);
}

} // namespace support
