#pragma once

#include "platform/Platform.h"
#include "platform/win32/Win32Automation.h"
#include "platform/win32/Win32Clock.h"
#include "platform/win32/Win32FileSystem.h"
#include "platform/win32/Win32IniFile.h"
#include "platform/win32/Win32Locale.h"
#include "platform/win32/Win32Process.h"
#include "platform/win32/Win32Registry.h"
#include "platform/win32/Win32ResourceLibrary.h"
#include "platform/win32/Win32Shell.h"

namespace platform::win32 {

/// The real system. One a process; the thread that uses it initialises COM before and ends it after.
class System {
public:
    System()
    {
        // A drive without a disk is an error to report, not a box of the system's.
        SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    }
    System(const System&) = delete;
    System& operator=(const System&) = delete;

    Platform AsPlatform() { return {registry, files, shell, clock, locale, ini, resources, automation, process}; }

private:
    Win32Registry registry;
    Win32FileSystem files;
    Win32Shell shell;
    Win32Clock clock;
    Win32Locale locale;
    Win32IniFile ini;
    Win32ResourceLibrary resources;
    Win32Automation automation;
    Win32Process process;
};

} // namespace platform::win32
