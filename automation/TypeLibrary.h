#pragma once

#include "automation/WindowsHeader.h"

#include <string>

namespace automation {

/// The full path of the running program, however long it is.
std::wstring ProgramPath();

/// The type library inside the running program; it works unregistered too. The caller releases it.
HRESULT LoadOwnTypeLibrary(ITypeLib** library);

/// The description of `_clsBrowser`. The caller releases it.
HRESULT LoadInterfaceInfo(ITypeInfo** info);

} // namespace automation
