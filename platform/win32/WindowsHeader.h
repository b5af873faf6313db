#pragma once

// The one door to the Windows headers for this folder. windows.h defines many function names as macros that put a W
// or an A behind them; those that are names of ours too are undone here. Call the W functions by their full names.

#include <windows.h>

#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>
#include <shlwapi.h>

#undef CompareString
#undef CopyFile
#undef CreateFile
#undef CreateProcess
#undef DeleteFile
#undef FindWindow
#undef GetClassName
#undef GetCurrentTime
#undef GetMessage
#undef GetObject
#undef LoadString
#undef MessageBox
#undef MoveFile
#undef RemoveDirectory
#undef Yield
#undef far
#undef interface
#undef near
#undef small
