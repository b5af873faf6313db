#include "platform/Path.h"

#include "platform/Text.h"

#include <cstddef>

namespace platform::path {

namespace {

bool IsSeparator(char c)
{
    return c == '\\' || c == '/';
}

bool IsDrive(std::string_view text)
{
    return text.size() == 2 && text[1] == ':' &&
           ((text[0] >= 'A' && text[0] <= 'Z') || (text[0] >= 'a' && text[0] <= 'z'));
}

std::string_view WithoutEndingSeparators(std::string_view path)
{
    while (!path.empty() && IsSeparator(path.back()))
        path.remove_suffix(1);
    return path;
}

} // namespace

std::string Join(std::string_view folder, std::string_view name)
{
    if (folder.empty())
        return std::string{name};
    const std::string_view start = WithoutEndingSeparators(folder);
    while (!name.empty() && IsSeparator(name.front()))
        name.remove_prefix(1);
    std::string joined;
    joined.reserve(start.size() + 1 + name.size());
    return joined.append(start).append(1, '\\').append(name);
}

std::string Parent(std::string_view path)
{
    path = WithoutEndingSeparators(path);
    const std::size_t separator = path.rfind('\\');
    if (separator == std::string_view::npos)
        return {};
    return std::string{WithoutEndingSeparators(path.substr(0, separator))};
}

std::string_view Name(std::string_view path)
{
    return path.substr(path.rfind('\\') + 1); // npos + 1 is 0
}

std::string_view LastFour(std::string_view name)
{
    return name.size() <= 4 ? name : name.substr(name.size() - 4);
}

std::string_view WithoutLastFour(std::string_view name)
{
    return name.size() <= 4 ? std::string_view{} : name.substr(0, name.size() - 4);
}

std::string_view WithoutTrailingSeparator(std::string_view path)
{
    const std::string_view start = WithoutEndingSeparators(path);
    return IsDrive(start) && path.size() > start.size() ? path.substr(0, start.size() + 1) : start;
}

std::string Normalized(std::string_view path)
{
    const std::string_view start = WithoutTrailingSeparator(path);
    std::string result;
    result.reserve(start.size());
    if (start.size() > 2 && IsSeparator(start[0]) && IsSeparator(start[1]))
        result += '\\'; // the second one of a share's two follows below
    const std::size_t shareLength = 2 * result.size();
    for (const char c : start) {
        if (!IsSeparator(c))
            result += c;
        else if (result.empty() || result.back() != '\\' || result.size() < shareLength)
            result += '\\';
    }
    return result;
}

std::string Key(std::string_view path)
{
    return text::Folded(WithoutEndingSeparators(Normalized(path)));
}

bool Same(std::string_view a, std::string_view b)
{
    return Key(a) == Key(b);
}

bool IsBelow(std::string_view path, std::string_view folder)
{
    folder = WithoutEndingSeparators(folder);
    return path.size() > folder.size() && path[folder.size()] == '\\' &&
           text::EqualIgnoringCase(path.substr(0, folder.size()), folder);
}

std::string Root(std::string_view path)
{
    if (!IsAbsolute(path))
        return {};
    const std::string normalized = Normalized(path);
    if (IsDrive(std::string_view{normalized}.substr(0, 2)))
        return normalized.substr(0, 3);
    return normalized.substr(0, normalized.find('\\', normalized.find('\\', 2) + 1));
}

bool IsAbsolute(std::string_view path)
{
    if (path.size() >= 3 && IsDrive(path.substr(0, 2)))
        return IsSeparator(path[2]);
    if (path.size() < 3 || !IsSeparator(path[0]) || !IsSeparator(path[1]))
        return false;
    // "\\?\" and "\\.\" open devices, which are no files of the user's.
    const std::string_view server = path.substr(2, path.find_first_of("\\/", 2) - 2);
    const std::string_view rest = path.substr(2 + server.size());
    return !server.empty() && server != "?" && server != "." && WithoutEndingSeparators(rest).size() > 1;
}

} // namespace platform::path
