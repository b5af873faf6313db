#include "app/base/StringTable.h"

#include "platform/Path.h"

#include <algorithm>
#include <iterator>

namespace app {
namespace {

struct Row {
    std::uint16_t id;
    std::string_view text;
};

constexpr Row rows[] = {
#include "StringRows.inc"
};
static_assert(std::ranges::is_sorted(rows, {}, &Row::id), "strings.txt is searched by halving: keep it in order");

/// Characters with the terminator: what the texts of a resource library were always read with.
constexpr int LibraryBuffer = 512;

} // namespace

void StringTable::LoadResourceLibrary(std::string_view programFolder)
{
    useResourceLibrary = library.Load(platform::path::Join(programFolder, "TS_RES.dll")) ? 1 : 0;
}

std::string StringTable::LoadString(std::uint16_t id) const
{
    if (useResourceLibrary == 1)
        if (std::string text = library.LoadString(id, LibraryBuffer); !text.empty())
            return text;
    return std::string{Own(id)};
}

std::string_view StringTable::Own(std::uint16_t id)
{
    const auto* row = std::ranges::lower_bound(rows, id, {}, &Row::id);
    return row != std::end(rows) && row->id == id ? row->text : std::string_view{};
}

} // namespace app
