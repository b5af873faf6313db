#include "platform/win32/Win32Clock.h"

#include "platform/win32/WindowsHeader.h"

namespace platform::win32 {

FileTime Win32Clock::Now()
{
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    return static_cast<FileTime>(std::uint64_t{now.dwHighDateTime} << 32 | now.dwLowDateTime);
}

LocalTime Win32Clock::ToLocal(FileTime time)
{
    const FILETIME moment{static_cast<DWORD>(time & 0xFFFFFFFF), static_cast<DWORD>(time >> 32)};
    SYSTEMTIME utc, local;
    if (!FileTimeToSystemTime(&moment, &utc) || !SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local))
        return {1601, 1, 1, 0, 0, 0}; // a time stamp outside of what the system can show
    return {local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond};
}

void Win32Clock::Sleep(std::uint32_t milliseconds)
{
    ::Sleep(milliseconds);
}

} // namespace platform::win32
