#pragma once

// The system's headers for the windows, without the macros that clash with names of ours.
#include <windows.h>

// The headers below need it, and another wrapper header may have undone it before.
#ifndef interface
#define interface struct
#endif

#include <commctrl.h>
#include <commdlg.h>
#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>
#include <wincodec.h>
#include <windowsx.h>

#undef DrawText
#undef FindText
#undef GetClassName
#undef GetMessage
#undef GetObject
#undef LoadIcon
#undef LoadImage
#undef LoadString
#undef MessageBox
#undef SubclassWindow
#undef Yield
#undef far
#undef interface
#undef near
#undef small
