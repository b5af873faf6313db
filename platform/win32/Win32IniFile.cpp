#include "platform/win32/Win32IniFile.h"

#include "platform/win32/Native.h"

namespace platform::win32 {

std::string Win32IniFile::Read(std::string_view section, std::string_view key, std::string_view file, int buffer)
{
    const auto path = ToNativePath(file); // a bare name would be looked for in the Windows folder
    if (!path || buffer < 1)
        return {};
    std::wstring value(static_cast<std::size_t>(buffer), L'\0');
    const DWORD length = GetPrivateProfileStringW(ToUtf16(section).c_str(), ToUtf16(key).c_str(), L"", value.data(),
                                                  static_cast<DWORD>(buffer), path->c_str());
    return CutToUtf8({value.data(), length});
}

} // namespace platform::win32
