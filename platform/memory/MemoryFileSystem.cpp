#include "platform/memory/MemoryFileSystem.h"

#include "platform/NameOrder.h"

#include <algorithm>
#include <utility>

namespace platform::memory {
namespace {

std::unexpected<Error> Fail(Error error)
{
    return std::unexpected{error};
}

} // namespace

Result<MemoryFileSystem::Place> MemoryFileSystem::Begin(std::string_view call, std::string_view path)
{
    if (const auto fault = faults.Enter(call, path))
        return Fail(*fault);
    return FindEntry(path, false);
}

Result<MemoryFileSystem::Node*> MemoryFileSystem::BeginToRead(std::string_view call, std::string_view path)
{
    if (const auto fault = faults.Enter(call, path))
        return Fail(*fault);
    const auto place = FindEntry(path, true);
    if (!place)
        return Fail(place.error());
    if (place->node->entry.IsFolder())
        return Fail(error::AccessDenied);
    return place->node;
}

Result<std::vector<FileEntry>> MemoryFileSystem::List(std::string_view folder)
{
    if (const auto fault = faults.Enter("FileSystem.List", folder))
        return Fail(*fault);
    const auto found = FindEntry(folder, true);
    if (!found)
        return Fail(found.error() == error::FileNotFound ? error::PathNotFound : found.error());
    Node& node = *found->node;
    if (!node.entry.IsFolder())
        return Fail(error::InvalidFolder);
    ++node.listings;
    if (node.listError.code != 0)
        return Fail(node.listError);

    std::vector<FileEntry> entries;
    entries.reserve(node.children.size());
    for (const auto& child : node.children)
        entries.push_back(child->entry);
    if (sorted)
        std::ranges::sort(entries, {}, [](const FileEntry& entry) { return NameOrderKey(entry.name); });
    return entries;
}

Result<FileEntry> MemoryFileSystem::Stat(std::string_view path)
{
    const auto place = Begin("FileSystem.Stat", path);
    if (!place)
        return Fail(place.error());
    return place->node->entry;
}

Result<> MemoryFileSystem::CopyFile(std::string_view from, std::string_view to)
{
    if (const auto fault = faults.Enter("FileSystem.CopyFile", std::string{from}.append(" -> ").append(to)))
        return Fail(*fault);
    const auto source = FindEntry(from, true);
    if (!source)
        return Fail(source.error());
    const Node& original = *source->node;
    if (original.entry.IsFolder())
        return Fail(error::AccessDenied);
    const auto place = Find(to, false);
    if (!place)
        return Fail(place.error());
    if (place->node)
        return Fail(error::FileExists);

    auto copy = std::make_unique<Node>();
    copy->entry = original.entry;
    copy->entry.name = place->name;
    copy->contents = original.contents;
    place->parent->Add(std::move(copy));
    return {};
}

Result<> MemoryFileSystem::Move(std::string_view from, std::string_view to)
{
    if (const auto fault = faults.Enter("FileSystem.Move", std::string{from}.append(" -> ").append(to)))
        return Fail(*fault);
    const auto source = FindEntry(from, false);
    if (!source)
        return Fail(source.error());
    if (!source->parent)
        return Fail(error::AccessDenied);
    const auto place = Find(to, false);
    if (!place)
        return Fail(place.error());
    Node& node = *source->node;
    if (place->node && place->node != &node)
        return Fail(error::AlreadyExists);

    const auto rootOf = [](const Node* any) {
        while (any->parent)
            any = any->parent;
        return any;
    };
    if (!place->parent || rootOf(place->parent) != rootOf(&node))
        return Fail(error::NotSameDevice);
    if (node.AnyHeldOpen() || place->parent->IsWithin(node))
        return Fail(error::SharingViolation);

    if (place->parent == source->parent) {
        place->parent->Rename(node, place->name);
    } else {
        auto taken = source->parent->Take(node);
        taken->entry.name = place->name;
        place->parent->Add(std::move(taken));
    }
    return {};
}

Result<> MemoryFileSystem::DeleteFile(std::string_view path)
{
    const auto place = Begin("FileSystem.DeleteFile", path);
    if (!place)
        return Fail(place.error());
    if (place->node->entry.IsFolder() || (place->node->entry.attributes & attribute::ReadOnly) != 0)
        return Fail(error::AccessDenied);
    if (place->node->heldOpen)
        return Fail(error::SharingViolation);
    place->parent->Take(*place->node);
    return {};
}

Result<> MemoryFileSystem::MakeWritable(std::string_view path)
{
    const auto place = Begin("FileSystem.MakeWritable", path);
    if (!place)
        return Fail(place.error());
    place->node->entry.attributes &= ~attribute::ReadOnly;
    return {};
}

Result<> MemoryFileSystem::RemoveFolder(std::string_view path)
{
    const auto place = Begin("FileSystem.RemoveFolder", path);
    if (!place)
        return Fail(place.error());
    const Node& node = *place->node;
    if (!node.entry.IsFolder())
        return Fail(error::InvalidFolder);
    if (!place->parent || (node.entry.attributes & attribute::ReadOnly) != 0)
        return Fail(error::AccessDenied);
    if (node.heldOpen)
        return Fail(error::SharingViolation);
    if (!node.children.empty())
        return Fail(error::DirectoryNotEmpty);
    place->parent->Take(*place->node);
    return {};
}

Result<> MemoryFileSystem::CreateFolder(std::string_view path)
{
    if (const auto fault = faults.Enter("FileSystem.CreateFolder", path))
        return Fail(*fault);
    const auto place = Find(path, false);
    if (!place)
        return Fail(place.error());
    if (place->node)
        return Fail(error::AlreadyExists);
    AddFolderAt(*place);
    return {};
}

Result<std::string> MemoryFileSystem::Read(std::string_view path, std::uint64_t limit)
{
    const auto found = BeginToRead("FileSystem.Read", path);
    if (!found)
        return Fail(found.error());
    if ((*found)->entry.size > limit)
        return Fail(error::FileTooLarge);
    return (*found)->contents;
}

Result<std::unique_ptr<ByteSource>> MemoryFileSystem::Open(std::string_view path)
{
    /// Keeps the contents of the moment, so that the file may go meanwhile.
    class Opened final : public ByteSource {
    public:
        explicit Opened(std::string contents) : text{std::move(contents)} {}
        std::uint64_t Size() const override { return text.size(); }
        std::size_t Read(std::uint64_t offset, std::span<char> room) override
        {
            return TextSource{text}.Read(offset, room);
        }

    private:
        std::string text;
    };
    const auto found = BeginToRead("FileSystem.Open", path);
    if (!found)
        return Fail(found.error());
    return std::make_unique<Opened>((*found)->contents);
}

Result<> MemoryFileSystem::Write(std::string_view path, std::string_view bytes)
{
    if (const auto fault = faults.Enter("FileSystem.Write", path))
        return Fail(*fault);
    const auto place = Find(path, false);
    if (!place)
        return Fail(place.error());
    if (place->node)
        return Fail(error::FileExists);
    AddFile(path, shortWrites ? bytes.substr(0, bytes.size() / 2) : bytes);
    return {};
}

Result<> MemoryFileSystem::Replace(std::string_view from, std::string_view to)
{
    if (const auto fault = faults.Enter("FileSystem.Replace", std::string{from}.append(" -> ").append(to)))
        return Fail(*fault);
    const auto source = FindEntry(from, false);
    if (!source)
        return Fail(source.error());
    const auto place = Find(to, false);
    if (!place)
        return Fail(place.error());
    Node& node = *source->node;
    Node* const old = place->node;
    if (node.entry.IsFolder() || (old && (old->entry.IsFolder() || (old->entry.attributes & attribute::ReadOnly) != 0)))
        return Fail(error::AccessDenied);
    if (old && old->heldOpen)
        return Fail(error::AccessDenied);
    if (node.heldOpen)
        return Fail(error::SharingViolation);
    if (old && old != &node)
        place->parent->Take(*old);
    auto taken = source->parent->Take(node);
    taken->entry.name = place->name;
    place->parent->Add(std::move(taken));
    return {};
}

} // namespace platform::memory
