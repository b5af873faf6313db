#pragma once

#include "automation/CommandLine.h"

#include <cstdint>

namespace automation {

/// Enters the running program and its type library in the registry, so that hosts find the class. Silent; doing it
/// again changes nothing. Gives 0, or the error number of the step that failed (Win32 or HRESULT).
std::uint32_t RegisterServer(Scope scope);

/// Takes back what `RegisterServer` wrote, and nothing else: values and keys that others put there stay, and so does
/// the registration of another copy of the program. Gives 0 also when there was nothing to take back.
std::uint32_t UnregisterServer(Scope scope);

} // namespace automation
