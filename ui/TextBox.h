#pragma once

#include "ui/Control.h"
#include "ui/Key.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace ui {

/// A text that the user edits. The selection counts bytes of the UTF-8 text and never cuts a character in two. Lines
/// of a box of several are ended by "\r\n".
class TextBox final : public Control {
public:
    enum class Lines { One, Many };

    explicit TextBox(Form& form, Lines boxLines = Lines::One) : Control{form, {}}, lines{boxLines} {}
    std::string_view TypeName() const override { return "TextBox"; }
    bool IsTabStop() const override { return true; }
    bool HasLineHeight() const override { return lines == Lines::One; }
    Lines GetLines() const { return lines; }

    const std::string& Text() const { return text; }
    /// Puts the cursor before the text and raises Change, also by code; the same text does nothing.
    void SetText(std::string value);

    std::size_t SelStart() const { return start; }
    std::size_t SelLength() const { return length; }
    std::string SelText() const { return text.substr(start, length); }
    /// Clamped to the text.
    void Select(std::size_t from, std::size_t count);
    void SelectAll() { Select(0, text.size()); }

    /// What the user can enter at most, in UTF-16 units (0: no bound). SetText is not bounded.
    std::size_t MaxLength() const { return maxLength; }
    void SetMaxLength(std::size_t units);
    /// The text can be selected and copied, not changed.
    bool ReadOnly() const { return readOnly; }
    void SetReadOnly(bool value);

    std::function<void()> Change;
    /// A key goes down in the box, before it does anything there.
    std::function<void()> KeyDown;
    /// A key that does nothing in one line of text: Enter, Esc, up and down. True when it was used.
    std::function<bool(const Key&)> CommandKey;
    /// Before a paste changes the text, however the user asked for it.
    std::function<void()> Pasting;
    std::function<void()> MouseUp;

    /// Takes the focus, then presses one key after the other; "\b" is backspace.
    void UserTypes(std::string_view characters);
    void UserPastes(std::string_view pasted);
    void UserReleasesMouse();

    /// True when the key was used.
    bool UserPressesCommandKey(const Key& key);

    // For the peer, whose native control edits by itself.
    void UserPressesKey();
    /// The user is about to paste into the native control.
    void UserStartsPaste();
    /// The user's editing made this the text, with the cursor at `cursor`.
    void UserEdits(std::string value, std::size_t cursor);
    /// The user moved the selection. No event.
    void UserSelects(std::size_t from, std::size_t count);

private:
    std::string text;
    std::size_t start{};
    std::size_t length{};
    std::size_t maxLength{};
    Lines lines;
    bool readOnly{};

    bool IsUsable() const { return Enabled() && Visible() && !readOnly; }
    void Enter(std::string_view entered);
    void Erase();
};

} // namespace ui
