#include "ui/ImageList.h"

namespace ui {

void ImageList::SetNamed(int index, std::string name)
{
    pictures[index] = Picture{std::move(name), {}};
}

int ImageList::AddFile(std::string path, std::string bytes)
{
    const int index = Last() + 1;
    pictures[index] = Picture{{}, std::move(path), std::move(bytes)};
    return index;
}

void ImageList::Shrink(int index)
{
    pictures.erase(pictures.upper_bound(index), pictures.end());
}

const ImageList::Picture* ImageList::Find(int index) const
{
    const auto found = pictures.find(index);
    return found == pictures.end() ? nullptr : &found->second;
}

} // namespace ui
