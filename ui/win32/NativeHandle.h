#pragma once

#include "pictures/win32/NativeHandle.h"
#include "ui/win32/WindowsHeader.h"

#include <memory>
#include <type_traits>

namespace ui::win32 {

using pictures::win32::BitmapHandle;
using pictures::win32::ComPointer;
using pictures::win32::CreateComObject;
using pictures::win32::IconHandle;
using pictures::win32::ImageListHandle;

struct HandleFree {
    void operator()(HFONT font) const { DeleteObject(font); }
    void operator()(HMENU menu) const { DestroyMenu(menu); }
};

/// Holds one handle and frees it.
template <class Handle>
using NativeHandle = std::unique_ptr<std::remove_pointer_t<Handle>, HandleFree>;

using FontHandle = NativeHandle<HFONT>;
using MenuHandle = NativeHandle<HMENU>;

} // namespace ui::win32
