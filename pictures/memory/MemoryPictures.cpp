#include "pictures/memory/MemoryPictures.h"

namespace pictures::memory {

PixelSize MemoryPictures::SizeOf(const std::string& path) const
{
    if (path.empty() || BrokenPictures.contains(path))
        return {};
    const auto found = Sizes.find(path);
    return found != Sizes.end() ? found->second : PixelSize{100, 100};
}

PixelBuffer MemoryPictures::Decode(const std::string& path, PixelSize room, int enlargement) const
{
    PixelBuffer picture{Fitted(SizeOf(path), room, enlargement)};
    picture.Flatten({128, 128, 128});
    return picture;
}

} // namespace pictures::memory
