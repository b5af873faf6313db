#pragma once

#include <string>
#include <string_view>

namespace online {

/// The page around a banner's picture: the picture as a link, and no menu of the browser's own over it. Both values may
/// be anything: the page has the same tags for all of them.
std::string BannerPage(std::string_view imagePath, std::string_view link);

} // namespace online
