#pragma once

#include <functional>
#include <map>
#include <string>

namespace ui {

/// Numbered pictures of a tree, a list or a tab strip: the program's own by name, others by file. A peer loads each
/// at the size and dpi it needs.
class ImageList {
public:
    struct Picture {
        std::string name; ///< one of the program's pictures (art/icons.rc, in lower case), or
        std::string file; ///< the full path of an icon file
        friend bool operator==(const Picture&, const Picture&) = default;
    };

    void SetNamed(int index, std::string name);
    /// Adds an icon file as a new last entry; gives its index.
    int AddFile(std::string path);
    /// Drops the entries after `index`.
    void Shrink(int index);
    const std::map<int, Picture>& Pictures() const { return pictures; }
    /// Null when there is no such entry.
    const Picture* Find(int index) const;
    int Last() const { return pictures.empty() ? 0 : pictures.rbegin()->first; }

private:
    std::map<int, Picture> pictures;
};

} // namespace ui
