// Everything that the program does, as the user does it.
#include "browser/DocumentPropertiesForm.h"
#include "browser/frmRecentDocuments.h"
#include "online/frmNotifyMessage.h"
#include "packs/frmContentPackManager.h"
#include "profiles/EnterSenderInformationForm.h"
#include "profiles/RegistryText.h"
#include "profiles/frmImages.h"
#include "profiles/frmManageProfiles.h"
#include "profiles/frmNewProfile.h"
#include "profiles/frmOptionsImportExport.h"
#include "profiles/frmRenameProfile.h"
#include "tests/faults/Desk.h"
#include "tests/packs/PackBuilder.h"

#include <algorithm>

namespace tests {
namespace {

using profiles::EnterSenderInformationForm;
using profiles::frmManageProfiles;

const std::string Content = "HKCU\\" + std::string{SettingsKey} + "\\Content";
const std::string ProfileSettings = "HKCU\\" + std::string{SettingsKey} + "\\Profiles";
const std::string TempFolder = "C:\\Temp\\TSBrowser", AnnsPictures = "C:\\Images\\Ann";
const std::string Empty = "C:\\Templates\\Empty", None = "C:\\Templates\\Business\\None";
const std::string Formal = "C:\\Templates\\Letters\\Formal", Garden = "C:\\Templates\\Garden";
const std::string Theirs = "C:\\Templates\\Shared\\Theirs.swt";

std::string ProfileLine(const std::string& name)
{
    return std::string{ProfilesLine} + name;
}

// The library.

/// A user who presses these keys and chooses these commands while the window is there.
void Use(Desk& desk, const std::vector<std::function<void(app::frmMain&)>>& acts)
{
    for (const auto& act : acts)
        if (desk.IsOpen())
            act(desk.Main());
    desk.Settle();
}

auto Select(const char* node)
{
    return [node](app::frmMain& main) { main.tvTreeView.UserSelects(node); };
}
auto Choose(const char* command)
{
    return [command](app::frmMain& main) { main.Commands().Run(command); };
}
/// The row of this name, when it could be read.
auto WithRow(const char* name, void (ui::ListView::*act)(int))
{
    return [name, act](app::frmMain& main) {
        const Texts rows = ListTexts(main.lvListView);
        if (const auto row = std::ranges::find(rows, name); row != rows.end())
            (main.lvListView.*act)(static_cast<int>(row - rows.begin()));
    };
}
auto Activate(const char* name)
{
    return WithRow(name, &ui::ListView::UserActivates);
}
auto SelectRow(const char* name)
{
    return WithRow(name, &ui::ListView::UserSelects);
}
void Close(app::frmMain& main)
{
    main.Close();
}

void StartToEnd(Desk& desk)
{
    desk.Start();
    Use(desk, {Select("Letters"), Activate("Memo"), Choose("mnuRefreshTV"), Choose("mnuViewThumbnails"),
               Select("My Favorites"), Close});
    EXPECT_FALSE(desk.browser->IsRunning());
}

void AddEmptyFolders(Desk& desk)
{
    desk.system.files.AddFolder(desk.InLibrary("Business\\None\\Deeper")); // each load removes one of them
}

void AddSpreadsheets(Desk& desk)
{
    desk.system.files.AddFile("C:\\clc.exe");
    desk.system.files.AddFolder("C:\\Users\\User\\Documents");
    desk.system.registry.PutString(
        Hive::LocalMachine, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\CLC.EXE", "", "C:\\clc.exe");
}

void RenameFolder(Desk& desk)
{
    Use(desk, {Select("Letters\\Formal"), Choose("mnupopRenamefolder"),
               [](app::frmMain& main) { main.tvTreeView.UserEndsLabelEdit("Casual"); }});
}

void ShowEverything(Desk& desk)
{
    Use(desk, {Select("Letters"), Choose("mnuViewPreviewPane"), SelectRow("Memo"), Choose("mnuViewDetails"),
               Choose("mnuViewThumbnails"), Select("My Favorites"), Choose("mnuViewList"), Select("Business"),
               SelectRow("Invoice"), Choose("mnuViewLargeIcons"), Choose("mnuViewPreviewPane")});
}

void DropOnFavorites(Desk& desk)
{
    Use(desk, {Select("Business"), SelectRow("Budget"),
               [](app::frmMain& main) { main.tvTreeView.UserDrops("My Favorites", main.lvListView); },
               Select("My Favorites")});
}

void ForgetRecentDocuments(Desk& desk)
{
    desk.In<browser::frmRecentDocuments>("frmRecentDocuments", "mnuRecentDocuments", [&](auto& form) {
        desk.Settle();
        form.lvDocuments.UserSelects(0);
        form.cmdRemove.UserClicks();
        form.cmdClear.UserClicks();
    });
}

void ChooseTemplatesPath(Desk& desk)
{
    desk.toolkit.FolderChoices.push_back("C:\\Second");
    Use(desk, {Choose("mnuTemplatesPath")});
    desk.toolkit.FolderChoices.clear();
    if (desk.Setting("Browser", "HDD Templates Path") != "C:\\Second") // as long as the window, it is used all the same
        Use(desk, {Close});
}

void Find(Desk& desk, const std::function<void(search::FindControls&)>& act)
{
    Use(desk, {Choose("mnuEditFind"), [&](app::frmMain& main) {
                   desk.Settle();
                   act(main.findControls);
                   desk.Settle();
                   Activate("Memo")(main);
                   main.findControls.cmdClose.UserClicks();
               }});
}

void FindReview(search::FindControls& find)
{
    find.cboProperty.UserSelects(0);
    find.txtValue.SetText("review");
    find.cmdFindNow.UserClicks();
}

void AddDocuments(Desk& desk)
{
    for (const char* document : {"C:\\Beside\\a.ccw", "C:\\Beside\\b.ccw", "C:\\Beside\\c.ccw"}) {
        desk.system.files.AddFile(document);
        desk.PutSetting("Browser\\History List", document, "2004-03-17");
    }
    desk.system.files.AddFile("C:\\Second\\Cards\\Birthday.swt");
    desk.system.files.AddFile(desk.InLibrary("Letters\\Plain.swt"), "{\\rtf1{\\info{\\title review}}text}");
}

void ShowProperties(Desk& desk)
{
    Use(desk, {Select("Letters"), SelectRow("Memo")});
    desk.In<browser::DocumentPropertiesForm>("DocumentPropertiesForm", "mnuFileProperties", [&](auto& form) {
        desk.Settle();
        form.cmdCopy.UserClicks();
        form.cmdTemplate.UserClicks();
    });
}

// Profiles.

/// What the user does in the editor, after a change to Ann. It does not close over what could not be stored, and what
/// it shows in the end can be stored without harm.
auto Edit(const std::function<void(EnterSenderInformationForm&)>& act)
{
    return [act](Desk& desk) {
        desk.OnDialog<frmManageProfiles>("frmManageProfiles", [](auto&) {});
        desk.OnDialog<profiles::frmNewProfile>("frmNewProfile", [](auto& form) {
            form.Description.UserTypes("Cid");
            form.OKButton.UserClicks();
        });
        desk.In<EnterSenderInformationForm>("EnterSenderInformationForm", "mnuProfileEdit", [&](auto& form) {
            const auto isAnn = [&] { return form.ProfileCombo.Text().starts_with("Ann"); };
            if (!isAnn())
                return; // the profiles could not be read
            form.SenderCityText.SetText("Oslo");
            act(form);
            const bool isStored = desk.ProfileAt("Ann", "City") == "Oslo";
            const bool isShown = isAnn() && form.SenderCityText.Text() == "Oslo";
            EXPECT_TRUE(isStored || (form.IsOpen() && isShown) || desk.trouble == Trouble::TheWorldChanges);
            if (form.IsOpen() && desk.trouble == Trouble::OneCallFails)
                form.ProfileCombo.UserSelects(form.ProfileCombo.Selected() == 0 ? 1 : 0);
        });
    };
}

auto Manage(ui::Button frmManageProfiles::* button)
{
    return [button](Desk& desk) {
        const auto confirm = [](ui::Form& form, ui::TextBox& box, ui::Button& ok) {
            ok.UserClicks();
            EXPECT_TRUE(!form.IsOpen() || box.HasFocus());
        };
        desk.OnDialog<profiles::frmNewProfile>("frmNewProfile", [&](auto& form) {
            form.Description.UserTypes("Cid");
            form.lstCopyFrom.UserSelects(1);
            if (form.lstCopyFrom.Selected() == 1) // else the profiles could not be read
                confirm(form, form.Description, form.OKButton);
        });
        desk.OnDialog<profiles::frmRenameProfile>("frmRenameProfile", [&](auto& form) {
            form.txtName.SetText("Zoe");
            confirm(form, form.txtName, form.OKButton);
        });
        desk.In<frmManageProfiles>("frmManageProfiles", "mnuProfileManage", [&](auto& form) {
            if (button == &frmManageProfiles::btnSetDefault)
                form.lstProfiles.UserSelects(1);
            (form.*button).UserClicks();
            EXPECT_TRUE(desk.CouldNotRead() || desk.trouble != Trouble::OneCallFails ||
                        form.lstProfiles.Items().size() == desk.KeysBelow(ProfilesLine).size());
        });
    };
}

void ChooseLogo(Desk& desk)
{
    desk.OnDialog<profiles::frmImages>("frmImages", [&](auto& form) {
        desk.toolkit.FileChoices.push_back("C:\\new.gif");
        form.Logo.btnSet.UserClicks();
        desk.toolkit.FileChoices.clear();
        desk.system.jobs.FinishAll();
        const bool isChosen = form.Logo.change.has_value();
        form.OKButton.UserClicks();
        if (form.IsOpen()) {
            EXPECT_EQ(form.Logo.change.has_value(), isChosen) << "it must be chosen again";
            form.CancelButton.UserClicks();
        }
    });
    desk.In<EnterSenderInformationForm>("EnterSenderInformationForm", "mnuProfileEdit",
                                        [](auto& form) { form.cmdImages.UserClicks(); });
}

void Transfer(Desk& desk, bool in)
{
    desk.toolkit.FolderChoices.push_back("C:\\In");
    desk.In<profiles::frmOptionsImportExport>("frmOptionsImportExport", "mnuProfileImportExport", [&](auto& form) {
        form.txtExportPath.SetText("C:\\Out");
        form.txtProfileName.SetText("Set");
        (in ? form.btnImport : form.btnExport).UserClicks();
    });
    desk.toolkit.FolderChoices.clear();
}

void AddTransfers(Desk& desk)
{
    const std::string top = profiles::FullProfilesKey();
    const std::pair<const char*, std::string> files[] = {
        {"C:\\new.gif", "new"},
        {"C:\\Windows\\regedit.exe", ""},
        {"C:\\Out\\Set\\TSProfile.tspf", "REGEDIT4\r\n\r\n[" + top + "\\Old]\r\n\"City\"=\"Old\"\r\n"},
        {"C:\\Out\\Set\\Ann\\Logo.jpg", "an earlier logo"},
        {"C:\\In\\TSProfile.tspf",
         "REGEDIT4\r\n\r\n[" + top + "\\Ann]\r\n\"City\"=\"Bern\"\r\n\"LocalLogo\"=\"X:\\\\Ann\\\\Logo.jpg\"\r\n\r\n[" +
             top + "\\New]\r\n\"City\"=\"Bern\"\r\n\r\n"},
        {"C:\\In\\Ann\\Logo.jpg", "imported"}};
    for (const auto& [path, contents] : files)
        desk.system.files.AddFile(path, contents);
}

// Packs.

void AddPacks(Desk& desk)
{
    desk.system.files.AddFile("C:\\New.exe", PackBuilder::Pack("Tessaly 1.0"));
    desk.AddTemplates({"Garden\\List.swt", "Garden\\Flyers\\Spring.swt", "Garden\\Previews\\List.jpg",
                       "Shared\\Mine.swt", "Shared\\Theirs.swt", "Second\\A.swt"});
    const std::tuple<const char*, const char*, const char*> packs[] = {
        {"Garden", "Garden\nGarden\\Flyers\nShared|Theirs.swt", "0"},
        {"Second", "Second\nGarden\\Flyers", "0"},
        {"Bundled", "Letters", "1"}};
    for (const auto& [name, folders, bySetUp] : packs) {
        const std::string section = "Content\\" + std::string{name};
        desk.PutSetting(section, "Version", "Tessaly 1.0");
        desk.PutSetting(section, "PackInstalledBySetUp", bySetUp);
        desk.PutSetting(section, "TemplateFolders", folders);
    }
}

auto DeletePacks(bool all)
{
    return [all](Desk& desk) {
        desk.In<packs::frmContentPackManager>("frmContentPackManager", "mnuSolutionPackManager", [&](auto& form) {
            form.lvPacks.UserSelects(1);
            (all ? form.btnDeleteAll : form.btnDelete).UserClicks();
            EXPECT_TRUE(desk.CouldNotRead() || desk.trouble != Trouble::OneCallFails ||
                        ListTexts(form.lvPacks) == desk.KeysBelow(Content + "\\"));
        });
    };
}

void InstallPack(Desk& desk)
{
    desk.toolkit.FileChoices.push_back("C:\\New.exe");
    Use(desk, {Choose("mnuInstallNewTemplates")});
    if (desk.system.shell.Watched() > 0) {
        desk.AddTemplates({"New\\N.swt"});
        desk.system.shell.EndWatched(0);
        desk.Settle();
    }
    desk.toolkit.FileChoices = {std::nullopt, std::nullopt};
    desk.toolkit.FilesAsked.clear();
    Use(desk, {Choose("mnuInstallNewTemplates"), Choose("mnuInstallNewTemplates")}); // one of them may fail
    EXPECT_TRUE(!desk.toolkit.FilesAsked.empty() || desk.trouble != Trouble::OneCallFails) << "locked for good";
    desk.toolkit.FileChoices.clear();
}

// On the web.

void AddMailClient(Desk& desk)
{
    desk.PutSetting("Options", "Installed Path", "C:\\Desk");
    desk.system.files.AddFolder("C:\\Desk");
    auto& registry = desk.system.registry;
    registry.PutString(Hive::LocalMachine, "Software\\Clients\\Mail", "", "Microsoft Outlook");
    registry.PutString(Hive::ClassesRoot, "Outlook.Application\\CurVer", "", "Outlook.Application.10");
    registry.PutDword(Hive::CurrentUser, "Software\\Microsoft\\Office\\10.0\\Outlook\\Options\\Mail",
                      "EditorPreference", 0x10000);
}

void ReportBug(Desk& desk)
{
    Use(desk, {[](app::frmMain& main) { main.mnuReportABug_Click(); }});
    desk.system.mail.Close(platform::MailOutcome::Composed);
    desk.Settle();
}

void TakeUpdate(Desk& desk)
{
    desk.Start();
    if (auto* message = dynamic_cast<online::frmNotifyMessage*>(desk.toolkit.Find("frmNotifyMessage")))
        message->OKButton.UserClicks();
    desk.Settle();
}

void ClickBanner(Desk& desk)
{
    desk.Start();
    Use(desk, {[](app::frmMain& main) { main.imgBanner.UserClicks(); }});
}

/// A banner that leads to the web, and an update that names a program, which nothing may open.
void Serve(Desk& desk)
{
    desk.system.files.AddFile("C:\\Windows\\calc.exe");
    desk.PutSetting("Options", "WebHostPath", "http://tessaly.example/");
    desk.PutSetting("Options", "NotifyCount", "0");
    desk.PutSetting("Options", "BannerURLPath", "http://tessaly.example/b/banner.asp");
    desk.system.web.OnGet([](const std::string& address) {
        const std::string page = "<title>Banner</title><input name=BannerStatus value=OK>"
                                 "<a href=http://tessaly.example/news><img src=web.gif></a>"
                                 "<input name=IsUpdateRequired value=1><input name=MessageText value=News>"
                                 "<input name=ProductPath value=\"C:\\Windows\\calc.exe\">";
        return platform::Result<platform::WebReply>{{200, "", address.ends_with(".gif") ? "picture" : page}};
    });
}

// What goes wrong with these is no loss, or nothing that the user has asked for.
const Scope quiet{.failsSilently = true};
Scope Quiet(Texts touched)
{
    return {.touched = std::move(touched), .failsSilently = true};
}
/// Of Ann: the values that become others, and what else may change.
Scope OfAnn(std::set<std::string> edits, Texts more = {})
{
    more.insert(more.end(), {ProfileLine("Ann"), ProfileSettings});
    return {.touched = std::move(more), .profile = "Ann", .edits = std::move(edits)};
}
Scope AllOrNothing(Scope scope)
{
    scope.isAllOrNothing = true;
    return scope;
}

// clang-format off
const std::vector<Scenario> table{ // a row is a scenario
    {"StartToEnd", 164, StartToEnd, Quiet({Empty}), {}, true},
    {"LoadWithPruning", 104, [](Desk& d) { d.Start(); }, Quiet({Empty, None}), AddEmptyFolders, true, true},
    {"Refresh", 22, [](Desk& d) { Use(d, {Choose("mnuRefreshTV")}); }, Quiet({None}), AddEmptyFolders},
    {"LaunchTemplate", 21, [](Desk& d) { Use(d, {Select("Letters\\Formal"), Activate("Complaint"),
     Activate("Thanks"), Choose("mnuFile2")}); }, quiet},
    {"NewDocument", 6, [](Desk& d) { Use(d, {Select("Business"), SelectRow("Invoice"), Choose("mnuFileNew")}); },
     quiet},
    {"NewSpreadsheet", 12, [](Desk& d) { Use(d, {Select("Business"), SelectRow("Budget"), Choose("mnuFileNew")}); },
     Quiet({"C:\\Users\\User\\Documents"}), AddSpreadsheets},
    {"ListsThumbnailsPreview", 35, ShowEverything, quiet},
    {"RenameFolder", 36, RenameFolder, {.touched = {Formal, "C:\\Templates\\Letters\\Casual"}}},
    {"DeleteFolder", 53, [](Desk& d) { Use(d, {Select("Letters\\Formal"), Choose("mnupopDeletefolder")}); },
     {.touched = {Formal}}, {}, false, true},
    {"DropOnFavorites", 14, DropOnFavorites},
    {"AddFavorite", 9, [](Desk& d) { Use(d, {Select("Business\\Contracts"), SelectRow("Lease"),
     Choose("mnuAddToFavorites")}); }},
    {"RemoveFavorite", 12, [](Desk& d) { Use(d, {Select("My Favorites"), SelectRow("Complaint"),
     Choose("mnuRemoveFromFavorites")}); }},
    {"RecentFiles", 14, [](Desk& d) { Use(d, {Select("Letters\\Formal"), Activate("Complaint"),
     Choose("mnuFile2"), Choose("mnuFile3")}); }, quiet},
    {"RecentDocuments", 14, ForgetRecentDocuments, {}, AddDocuments},
    {"TemplatesPath", 27, ChooseTemplatesPath, {}, AddDocuments},
    {"SettingsAtClose", 26, [](Desk& d) { Use(d, {Select("Letters"), Close}); }, quiet},
    {"FindByName", 53, [](Desk& d) { Find(d, [](auto& find) { find.txtLookFor.UserTypes("memo"); }); }, quiet},
    {"FindByProperty", 54, [](Desk& d) { Find(d, FindReview); }, quiet, AddDocuments},
    {"Properties", 13, ShowProperties, quiet},

    {"ProfileCreate", 81, Manage(&frmManageProfiles::btnAdd), AllOrNothing({.touched = {"C:\\Images\\Cid",
     ProfileLine("Cid"), ProfileSettings}})},
    {"ProfileRename", 85, Manage(&frmManageProfiles::btnRename),
     {.touched = {AnnsPictures, "C:\\Images\\Zoe", ProfileLine("Ann"), ProfileLine("Zoe"), ProfileSettings},
      .profile = "Ann", .newName = "Zoe", .isAllOrNothing = true}},
    {"ProfileDelete", 40, Manage(&frmManageProfiles::btnDelete), {.touched = {AnnsPictures, ProfileLine("Ann"),
     ProfileSettings}, .profile = "Ann", .deletesProfile = true}},
    {"ProfileDefault", 9, Manage(&frmManageProfiles::btnSetDefault), {.touched = {ProfileSettings}}},
    {"ProfileSave", 69, Edit([](auto& form) { form.OKButton.UserClicks(); }), OfAnn({"City"})},
    {"ProfileSwitch", 104, Edit([](auto& form) { form.ProfileCombo.UserSelects(1); }), OfAnn({"City"})},
    {"ProfileAddInEditor", 135, Edit([](auto& form) { form.btnAddProfile.UserClicks(); }), OfAnn({"City"},
     {ProfileLine("Cid")})},
    {"ProfileManageInEditor", 113, Edit([](auto& form) { form.btnManageProfiles.UserClicks(); }),
     OfAnn({"City"})},
    {"ProfilePictures", 73, ChooseLogo, OfAnn({"LocalLogo"}, {AnnsPictures}), AddTransfers},
    {"ProfileExport", 65, [](Desk& d) { Transfer(d, false); }, AllOrNothing({.touched = {"C:\\Out\\Set"}}),
     AddTransfers},
    {"ProfileImport", 65, [](Desk& d) { Transfer(d, true); }, AllOrNothing(OfAnn({"City", "LocalLogo"},
     {AnnsPictures, ProfileLine("New"), "C:\\Temp\\"})), AddTransfers},

    {"PackDelete", 102, DeletePacks(false),
     {.touched = {Garden + "\\List.swt", Garden + "\\Previews", Theirs, Content + "\\Garden"}}, AddPacks, false, true},
    {"PackDeleteAll", 110, DeletePacks(true), {.touched = {Garden, "C:\\Templates\\Second", Theirs, Content}},
     AddPacks},
    {"PackInstall", 41, InstallPack, {.touched = {"C:\\Templates\\New", Content}, .messages = 2}, AddPacks},

    {"BugReport", 18, ReportBug, {.touched = {"C:\\Desk", TempFolder}}, AddMailClient},
    {"Update", 123, TakeUpdate, Quiet({Empty, TempFolder}), Serve, true},
    {"Banner", 121, ClickBanner, Quiet({Empty, TempFolder}), Serve, true},
};
// clang-format on

} // namespace

const std::vector<Scenario>& Scenarios()
{
    return table;
}

} // namespace tests
