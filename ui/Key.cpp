#include "ui/Key.h"

#include <utility>

namespace ui {
namespace {

std::string CodeText(KeyCode code)
{
    static constexpr std::pair<KeyCode, const char*> named[] = {
        {KeyCode::Backspace, "Backspace"}, {KeyCode::Tab, "Tab"},    {KeyCode::Enter, "Enter"},
        {KeyCode::Escape, "Esc"},          {KeyCode::Delete, "Del"}, {KeyCode::Insert, "Ins"},
        {KeyCode::Apps, "Menu"},
    };
    for (const auto& [key, text] : named)
        if (key == code)
            return text;
    if (code >= KeyCode::F1 && code <= KeyCode::F10)
        return "F" + std::to_string(static_cast<int>(code) - static_cast<int>(KeyCode::F1) + 1);
    return std::string(1, static_cast<char>(code));
}

} // namespace

std::string KeyText(const Key& key)
{
    if (!key)
        return {};
    std::string text;
    if (key.ctrl)
        text += "Ctrl+";
    if (key.shift)
        text += "Shift+";
    if (key.alt)
        text += "Alt+";
    return text + CodeText(key.code);
}

} // namespace ui
