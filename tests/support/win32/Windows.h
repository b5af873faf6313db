#pragma once

#include "tests/support/win32/Process.h"

#include <commctrl.h>

#include <string>
#include <vector>

/// The windows of another process as somebody outside it sees and uses them.
namespace support {

/// The caption of a window of any process.
std::wstring TextOf(HWND window);

/// The visible windows of a class, as they stood at one moment: who goes from one to the next loses all that follow
/// when that one goes.
std::vector<HWND> TopWindows(const wchar_t* className);
/// The first of them that `fits`; null when there is none.
HWND FindTop(const wchar_t* className, bool (*fits)(HWND) = [](HWND) { return true; });
/// A message box or another dialog of the system.
HWND SystemDialog();

/// Waits for the window; null when it does not come in time.
HWND Await(HWND (*find)());
bool AwaitGone(HWND window);

/// Waits for a message box and closes it with its first button. Gives "title: text".
std::wstring AnswerBox();

HWND ChildOf(HWND window, const wchar_t* className);
HWND TreeOf(HWND window);
HWND ListOf(HWND window);
HWND ButtonOf(HWND dialog, const std::wstring& caption);
/// Presses without waiting for what it leads to.
void Press(HWND button);
void PressKey(HWND control, WPARAM key);

/// The key to the next line of a menu.
inline constexpr wchar_t LineDown = L'\x2193';
/// Walks through the menus by the underlined letters: "fx" is File, Exit; where an entry has none, by LineDown and
/// "\r". False when a menu does not open; none stays open then.
bool Choose(HWND window, const std::wstring& letters);

/// The captions of the tree's nodes in their order, two blanks before those of each level below the top.
std::vector<std::wstring> NodesOf(HWND window);
bool SelectNode(HWND window, const std::wstring& caption);

/// Selects the row by its name; false when it is not listed.
bool SelectRow(HWND window, const std::wstring& name);

} // namespace support
