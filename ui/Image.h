#pragma once

#include "ui/Control.h"

#include <functional>

namespace ui {

/// A picture from a file, scaled into the bounds with its proportions and centred. A file that is missing or broken
/// shows what SetFallback has set, if anything.
class Image final : public Control {
public:
    explicit Image(Form& form) : Control{form, {}} {}
    std::string_view TypeName() const override { return "Image"; }
    /// With a width: a box of this size with a visible edge, whatever the picture (twips); else the picture's own size.
    Size Box;
    /// Decoded while the window paints, for a picture of the program's own that shows while no loop runs. Any other is
    /// decoded beside: a photograph takes its time, and a share takes more.
    bool AtOnce{};
    const std::string& File() const { return file; }
    /// A full path, or "" for no picture. Setting the same path reads the file again.
    void SetFile(std::string path);
    /// What stands in for a file that is missing or broken: another file, and when that cannot be shown either, a text.
    const std::string& FallbackFile() const { return fallbackFile; }
    const std::string& FallbackText() const { return fallbackText; }
    void SetFallback(std::string path, std::string text);

    /// With one the picture is a button, for the mouse and the keyboard, whose name is the caption. Set before the
    /// window is there.
    std::function<void()> Click;
    /// A click, Enter or Space; nothing while it is hidden, disabled or shows no file.
    void UserClicks();
    bool IsTabStop() const override { return static_cast<bool>(Click); }

private:
    std::string file;
    std::string fallbackFile;
    std::string fallbackText;
};

} // namespace ui
