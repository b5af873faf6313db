// Libraries of any shape: what a load removes, reads and shows.
#include "fuzz/Machine.h"

#include "platform/FileName.h"
#include "platform/Path.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <span>

using fuzz::Check;
namespace path = platform::path;

namespace {

// clang-format off
constexpr const char* folderNames[] = {"Letters", "letters", "Formal", "Previews", "PREVIEWS", "2004", "-1.5", "2004_TS",
                                       "Guides", "Guides eBook", "Create New", "My Favorites", "Get More Templates",
                                       "Tessaly Professional 3.0", "Recent Documents Search", "a.jpg", "Grüße", "文書"};
constexpr const char* fileNames[] = {"a.swt", "B.SWT", "c.ccw", "d.pdf", "e.mst", "f.prt", "x.swtx", "cover.jpg",
                                     "folder.ico", "Folder2.ICO", "readme.txt", ".swt", "swt", "Previews"};
// clang-format on

std::string TakeName(FuzzedDataProvider& input, std::span<const char* const> usual)
{
    if (input.ConsumeIntegralInRange(0, 3) != 0)
        return usual[input.ConsumeIntegralInRange<std::size_t>(0, usual.size() - 1)];
    std::string name = "n" + input.ConsumeRandomLengthString(12) + "n";
    std::ranges::replace_if(
        name, [](char c) { return static_cast<unsigned char>(c) < 0x20 || platform::file_name::Forbidden.contains(c); },
        '-');
    return name;
}

struct Made {
    bool links{}, unreadable{};
};

Made MakeLibrary(platform::memory::MemoryFileSystem& files, FuzzedDataProvider& input)
{
    Made made;
    std::string folder = fuzz::Templates;
    for (int depth = 0; input.remaining_bytes() > 0;) {
        const std::string name = input.ConsumeBool() ? TakeName(input, folderNames) : TakeName(input, fileNames);
        const std::string place = path::Join(folder, name);
        const bool isFree = !files.Exists(place);
        const int what = input.ConsumeIntegralInRange(0, 8);
        if (what < 4 && isFree && (what < 2 || depth < 6)) {
            files.AddFolder(place);
            if (what >= 2) {
                folder = place;
                ++depth;
            }
        } else if (what == 4 && depth > 0) {
            folder = path::Parent(folder);
            --depth;
        } else if (what == 5 && isFree) {
            files.AddLink(place, input.ConsumeBool() ? "C:\\Outside" : folder, input.ConsumeBool() ? 0 : 0xA000000C);
            made.links = true;
        } else if (what == 6 && depth > 0 && input.ConsumeBool()) {
            files.SetUnreadable(folder);
            made.unreadable = true;
        } else if (what > 6 && isFree) {
            files.AddFile(place, "contents of " + place);
            if (input.ConsumeIntegralInRange(0, 5) == 0)
                files.SetAttributes(place, platform::attribute::Hidden);
        }
    }
    return made;
}

/// The tree's nodes, one a line, with their parents.
std::string Nodes(const ui::TreeView& tree)
{
    std::string nodes;
    tree.ForEach([&](const ui::TreeView::Node& node) {
        nodes += (node.parent != nullptr ? node.parent->key + " > " : "") + node.key + " = " + node.text + "\n";
        return true;
    });
    return nodes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    FuzzedDataProvider input{bytes, size};
    fuzz::Machine machine;
    auto& files = machine.system.files;
    files.AddFile("C:\\Outside\\theirs.swt", "theirs");
    files.AddFolder("C:\\Outside\\Empty");
    files.SetSorted(input.ConsumeBool());
    machine.Put("Browser", "HDD Templates Path",
                {platform::ValueType::String,
                 fuzz::Templates + std::string(input.ConsumeIntegralInRange<std::size_t>(0, 2), '\\')});
    const Made made = MakeLibrary(files, input);
    const auto before = files.Snapshot();

    machine.Run([&](app::frmMain& main) {
        const auto nodes = Nodes(main.tvTreeView);
        const auto disk = files.Snapshot();
        files.ForgetListings();
        main.Library().FullLoad = true;
        main.Library().LoadTreeView();
        if (!made.links)
            for (const auto& [folder, count] : files.Listings())
                Check(count == 1, folder + " is listed again");
        // A folder that held only empty ones is empty itself now, and goes with its node; and an empty one that was
        // called like a picture hides nothing any more.
        if (!made.unreadable && disk == before && files.Snapshot() == disk)
            Check(Nodes(main.tvTreeView) == nodes, "first load:\n" + nodes + "second load:\n" + Nodes(main.tvTreeView));
        main.Library().Contents().ForEach([&](const library::Catalog::Folder& folder) {
            const std::string place = path::Join(fuzz::Templates, folder.path);
            Check(!folder.IsCategory() || files.Exists(place), "a category without a folder: " + place);
            Check(main.tvTreeView.Find(folder.key) != nullptr, "not shown: " + folder.key);
            return true;
        });
        main.RefreshLibrary();
    });

    const auto after = files.Snapshot();
    for (const auto& [place, line] : after) {
        const auto entry = before.find(place);
        Check(entry != before.end() && entry->second == line, "new or changed: " + place);
    }
    for (const auto& [place, line] : before) {
        if (after.contains(place))
            continue;
        Check(place.starts_with(fuzz::Templates + "\\") && line == "attributes 16", "gone: " + place);
        // What was in it, if anything, was an empty folder itself and went before it.
        for (auto below = before.upper_bound(place + "\\");
             below != before.end() && below->first.starts_with(place + "\\"); ++below)
            Check(!after.contains(below->first), "gone with something in it: " + place);
    }
    return 0;
}
