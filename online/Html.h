#pragma once

#include <string>
#include <string_view>

namespace online {

/// The text as it may stand in a page, between tags or in a quoted value of an attribute: none of it can become a tag,
/// an attribute or a comment. Control characters but tabs are blanks.
std::string Escaped(std::string_view text);

} // namespace online
