#include "platform/memory/MemoryDisk.h"

#include "platform/FileName.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace platform::memory {

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

std::string MemoryDisk::Node::Path() const
{
    return parent ? path::Join(parent->Path(), entry.name) : entry.name;
}

MemoryDisk::Node* MemoryDisk::Node::Child(std::string_view name) const
{
    const auto found = byName.find(text::Folded(name));
    return found == byName.end() ? nullptr : found->second;
}

bool MemoryDisk::Node::AnyHeldOpen() const
{
    return heldOpen || std::ranges::any_of(children, [](const auto& child) { return child->AnyHeldOpen(); });
}

bool MemoryDisk::Node::IsWithin(const Node& other) const
{
    return this == &other || (parent && parent->IsWithin(other));
}

MemoryDisk::Node& MemoryDisk::Node::Add(std::unique_ptr<Node> child)
{
    child->parent = this;
    byName.emplace(text::Folded(child->entry.name), child.get());
    return *children.emplace_back(std::move(child));
}

std::unique_ptr<MemoryDisk::Node> MemoryDisk::Node::Take(Node& child)
{
    const auto found = std::ranges::find(children, &child, &std::unique_ptr<Node>::get);
    std::unique_ptr<Node> taken = std::move(*found);
    children.erase(found);
    byName.erase(text::Folded(child.entry.name));
    return taken;
}

void MemoryDisk::Node::Rename(Node& child, std::string_view name)
{
    byName.erase(text::Folded(child.entry.name));
    child.entry.name = name;
    byName.emplace(text::Folded(name), &child);
}

template <class Visit>
void MemoryDisk::Node::ForEachBelow(const Visit& visit) const
{
    for (const auto& child : children) {
        visit(*child);
        child->ForEachBelow(visit);
    }
}

MemoryDisk::MemoryDisk(MemoryClock& theClock) : clock{theClock}
{
    AddFolder("C:\\");
}

MemoryDisk::Drive* MemoryDisk::DriveOf(std::string_view name) const
{
    const auto found =
        std::ranges::find_if(drives, [&](const auto& d) { return path::Same(d->root.entry.name, name); });
    return found == drives.end() ? nullptr : found->get();
}

Result<MemoryDisk::Place> MemoryDisk::Find(std::string_view path, bool followLast, int linksLeft) const
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

Result<MemoryDisk::Place> MemoryDisk::FindEntry(std::string_view path, bool followLast) const
{
    auto place = Find(path, followLast);
    if (place && !place->node)
        return Fail(error::FileNotFound);
    return place;
}

MemoryDisk::Node& MemoryDisk::Must(std::string_view path) const
{
    const auto place = Find(path, false);
    if (!place || !place->node)
        throw std::logic_error{"not in the memory file system: " + std::string{path}};
    return *place->node;
}

MemoryDisk::Place MemoryDisk::MakeRoom(std::string_view path)
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

void MemoryDisk::AddFolder(std::string_view path)
{
    const Place place = MakeRoom(path);
    if (!place.node)
        AddFolderAt(place);
}

void MemoryDisk::AddShortenedFolder(std::string_view parent, std::string_view name)
{
    AddFolderAt({&Must(parent), name, nullptr});
}

void MemoryDisk::AddFolderAt(const Place& place)
{
    auto node = std::make_unique<Node>();
    node->entry = {.name = std::string{place.name},
                   .attributes = attribute::Folder,
                   .modified = clock.Now(),
                   .created = clock.Now()};
    place.parent->Add(std::move(node));
}

void MemoryDisk::AddFile(std::string_view path, std::string_view contents, std::optional<FileTime> modified)
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

void MemoryDisk::AddLink(std::string_view path, std::string_view target, std::uint32_t reparseTag)
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

void MemoryDisk::Remove(std::string_view path)
{
    Node& node = Must(path);
    node.parent->Take(node);
}

bool MemoryDisk::Exists(std::string_view path) const
{
    const auto place = Find(path, false);
    return place && place->node;
}

std::string MemoryDisk::Contents(std::string_view path) const
{
    return Must(path).contents;
}

void MemoryDisk::SetAttributes(std::string_view path, std::uint32_t attributes)
{
    Must(path).entry.attributes = attributes;
}

void MemoryDisk::SetReparseTag(std::string_view path, std::uint32_t tag)
{
    Node& node = Must(path);
    node.entry.attributes |= attribute::ReparsePoint;
    node.entry.reparseTag = tag;
}

void MemoryDisk::SetModified(std::string_view path, FileTime modified)
{
    Must(path).entry.modified = modified;
}

void MemoryDisk::SetSize(std::string_view path, std::uint64_t size)
{
    Must(path).entry.size = size;
}

void MemoryDisk::SetHeldOpen(std::string_view path, bool held)
{
    Must(path).heldOpen = held;
}

void MemoryDisk::SetUnreadable(std::string_view folder, Error error)
{
    Must(folder).listError = error;
}

void MemoryDisk::SetDriveReady(std::string_view drive, bool ready)
{
    if (!DriveOf(drive))
        AddFolder(path::Join(drive, ""));
    DriveOf(drive)->ready = ready;
}

std::map<std::string, std::string> MemoryDisk::Snapshot(std::string_view folder) const
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

std::vector<std::string> MemoryDisk::AllPaths(std::string_view folder) const
{
    std::vector<std::string> paths;
    for (const auto& [path, line] : Snapshot(folder))
        paths.push_back(path);
    return paths;
}

std::map<std::string, std::size_t> MemoryDisk::Listings() const
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

void MemoryDisk::ForgetListings()
{
    for (const auto& drive : drives) {
        drive->root.listings = 0;
        drive->root.ForEachBelow([](Node& node) { node.listings = 0; });
    }
}

} // namespace platform::memory
