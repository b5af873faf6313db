#pragma once

#include <string_view>

/// What the tests and the stand-in program have agreed on.
namespace stand_in {

inline constexpr wchar_t ExeName[] = L"automation_stand_in.exe";
inline constexpr wchar_t WindowClass[] = L"TSBrowserStandIn";
/// A library beside the stand-in that is asked for without a path.
inline constexpr wchar_t PlantedLibrary[] = L"ts_planted.dll";
/// Environment variable: how many milliseconds the server waits for the first object.
inline constexpr wchar_t PatienceVariable[] = L"TS_STAND_IN_PATIENCE";

/// Host kinds that make `Start` behave in a special way; any other opens a window.
inline constexpr std::string_view Fails = "FAILS";               ///< returns without a window
inline constexpr std::string_view Throws = "THROWS";             ///< raises an exception
inline constexpr std::string_view LoadsByName = "LOADS BY NAME"; ///< answers whether it got PlantedLibrary
inline constexpr std::string_view OutOfMemory = "OUT OF MEMORY";
inline constexpr std::string_view ClosesAtOnce = "CLOSES AT ONCE"; ///< the window closes while it loads

/// Posted to the window: a dialog opens (wParam 1) or closes (0).
inline constexpr unsigned DialogMessage = 0x8001; // WM_APP + 1

} // namespace stand_in
