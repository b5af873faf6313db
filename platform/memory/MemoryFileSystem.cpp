#include "platform/memory/MemoryFileSystem.h"

#include "platform/FileName.h"
#include "platform/NameOrder.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_map>
#include <utility>

namespace platform::memory {

struct MemoryFileSystem::Node {
    FileEntry entry;
    std::string contents;
    std::string target; ///< of a link
    Node* parent{};
    std::vector<std::unique_ptr<Node>> children;   ///< in listing order
    std::unordered_map<std::string, Node*> byName; ///< by folded name
    Error listError{};
    bool heldOpen{};
    std::size_t listings{};

    bool IsLink() const { return !target.empty(); }

    Node* Child(std::string_view name) const
    {
        const auto found = byName.find(text::Folded(name));
        return found == byName.end() ? nullptr : found->second;
    }

    Node& Add(std::unique_ptr<Node> child)
    {
        child->parent = this;
        byName.emplace(text::Folded(child->entry.name), child.get());
        return *children.emplace_back(std::move(child));
    }

    std::unique_ptr<Node> Take(Node& child)
    {
        const auto found = std::ranges::find(children, &child, &std::unique_ptr<Node>::get);
        std::unique_ptr<Node> taken = std::move(*found);
        children.erase(found);
        byName.erase(text::Folded(child.entry.name));
        return taken;
    }

    void Rename(Node& child, std::string_view name)
    {
        byName.erase(text::Folded(child.entry.name));
        child.entry.name = name;
        byName.emplace(text::Folded(name), &child);
    }

    bool AnyHeldOpen() const
    {
        return heldOpen || std::ranges::any_of(children, [](const auto& child) { return child->AnyHeldOpen(); });
    }

    bool IsBelow(const Node& other) const { return this == &other || (parent && parent->IsBelow(other)); }

    std::string Path() const { return parent ? path::Join(parent->Path(), entry.name) : entry.name; }

    template <class Visit>
    void ForEachBelow(const Visit& visit) const
    {
        for (const auto& child : children) {
            visit(*child);
            child->ForEachBelow(visit);
        }
    }
};

struct MemoryFileSystem::Drive {
    Node root;
    bool ready{true};
};

struct MemoryFileSystem::Place {
    Node* parent{};        ///< null for the root of a drive
    std::string_view name; ///< of the last component, as asked for
    Node* node{};          ///< null when there is no such entry in `parent`
};

namespace {

constexpr Error tooManyLinks{1921}; // ERROR_CANT_RESOLVE_FILENAME
constexpr std::size_t longestName = 255;

std::unexpected<Error> Fail(Error error)
{
    return std::unexpected{error};
}

bool IsNameCharacter(char c)
{
    return static_cast<unsigned char>(c) >= 0x20 && !file_name::ForbiddenInPaths.contains(c);
}

/// A path taken apart: the drive or share, then its components as the system would understand them.
struct Parts {
    std::string_view drive;
    std::vector<std::string_view> names;
};

std::string_view NextName(std::string_view& rest)
{
    const std::size_t start = std::min(rest.find_first_not_of("\\/"), rest.size());
    const std::size_t end = std::min(rest.find_first_of("\\/", start), rest.size());
    const std::string_view name = rest.substr(start, end - start);
    rest.remove_prefix(end);
    return name;
}

Result<Parts> TakeApart(std::string_view path)
{
    if (!path::IsAbsolute(path))
        return Fail(error::InvalidName);
    Parts parts;
    std::string_view rest = path;
    if (path[1] == ':') {
        parts.drive = path.substr(0, 2);
        rest.remove_prefix(2);
    } else {
        NextName(rest);
        NextName(rest);
        parts.drive = path.substr(0, path.size() - rest.size());
    }
    for (std::string_view name = NextName(rest); !name.empty(); name = NextName(rest)) {
        if (name == ".")
            continue;
        if (name == "..") {
            if (!parts.names.empty())
                parts.names.pop_back();
            continue;
        }
        while (name.ends_with('.') || name.ends_with(' '))
            name.remove_suffix(1);
        if (name.empty() || !std::ranges::all_of(name, IsNameCharacter) || text::Length(name) > longestName)
            return Fail(error::InvalidName);
        parts.names.push_back(name);
    }
    return parts;
}

} // namespace

MemoryFileSystem::MemoryFileSystem(FaultPlan& plan, MemoryClock& theClock) : faults{plan}, clock{theClock}
{
    AddFolder("C:\\");
}

MemoryFileSystem::~MemoryFileSystem() = default;

MemoryFileSystem::Drive* MemoryFileSystem::DriveOf(std::string_view name) const
{
    const auto found =
        std::ranges::find_if(drives, [&](const auto& d) { return path::Same(d->root.entry.name, name); });
    return found == drives.end() ? nullptr : found->get();
}

Result<MemoryFileSystem::Place> MemoryFileSystem::Find(std::string_view path, bool followLast, int linksLeft) const
{
    const auto parts = TakeApart(path);
    if (!parts)
        return Fail(parts.error());
    Drive* drive = DriveOf(parts->drive);
    if (!drive)
        return Fail(error::PathNotFound);
    if (!drive->ready)
        return Fail(error::NotReady);

    Place place{nullptr, {}, &drive->root};
    for (std::size_t i = 0; i < parts->names.size(); ++i) {
        if (!place.node || !place.node->entry.IsFolder())
            return Fail(error::PathNotFound);
        place = {place.node, parts->names[i], place.node->Child(parts->names[i])};
        const bool last = i + 1 == parts->names.size();
        if (place.node && place.node->IsLink() && (!last || followLast)) {
            if (linksLeft-- == 0)
                return Fail(tooManyLinks);
            const auto target = Find(place.node->target, true, linksLeft);
            if (!target)
                return Fail(target.error());
            if (!target->node)
                return Fail(error::PathNotFound);
            place.node = target->node;
        }
    }
    return place;
}

Result<MemoryFileSystem::Place> MemoryFileSystem::FindEntry(std::string_view path, bool followLast) const
{
    auto place = Find(path, followLast);
    if (place && !place->node)
        return Fail(error::FileNotFound);
    return place;
}

Result<MemoryFileSystem::Node*> MemoryFileSystem::FindFollowed(std::string_view path) const
{
    const auto place = FindEntry(path, true);
    if (!place)
        return Fail(place.error());
    return place->node;
}

Result<std::vector<FileEntry>> MemoryFileSystem::List(std::string_view folder)
{
    if (const auto fault = faults.Enter("FileSystem.List", folder))
        return Fail(*fault);
    const auto found = FindFollowed(folder);
    if (!found)
        return Fail(found.error() == error::FileNotFound ? error::PathNotFound : found.error());
    Node& node = **found;
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
    if (const auto fault = faults.Enter("FileSystem.Stat", path))
        return Fail(*fault);
    const auto place = FindEntry(path, false);
    if (!place)
        return Fail(place.error());
    return place->node->entry;
}

Result<> MemoryFileSystem::CopyFile(std::string_view from, std::string_view to)
{
    if (const auto fault = faults.Enter("FileSystem.CopyFile", std::string{from}.append(" -> ").append(to)))
        return Fail(*fault);
    const auto source = FindFollowed(from);
    if (!source)
        return Fail(source.error());
    if ((*source)->entry.IsFolder())
        return Fail(error::AccessDenied);
    const auto place = Find(to, false);
    if (!place)
        return Fail(place.error());
    if (place->node)
        return Fail(error::FileExists);

    auto copy = std::make_unique<Node>();
    copy->entry = (*source)->entry;
    copy->entry.name = place->name;
    copy->contents = (*source)->contents;
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
    if (node.AnyHeldOpen() || place->parent->IsBelow(node))
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
    if (const auto fault = faults.Enter("FileSystem.DeleteFile", path))
        return Fail(*fault);
    const auto place = FindEntry(path, false);
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
    if (const auto fault = faults.Enter("FileSystem.MakeWritable", path))
        return Fail(*fault);
    const auto place = FindEntry(path, false);
    if (!place)
        return Fail(place.error());
    place->node->entry.attributes &= ~attribute::ReadOnly;
    return {};
}

Result<> MemoryFileSystem::RemoveFolder(std::string_view path)
{
    if (const auto fault = faults.Enter("FileSystem.RemoveFolder", path))
        return Fail(*fault);
    const auto place = FindEntry(path, false);
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
    if (const auto fault = faults.Enter("FileSystem.Read", path))
        return Fail(*fault);
    const auto found = FindFollowed(path);
    if (!found)
        return Fail(found.error());
    if ((*found)->entry.IsFolder())
        return Fail(error::AccessDenied);
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
    if (const auto fault = faults.Enter("FileSystem.Open", path))
        return Fail(*fault);
    const auto found = FindFollowed(path);
    if (!found)
        return Fail(found.error());
    if ((*found)->entry.IsFolder())
        return Fail(error::AccessDenied);
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

MemoryFileSystem::Node& MemoryFileSystem::Must(std::string_view path) const
{
    const auto place = Find(path, false);
    if (!place || !place->node)
        throw std::logic_error{"not in the memory file system: " + std::string{path}};
    return *place->node;
}

MemoryFileSystem::Place MemoryFileSystem::MakeRoom(std::string_view path)
{
    const auto parts = TakeApart(path);
    if (!parts)
        throw std::logic_error{"not an absolute path: " + std::string{path}};
    if (!DriveOf(parts->drive)) {
        auto drive = std::make_unique<Drive>();
        drive->root.entry = {.name = path::Normalized(parts->drive),
                             .attributes = attribute::Folder,
                             .modified = clock.Now(),
                             .created = clock.Now()};
        drives.push_back(std::move(drive));
    }
    if (parts->names.size() > 1)
        AddFolder(path::Parent(path::Normalized(path)));
    const auto place = Find(path, false);
    if (!place || (place->parent && !place->parent->entry.IsFolder()))
        throw std::logic_error{"cannot be put into the memory file system: " + std::string{path}};
    return *place;
}

void MemoryFileSystem::AddFolder(std::string_view path)
{
    const Place place = MakeRoom(path);
    if (!place.node)
        AddFolderAt(place);
}

void MemoryFileSystem::AddShortenedFolder(std::string_view parent, std::string_view name)
{
    AddFolderAt({&Must(parent), name, nullptr});
}

void MemoryFileSystem::AddFolderAt(const Place& place)
{
    auto node = std::make_unique<Node>();
    node->entry = {.name = std::string{place.name},
                   .attributes = attribute::Folder,
                   .modified = clock.Now(),
                   .created = clock.Now()};
    place.parent->Add(std::move(node));
}

void MemoryFileSystem::AddFile(std::string_view path, std::string_view contents, std::optional<FileTime> modified)
{
    const Place place = MakeRoom(path);
    Node* node = place.node;
    if (node && node->entry.IsFolder())
        throw std::logic_error{"a folder is in the way of the file " + std::string{path}};
    if (!node) {
        auto made = std::make_unique<Node>();
        made->entry = {.name = std::string{place.name}, .attributes = attribute::Archive, .created = clock.Now()};
        node = &place.parent->Add(std::move(made));
    }
    node->contents = contents;
    node->entry.size = contents.size();
    node->entry.modified = modified.value_or(clock.Now());
}

void MemoryFileSystem::AddLink(std::string_view path, std::string_view target, std::uint32_t reparseTag)
{
    const Place place = MakeRoom(path);
    if (place.node)
        throw std::logic_error{"in the way of a link: " + std::string{path}};
    auto node = std::make_unique<Node>();
    node->entry = {.name = std::string{place.name},
                   .attributes = attribute::Folder | attribute::ReparsePoint,
                   .reparseTag = reparseTag,
                   .modified = clock.Now(),
                   .created = clock.Now()};
    node->target = target;
    place.parent->Add(std::move(node));
}

void MemoryFileSystem::Remove(std::string_view path)
{
    Node& node = Must(path);
    node.parent->Take(node);
}

bool MemoryFileSystem::Exists(std::string_view path) const
{
    const auto place = Find(path, false);
    return place && place->node;
}

std::string MemoryFileSystem::Contents(std::string_view path) const
{
    return Must(path).contents;
}

void MemoryFileSystem::SetAttributes(std::string_view path, std::uint32_t attributes)
{
    Must(path).entry.attributes = attributes;
}

void MemoryFileSystem::SetReparseTag(std::string_view path, std::uint32_t tag)
{
    Node& node = Must(path);
    node.entry.attributes |= attribute::ReparsePoint;
    node.entry.reparseTag = tag;
}

void MemoryFileSystem::SetModified(std::string_view path, FileTime modified)
{
    Must(path).entry.modified = modified;
}

void MemoryFileSystem::SetSize(std::string_view path, std::uint64_t size)
{
    Must(path).entry.size = size;
}

void MemoryFileSystem::SetHeldOpen(std::string_view path, bool held)
{
    Must(path).heldOpen = held;
}

void MemoryFileSystem::SetUnreadable(std::string_view folder, Error error)
{
    Must(folder).listError = error;
}

void MemoryFileSystem::SetDriveReady(std::string_view drive, bool ready)
{
    if (!DriveOf(drive))
        AddFolder(path::Join(drive, ""));
    DriveOf(drive)->ready = ready;
}

std::map<std::string, std::string> MemoryFileSystem::Snapshot(std::string_view folder) const
{
    std::map<std::string, std::string> lines;
    const auto add = [&](const Node& node) {
        std::string& line = lines[node.Path()];
        line = "attributes " + std::to_string(node.entry.attributes);
        if (node.IsLink())
            line += " -> " + node.target;
        else if (!node.entry.IsFolder())
            line += " modified " + std::to_string(node.entry.modified) + ": " + node.contents;
    };
    if (!folder.empty()) {
        Must(folder).ForEachBelow(add);
    } else {
        for (const auto& drive : drives)
            drive->root.ForEachBelow(add);
    }
    return lines;
}

std::vector<std::string> MemoryFileSystem::AllPaths(std::string_view folder) const
{
    std::vector<std::string> paths;
    for (const auto& [path, line] : Snapshot(folder))
        paths.push_back(path);
    return paths;
}

std::map<std::string, std::size_t> MemoryFileSystem::Listings() const
{
    std::map<std::string, std::size_t> counts;
    const auto add = [&](const Node& node) {
        if (node.listings > 0)
            counts[node.Path()] = node.listings;
    };
    for (const auto& drive : drives) {
        add(drive->root);
        drive->root.ForEachBelow(add);
    }
    return counts;
}

void MemoryFileSystem::ForgetListings()
{
    for (const auto& drive : drives) {
        drive->root.listings = 0;
        drive->root.ForEachBelow([](Node& node) { node.listings = 0; });
    }
}

} // namespace platform::memory
