#include "tests/support/Invariants.h"

#include "platform/Path.h"

#include <algorithm>

namespace tests {
namespace {

using Lines = std::map<std::string, std::string>;

constexpr std::size_t MostWhenNothingWorks = 5; ///< messages of one scenario, in which the user acts several times

const std::string Ours = "HKCU\\" + std::string{SettingsKey} + "\\";

/// A profile without a value is as one whose value is empty.
std::string At(const Lines& lines, const std::string& line)
{
    const auto found = lines.find(line);
    return found == lines.end() || (found->second == "type 1: " && line.starts_with(ProfilesLine)) ? "(none)"
                                                                                                   : found->second;
}

/// Of a line of a snapshot, what stands behind type or attributes.
std::string TextOf(const std::string& line)
{
    const auto colon = line.find(": ");
    return colon == std::string::npos ? line : line.substr(colon + 2);
}

bool IsBelow(const std::string& path, const std::string& folder)
{
    return path == folder || path.starts_with(folder + "\\") || path.starts_with(folder + ": ");
}

bool Has(const Texts& texts, const std::string& text)
{
    return std::ranges::find(texts, text) != texts.end();
}

bool IsTemporary(const std::string& path)
{
    return path.contains("\\~");
}

/// A page that says what could be found out.
bool IsReport(const std::string& path)
{
    return path.ends_with(".htm") || path == "C:\\Temp\\TSBrowser";
}

/// What the program keeps for itself, as it likes.
bool IsOwnSetting(const std::string& line)
{
    // The last ones: what is asked beside, and a mark that counts as long as its process lives.
    constexpr std::array own{"Browser",
                             "Options",
                             "Customization",
                             "Profiles: PromptForProfile",
                             "Profiles: ShowAutoComplete",
                             "Content: Pack Installer"};
    return std::ranges::any_of(own, [&](const std::string name) { return IsBelow(line, Ours + name); });
}

/// The lines that the world has changed hide what is below them.
bool IsByWorld(const FaultRun& run, const std::string& line, const std::string& was, const std::string& is)
{
    if (run.byWorld.empty())
        return false;
    const bool isOutside = line.starts_with("C:\\Outside\\");
    const auto isOf = [&](const std::string& changed) { // below it, or the folder that it was the last in
        return IsBelow(line, changed) || (was == "attributes 16" && is == "(none)" && IsBelow(changed, line));
    };
    return std::ranges::any_of(run.byWorld, isOf) || line.ends_with("\\Late.swt") ||
           is.contains(" -> ") ||            // wherever its folder is moved
           (isOutside && was == "(none)") || // put where a link leads now
           (isOutside && run.IsTooLate());
}

template <class Act>
void ForEachLine(const Lines& one, const Lines& other, const Act& act)
{
    for (const auto& [line, text] : one)
        act(line);
    for (const auto& [line, text] : other)
        if (!one.contains(line))
            act(line);
}

Texts NamesOf(const Texts& paths)
{
    Texts names;
    for (const std::string& path : paths)
        names.emplace_back(platform::path::Name(path));
    return names;
}

/// None of `list` twice, and all in the order of one of these. A folder on the way to another name has two.
void ExpectOrdered(const Texts& list, const Texts& before, const Texts& after, bool isSameWorld)
{
    EXPECT_EQ(std::set(list.begin(), list.end()).size(), list.size()) << testing::PrintToString(list);
    for (const std::string& path : list)
        EXPECT_TRUE(Has(before, path) || Has(after, path) || !isSameWorld) << path;
    const auto isOrdered = [&](const Texts& other) {
        auto at = other.begin();
        return std::ranges::all_of(list, [&](const std::string& path) {
            return !Has(other, path) || (at = std::find(at, other.end(), path)) != other.end();
        });
    };
    EXPECT_TRUE(isOrdered(before) || isOrdered(after)) << testing::PrintToString(list);
}

} // namespace

Photograph::Photograph(TestMachine& machine)
    : disk{machine.system.files.Snapshot()}, registry{machine.system.registry.Snapshot()},
      favorites{machine.StoredFavorites()}
{
    for (const auto& [line, data] : registry) {
        if (!line.starts_with(ProfilesLine))
            continue;
        const std::string rest = line.substr(ProfilesLine.size());
        const auto colon = rest.find(": ");
        auto& values = profiles[rest.substr(0, colon)];
        if (colon == std::string::npos)
            continue;
        const std::string text = TextOf(data), name = rest.substr(colon + 2);
        const auto picture = name.starts_with("Local") ? disk.find(text) : disk.end();
        values[name] = picture == disk.end() ? text : "picture " + TextOf(picture->second);
    }
    for (int number = 1; number <= 12; ++number)
        if (const auto file = machine.Setting("Browser\\Recent Files", "File " + std::to_string(number));
            file != "(none)" && !Has(recentFiles, file)) // as it is read: a list that is being stored has one twice
            recentFiles.push_back(file);
    for (const ui::MessageBox& message : machine.toolkit.Messages)
        if (message.icon != Icon::Question)
            told.push_back(message.text);
}

bool FaultRun::CouldRead() const
{
    return std::ranges::none_of(std::array{".List ", ".Stat ", ".SubKeys ", ".ValueNames ", "Jobs.", ".FolderPath "},
                                [&](const char* reading) { return call.contains(reading); });
}

bool Invariants::IsTouched(std::string_view line) const
{
    return std::ranges::any_of(scope.touched, [&](const auto& touched) { return line.starts_with(touched); });
}

void Invariants::CheckWhatIsLeft(const TestMachine& machine, const Photograph& now, const FaultRun& run) const
{
    CheckProfiles(now, run);
    CheckLines(now, run);
    CheckMessages(now, run);
    CheckFavorites(now, run);
    for (const std::string& target : machine.system.shell.Opened())
        EXPECT_TRUE(target.starts_with("C:\\Templates\\") || target.starts_with("http://tessaly.example/") ||
                    target == "C:\\Windows\\regedit.exe" || target == "C:\\New.exe")
            << target << " was opened";
    for (const auto& program : machine.system.shell.Runs())
        EXPECT_TRUE(program.application == "C:\\Windows\\regedit.exe" || program.application == "C:\\New.exe" ||
                    program.application == "C:\\clc.exe")
            << program.application << " was started";
}

void Invariants::CheckProfiles(const Photograph& now, const FaultRun& run) const
{
    for (const auto& [name, values] : before.profiles) {
        SCOPED_TRACE("profile " + name);
        const bool isItsOwn = name == scope.profile;
        const auto isOfIt = [&](const std::string& line) {
            return line.contains("\\" + name) || (isItsOwn && !scope.newName.empty() && line.contains(scope.newName));
        };
        if (std::ranges::any_of(run.byWorld, isOfIt))
            continue;
        auto found = now.profiles.find(name);
        if (found == now.profiles.end() && isItsOwn && !scope.newName.empty())
            found = now.profiles.find(scope.newName);
        if (isItsOwn && scope.deletesProfile && (found == now.profiles.end() || run.trouble != Trouble::OneCallFails))
            continue;
        if (found == now.profiles.end()) {
            ADD_FAILURE() << "is gone";
            continue;
        }
        for (const auto& [value, text] : values) {
            const std::string is = At(found->second, value);
            const auto full = after.profiles.find(name);
            EXPECT_TRUE(is == text || (isItsOwn && scope.edits.contains(value) && full != after.profiles.end() &&
                                       is == At(full->second, value)))
                << value << " is " << is << " instead of " << text;
        }
    }
}

void Invariants::CheckLines(const Photograph& now, const FaultRun& run) const
{
    const bool mayBeHalf = run.trouble == Trouble::NothingWorksFromThereOn || run.trouble == Trouble::TheProcessDies;
    bool isOld = true, isNew = true; // what was exported
    const auto check = [&](const Lines& was, const Lines& is, const Lines& full, const std::string& line) {
        const std::string found = At(is, line);
        if (IsByWorld(run, line, At(was, line), found))
            return;
        if (line.starts_with("C:\\Out\\Set\\") && !IsTemporary(line)) {
            isOld &= found == At(was, line);
            isNew &= found == At(full, line);
        }
        const bool isAllowed =
            IsTouched(line) && (found == At(full, line) || IsReport(line) || (mayBeHalf && IsTemporary(line)));
        EXPECT_TRUE(found == At(was, line) || isAllowed) << line << " is " << found << " instead of " << At(was, line);
    };
    ForEachLine(before.disk, now.disk, [&](const auto& line) { check(before.disk, now.disk, after.disk, line); });
    ForEachLine(before.registry, now.registry, [&](const auto& line) {
        if (line.starts_with(Ours) && !IsOwnSetting(line))
            check(before.registry, now.registry, after.registry, line);
    });
    EXPECT_TRUE(mayBeHalf || isOld || isNew) << "half an export";
}

void Invariants::CheckMessages(const Photograph& now, const FaultRun& run) const
{
    Texts failures = now.told;
    for (const std::string& text : after.told) // what is told when all goes well
        if (const auto found = std::ranges::find(failures, text); found != failures.end())
            failures.erase(found);
    const std::size_t most = run.trouble == Trouble::OneCallFails ? scope.messages : MostWhenNothingWorks;
    EXPECT_LE(failures.size(), run.WentWell() ? 0 : most) << testing::PrintToString(failures);
    if (run.trouble == Trouble::TheProcessDies || run.trouble == Trouble::TheWorldChanges)
        return;
    const bool mayBeHalf = run.trouble == Trouble::NothingWorksFromThereOn;
    const auto differs = [&](const Photograph& other) {
        std::string lines;
        for (const auto& [is, should] : {std::pair{&now.disk, &other.disk}, {&now.registry, &other.registry}})
            ForEachLine(*is, *should, [&](const std::string& line) {
                const bool isProtected = line.starts_with(ProfilesLine) || !line.starts_with("HKCU\\") ||
                                         (line.starts_with(Ours) && !IsOwnSetting(line));
                const bool isEmptyFolder = line.starts_with("C:\\Images\\") && At(*is, line) == "attributes 16";
                if (isProtected && !IsReport(line) && !isEmptyFolder && At(*is, line) != At(*should, line) &&
                    !(mayBeHalf && IsTemporary(line)))
                    lines += "\n  " + line + ": " + At(*is, line);
            });
        return lines;
    };
    if (failures.empty() && !scope.failsSilently) {
        EXPECT_EQ(differs(after), "") << "nothing was told, but not all was done";
    } else if (!failures.empty() && scope.isAllOrNothing && run.trouble == Trouble::OneCallFails) {
        EXPECT_TRUE(differs(before).empty() || differs(after).empty()) << "half a change" << differs(before);
    }
}

void Invariants::CheckFavorites(const Photograph& now, const FaultRun& run) const
{
    ExpectOrdered(now.favorites, before.favorites, after.favorites, run.byWorld.empty());
    // A favourite that neither the user nor the world has removed is there by one of its names.
    for (const std::string& name : NamesOf(before.favorites))
        EXPECT_TRUE(!run.byWorld.empty() || !Has(NamesOf(after.favorites), name) || Has(NamesOf(now.favorites), name))
            << name << " is no favourite any more";
}

void Invariants::CheckRecentFiles(const app::frmMain& main, const FaultRun& run) const
{
    EXPECT_LE(main.RecentFiles().List().size(), 10u);
    ExpectOrdered(main.RecentFiles().List(), before.recentFiles, after.recentFiles, run.byWorld.empty());
}

Texts Invariants::CheckViews(TestMachine& machine, app::frmMain& main, const FaultRun& run) const
{
    Texts inMemory = main.Favorites().FavoritesList();
    const Texts tree = TreeTexts(main.tvTreeView), list = ListTexts(main.lvListView);
    machine.system.faults.ForgetCalls();
    main.UserPresses(ui::Plain(ui::KeyCode::F5));
    const auto* selected = main.tvTreeView.Selected(); // its files are read anew for the list
    std::set<std::string> listed;
    for (const std::string& call : machine.system.faults.Log())
        EXPECT_TRUE(!call.starts_with("FileSystem.List ") || listed.insert(call).second ||
                    (selected != nullptr && call.ends_with("\\" + selected->key)))
            << call << " again";
    CheckRecentFiles(main, run);
    const bool isFresh = run.trouble == Trouble::OneCallFails && run.CouldRead();
    const std::string library = machine.Setting("Browser", "HDD Templates Path");
    if (isFresh) {
        EXPECT_EQ(tree, TreeTexts(main.tvTreeView));
        EXPECT_EQ(list, ListTexts(main.lvListView));
        Texts stored = machine.StoredFavorites();
        // A favourite whose file could not be looked for is kept until the next start.
        for (Texts* names : {&inMemory, &stored})
            std::erase_if(*names,
                          [&](const auto& name) { return !machine.system.files.Exists(library + "\\" + name); });
        std::ranges::sort(inMemory);
        std::ranges::sort(stored);
        EXPECT_EQ(inMemory, stored);
    }
    return TreeTexts(main.tvTreeView);
}

void Invariants::CheckNextStart(TestMachine& machine, const FaultRun& run, const std::optional<Texts>& shown)
{
    const auto [known, isNew] =
        started.try_emplace(Left{machine.system.files.Snapshot(), machine.system.registry.Snapshot()});
    if (!isNew && shown.value_or(known->second) == known->second)
        return;
    ScriptedToolkit toolkit; // fails for any message and any dialog
    toolkit.Elapse = machine.toolkit.Elapse;
    app::Browser browser{machine.system.AsPlatform(), toolkit, machine.pictures};
    browser.Start("EXE", "", "", "", "");
    toolkit.RunPosted();
    machine.system.jobs.FinishAll();
    if (browser.Main() == nullptr || !browser.Main()->IsOpen()) {
        ADD_FAILURE() << "the next start opens no window";
        return;
    }
    const Texts& tree = known->second = TreeTexts(browser.Main()->tvTreeView);
    EXPECT_EQ(shown.value_or(tree), tree);
    CheckRecentFiles(*browser.Main(), run);
    const std::string library = machine.Setting("Browser", "HDD Templates Path");
    for (const auto& [path, line] : machine.system.files.Snapshot(library))
        if (const std::string folder{platform::path::Parent(path)};
            path.ends_with(".swt") && folder != library && !folder.ends_with("\\Previews")) {
            EXPECT_TRUE(std::ranges::any_of(
                tree, [&](const std::string& node) { return node.ends_with(platform::path::Name(folder)); }))
                << folder << " is not shown";
        }
    for (const std::string& name : browser.Main()->Favorites().FavoritesList())
        EXPECT_TRUE(machine.system.files.Exists(machine.InLibrary(name))) << name << " is a favourite, and not there";
    const Lines registry = machine.system.registry.Snapshot();
    ForEachLine(before.registry, registry, [&](const std::string& line) {
        if (!line.starts_with(Ours) && !line.starts_with(ProfilesLine) && !IsTouched(line)) {
            EXPECT_EQ(At(registry, line), At(before.registry, line)) << line << " is not ours";
        }
    });
    browser.Main()->Close();
    toolkit.RunPosted();
}

} // namespace tests
