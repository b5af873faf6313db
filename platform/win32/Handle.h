#pragma once

#include "platform/win32/WindowsHeader.h"

#include <utility>

namespace platform::win32 {

/// Owns one handle of the system. `Traits` tells the handle's type, the value that stands for none, and how it is
/// closed.
template <class Traits>
class Handle {
public:
    using Type = typename Traits::Type;

    Handle() = default;
    explicit Handle(Type handle) : value{handle} {}
    Handle(Handle&& other) noexcept : value{std::exchange(other.value, Traits::None())} {}
    Handle& operator=(Handle&& other) noexcept
    {
        std::swap(value, other.value);
        return *this;
    }
    ~Handle() { Reset(); }

    explicit operator bool() const { return value != Traits::None(); }
    Type Get() const { return value; }
    /// Where a function of the system puts a new handle; an earlier one is closed first.
    Type* Receive()
    {
        Reset();
        return &value;
    }
    void Reset()
    {
        if (value != Traits::None())
            Traits::Close(std::exchange(value, Traits::None()));
    }

private:
    Type value{Traits::None()};
};

struct FileTraits {
    using Type = HANDLE;
    static Type None() { return INVALID_HANDLE_VALUE; }
    static void Close(Type handle) { CloseHandle(handle); }
};
struct FindTraits {
    using Type = HANDLE;
    static Type None() { return INVALID_HANDLE_VALUE; }
    static void Close(Type handle) { FindClose(handle); }
};
struct ObjectTraits {
    using Type = HANDLE;
    static Type None() { return nullptr; }
    static void Close(Type handle) { CloseHandle(handle); }
};
struct KeyTraits {
    using Type = HKEY;
    static Type None() { return nullptr; }
    static void Close(Type key) { RegCloseKey(key); }
};
struct ModuleTraits {
    using Type = HMODULE;
    static Type None() { return nullptr; }
    static void Close(Type module) { FreeLibrary(module); }
};

using FileHandle = Handle<FileTraits>;
using FindHandle = Handle<FindTraits>;
using ObjectHandle = Handle<ObjectTraits>; ///< processes, threads, mutexes
using KeyHandle = Handle<KeyTraits>;
using ModuleHandle = Handle<ModuleTraits>;

} // namespace platform::win32
