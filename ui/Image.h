#pragma once

#include "ui/Control.h"

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

private:
    std::string file;
    std::string fallbackFile;
    std::string fallbackText;
};

} // namespace ui
