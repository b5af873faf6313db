// One call of the system after the other fails while the user works in the dialogs: nothing is lost, one message.
#include "tests/profiles/ProfilesFixture.h"

#include "profiles/EnterSenderInformationForm.h"
#include "profiles/frmManageProfiles.h"
#include "profiles/frmNewProfile.h"
#include "profiles/frmRenameProfile.h"

#include <algorithm>

namespace tests {
namespace {

using platform::memory::ForEachFault;
using profiles::EnterSenderInformationForm;
using profiles::frmManageProfiles;

void Prepare(ProfileMachine& machine)
{
    machine.toolkit.ThrowAwayMessages = true;
    machine.toolkit.AnswerYes = true;
    for (const char* name : {"Ann", "Bob"}) {
        machine.Put(name, "FirstName", name);
        machine.Put(name, "City", "Rome");
        machine.PutPicture(name, profiles::ImageKind::Logo, ".jpg", name);
    }
    machine.PutSetting("Profiles", "DefaultProfile", "Bob");
    machine.PutSetting("Profiles", "CurrentProfileToUse", "Ann");
}

/// Runs `act` once for each call of the system that it makes, which then fails.
void ForEachCall(std::size_t least, const std::function<void(ProfileMachine&, const std::function<void()>& arm)>& act)
{
    const auto calls = ForEachFault([&](std::size_t n) {
        ProfileMachine machine;
        Prepare(machine);
        SCOPED_TRACE("call " + std::to_string(n));
        act(machine, [&] { machine.system.faults.FailAt(n, platform::error::AccessDenied); });
        const bool fired = machine.system.faults.Fired();
        std::erase_if(machine.toolkit.Messages, [](const auto& message) { return message.icon == ui::Icon::Question; });
        EXPECT_LE(machine.toolkit.Messages.size(), 1u);
        return fired;
    });
    EXPECT_GE(calls, least);
}

TEST(ProfileFormFaultTest, TheEditorLosesNoEdit)
{
    for (const bool switching : {true, false})
        ForEachCall(22, [&](ProfileMachine& machine, const std::function<void()>& arm) {
            EnterSenderInformationForm form{machine.program, machine.manager, machine.images, machine.operations, {}};
            form.Realize();
            form.SenderCityText.SetText("Oslo");
            machine.toolkit.OnModal("frmManageProfiles", [](ui::Form& manage) { manage.UserCloses(); });
            arm();
            if (switching)
                form.ProfileCombo.UserSelects(1);
            else
                form.OKButton.UserClicks();
            machine.system.faults.Clear();
            EXPECT_TRUE(form.IsOpen() ||
                        std::ranges::none_of(machine.toolkit.Messages,
                                             [](const auto& message) { return message.icon == ui::Icon::Critical; }))
                << "closed although something could not be stored";
            const bool saved = machine.At("Ann", "City") == "Oslo";
            const bool shown = form.ProfileCombo.Text() == "Ann" && form.SenderCityText.Text() == "Oslo";
            EXPECT_TRUE(saved || (shown && form.IsOpen() && machine.toolkit.Messages.size() == 1));
            EXPECT_EQ(machine.At("Bob", "City"), "Rome") << "one profile's fields went to another";
            EXPECT_EQ(machine.At("Ann", "FirstName"), "Ann");
            // What is shown afterwards can be saved without harm.
            if (form.IsOpen())
                form.ProfileCombo.UserSelects(form.ProfileCombo.Selected() == 0 ? 1 : 0);
            EXPECT_EQ(machine.At("Ann", "FirstName") + machine.At("Bob", "FirstName"), "AnnBob");
            EXPECT_EQ(machine.At("Ann", "City") + machine.At("Bob", "City"), "OsloRome");
        });
}

TEST(ProfileFormFaultTest, TheListShowsWhatThereIs)
{
    const auto add = [](ui::Form& form) {
        auto& shown = static_cast<profiles::frmNewProfile&>(form);
        shown.Description.UserTypes("Cid");
        shown.lstCopyFrom.UserSelects(1);
        shown.OKButton.UserClicks();
        if (shown.IsOpen()) {
            EXPECT_TRUE(shown.Description.HasFocus());
            shown.CancelButton.UserClicks();
        }
    };
    const auto rename = [](ui::Form& form) {
        auto& shown = static_cast<profiles::frmRenameProfile&>(form);
        shown.txtName.SetText("Zoe");
        shown.OKButton.UserClicks();
        if (shown.IsOpen()) {
            EXPECT_TRUE(shown.txtName.HasFocus());
            shown.CancelButton.UserClicks();
        }
    };
    for (ui::Button frmManageProfiles::*button : {&frmManageProfiles::btnAdd, &frmManageProfiles::btnRename,
                                                  &frmManageProfiles::btnDelete, &frmManageProfiles::btnSetDefault})
        ForEachCall(1, [&](ProfileMachine& machine, const std::function<void()>& arm) {
            frmManageProfiles form{machine.program, machine.manager, machine.operations};
            form.Realize();
            machine.toolkit.OnModal("frmNewProfile", add);
            machine.toolkit.OnModal("frmRenameProfile", rename);
            arm();
            (form.*button).UserClicks();
            const bool toldOfList = std::ranges::any_of(
                machine.toolkit.Messages, [&](const auto& message) { return message.text == machine.Text(174); });
            machine.system.faults.Clear();
            machine.manager.ListProfiles();
            if (!toldOfList) {
                EXPECT_EQ(form.lstProfiles.Items().size(), machine.manager.Names().size());
            }
            for (const std::string& name : machine.manager.Names()) {
                if (name == "Cid")
                    continue; // what could not be read of the source is not in the copy
                EXPECT_EQ(machine.At(name, "City"), "Rome") << name;
                EXPECT_NE(machine.Contents(machine.At(name, "LocalLogo")), "(none)") << name;
            }
            EXPECT_TRUE(machine.manager.ProfileExists("Bob"));
        });
}

} // namespace
} // namespace tests
