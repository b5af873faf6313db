#pragma once

#include "platform/Error.h"
#include "platform/win32/WindowsHeader.h"

#include <string>
#include <string_view>

namespace platform::win32 {

std::wstring ToUtf16(std::string_view text);
std::string ToUtf8(std::wstring_view text);

/// Text that the system has cut at the end of a buffer: without the half of a character that may be left there.
std::string CutToUtf8(std::wstring_view text);

/// The path as the system's functions take it, of any length: absolute, separators folded, "." and ".." resolved, and
/// past the classic length of 260 characters with the prefix that lifts that bound. error::InvalidName for a relative
/// path, a wildcard or other character that no name can have (":" would reach a hidden stream of a file), and for
/// devices such as "C:\CON".
Result<std::wstring> ToNativePath(std::string_view path);

/// The path without that prefix, for what refuses it.
std::wstring WithoutLongPrefix(std::wstring path);

/// The error of this thread's last call of the system.
inline std::unexpected<Error> LastError()
{
    return std::unexpected{Error{GetLastError()}};
}

/// The outcome of a call of the system that returned this.
inline Result<> Outcome(BOOL succeeded)
{
    return succeeded ? Result<>{} : LastError();
}

} // namespace platform::win32
