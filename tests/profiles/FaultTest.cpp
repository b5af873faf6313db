// One call of the system after the other fails in everything that changes profiles: nothing is lost, one message.
#include "tests/profiles/ProfilesFixture.h"

#include <algorithm>
#include <functional>

namespace tests {
namespace {

using platform::Hive;
using platform::memory::ForEachFault;
using profiles::ImageKind;

struct Scenario {
    const char* name;
    std::function<bool(ProfileMachine&)> act;
};
void PrintTo(const Scenario& scenario, std::ostream* out)
{
    *out << scenario.name;
}

void Prepare(ProfileMachine& machine)
{
    machine.toolkit.ThrowAwayMessages = true;
    machine.Put("Ann", "FirstName", "Ann");
    machine.Put("Ann", "Unknown", "theirs");
    machine.PutPicture("Ann", ImageKind::Logo, ".jpg", "logo");
    machine.PutPicture("Ann", ImageKind::Portrait, ".gif", "face");
    machine.Put("Bob", "LastName", "Bob");
    machine.PutPicture("Bob", ImageKind::Logo, ".jpg", "bob's");
    machine.PutSetting("Profiles", "DefaultProfile", "Ann");
    machine.PutSetting("Profiles", "CurrentProfileToUse", "Bob");
    machine.system.files.AddFolder("C:\\Temp");
    machine.system.files.AddFile("C:\\new.gif", "new");
    machine.system.files.AddFile("C:\\Windows\\regedit.exe");
    machine.system.files.AddFile("C:\\Out\\Set\\TSProfile.tspf", "an earlier export");
    machine.system.files.AddFile("C:\\Out\\Set\\Ann\\Logo.jpg", "an earlier logo");
    const std::string top = profiles::FullProfilesKey();
    machine.system.files.AddFile("C:\\In\\TSProfile.tspf",
                                 "REGEDIT4\r\n\r\n[" + top +
                                     "\\Ann]\r\n\"City\"=\"Rome\"\r\n\"LocalLogo\"=\"X:\\\\Ann\\\\Logo.jpg\"\r\n\r\n[" +
                                     top + "\\New]\r\n\"City\"=\"Bern\"\r\n\r\n");
    machine.system.files.AddFile("C:\\In\\Ann\\Logo.jpg", "imported");
}

/// The profile is whole: its values, and each picture where its value says.
void ExpectWhole(const ProfileMachine& machine, const std::string& name, const std::string& first,
                 const std::vector<std::string>& logos, const std::string& portrait)
{
    EXPECT_EQ(machine.At(name, "FirstName"), first) << name;
    EXPECT_EQ(machine.At(name, "Unknown"), "theirs") << name;
    const std::string logo = machine.Contents(machine.At(name, "LocalLogo"));
    EXPECT_TRUE(std::ranges::find(logos, logo) != logos.end()) << name << "'s logo is " << logo;
    EXPECT_EQ(machine.Contents(machine.At(name, "LocalPortrait")), portrait) << name;
}

const Scenario scenarios[] = {
    {"create", [](ProfileMachine& m) { return m.operations.Create("Copy", "Ann"); }},
    {"rename", [](ProfileMachine& m) { return m.operations.Rename("Ann", "Zoe"); }},
    {"remove", [](ProfileMachine& m) { return m.operations.Delete("Bob"); }},
    {"save",
     [](ProfileMachine& m) {
         m.manager.LoadProfile("Ann");
         m.manager.Current[profiles::Field::City] = "Oslo";
         return m.manager.SaveProfileText("Ann");
     }},
    {"images",
     [](ProfileMachine& m) {
         m.manager.LoadProfile("Ann");
         return m.images.Apply("Ann", {"C:\\new.gif", std::nullopt, "C:\\new.gif"});
     }},
    {"export", [](ProfileMachine& m) { return m.transfer.Export("C:\\Out", "Set") == profiles::ExportOutcome::Done; }},
    {"import", [](ProfileMachine& m) { return m.transfer.Import("C:\\In"); }},
};

class ProfileFaultTest : public testing::TestWithParam<Scenario> {
protected:
    bool Is(std::string_view name) const { return GetParam().name == name; }

    void Check(const ProfileMachine& machine)
    {
        const bool renamed = !machine.manager.ProfileExists("Ann");
        EXPECT_TRUE(!renamed || Is("rename"));
        std::vector<std::string> logos{"logo"};
        if (Is("images"))
            logos.emplace_back("new");
        if (Is("import"))
            logos.emplace_back("imported");
        ExpectWhole(machine, renamed ? "Zoe" : "Ann", "Ann", logos, "face");
        EXPECT_EQ(machine.Setting("Profiles", "DefaultProfile"), renamed ? "Zoe" : "Ann");
        if (!Is("remove") || machine.manager.ProfileExists("Bob")) {
            EXPECT_EQ(machine.At("Bob", "LastName"), "Bob");
            EXPECT_EQ(machine.Contents(machine.At("Bob", "LocalLogo")), "bob's");
        }
        EXPECT_EQ(machine.Contents("C:\\new.gif"), "new");
        EXPECT_EQ(machine.Contents("C:\\In\\Ann\\Logo.jpg"), "imported");
        const std::string file = machine.Contents("C:\\Out\\Set\\TSProfile.tspf");
        const std::string logo = machine.Contents("C:\\Out\\Set\\Ann\\Logo.jpg");
        if (file == "an earlier export") {
            EXPECT_EQ(logo, "an earlier logo");
        } else {
            EXPECT_TRUE(Is("export") && logo == "logo" && file.contains("\"theirs\""));
        }
    }
};

TEST_P(ProfileFaultTest, OneFailingCallLosesNothingAndIsToldOnce)
{
    for (const platform::Error error : {platform::error::AccessDenied, platform::error::DiskFull}) {
        const auto calls = ForEachFault([&](std::size_t n) {
            ProfileMachine machine;
            Prepare(machine);
            const auto disk = machine.system.files.Snapshot();
            const auto registry = machine.system.registry.Snapshot();
            machine.system.faults.FailAt(n, error);
            const bool succeeded = GetParam().act(machine);
            const bool fired = machine.system.faults.Fired();
            const std::string call = machine.system.faults.Log().at(std::min(n, machine.system.faults.Calls()) - 1);
            SCOPED_TRACE("call " + std::to_string(n) + ": " + call);
            machine.system.faults.Clear();
            Check(machine);
            EXPECT_LE(machine.toolkit.Messages.size(), 1u);
            if (!succeeded) {
                EXPECT_EQ(machine.toolkit.Messages.size(), 1u) << "a failure that nobody hears of";
                if (!Is("save")) {
                    EXPECT_EQ(machine.system.files.Snapshot(), disk) << "half a change";
                    EXPECT_EQ(machine.system.registry.Snapshot(), registry) << "half a change";
                }
            }
            for (const std::string& path : machine.system.files.AllPaths())
                EXPECT_FALSE(path.contains('~')) << path << " is left";
            return fired;
        });
        EXPECT_GE(calls, 5u);
    }
}

TEST_P(ProfileFaultTest, NothingIsLostWhenNothingWorksFromSomeCallOn)
{
    ForEachFault([&](std::size_t n) {
        SCOPED_TRACE("call " + std::to_string(n));
        ProfileMachine machine;
        Prepare(machine);
        machine.system.faults.FailFrom(n, platform::error::AccessDenied);
        (void)GetParam().act(machine);
        const bool fired = machine.system.faults.Fired();
        machine.system.faults.Clear();
        EXPECT_LE(machine.toolkit.Messages.size(), 1u);
        // Undoing fails too: a picture may be the new one while its export or its sibling is the old one. None is gone.
        const bool renamed = !machine.manager.ProfileExists("Ann");
        ExpectWhole(machine, renamed ? "Zoe" : "Ann", "Ann", {"logo", "new", "imported"}, "face");
        return fired;
    });
}

TEST_P(ProfileFaultTest, NothingIsLostWhenTheProcessDies)
{
    ForEachFault([&](std::size_t n) {
        SCOPED_TRACE("call " + std::to_string(n));
        ProfileMachine machine;
        Prepare(machine);
        machine.system.faults.DieAt(n);
        try {
            (void)GetParam().act(machine);
        } catch (const platform::memory::ProcessDied&) {
        }
        const bool fired = machine.system.faults.Fired();
        machine.system.EndProcess();
        const bool renamed = !machine.manager.ProfileExists("Ann");
        ExpectWhole(machine, renamed ? "Zoe" : "Ann", "Ann", {"logo", "new", "imported"}, "face");
        return fired;
    });
}

INSTANTIATE_TEST_SUITE_P(Operations, ProfileFaultTest, testing::ValuesIn(scenarios),
                         [](const auto& row) { return std::string{row.param.name}; });

} // namespace
} // namespace tests
