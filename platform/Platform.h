#pragma once

#include "platform/Automation.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "platform/IniFile.h"
#include "platform/Jobs.h"
#include "platform/Locale.h"
#include "platform/Mail.h"
#include "platform/Process.h"
#include "platform/Registry.h"
#include "platform/ResourceLibrary.h"
#include "platform/Shell.h"
#include "platform/Timers.h"
#include "platform/Web.h"

namespace platform {

/// Everything the program asks of the system, in one place for `app::Program` to hand on piece by piece.
struct Platform {
    Registry& registry;
    FileSystem& files;
    Shell& shell;
    Clock& clock;
    Locale& locale;
    IniFile& ini;
    ResourceLibrary& resources;
    Automation& automation;
    Process& process;
    Jobs& jobs;
    Timers& timers;
    Web& web;
    Mail& mail;
};

} // namespace platform
