#pragma once

#include "ui/Control.h"

namespace ui {

/// A picture from a file, scaled into the bounds with its proportions and centred. A file that is missing or broken
/// shows nothing.
class Image final : public Control {
public:
    explicit Image(Form& form) : Control{form, {}} {}
    std::string_view TypeName() const override { return "Image"; }
    const std::string& File() const { return file; }
    /// A full path, or "" for no picture. Setting the same path reads the file again.
    void SetFile(std::string path);

private:
    std::string file;
};

} // namespace ui
