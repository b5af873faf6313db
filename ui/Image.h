#pragma once

#include "ui/Control.h"

namespace ui {

/// A picture from a file, scaled into the bounds with its proportions and centred. A file that is missing or broken
/// shows nothing.
class Image final : public Control {
public:
    explicit Image(Form& form) : Control{form, {}} {}
    std::string_view TypeName() const override { return "Image"; }
    /// With a width: a box of this size with a visible edge, whatever the picture (twips); else the picture's own size.
    Size Box;
    const std::string& File() const { return file; }
    /// A full path, or "" for no picture. Setting the same path reads the file again.
    void SetFile(std::string path);

private:
    std::string file;
};

} // namespace ui
