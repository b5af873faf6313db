#pragma once

#include "pictures/win32/WindowsHeader.h"

#include <memory>
#include <type_traits>

namespace pictures::win32 {

struct HandleFree {
    void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
    void operator()(HICON icon) const { DestroyIcon(icon); }
    void operator()(HIMAGELIST list) const { ImageList_Destroy(list); }
};

/// Holds one handle and frees it.
template <class Handle>
using NativeHandle = std::unique_ptr<std::remove_pointer_t<Handle>, HandleFree>;

using BitmapHandle = NativeHandle<HBITMAP>;
using IconHandle = NativeHandle<HICON>;
using ImageListHandle = NativeHandle<HIMAGELIST>;

struct ComRelease {
    void operator()(IUnknown* object) const { object->Release(); }
};

/// Holds one reference to a COM object.
template <class Interface>
using ComPointer = std::unique_ptr<Interface, ComRelease>;

/// Creates an object of this process; null when the class is missing or lacks the interface.
template <class Interface>
ComPointer<Interface> CreateComObject(const CLSID& classId, const IID& interfaceId)
{
    void* object = nullptr;
    if (FAILED(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, interfaceId, &object)))
        object = nullptr;
    return ComPointer<Interface>{static_cast<Interface*>(object)};
}

} // namespace pictures::win32
