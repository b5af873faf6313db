#pragma once

namespace ui {

/// All lengths of the portable side are twips: 1/1440 inch. A peer turns them into pixels with its window's dpi
/// (15 twips are one pixel at 96 dpi, 10 at 144).
struct Point {
    int x{}, y{};
    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    int width{}, height{};
    friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
    int left{}, top{}, width{}, height{};
    int Right() const { return left + width; }
    int Bottom() const { return top + height; }
    friend bool operator==(const Rect&, const Rect&) = default;
};

/// The usable area of a monitor, in twips of the whole desktop.
struct WorkArea : Rect {
    double scale{1}; ///< how many of those a twip of a window on this monitor is: they may have dpi of their own
};

} // namespace ui
