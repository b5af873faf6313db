#include "profiles/PictureFolders.h"

#include "platform/Path.h"
#include "platform/Text.h"
#include "profiles/ProfileImages.h"
#include "profiles/ProfileTransfer.h"

#include <algorithm>

namespace profiles {

namespace path = platform::path;
namespace text = platform::text;
using platform::FileEntry;
using platform::Result;

namespace {

bool IsPictureFile(std::string_view name)
{
    return std::ranges::any_of(AllImages, [&](ImageKind k) { return text::ContainsIgnoringCase(name, KindWord(k)); });
}

} // namespace

PictureFolders::Names PictureFolders::NamesFor(const ExportedKeys& keys)
{
    Names names;
    for (const ExportedKey& key : keys) {
        if (const auto name = ImageFolderName(key.name))
            names.insert(text::Folded(*name));
        for (const auto& [name, value] : key.values)
            if (IsImageValue(name))
                names.insert(text::Folded(path::Name(path::Parent(value.data))));
    }
    return names;
}

Result<PictureFolders> PictureFolders::List(app::PatientFiles& files, const std::string& place, const Names& wanted)
{
    PictureFolders found;
    found.place = place;
    if (!path::IsAbsolute(place))
        return found;
    const auto entries = files.List(place);
    if (!entries)
        return IsNotThere(entries.error()) ? Result<PictureFolders>{found} : std::unexpected{entries.error()};
    for (const FileEntry& entry : *entries) {
        if (!entry.IsFolder() || entry.IsLink() || !wanted.contains(text::Folded(entry.name)))
            continue;
        const auto listed = files.List(path::Join(place, entry.name));
        if (!listed)
            return std::unexpected{listed.error()};
        Folder& folder = found.folders.emplace_back(entry.name);
        for (const FileEntry& file : *listed)
            if (!file.IsFolder() && !file.IsLink() && !FileBatch::IsTemporary(file.name) &&
                !text::EqualIgnoringCase(file.name, ProfileTransfer::FileName)) // it may lie among the pictures
                folder.files.push_back(file.name);
    }
    return found;
}

const PictureFolders::Folder* PictureFolders::Find(std::string_view folder) const
{
    const auto found =
        std::ranges::find_if(folders, [&](const Folder& one) { return text::EqualIgnoringCase(one.name, folder); });
    return found == folders.end() ? nullptr : &*found;
}

bool PictureFolders::Has(std::string_view folder, std::string_view file) const
{
    const Folder* found = Find(folder);
    return found != nullptr && std::ranges::any_of(found->files, [&](const std::string& name) {
               return text::EqualIgnoringCase(name, file);
           });
}

Result<> PictureFolders::Copy(FileBatch& batch, const std::string& to, LeftOut& leftOut)
{
    for (Folder& folder : folders) {
        const std::string target = path::Join(to, folder.name);
        if (const auto made = batch.MakeFolder(target); !made)
            return made;
        batch.Sweep(target);
        std::vector<std::string> copied;
        for (const std::string& file : folder.files) {
            const std::string source = path::Join(path::Join(place, folder.name), file);
            const auto bytes = batch.Read(source);
            if (!bytes && bytes.error() != platform::error::FileTooLarge && IsPictureFile(file)) {
                unread = source;
                return std::unexpected{bytes.error()};
            }
            if (!bytes) {
                leftOut.Add(path::Join(folder.name, file));
                continue;
            }
            if (const auto written = batch.Write(*bytes, path::Join(target, file)); !written)
                return written;
            copied.push_back(file);
        }
        folder.files = std::move(copied);
    }
    return {};
}

} // namespace profiles
