#pragma once

// The system's headers for the windows, without the macros that clash with names of ours.
#include "pictures/win32/WindowsHeader.h"

// The headers below need it, and the one above has undone it.
#define interface struct

#include <commdlg.h>
#include <shellapi.h>
#include <shlobj.h>
#include <windowsx.h>

#undef SubclassWindow
#undef interface
