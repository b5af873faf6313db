#include "tests/faults/Desk.h"

#include "app/base/StringId.h"
#include "platform/Path.h"
#include "profiles/ProfileManager.h"

#include <algorithm>

namespace tests {

namespace path = platform::path;

Desk::Desk()
{
    auto& files = system.files;
    toolkit.ThrowAwayMessages = toolkit.AnswerYes = true;
    AddTemplates({"Letters\\Formal\\Thanks.swt", "Letters\\Previews\\Memo.jpg"});
    for (const char* folder : {"C:\\Temp", "C:\\Outside\\Empty", "C:\\Elsewhere\\Empty", "C:\\Templates\\Empty"})
        files.AddFolder(folder);
    // Where a link may lead, there are files of the same names.
    for (const char* file :
         {"C:\\Outside\\precious.swt", "C:\\Outside\\Complaint.swt", "C:\\Outside\\Thanks.swt", "C:\\Outside\\List.swt",
          "C:\\Outside\\List.jpg", "C:\\Outside\\Previews\\List.jpg", "C:\\Beside\\keep.swt"})
        files.AddFile(file, "kept");
    files.AddLink(InLibrary("Linked"), "C:\\Outside");
    files.AddLink(InLibrary("Letters\\Formal\\Linked"), "C:\\Elsewhere");
    for (const char* favorite : {"Letters\\Formal\\Complaint.swt", "Letters\\Formal\\Thanks.swt", "Letters\\Memo.swt"})
        PutSetting("Browser\\Favorites", favorite, "");
    PutSetting("Browser\\Recent Files", "File 1", InLibrary("Letters\\Formal\\Thanks.swt"));
    PutSetting("Browser\\Recent Files", "File 2", InLibrary("Business\\Invoice.swt"));
    PutSetting("Options", "Profile Images Path", "C:\\Images");
    PutSetting("Profiles", "DefaultProfile", "Ann");
    PutSetting("Profiles", "CurrentProfileToUse", "Ann");
    for (const char* name : {"Ann", "Bob"}) {
        PutProfile(name, "FirstName", name);
        PutProfile(name, "City", "Rome");
        PutProfile(name, "Unknown", "theirs");
        for (const char* picture : {"Logo.jpg", "Portrait.gif"}) {
            const std::string file = "C:\\Images\\" + std::string{name} + "\\" + picture;
            files.AddFile(file, name + std::string{"'s"});
            PutProfile(name, "Local" + std::string{path::WithoutLastFour(picture)}, file);
        }
    }
    system.registry.PutString(Hive::CurrentUser, "Software\\Other", "theirs", "kept");
}

void Desk::Start()
{
    for (const char* dialog : {"frmTemplatesPath", "frmProfileInformation"}) // when a setting cannot be read
        toolkit.OnModal(dialog, [](ui::Form& form) { form.UserCloses(); });
    toolkit.FolderChoices.push_back(std::nullopt); // for the library that seems to be empty
    browser.emplace(system.AsPlatform(), toolkit, pictures);
    browser->Start("EXE", "", "", "", "");
    Settle();
    toolkit.FolderChoices.clear();
}

void Desk::Prepare(const Scenario& scenario)
{
    if (scenario.furnish)
        scenario.furnish(*this);
    if (!scenario.startsItself) {
        Start();
        toolkit.Messages.clear();
    }
    system.files.ForgetListings();
}

void Desk::Settle()
{
    toolkit.RunPosted();
    system.jobs.FinishAll();
    toolkit.RunPosted();
}

Texts Desk::KeysBelow(std::string_view line) const
{
    Texts names;
    for (const auto& [key, text] : system.registry.Snapshot())
        if (text == "key" && key.starts_with(line) && !key.substr(line.size()).contains('\\'))
            names.push_back(key.substr(line.size()));
    return names;
}

bool Desk::CouldNotRead() const
{
    return std::ranges::any_of(toolkit.Messages, [](const auto& shown) {
        return shown.text == app::StringTable::Own(app::str::EnumerationFailed);
    });
}

void Desk::PutProfile(const std::string& name, const std::string& value, const std::string& text)
{
    system.registry.PutString(Hive::CurrentUser, profiles::ProfileKey(name), value, text);
}

std::string Desk::ProfileAt(const std::string& name, const std::string& value) const
{
    return system.registry.StringAt(Hive::CurrentUser, profiles::ProfileKey(name), value);
}

std::set<std::string> Desk::ChangeWorld(std::size_t turn)
{
    auto& files = system.files;
    const auto snapshot = [&] {
        auto lines = files.Snapshot();
        lines.merge(system.registry.Snapshot());
        return lines;
    };
    const auto before = snapshot();
    std::string subject = system.faults.Log().back();
    subject = subject.substr(subject.find(' ') + 1);
    subject = subject.substr(0, subject.find(" -> "));
    const auto isOurs = [](const std::string& file) {
        return file.starts_with("C:\\Templates\\") || file.starts_with("C:\\Images\\") || file.starts_with("C:\\Out\\");
    };
    std::string file = path::Normalized(subject);
    if (!isOurs(file) || !files.Exists(file))
        file = InLibrary("Letters\\Formal");
    const auto entry = files.Stat(file);
    std::string folder = entry && entry->IsFolder() ? file : std::string{path::Parent(file)};
    if (!isOurs(folder))
        folder = InLibrary("Business\\Contracts");
    switch (turn % Changes) {
    case 0:
        files.AddFile(path::Join(folder, "Late.swt"), "late");
        break;
    case 1:
        if (files.Exists(file))
            files.Remove(file);
        break;
    case 2:
        if (files.Exists(folder))
            files.Remove(folder);
        files.AddLink(folder, "C:\\Outside");
        break;
    case 3:
        if (files.Exists(folder))
            files.SetUnreadable(unreadable = folder);
        break;
    default:
        constexpr std::string_view user = "HKCU\\";
        std::string key = subject.substr(0, subject.find(": "));
        const bool mayVanish = key.starts_with(ProfilesLine) || key.contains("\\Content\\Garden");
        key = mayVanish ? key.substr(user.size()) : path::Join(SettingsKey, "Browser\\Favorites");
        system.registry.RemoveKey(Hive::CurrentUser, key);
    }
    std::set<std::string> changed;
    const auto after = snapshot();
    for (const auto& [line, text] : before)
        if (const auto now = after.find(line); now == after.end() || now->second != text)
            changed.insert(line);
    for (const auto& [line, text] : after)
        if (!before.contains(line))
            changed.insert(line);
    return changed;
}

void Desk::Heal()
{
    system.faults.Clear();
    for (const std::string& folder : {unreadable, InLibrary("Letters\\Casual")}) // its folder may have been renamed
        if (!unreadable.empty() && system.files.Exists(folder))
            system.files.SetUnreadable(folder, {});
}

} // namespace tests
