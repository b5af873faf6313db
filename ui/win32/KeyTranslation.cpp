#include "ui/win32/KeyTranslation.h"

namespace ui::win32 {
namespace {

KeyCode CodeOf(WPARAM virtualKey)
{
    if ((virtualKey >= 'A' && virtualKey <= 'Z') || (virtualKey >= '0' && virtualKey <= '9'))
        return static_cast<KeyCode>(virtualKey);
    if (virtualKey >= VK_F1 && virtualKey <= VK_F10)
        return static_cast<KeyCode>(static_cast<int>(KeyCode::F1) + static_cast<int>(virtualKey) - VK_F1);
    switch (virtualKey) {
    case VK_BACK:
        return KeyCode::Backspace;
    case VK_TAB:
        return KeyCode::Tab;
    case VK_RETURN:
        return KeyCode::Enter;
    case VK_ESCAPE:
        return KeyCode::Escape;
    case VK_DELETE:
        return KeyCode::Delete;
    case VK_INSERT:
        return KeyCode::Insert;
    case VK_APPS:
        return KeyCode::Apps;
    case VK_LEFT:
        return KeyCode::Left;
    case VK_RIGHT:
        return KeyCode::Right;
    case VK_UP:
        return KeyCode::Up;
    case VK_DOWN:
        return KeyCode::Down;
    case VK_PRIOR:
        return KeyCode::PageUp;
    case VK_NEXT:
        return KeyCode::PageDown;
    case VK_HOME:
        return KeyCode::Home;
    case VK_END:
        return KeyCode::End;
    case VK_ADD:
    case VK_OEM_PLUS:
        return KeyCode::Plus;
    case VK_SUBTRACT:
    case VK_OEM_MINUS:
        return KeyCode::Minus;
    default:
        return KeyCode::None;
    }
}

bool IsDown(int virtualKey)
{
    return GetKeyState(virtualKey) < 0;
}

} // namespace

Key KeyOf(WPARAM virtualKey)
{
    const Key key{CodeOf(virtualKey), IsDown(VK_CONTROL), IsDown(VK_SHIFT), IsDown(VK_MENU)};
    const bool isText = key.code >= KeyCode::Letter0 && key.code < KeyCode::F1;
    // Ctrl and Alt together are AltGr on many keyboards, which types a character.
    if (isText && key.ctrl == key.alt)
        return {};
    return key;
}

} // namespace ui::win32
