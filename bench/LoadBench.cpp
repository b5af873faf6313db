// How much the browser adds to what the disk costs anyway: a full load of a library against one enumeration of the
// same tree, and a fill of the list against one enumeration of the same folder.
#include "bench/Disk.h"
#include "bench/Measure.h"

#include "app/base/Program.h"
#include "browser/LibraryRows.h"
#include "browser/ListPane.h"
#include "library/TemplateFiles.h"
#include "library/TemplateLibrary.h"
#include "pictures/memory/MemoryPictures.h"
#include "ui/Form.h"
#include "ui/ListView.h"
#include "ui/TreeView.h"
#include "ui/headless/HeadlessToolkit.h"
#ifdef _WIN32
#include "ui/win32/Win32Toolkit.h"
#endif

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace bench {
namespace {

const pictures::memory::MemoryPictures pictures; // none is looked at here

constexpr int FoldersACategory = 25; ///< the category and its sub-folders
constexpr const char* Category = "Category";
constexpr const char* LargeFolder = "Large";
constexpr std::string_view Endings[] = {".swt", ".ccw", ".prt", ".mst", ".txt"};

struct Size {
    int folders{500}; ///< the folder table holds no more
    int filesAFolder{200};
    int templatesInList{10'000};
    int rounds{11};
};

std::string Numbered(const std::string& path, int number)
{
    return path + " " + std::to_string(number);
}

void AddFiles(Disk& disk, const std::string& folder, int count, std::span<const std::string_view> endings)
{
    for (int i = 0; i < count; ++i)
        disk.AddFile(Numbered(folder + "\\Template", i).append(endings[static_cast<std::size_t>(i) % endings.size()]));
}

/// Gives the paths of all folders.
std::vector<std::string> AddLibrary(Disk& disk, const std::string& library, const Size& size)
{
    std::vector<std::string> folders;
    disk.AddFolder(library);
    for (int i = 0; i < size.folders; ++i) {
        std::string folder = Numbered(library + "\\" + Category, i / FoldersACategory);
        if (i % FoldersACategory != 0)
            folder = Numbered(folder + "\\Sub-folder", i % FoldersACategory);
        disk.AddFolder(folder);
        AddFiles(disk, folder, size.filesAFolder, Endings);
        folders.push_back(std::move(folder));
    }
    return folders;
}

/// Looks again and again whether another thread is ready.
struct Headless final : ui::HeadlessToolkit {
    Headless()
    {
        Elapse = [](std::chrono::milliseconds) {
            std::this_thread::yield();
            return true;
        };
    }
};

/// The part of the main window that a load and a fill need.
class BenchForm final : public ui::Form {
public:
    BenchForm(app::Program& program, const std::string& templatesPath)
        : Form{program.toolkit, "BenchForm", Style::Sizable}
    {
        program.state.SettingsAppName = "Tessaly bench"; // nobody's settings
        program.state.TemplatesPath = templatesPath + "\\\\";
        library.emplace(tree, program.files, program.platform.shell, program.platform.locale, program.settings,
                        program.messages, program.progress, program.strings, program.state);
        tabs.emplace(program.settings, program.strings, strip);
        reader.emplace(library->Contents(), program.files, program.state, program.settings);
        thumbnails.emplace(program.files, program.state, *reader);
        pane.emplace(list, program.files, *tabs, status, program.toolkit, program.messages, program.strings,
                     program.platform.clock, program.platform.locale);
        strip.SetVisible(false);
        status.SetVisible(false);
        SetPlacement({1000, 1000, 9700, 7200});
        tree.SetBounds({0, 0, 3000, 6000});
        list.SetBounds({3000, 0, 6000, 6000});
        list.SetView(ui::ListView::View::Details);
    }

    void Load()
    {
        library->FullLoad = true;
        library->LoadTreeView();
    }
    void Fill() { pane->Show(std::make_shared<browser::CategoryRows>(*reader, *thumbnails, LargeFolder)); }

    ui::TreeView tree{*this};
    ui::ListView list{*this};
    ui::TabStrip strip{*this};
    ui::StatusBar status{*this};

private:
    std::optional<library::TemplateLibrary> library;
    std::optional<browser::FileTypeTabs> tabs;
    std::optional<browser::TemplateReader> reader;
    std::optional<browser::Thumbnails> thumbnails;
    std::optional<browser::ListPane> pane;
};

void Expect(std::size_t count, std::size_t expected, const char* what)
{
    if (count != expected)
        throw std::runtime_error{std::string{what} + ": " + std::to_string(count) + " instead of " +
                                 std::to_string(expected)};
}

struct Bounds {
    double load, fill;
};

bool MeasureLoad(Disk& disk, ui::Toolkit& toolkit, bool shown, const Size& size, double bound)
{
    const std::string templates = disk.Root() + "\\Library";
    const auto folders = AddLibrary(disk, templates, size);
    app::Program program{disk.AsPlatform(), toolkit, pictures};
    BenchForm form{program, templates};
    if (shown)
        form.Show();

    std::size_t entries{}, probed{};
    const auto least = LeastTimes(size.rounds, {[&] { entries = disk.Enumerate(templates); }, [&] { form.Load(); },
                                                [&] {
                                                    probed = disk.Enumerate(templates);
                                                    for (const std::string& folder : folders)
                                                        for (const auto ending : library::TemplateExtensions)
                                                            probed += disk.Search(folder, ending);
                                                }});
    const auto folderCount = folders.size();
    const auto fileCount = folderCount * static_cast<std::size_t>(size.filesAFolder);
    constexpr std::size_t specialNodes = 3;
    Expect(entries, folderCount + fileCount, "entries enumerated");
    Expect(probed, entries + fileCount / std::size(Endings) * 4, "entries met by the probes");
    Expect(form.tree.Count(), folderCount + specialNodes, "nodes in the tree");
    const bool kept = Print("full load / bare enumeration", least[1], least[0], bound);
    Print("a probe a pattern / bare enumeration", least[2], least[0], 0);
    return kept;
}

bool MeasureFill(Disk& disk, ui::Toolkit& toolkit, bool shown, const Size& size, double bound)
{
    const std::string templates = disk.Root() + "\\List";
    const std::string folder = templates + "\\" + LargeFolder;
    disk.AddFolder(templates);
    disk.AddFolder(folder);
    AddFiles(disk, folder, size.templatesInList, library::TemplateExtensions);
    app::Program program{disk.AsPlatform(), toolkit, pictures};
    BenchForm form{program, templates};
    if (shown)
        form.Show();
    form.Load();

    std::size_t entries{};
    const auto least = LeastTimes(size.rounds, {[&] { entries = disk.Enumerate(folder); }, [&] { form.Fill(); }});
    Expect(entries, static_cast<std::size_t>(size.templatesInList), "entries enumerated");
    Expect(static_cast<std::size_t>(form.list.Rows()), entries, "rows in the list");
    return Print("list fill / bare enumeration", least[1], least[0], bound);
}

/// One load and nothing else, for a profiler.
void LoadOnce(Disk& disk, int folders, int filesAFolder)
{
    const std::string templates = disk.Root() + "\\Library";
    AddLibrary(disk, templates, {.folders = folders, .filesAFolder = filesAFolder});
    Headless toolkit;
    app::Program program{disk.AsPlatform(), toolkit, pictures};
    BenchForm form{program, templates};
    form.Load();
    Expect(form.tree.Count(), static_cast<std::size_t>(folders) + 3, "nodes in the tree");
}

/// One list filled and nothing else, for a profiler.
void FillOnce(Disk& disk, int templatesInList)
{
    const std::string templates = disk.Root() + "\\List";
    disk.AddFolder(templates);
    disk.AddFolder(templates + "\\" + LargeFolder);
    AddFiles(disk, templates + "\\" + LargeFolder, templatesInList, library::TemplateExtensions);
    Headless toolkit;
    app::Program program{disk.AsPlatform(), toolkit, pictures};
    BenchForm form{program, templates};
    form.Load();
    form.Fill();
    Expect(static_cast<std::size_t>(form.list.Rows()), static_cast<std::size_t>(templatesInList), "rows in the list");
}

/// Loads of a library that is there, by the rules of any load: folders in it that are empty go.
void LoadFolder(Disk& disk, const std::string& templates, int rounds)
{
    Headless toolkit;
    app::Program program{disk.AsPlatform(), toolkit, pictures};
    BenchForm form{program, templates};
    std::printf("full load of %s: %.1f ms\n", templates.c_str(), LeastTimes(rounds, {[&] { form.Load(); }})[0]);
}

int Run(std::span<char*> arguments)
{
    const std::string mode = arguments.size() > 1 ? arguments[1] : "";
    const auto disk = MakeDisk();
    if (mode == "--once" && arguments.size() == 4) {
        LoadOnce(*disk, std::atoi(arguments[2]), std::atoi(arguments[3]));
        return 0;
    }
    if (mode == "--fill" && arguments.size() == 3) {
        FillOnce(*disk, std::atoi(arguments[2]));
        return 0;
    }
    if (mode == "--folder" && arguments.size() == 4) {
        LoadFolder(*disk, arguments[2], std::atoi(arguments[3]));
        return 0;
    }

    const Size size;
    const Bounds bounds = disk->IsReal() ? Bounds{1.3, 1.5} : Bounds{};
    Headless headless;
    ui::Toolkit* toolkit = &headless;
    bool shown = false;
#ifdef _WIN32
    std::optional<ui::win32::Win32Toolkit> windows;
    if (mode == "--windows") {
        toolkit = &windows.emplace();
        disk->Wake = [&](std::function<void()> task) { windows->Post(std::move(task)); };
        shown = true;
    }
#endif
    if (toolkit == &headless && !mode.empty()) {
        std::fprintf(stderr,
                     "usage: load_bench [--windows | --once FOLDERS FILES | --fill FILES | --folder PATH ROUNDS]\n");
        return 2;
    }
    const bool loadKept = MeasureLoad(*disk, *toolkit, shown, size, bounds.load);
    const bool fillKept = MeasureFill(*disk, *toolkit, shown, size, bounds.fill);
    return loadKept && fillKept ? 0 : 1;
}

} // namespace
} // namespace bench

int main(int argc, char** argv)
{
    try {
        return bench::Run({argv, static_cast<std::size_t>(argc)});
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "load_bench: %s\n", failure.what());
        return 2;
    }
}
