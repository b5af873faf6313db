#pragma once

// The one place where automation/ takes in the system's headers (ui/ and platform/ have one of their own). The macros
// undone here would rename declarations of the portable headers in the files that see both.
// The headers of the other two are here as well: those folders undo a macro that system headers need.
#include <windows.h>

#include <commctrl.h>
#include <commdlg.h>
#include <ole2.h>
#include <oleauto.h>
#include <shellapi.h>
#include <shlobj.h>
#include <shlwapi.h>
#include <wincodec.h>

#include "TSBrowser.h" // made from TSBrowser.idl

#undef CreateWindow
#undef DeleteFile
#undef GetMessage
#undef GetObject
#undef LoadString
#undef MessageBox
#undef Yield
