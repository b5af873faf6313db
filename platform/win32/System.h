#pragma once

#include "platform/Platform.h"
#include "platform/ThreadJobs.h"
#include "platform/win32/Win32Automation.h"
#include "platform/win32/Win32Clock.h"
#include "platform/win32/Win32FileSystem.h"
#include "platform/win32/Win32IniFile.h"
#include "platform/win32/Win32Locale.h"
#include "platform/win32/Win32Mail.h"
#include "platform/win32/Win32Process.h"
#include "platform/win32/Win32Registry.h"
#include "platform/win32/Win32ResourceLibrary.h"
#include "platform/win32/Win32Shell.h"
#include "platform/win32/Win32Timers.h"
#include "platform/win32/Win32Web.h"

#include <memory>
#include <utility>

namespace platform::win32 {

/// The real system. One a process; the thread that uses it initialises COM before and ends it after.
class System {
public:
    /// `post` brings what happens elsewhere to that thread; it must work for as long as this lives.
    explicit System(Post post) : shell{post}, jobs{post, EnterApartment}, timers{post}, mail{std::move(post)}
    {
        // A drive without a disk is an error to report, not a box of the system's.
        SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    }
    System(const System&) = delete;
    System& operator=(const System&) = delete;

    Platform AsPlatform()
    {
        return {registry, files, shell, clock, locale, ini, resources, automation, process, jobs, timers, web, mail};
    }

private:
    /// COM for the threads that do jobs (pictures are decoded by it).
    static std::shared_ptr<void> EnterApartment()
    {
        if (FAILED(CoInitializeEx(nullptr, COINIT_MULTITHREADED)))
            return nullptr;
        return {nullptr, [](std::nullptr_t) { CoUninitialize(); }};
    }

    Win32Registry registry;
    Win32FileSystem files;
    Win32Shell shell;
    Win32Clock clock;
    Win32Locale locale;
    Win32IniFile ini;
    Win32ResourceLibrary resources;
    Win32Automation automation;
    Win32Process process;
    ThreadJobs jobs;
    Win32Timers timers;
    Win32Web web;
    Win32Mail mail;
};

} // namespace platform::win32
