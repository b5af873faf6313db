#include "platform/win32/Native.h"

#include "platform/FileName.h"
#include "platform/Path.h"
#include "platform/Utf.h"

namespace platform::win32 {

namespace {

// A new folder's path must leave room for an 8.3 name below it, which makes 248 the shortest of the system's bounds;
// List appends two characters.
constexpr std::size_t shortPath = 245;

} // namespace

std::wstring ToUtf16(std::string_view text)
{
    return utf::ToUtf16<wchar_t>(text);
}

std::string ToUtf8(std::wstring_view text)
{
    return utf::ToUtf8<wchar_t>(text);
}

std::string CutToUtf8(std::wstring_view text)
{
    if (!text.empty() && IS_HIGH_SURROGATE(text.back()))
        text.remove_suffix(1);
    return ToUtf8(text);
}

std::wstring WithoutLongPrefix(std::wstring path)
{
    constexpr std::wstring_view prefix = L"\\\\?\\", share = L"\\\\?\\UNC\\";
    if (path.starts_with(share))
        path.replace(0, share.size(), L"\\\\");
    else if (path.starts_with(prefix))
        path.erase(0, prefix.size());
    return path;
}

Result<std::wstring> ToNativePath(std::string_view path)
{
    if (!path::IsAbsolute(path) || file_name::HasControlCharacter(path) ||
        path.substr(2).find_first_of(file_name::ForbiddenInPaths) != std::string_view::npos)
        return std::unexpected{error::InvalidName};

    const std::wstring normalized = ToUtf16(path::Normalized(path));
    std::wstring full(normalized.size() + 2, L'\0');
    const DWORD length = GetFullPathNameW(normalized.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    if (length == 0)
        return LastError();
    if (length >= full.size()) // only devices get longer
        return std::unexpected{error::InvalidName};
    full.resize(length);
    if (full.starts_with(L"\\\\.\\"))
        return std::unexpected{error::InvalidName};
    if (full.size() < shortPath)
        return full;
    return full.starts_with(L"\\\\") ? L"\\\\?\\UNC" + full.substr(1) : L"\\\\?\\" + full;
}

} // namespace platform::win32
