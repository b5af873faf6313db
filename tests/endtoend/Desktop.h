#pragma once

#include "automation/WindowsHeader.h"

#include <commctrl.h>

#include <string>
#include <vector>

/// The browser's windows as somebody outside its process sees and uses them.
namespace endtoend {

/// What a message box shows.
struct Box {
    std::wstring title;
    std::wstring text;
    enum class Icon { None, Information, Critical } icon{};

    friend bool operator==(const Box&, const Box&) = default;
};
void PrintTo(const Box& box, std::ostream* stream);

/// For failure messages: other characters than those of ASCII as their numbers.
std::string Printable(const std::wstring& text);

/// The caption of a window of any process.
std::wstring TextOf(HWND window);

/// The program's visible window of a kind; null when there is none.
HWND MainWindow();
HWND Dialog();
HWND ProgressWindow();
/// A message box or another dialog of the system.
HWND SystemDialog();

/// Waits for the window; null when it does not come in time.
HWND Await(HWND (*find)());
bool AwaitGone(HWND window);

/// Waits for a message box, reads it and closes it with its first button.
Box AnswerBox();

HWND Child(HWND window, const wchar_t* className, int index = 0);
HWND ButtonOf(HWND dialog, const std::wstring& caption);
/// The captions of all visible labels of a dialog, a line each.
std::wstring LabelsOf(HWND dialog);
/// Presses without waiting for what it leads to.
void Press(HWND button);
void PressKey(HWND control, WPARAM key);

/// Walks through the menus by the underlined letters: "fx" is File, Exit. False when a menu does not open; none stays
/// open then.
bool Choose(HWND window, const std::wstring& letters);

/// The captions of the tree's nodes in their order, two blanks before those of each level below the top.
std::vector<std::wstring> NodesOf(HWND window);
bool SelectNode(HWND window, const std::wstring& caption);
/// Gives the selected node another label, by the keyboard. False when the label does not open.
bool TypeLabel(HWND window, const std::wstring& label);

std::vector<std::wstring> RowsOf(HWND window);
/// Selects the row by its name; false when it is not listed.
bool SelectRow(HWND window, const std::wstring& name);
void DoubleClickSelection(HWND window);

} // namespace endtoend
