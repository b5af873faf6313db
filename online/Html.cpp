#include "online/Html.h"

namespace online {

std::string Escaped(std::string_view text)
{
    std::string escaped;
    escaped.reserve(text.size());
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        case '\'':
            escaped += "&#39;";
            break;
        default:
            escaped += static_cast<unsigned char>(c) >= 0x20 || c == '\t' ? c : ' ';
        }
    }
    return escaped;
}

} // namespace online
