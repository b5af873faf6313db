#include "platform/memory/MemoryResourceLibrary.h"

#include "platform/Path.h"
#include "platform/Text.h"

#include <utility>

namespace platform::memory {

bool MemoryResourceLibrary::Load(std::string_view file)
{
    loaded = nullptr;
    if (faults.Enter("ResourceLibrary.Load", file) || !path::IsAbsolute(file))
        return false;
    const auto found = libraries.find(text::Folded(path::Normalized(file)));
    if (found != libraries.end())
        loaded = &found->second;
    return loaded != nullptr;
}

std::string MemoryResourceLibrary::LoadString(std::uint16_t id, int buffer)
{
    if (!loaded || buffer < 1 || faults.Enter("ResourceLibrary.LoadString", std::to_string(id)))
        return {};
    const auto found = loaded->find(id);
    if (found == loaded->end())
        return {};
    return std::string{text::Left(found->second, static_cast<std::size_t>(buffer) - 1)};
}

void MemoryResourceLibrary::Add(std::string_view file, Strings strings)
{
    libraries.insert_or_assign(text::Folded(path::Normalized(file)), std::move(strings));
}

} // namespace platform::memory
