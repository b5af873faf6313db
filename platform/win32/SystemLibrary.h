#pragma once

#include "platform/win32/Handle.h"

namespace platform::win32 {

/// Loads a library of the system from the system folder and nowhere else, together with what it needs. Those that the
/// program can do without are loaded so: a library that the program's file names would be looked for beside the program
/// first. None when it is not there.
ModuleHandle LoadSystemLibrary(const wchar_t* name);

/// Sets `function` to the library's function of that name; false when it has none.
template <class Function>
bool Look(const ModuleHandle& library, const char* name, Function& function)
{
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library.Get(), name)));
    return function != nullptr;
}

} // namespace platform::win32
