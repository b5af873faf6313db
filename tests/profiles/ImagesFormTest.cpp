#include "profiles/frmImages.h"
#include "tests/profiles/ProfilesFixture.h"

#include <functional>

namespace tests {
namespace {

using profiles::frmImages;
using profiles::ImageKind;

class ImagesFormTest : public ProfileTestBase {
protected:
    void SetUp() override
    {
        PutSetting("Profiles", "DefaultProfile", "Ann");
        PutPicture("Ann", ImageKind::Logo, ".jpg", "old logo");
        system.files.AddFile("C:\\Pics\\new.gif", "new");
    }
    void WithForm(const std::function<void(frmImages&)>& act, const std::string& profile = "Ann (default)")
    {
        frmImages form{program, manager, images, profile, [this] { ++helps; }};
        toolkit.OnModal("frmImages", [&](ui::Form&) { act(form); });
        form.ShowModal();
    }
    static void Cancel(frmImages& form) { form.CancelButton.UserClicks(); }
    void Choose(frmImages::Picture& picture, const char* file)
    {
        toolkit.FileChoices.push_back(file);
        picture.btnSet.UserClicks();
        system.jobs.FinishAll();
    }
    int helps{};
};

TEST_F(ImagesFormTest, ShowsWhatIsStoredAndTellsOfWhatIsGone)
{
    Put("Ann", "LocalPortrait", "C:\\gone.jpg");
    Put("Ann", "LocalSignature", "C:\\too.gif");
    toolkit.ExpectMessage(Text(240) + "\r\nC:\\gone.jpg\r\n\r\n" + Text(241) + "\r\nC:\\too.gif", Icon::Information);
    WithForm([&](frmImages& form) {
        EXPECT_EQ(form.Logo.image.File(), Picture("Ann", "Logo.jpg"));
        EXPECT_TRUE(form.Logo.btnClear.Enabled());
        EXPECT_EQ(form.Portrait.image.File(), "");
        EXPECT_TRUE(form.Portrait.btnClear.Enabled()) << "its path can be cleared";
        form.btnHelp.UserClicks();
        EXPECT_EQ(helps, 1);
        Cancel(form);
    });
    WithForm(&Cancel, "New one");
    EXPECT_TRUE(system.files.Exists(std::string{Images} + "\\New one"));
}

TEST_F(ImagesFormTest, OkCarriesOutWhatWasChosenLast)
{
    const struct {
        const char* name;
        std::function<void(frmImages&)> act;
        const char* stored; ///< in the profile's folder
    } rows[] = {
        {"nothing", [](auto&) {}, "Logo.jpg"},
        {"dropped, and OK before the picture was looked at",
         [&](auto& form) {
             form.Logo.image.UserDrops("C:\\Pics\\new.gif");
             form.OKButton.UserClicks();
             EXPECT_TRUE(form.IsOpen());
         },
         "Logo.gif"},
        {"pasted",
         [&](auto& form) {
             toolkit.CopiedFiles = {"C:\\Pics\\new.gif"};
             form.Logo.image.SetFocus();
             EXPECT_TRUE(form.UserPresses(ui::Ctrl('V')));
             system.jobs.FinishAll();
         },
         "Logo.gif"},
        {"set and cleared",
         [&](auto& form) {
             Choose(form.Logo, "C:\\Pics\\new.gif");
             form.Logo.btnClear.UserClicks();
             EXPECT_EQ(form.Logo.image.File(), "");
             EXPECT_TRUE(form.Logo.btnSet.HasFocus());
         },
         ""},
        {"dropped, and cleared behind an OK that waits",
         [&](auto& form) {
             form.Logo.image.UserDrops("C:\\Pics\\new.gif");
             form.OKButton.UserClicks();
             form.Logo.btnClear.UserClicks();
             Choose(form.Portrait, "C:\\Pics\\new.gif");
             EXPECT_TRUE(form.IsOpen()) << "that OK was for something else";
         },
         ""},
        {"cleared and set",
         [&](auto& form) {
             form.Logo.btnClear.UserClicks();
             Choose(form.Logo, "C:\\Pics\\new.gif");
             EXPECT_TRUE(form.Logo.btnClear.Enabled());
         },
         "Logo.gif"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        PutPicture("Ann", ImageKind::Logo, ".jpg", "old logo");
        WithForm([&](frmImages& form) {
            row.act(form);
            form.OKButton.UserClicks();
            system.jobs.FinishAll();
            EXPECT_FALSE(form.IsOpen());
        });
        EXPECT_EQ(At("Ann", "LocalLogo"), *row.stored != '\0' ? Picture("Ann", row.stored) : "");
    }
}

TEST_F(ImagesFormTest, WhatCannotBeShownIsRefusedAndCancelChangesNothing)
{
    system.files.AddFile("C:\\Pics\\broken.jpg", "broken");
    system.files.AddFile("C:\\Pics\\scan.tiff", "II*");
    pictures.BrokenPictures = {"C:\\Pics\\broken.jpg"};
    WithForm([&](frmImages& form) {
        const auto disk = system.files.Snapshot();
        const auto values = system.registry.Snapshot();
        toolkit.FileChoices.push_back(std::nullopt);
        form.Logo.btnSet.UserClicks();
        EXPECT_EQ(toolkit.FilesAsked.back().folder, "C:\\Users\\User\\Documents") << "where no file was chosen yet";
        EXPECT_EQ(system.registry.Snapshot(), values) << "nothing was chosen";
        const std::pair<const char*, std::string> rows[] = {{"C:\\Pics\\gone.jpg", Text(237)},
                                                            {"C:\\Pics", Text(237)},
                                                            {"C:\\Pics\\broken.jpg", Text(588)},
                                                            {"C:\\Pics\\scan.tiff", Text(584)}};
        for (const auto& [file, message] : rows) {
            toolkit.ExpectMessage(message + "\r\n" + file, Icon::Information);
            Choose(form.Portrait, file);
            EXPECT_FALSE(form.Portrait.change) << file;
            EXPECT_FALSE(form.Portrait.btnClear.Enabled()) << file;
            EXPECT_TRUE(form.Portrait.btnSet.HasFocus()) << file;
        }
        toolkit.ExpectMessage(Text(588) + "\r\nC:\\Pics\\broken.jpg", Icon::Information);
        form.Portrait.image.UserDrops("C:\\Pics\\broken.jpg");
        system.jobs.FinishAll();
        EXPECT_FALSE(form.Portrait.change) << "dropped";
        toolkit.ExpectMessage(Text(721), Icon::Information);
        EXPECT_TRUE(form.UserPresses(ui::Ctrl('V')));
        form.OKButton.SetFocus();
        EXPECT_FALSE(form.UserPresses(ui::Ctrl('V'))) << "into none of the boxes";
        Choose(form.Logo, "C:\\Pics\\new.gif");
        EXPECT_EQ(toolkit.FilesAsked.back().folder, "C:\\Pics") << "the folder of the last file";
        EXPECT_EQ(form.Logo.image.File(), "C:\\Pics\\new.gif");
        Cancel(form);
        EXPECT_EQ(system.files.Snapshot(), disk);
        EXPECT_EQ(At("Ann", "LocalLogo"), Picture("Ann", "Logo.jpg"));
    });
}

TEST_F(ImagesFormTest, AFolderOutOfReachIsNamed)
{
    const std::pair<const char*, const char*> rows[] = {{"X:\\Pictures", "X:\\Pictures\\Ann"}, {"nowhere", "nowhere"}};
    for (const auto& [setting, told] : rows) {
        PutSetting("Options", "Profile Images Path", setting);
        toolkit.ExpectMessage(Text(222) + "\r\n" + told, Icon::Critical);
        WithForm(&Cancel);
    }
}

} // namespace
} // namespace tests
