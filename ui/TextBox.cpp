#include "ui/TextBox.h"

#include "platform/Text.h"
#include "platform/Utf.h"

#include <algorithm>

namespace ui {
namespace {

constexpr char32_t Backspace = 8;

bool IsInsideCharacter(const std::string& text, std::size_t position)
{
    return position < text.size() && (static_cast<unsigned char>(text[position]) & 0xC0) == 0x80;
}

} // namespace

void TextBox::SetText(std::string value)
{
    if (value == text)
        return;
    text = std::move(value);
    start = length = 0;
    Changed(Aspect::Value);
    if (Change)
        Change();
}

void TextBox::Select(std::size_t from, std::size_t count)
{
    UserSelects(from, count);
    Changed(Aspect::Selection);
}

void TextBox::SetMaxLength(std::size_t units)
{
    maxLength = units;
    Changed(Aspect::View);
}

void TextBox::SetReadOnly(bool value)
{
    readOnly = value;
    Changed(Aspect::View);
}

void TextBox::UserTypes(std::string_view characters)
{
    if (!Enabled() || !Visible())
        return;
    UserFocuses();
    while (!characters.empty()) {
        // A handler may have moved the focus on.
        if (!HasFocus() || !IsUsable())
            return;
        const auto decoded = platform::utf::Decode(characters, 0);
        const std::string_view character = characters.substr(0, decoded.bytes);
        characters.remove_prefix(decoded.bytes);
        UserPressesKey();
        if (decoded.character == Backspace)
            Erase();
        else
            Enter(character);
    }
}

void TextBox::UserPastes(std::string_view pasted)
{
    if (!Enabled() || !Visible())
        return;
    UserFocuses();
    if (!HasFocus() || !IsUsable())
        return;
    UserStartsPaste();
    // A box of one line takes the first of several.
    Enter(lines == Lines::One ? pasted.substr(0, pasted.find_first_of("\r\n")) : pasted);
}

void TextBox::UserReleasesMouse()
{
    if (Enabled() && MouseUp)
        MouseUp();
}

void TextBox::UserPressesKey()
{
    if (IsUsable() && KeyDown)
        KeyDown();
}

bool TextBox::UserPressesCommandKey(const Key& key)
{
    constexpr KeyCode commands[] = {KeyCode::Enter, KeyCode::Escape, KeyCode::Up, KeyCode::Down};
    const bool isOne = key == Plain(key.code) && std::ranges::find(commands, key.code) != std::end(commands);
    return isOne && lines == Lines::One && Enabled() && Visible() && CommandKey && CommandKey(key);
}

void TextBox::UserStartsPaste()
{
    if (IsUsable() && Pasting)
        Pasting();
}

void TextBox::UserEdits(std::string value, std::size_t cursor)
{
    if (value == text)
        return;
    text = std::move(value);
    UserSelects(cursor, 0);
    if (Change)
        Change();
}

void TextBox::UserSelects(std::size_t from, std::size_t count)
{
    const auto whole = [&](std::size_t position) {
        position = std::min(position, text.size());
        while (IsInsideCharacter(text, position))
            --position;
        return position;
    };
    const std::size_t end = whole(from + std::min(count, text.size()));
    start = std::min(whole(from), end);
    length = end - start;
}

void TextBox::Enter(std::string_view entered)
{
    const std::string before = text.substr(0, start);
    const std::string after = text.substr(start + length);
    if (maxLength > 0) {
        const std::size_t used = platform::text::Length(before) + platform::text::Length(after);
        entered = platform::text::Left(entered, maxLength > used ? maxLength - used : 0);
    }
    if (!entered.empty())
        UserEdits(before + std::string{entered} + after, before.size() + entered.size());
}

void TextBox::Erase()
{
    if (length == 0) {
        if (start == 0)
            return;
        const std::size_t end = start;
        UserSelects(start - 1, 0);
        length = end - start;
    }
    const std::size_t cursor = start;
    UserEdits(text.substr(0, start) + text.substr(start + length), cursor);
}

} // namespace ui
