#pragma once

#include "ui/win32/WindowsHeader.h"

namespace ui::win32 {

/// A control that is changed in several steps: nothing is drawn between them, and all of it once at the end. Some
/// systems draw a scroll bar anew with each step, which takes longer than the step.
class Undrawn {
public:
    /// `shows`: whether the control is seen at all. Its window may say otherwise while its layout is held.
    Undrawn(HWND undrawnControl, bool shows);
    Undrawn(const Undrawn&) = delete;
    Undrawn& operator=(const Undrawn&) = delete;
    ~Undrawn();

private:
    HWND control;
    bool isShown;
};

/// When a native list view lays out its rows: once all that decides on their places has been told to it.
class ListLayout {
public:
    /// From now on it neither lays out nor scrolls.
    void Hold(HWND list);
    bool Holds() const { return holds; }
    /// Lays out this many rows where they stand beside the scroll bars that they need.
    void Release(HWND list, int rows);

private:
    bool holds{};
};

} // namespace ui::win32
