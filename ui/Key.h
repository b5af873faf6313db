#pragma once

#include <string>

namespace ui {

/// Keys that commands use. Letters and digits are their upper-case ASCII codes.
enum class KeyCode {
    None = 0,
    Backspace = 8,
    Tab = 9,
    Enter = 13,
    Escape = 27,
    Letter0 = '0',
    F1 = 256,
    F2,
    F3,
    F4,
    F5,
    F6,
    F7,
    F8,
    F9,
    F10,
    Delete,
    Insert,
    Apps, ///< the context-menu key
    Left,
    Right,
    Up,
    Down,
    PageUp,
    PageDown,
    Home,
    End,
    Plus, ///< of the digits' block too, as the next
    Minus
};

/// One key press with its modifiers.
struct Key {
    KeyCode code{KeyCode::None};
    bool ctrl{};
    bool shift{};
    bool alt{};

    friend bool operator==(const Key&, const Key&) = default;
    explicit operator bool() const { return code != KeyCode::None; }
};

inline Key Ctrl(char letter)
{
    return Key{static_cast<KeyCode>(letter), true};
}
inline Key Plain(KeyCode code)
{
    return Key{code};
}

/// As menus show it: "Ctrl+N", "Alt+Enter", "F5"; "" for no key.
std::string KeyText(const Key& key);

} // namespace ui
