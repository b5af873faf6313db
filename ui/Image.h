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
    /// What will probably be shown next: it is decoded while this one is looked at.
    const std::string& NextFile() const { return nextFile; }
    void SetNextFile(std::string path);

    /// Whether its zoom is used. Set before the window is there.
    bool Zoomable{};
    /// As large as there is room.
    static constexpr int FitZoom = 0;
    /// Percent of the picture's own size, or FitZoom. What is larger than the control is seen in part, its middle at
    /// first.
    int Zoom() const { return zoom; }
    void SetZoom(int percent);
    /// What FitZoom comes to as well, once it was drawn; 100 before.
    int ShownZoom() const { return zoom == FitZoom ? fitted : zoom; }
    /// Moves what is seen in part by these twips, as far as the picture goes.
    void Pan(Point by);
    /// Where the picture's middle lies off the control's, twips.
    Point Offset() const { return offset; }

    // For the peer.
    void Fitted(int percent) { fitted = percent; }
    /// The offset that there is room for.
    void Limit(Point most);

    /// With one the picture is a button, for the mouse and the keyboard, whose name is the caption. Set before the
    /// window is there.
    std::function<void()> Click;
    /// A click, Enter or Space; nothing while it is hidden, disabled or shows no file.
    void UserClicks();
    /// With one, files can be dropped here, and the keyboard reaches the box, so that what is pasted has a place. Set
    /// before the window is there.
    std::function<void(const std::string& file)> Dropped;
    /// The first of the dropped files; nothing while it is hidden or disabled.
    void UserDrops(const std::string& dropped);
    bool IsTabStop() const override { return Click || Dropped; }

private:
    std::string file;
    std::string fallbackFile;
    std::string fallbackText;
    std::string nextFile;
    int zoom{FitZoom};
    int fitted{100};
    Point offset;
};

} // namespace ui
