#include "tests/profiles/ProfilesFixture.h"

namespace tests {
namespace {

using platform::RegistryValue;
using platform::ValueType;
using profiles::Field;
using profiles::ImageKind;

class ProfileTest : public ProfileTestBase {};

TEST_F(ProfileTest, NamesAreCheckedInOrder)
{
    Put("Ann", "FirstName", "Ann");
    Put("Größe", "FirstName", "G");
    const std::pair<std::string, int> rows[] = {
        // clang-format off
        {std::string(255, 'x'), 0}, {std::string(256, 'x'), 134},
        {"", 134}, {"   ", 134}, {"_x", 135}, {"-x", 135}, {"..", 135}, {"@home", 135}, {"Ärzte", 135}, {"*x", 135},
        {"a/b", 134}, {"a\\b", 134}, {"a?", 134}, {"a:b", 134}, {"a\"b", 134}, {"a<", 134}, {"a>", 134}, {"a|", 134},
        {"a*", 134}, {"a\tb", 134}, {"BLANK Profile", 134}, {" blank profile ", 134}, {"X (default)", 134},
        {"ann", 136}, {" ANN ", 136}, {"gRÖSSe", 0}, {"GRÖßE", 136}, {"1st", 0}, {"Zoë", 0}, {"Acme Inc.", 0},
        {"CON", 0}, {"blank", 0}, {"a-b_c", 0}, {"Ann (default", 0},
        // clang-format on
    };
    for (const auto& [name, refusal] : rows)
        EXPECT_EQ(manager.ValidateProfileName(name).value_or(0), refusal) << name;
}

TEST_F(ProfileTest, EveryValueButThePagerMakesAProfileNotEmpty)
{
    for (std::size_t i = 0; i < profiles::FieldCount; ++i) {
        const auto field = static_cast<Field>(i);
        Put("P" + std::to_string(i), profiles::ValueName(field), "x");
        EXPECT_EQ(manager.IsProfileEmpty("P" + std::to_string(i)), field == Field::Pager) << i;
    }
    for (const ImageKind kind : profiles::AllImages) {
        Put("I", profiles::ValueName(kind), "x");
        EXPECT_FALSE(manager.IsProfileEmpty("I"));
        Put("I", profiles::ValueName(kind), "");
    }
    EXPECT_TRUE(manager.IsProfileEmpty("I"));
    EXPECT_TRUE(manager.IsProfileEmpty("Nobody"));
    EXPECT_TRUE(manager.IsProfileEmpty(""));
}

TEST_F(ProfileTest, CreateCopiesFieldsAndPicturesOfTheChosenSource)
{
    Put("Ann", "FirstName", "Ann");
    PutPicture("Ann", ImageKind::Logo, ".jpg", "logo");
    system.files.SetAttributes(Picture("Ann", "Logo.jpg"), platform::attribute::ReadOnly);
    Put("Ann", "LocalPortrait", "C:\\Gone\\Portrait.gif");
    manager.ListProfiles();
    ASSERT_TRUE(operations.Create("Bob", "Ann (default)"));
    EXPECT_EQ(At("Bob", "FirstName"), "Ann");
    EXPECT_EQ(At("Bob", "LocalLogo"), Picture("Bob", "Logo.jpg"));
    EXPECT_EQ(At("Bob", "LocalPortrait"), "");
    EXPECT_EQ(Contents(Picture("Bob", "Logo.jpg")), "logo");
    EXPECT_EQ(system.files.Stat(Picture("Bob", "Logo.jpg"))->attributes & platform::attribute::ReadOnly, 0u);
    EXPECT_EQ(Contents(Picture("Ann", "Logo.jpg")), "logo");
    ASSERT_TRUE(operations.Create("Empty", ""));
    EXPECT_TRUE(manager.IsProfileEmpty("Empty"));
    EXPECT_TRUE(manager.ProfileExists("Empty"));
    EXPECT_FALSE(HasSetting("Profiles", "DefaultProfile")) << "the first profile alone becomes the default by itself";
}

TEST_F(ProfileTest, PicturesOnADriveThatIsAwayAreNotTakenForLost)
{
    Put("Ann", "LocalLogo", "D:\\Pictures\\Logo.jpg");
    Put("Ann", "LocalSignature", "D:\\Pictures\\S.jpg");
    const auto registry = system.registry.Snapshot();
    for (const bool renames : {true, false}) {
        toolkit.ExpectMessage(Text(222) + "\r\nD:\\Pictures\\Logo.jpg\r\nD:\\Pictures\\S.jpg", Icon::Critical);
        EXPECT_FALSE(renames ? operations.Rename("Ann", "Bob") : operations.Create("Bob", "Ann"));
        EXPECT_EQ(system.registry.Snapshot(), registry);
    }
}

TEST_F(ProfileTest, RenameTakesEverythingAlong)
{
    const RegistryValue odd{ValueType::Binary, std::string{"\0\1\2", 3}};
    system.registry.Put(Hive::CurrentUser, profiles::ProfileKey("Ann"), "Theirs", odd);
    Put("Ann", "FirstName", "Ann");
    PutPicture("Ann", ImageKind::Logo, ".jpg", "logo");
    system.files.AddFile("D:\\My Pictures\\me.gif", "me");
    Put("Ann", "LocalPortrait", "D:\\My Pictures\\me.gif");
    Put("Ann", "LocalSignature", "C:\\Gone\\Signature.gif");
    Put("Ann\\Deep\\Deeper", "Theirs", "x");
    PutSetting("Profiles", "DefaultProfile", "ann");
    const auto before = system.registry.Snapshot();
    system.registry.SetShortWrites();
    toolkit.ExpectMessage(Text(173), Icon::Critical);
    ASSERT_FALSE(operations.Rename("Ann", "Bob"));
    EXPECT_EQ(system.registry.Snapshot(), before) << "the copy was not whole";
    system.registry.SetShortWrites(false);
    ASSERT_TRUE(operations.Rename("Ann", "Bob"));

    EXPECT_FALSE(manager.ProfileExists("Ann"));
    EXPECT_EQ(At("Bob", "FirstName"), "Ann");
    EXPECT_EQ(system.registry.Query(Hive::CurrentUser, profiles::ProfileKey("Bob"), "Theirs"), odd);
    EXPECT_EQ(At("Bob\\Deep\\Deeper", "Theirs"), "x");
    EXPECT_EQ(At("Bob", "LocalLogo"), Picture("Bob", "Logo.jpg"));
    EXPECT_EQ(At("Bob", "LocalPortrait"), Picture("Bob", "Portrait.gif"));
    EXPECT_EQ(At("Bob", "LocalSignature"), "C:\\Gone\\Signature.gif");
    EXPECT_EQ(system.files.AllPaths(Images),
              (Texts{"C:\\Images\\Bob", Picture("Bob", "Logo.jpg"), Picture("Bob", "Portrait.gif")}));
    EXPECT_EQ(Contents("D:\\My Pictures\\me.gif"), "me") << "the user's own file";
    EXPECT_EQ(Setting("Profiles", "DefaultProfile"), "Bob");
    EXPECT_EQ(Setting("Profiles", "CurrentProfileToUse"), "Bob");
}

TEST_F(ProfileTest, ARenamedProfileNamesNoFolderThatANewOneMayGet)
{
    Put("Ann", "LocalLogo", Picture("Ann", "Logo.jpg")); // which somebody has deleted
    ASSERT_TRUE(operations.Rename("Ann", "Bob"));
    EXPECT_EQ(At("Bob", "LocalLogo"), Picture("Bob", "Logo.jpg"));
}

TEST_F(ProfileTest, DeleteRemovesTheFolderAndNeverFollowsALink)
{
    Put("Ann", "FirstName", "Ann");
    Put("Bob", "FirstName", "Bob");
    PutPicture("Ann", ImageKind::Logo, ".jpg", "logo");
    system.files.AddFile("C:\\Outside\\kept.txt", "kept");
    system.files.AddLink(Picture("Ann", "link"), "C:\\Outside");
    system.files.AddLink(std::string{Images} + "\\Bob", "C:\\Outside");
    Put("Ann\\Deep", "Theirs", "x");
    EXPECT_TRUE(operations.Delete("Ann (default)"));
    EXPECT_FALSE(manager.ProfileExists("Ann"));
    Put("/", "FirstName", "no path");
    EXPECT_TRUE(operations.Delete("/"));
    EXPECT_TRUE(manager.ProfileExists("Bob"));
    EXPECT_TRUE(operations.Delete("Bob"));
    PutPicture("Eve", ImageKind::Logo, ".jpg", "logo");
    system.faults.ChangeBefore(4, [&] { // the listing, after the first look
        system.files.Remove("C:\\Images\\Eve");
        system.files.AddLink("C:\\Images\\Eve", "C:\\Outside");
    });
    toolkit.ExpectMessage(Text(223) + "\r\nC:\\Images\\Eve", Icon::Critical);
    EXPECT_FALSE(images.DeleteFolder("Eve"));
    system.files.Remove("C:\\Images\\Eve");
    EXPECT_EQ(system.files.AllPaths(Images), Texts{});
    EXPECT_EQ(Contents("C:\\Outside\\kept.txt"), "kept");
}

TEST_F(ProfileTest, NoTwoProfilesShareAPictureFolderAndNoneLiesOutside)
{
    const std::pair<const char*, const char*> rows[] = {
        // clang-format off
        {"Ann", "Ann"}, {"Acme Inc.", "Acme Inc._"}, {"Acme Inc._", "Acme Inc.__"}, {"Acme Inc", "Acme Inc"},
        {"CON", "CON_"}, {"con_", "con__"}, {"com1.x", "com1.x_"}, {"comet", "comet"}, {"comb", "comb"}, {"..", ".._"},
        {"x ", "x _"}, {"a_", "a_"}, {"", ""}, {"a\\b", ""}, {"..\\..", ""}, {"a/b", ""}, {"a:b", ""}, {"a\nb", ""},
        // clang-format on
    };
    for (const auto& [profile, folder] : rows)
        EXPECT_EQ(profiles::ImageFolderName(profile).value_or(""), folder) << profile;
}

class PictureTest : public ProfileTestBase {
protected:
    using Changes = profiles::ProfileImages::Changes;
    bool Apply(const Changes& changes)
    {
        manager.LoadProfile("Ann");
        return images.Apply("Ann", changes);
    }
};

TEST_F(PictureTest, SetReplaceAndClearLeaveOnlyWhatIsStored)
{
    system.files.AddFile("C:\\new.gif", "gif");
    PutPicture("Ann", ImageKind::Logo, ".jpg", "old");
    PutPicture("Ann", ImageKind::Signature, ".gif", "older"); // an import leaves what stands beside it
    PutPicture("Ann", ImageKind::Signature, ".jpg", "sign");
    ASSERT_TRUE(Apply({"C:\\new.gif", "C:\\new.gif", ""}));
    EXPECT_EQ(system.files.AllPaths(Images),
              (Texts{"C:\\Images\\Ann", Picture("Ann", "Logo.gif"), Picture("Ann", "Portrait.gif")}));
    EXPECT_EQ(At("Ann", "LocalLogo"), Picture("Ann", "Logo.gif"));
    EXPECT_EQ(At("Ann", "LocalPortrait"), Picture("Ann", "Portrait.gif"));
    EXPECT_EQ(At("Ann", "LocalSignature"), "");
    EXPECT_EQ(Contents("C:\\new.gif"), "gif");
}

TEST_F(PictureTest, TheSourceMayBeThePictureItselfOrOneThatChangesToo)
{
    PutPicture("Ann", ImageKind::Logo, ".jpg", "logo");
    PutPicture("Ann", ImageKind::Portrait, ".jpg", "face");
    ASSERT_TRUE(Apply({Picture("Ann", "Logo.jpg"), std::nullopt, std::nullopt}));
    EXPECT_EQ(Contents(Picture("Ann", "Logo.jpg")), "logo");
    ASSERT_TRUE(Apply({Picture("Ann", "Portrait.jpg"), Picture("Ann", "Logo.jpg"), std::nullopt})); // swapped
    EXPECT_EQ(Contents(Picture("Ann", "Logo.jpg")), "face");
    EXPECT_EQ(Contents(Picture("Ann", "Portrait.jpg")), "logo");
}

TEST_F(PictureTest, WithoutAFolderOfTheirOwnTheyGoToTheDocuments)
{
    system.files.AddFile("C:\\new.gif", "gif");
    system.files.AddFolder("C:\\Users\\User\\Documents");
    PutSetting("Options", "Profile Images Path", "");
    ASSERT_TRUE(Apply({"C:\\new.gif", std::nullopt, std::nullopt}));
    EXPECT_EQ(At("Ann", "LocalLogo"), "C:\\Users\\User\\Documents\\Profile Images\\Ann\\Logo.gif");
    EXPECT_EQ(Contents(At("Ann", "LocalLogo")), "gif");
}

TEST_F(PictureTest, WithoutAnEndingOfThreeLettersTheContentDecides)
{
    const std::string jpeg = "\xFF\xD8\xFF\xE0...", gif = "GIF89a...";
    const struct {
        const char* name;
        std::string content;
        const char* stored;
    } rows[] = {{"a.jpeg", jpeg, "Logo.jpg"}, {"a", gif, "Logo.gif"},      {"a.gi", gif, "Logo.gif"},
                {"a..b", jpeg, "Logo.jpg"},   {"a.b.c", jpeg, "Logo.jpg"}, {"a.jpe", gif, "Logo.jpe"}};
    for (const auto& row : rows) {
        const std::string file = std::string{"C:\\Pics\\"} + row.name;
        system.files.AddFile(file, row.content);
        ASSERT_TRUE(Apply({file, std::nullopt, std::nullopt}));
        EXPECT_EQ(At("Ann", "LocalLogo"), Picture("Ann", row.stored)) << row.name;
    }
    // What was stored before without an ending gets one with the next new name.
    PutPicture("Ann", ImageKind::Logo, "jpeg", jpeg);
    ASSERT_TRUE(operations.Rename("Ann", "Zoe"));
    EXPECT_EQ(At("Zoe", "LocalLogo"), Picture("Zoe", "Logo.jpg"));
}

TEST_F(PictureTest, AFailureChangesNothing)
{
    PutPicture("Ann", ImageKind::Logo, ".jpg", "old");
    system.files.AddFile("C:\\new.jpg", "new");
    const auto disk = system.files.Snapshot();
    const auto registry = system.registry.Snapshot();
    const auto refused = [&](const char* source, std::uint16_t message, const char* told) {
        toolkit.ExpectMessage(Text(message) + "\r\n" + told, Icon::Critical);
        EXPECT_FALSE(Apply({source, std::nullopt, std::nullopt}));
        EXPECT_EQ(system.files.Snapshot(), disk);
        EXPECT_EQ(system.registry.Snapshot(), registry);
    };
    refused("C:\\gone.jpg", 222, "C:\\gone.jpg");
    system.files.SetShortWrites();
    refused("C:\\new.jpg", 223, "C:\\new.jpg");
    system.files.SetShortWrites(false);
    system.files.SetHeldOpen(Picture("Ann", "Logo.jpg"));
    const auto start = system.clock.Now();
    refused("C:\\new.jpg", 223, "C:\\Images\\Ann");
    constexpr platform::FileTime second = 10'000'000;
    EXPECT_GE(system.clock.Now() - start, second / 2) << "a scanner would have let go by then";
    EXPECT_LE(system.clock.Now() - start, second);
}

TEST_F(PictureTest, WhatHoldsOneForAMomentOrProtectsItDoesNotKeepIt)
{
    using platform::attribute::ReadOnly;
    system.files.AddFile("C:\\new.jpg", "new");
    PutPicture("Ann", ImageKind::Logo, ".jpg", "old");
    PutPicture("Ann", ImageKind::Portrait, ".jpg", "old");
    system.files.AddFile(Picture("Ann", "~TSProfile3.old"), "of a process that died");
    for (const char* file : {"Logo.jpg", "Portrait.jpg"})
        system.files.SetAttributes(Picture("Ann", file), ReadOnly);
    system.files.SetHeldOpen(Picture("Ann", "Logo.jpg"));
    system.clock.OnSleep = [&] { system.files.SetHeldOpen(Picture("Ann", "Logo.jpg"), false); };
    ASSERT_TRUE(Apply({"C:\\new.jpg", "", std::nullopt}));
    EXPECT_EQ(system.files.AllPaths(Images), (Texts{"C:\\Images\\Ann", Picture("Ann", "Logo.jpg")}));
    EXPECT_EQ(Contents(Picture("Ann", "Logo.jpg")), "new");
}

} // namespace
} // namespace tests
