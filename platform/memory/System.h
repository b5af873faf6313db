#pragma once

#include "platform/Platform.h"
#include "platform/memory/Delays.h"
#include "platform/memory/FaultPlan.h"
#include "platform/memory/MemoryAutomation.h"
#include "platform/memory/MemoryClock.h"
#include "platform/memory/MemoryFileSystem.h"
#include "platform/memory/MemoryIniFile.h"
#include "platform/memory/MemoryJobs.h"
#include "platform/memory/MemoryLocale.h"
#include "platform/memory/MemoryMail.h"
#include "platform/memory/MemoryProcess.h"
#include "platform/memory/MemoryRegistry.h"
#include "platform/memory/MemoryResourceLibrary.h"
#include "platform/memory/MemoryShell.h"
#include "platform/memory/MemoryTimers.h"
#include "platform/memory/MemoryWeb.h"

namespace platform::memory {

/// A whole machine in memory: every interface, and one plan of what goes wrong.
class System {
public:
    System()
    {
        faults.OnCall = [this](std::string_view call, std::string_view subject) { delays.Call(call, subject); };
    }
    System(const System&) = delete;
    System& operator=(const System&) = delete;

    FaultPlan faults;
    Delays delays;
    MemoryClock clock;
    MemoryLocale locale;
    MemoryRegistry registry{faults};
    MemoryFileSystem files{faults, clock};
    MemoryShell shell{faults, files};
    MemoryIniFile ini{faults, files};
    MemoryResourceLibrary resources{faults};
    MemoryAutomation automation{faults};
    MemoryProcess process{faults};
    MemoryJobs jobs{faults, delays};
    MemoryTimers timers{faults};
    MemoryWeb web{faults};
    MemoryMail mail{faults};

    Platform AsPlatform()
    {
        return {registry, files, shell, clock, locale, ini, resources, automation, process, jobs, timers, web, mail};
    }

    /// What a process leaves behind when it ends, by itself or by a planned death: disk and registry stay, its mark is
    /// given back, nothing goes wrong any more. A new core can be built on it.
    void EndProcess()
    {
        faults.Clear();
        process.Die();
        resources.Unload();
    }
};

} // namespace platform::memory
