#pragma once

#include "pictures/IconSource.h"

#include <map>
#include <string>

namespace ui {

/// Numbered pictures of a tree, a list or a tab strip: the program's own by name, others by file. A peer loads each
/// at the size and dpi it needs.
class ImageList {
public:
    using Picture = pictures::IconSource;
    static constexpr auto LargestFile = pictures::LargestIconFile;

    void SetNamed(int index, std::string name);
    /// Adds an icon file, with what is in it, as a new last entry; gives its index.
    int AddFile(std::string path, std::string bytes);
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
