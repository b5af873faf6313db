// Search over a large library beside one bare enumeration of the same tree: the first use after a start, a keystroke,
// what the documents say of themselves the first and the second time, the longest stretch without a message, and
// memory.
#include "bench/Disk.h"
#include "bench/Measure.h"

#include "browser/FileTypeTabs.h"
#include "browser/TemplateList.h"
#include "browser/TemplateReader.h"
#include "browser/Thumbnails.h"
#include "platform/Path.h"
#include "platform/win32/System.h"
#include "search/Finder.h"
#include "search/ResultRows.h"
#include "ui/headless/HeadlessToolkit.h"

#include <malloc.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <mutex>
#include <new>
#include <string>
#include <vector>

namespace {

std::atomic<std::size_t> allocated{}; ///< bytes, as they were asked for

} // namespace

// Counts what is in use. Never inlined: the compiler would see a plain block given to delete, and warn.
[[gnu::noinline]] void* operator new(std::size_t size)
{
    void* const block = std::malloc(size);
    if (block == nullptr)
        throw std::bad_alloc{};
    allocated += _msize(block);
    return block;
}
[[gnu::noinline]] void operator delete(void* block) noexcept
{
    if (block == nullptr)
        return;
    allocated -= _msize(block);
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept
{
    operator delete(block);
}

namespace bench {
namespace {

using Clock = std::chrono::steady_clock;

double Since(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// The window's thread as far as jobs know it: what they post is done here, one after the other.
class Window {
public:
    void Post(std::function<void()> task)
    {
        {
            const std::lock_guard lock{mutex};
            tasks.push_back(std::move(task));
        }
        came.notify_one();
    }
    /// Until this holds; the longest of what was done, in milliseconds.
    template <class Condition>
    double Run(Condition until)
    {
        double longest = 0;
        while (!until()) {
            std::function<void()> task;
            {
                std::unique_lock lock{mutex};
                came.wait(lock, [this] { return !tasks.empty(); });
                task = std::move(tasks.front());
                tasks.pop_front();
            }
            const auto start = Clock::now();
            task();
            longest = std::max(longest, Since(start));
        }
        return longest;
    }

private:
    std::mutex mutex;
    std::condition_variable came;
    std::deque<std::function<void()>> tasks;
};

constexpr int Folders = 500, FilesAFolder = 20;
constexpr const char* Words[] = {"Invoice", "Letter", "Rechnung", "Kündigung", "請求書", "Договор", "Memo", "Budget"};

std::vector<search::Finder::FolderToRead> AddLibrary(Disk& disk)
{
    std::vector<search::Finder::FolderToRead> folders;
    const std::string library = disk.Root() + "\\library";
    disk.AddFolder(library);
    for (int i = 0; i < Folders; ++i) {
        std::string category = "Category " + std::to_string(i);
        const std::string path = platform::path::Join(library, category);
        disk.AddFolder(path);
        for (int file = 0; file < FilesAFolder; ++file) {
            const std::string name = std::string{Words[static_cast<std::size_t>(i + file) % std::size(Words)]} +
                                     " for department " + std::to_string(file);
            (void)disk.AsPlatform().files.Write(platform::path::Join(path, name + ".swt"),
                                                "{\\rtf1{\\info{\\title " + name + "}{\\author Somebody}}text}");
        }
        folders.push_back({std::move(category), path, {}});
    }
    return folders;
}

/// The list: it shows the first rows at once, and takes the others between messages.
class List final : public browser::RowSink {
public:
    explicit List(const platform::Platform& platform) : rows{platform.clock, platform.locale} {}
    void Add(browser::TemplateRows piece) override { rows.Add(std::move(piece)); }
    bool GoOn() override { return false; }

private:
    browser::TemplateList rows;
};

/// One keystroke in the search box, until its first rows stand; how many it finds.
class Keystroke {
public:
    Keystroke(search::Finder& finder, const platform::Platform& platform) : finder{finder}, platform{platform} {}
    std::size_t operator()(const char* text)
    {
        finder.SetText(text);
        search::Finder::Found found = finder.Search();
        const std::size_t count = found.entries.size();
        search::ResultRows rows{{.index = finder.Contents(),
                                 .entries = std::move(found.entries),
                                 .searched = found.searched,
                                 .types = search::ResultRows::Types{}.set(),
                                 .isComplete = false},
                                thumbnails,
                                strings};
        List list{platform};
        (void)rows.ReadRows(browser::FileTypeTabs::AllTab, list);
        return count;
    }

private:
    search::Finder& finder;
    const platform::Platform& platform;
    app::StartUpState state;
    app::StringTable strings{platform.resources};
    library::Catalog catalog{strings, platform.files, platform.locale};
    app::Settings settings{platform.registry, state};
    ui::HeadlessToolkit toolkit;
    app::LoadProgress progress{toolkit};
    app::PatientFiles files{platform.files, platform.jobs, toolkit, progress};
    browser::TemplateReader reader{catalog, files, state, settings};
    browser::Thumbnails thumbnails{platform.files, state, reader};
};

int Run()
{
    const auto disk = MakeDisk();
    const auto folders = AddLibrary(*disk);
    Window window;
    platform::win32::System system{[&](std::function<void()> task) { window.Post(std::move(task)); }};
    const platform::Platform platform = system.AsPlatform();
    library::DocumentFacts facts{platform.files, platform.locale, platform.jobs};
    constexpr int rounds = 5;
    const double bare =
        LeastTimes(rounds, {[&] { (void)disk->Enumerate(platform::path::Join(disk->Root(), "library")); }})[0];
    bool kept = true;

    const std::size_t before = allocated;
    search::Finder finder{platform.files, platform.locale, platform.clock, platform.jobs, facts};
    const std::size_t all = std::size_t{Folders} * FilesAFolder;
    double first = 1e9, longest = 0;
    for (int round = 0; round < rounds; ++round) {
        const auto start = Clock::now();
        finder.Read(folders);
        longest = std::max(longest, window.Run([&] { return finder.Contents()->Entries().size() == all; }));
        (void)finder.Contents()->InOrder();
        first = std::min(first, Since(start));
    }
    kept = Print("names of 10,000 templates, first use", first, bare, 1.2) && kept;
    const std::size_t names = allocated - before;

    Keystroke keystroke{finder, platform};
    for (const char* text : {"i", "inv", "invoice department", "kundigung", "invoise", "請求"}) {
        std::size_t found = 0;
        const auto times = LeastTimes(rounds, {[&] { found = keystroke(text); }});
        kept = Print(("\"" + std::string{text} + "\" finds " + std::to_string(found)).c_str(), times[0], bare, 0.1) &&
               times[0] <= 16 && kept;
    }

    for (const char* time : {"first", "second"}) {
        const auto start = Clock::now();
        finder.SetCriteria(
            search::Criteria::Of(search::Properties[0], search::Condition::Contains, "memo", platform.locale));
        longest = std::max(longest, window.Run([&] { return !finder.IsReading(); }));
        Print(("a property of all documents, the " + std::string{time} + " time").c_str(), Since(start), bare, 0);
    }
    std::printf("longest stretch on the window's thread %.1f ms (at most 50)\n", longest);
    std::printf("memory a template: %zu bytes for its name, %zu with what it says (at most 600)\n", names / all,
                (allocated - before) / all);
    return kept && longest <= 50 && (allocated - before) / all <= 600 ? 0 : 1;
}

} // namespace
} // namespace bench

int main()
{
    return bench::Run();
}
