#pragma once

#include "platform/win32/WindowsHeader.h"

#include <map>
#include <string>
#include <utility>

namespace support {

/// A key with all below it: "path" for each key, "path\\=name" for each value, with its type and bytes.
using RegistryTree = std::map<std::wstring, std::pair<DWORD, std::string>>;

/// `view` chooses the view of one bitness.
RegistryTree ReadRegistry(HKEY root, const std::wstring& path, REGSAM view = 0);

/// A text value; "" when there is none.
std::wstring TextAt(HKEY root, const std::wstring& key, const std::wstring& name = {});
/// Creates the key when it is not there.
void SetText(HKEY root, const std::wstring& key, const std::wstring& name, const std::wstring& text);

/// A key that a test uses as its own: it is away while this lives, and comes back with all below it.
class BorrowedKey {
public:
    BorrowedKey(HKEY root, std::wstring key);
    ~BorrowedKey();
    BorrowedKey(const BorrowedKey&) = delete;
    BorrowedKey& operator=(const BorrowedKey&) = delete;

private:
    void CopyTo(const std::wstring& from, const std::wstring& to) const;

    HKEY root;
    std::wstring key;
};

} // namespace support
