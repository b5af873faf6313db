#include "PlatformUnderTest.h"

#include "platform/Path.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace platform;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace {

class FileContract : public testing::Test {
protected:
    std::unique_ptr<PlatformUnderTest> under{PlatformUnderTest::Make()};
    FileSystem& files{under->Get().files};
    const std::string folder{under->Folder()};

    std::string At(std::string_view name) const { return path::Join(folder, name); }
    void Write(std::string_view name, std::string_view contents = "text") { under->WriteFile(At(name), contents); }
    void Create(std::string_view name) { ASSERT_EQ(files.CreateFolder(At(name)), Result<>{}) << name; }

    std::vector<std::string> Names(std::string_view name = "")
    {
        std::vector<std::string> names;
        const auto entries = files.List(At(name)).value();
        for (const FileEntry& entry : entries)
            names.push_back(entry.name);
        return names;
    }

    struct Row {
        const char *from, *to;
        Error expected;
    };
    void Check(Result<> (FileSystem::*call)(std::string_view, std::string_view), std::initializer_list<Row> rows)
    {
        for (const Row& row : rows)
            EXPECT_EQ(CodeOf((files.*call)(At(row.from), At(row.to))), row.expected.code) << row.from << " " << row.to;
    }
    std::string Contents(std::string_view name) { return files.Read(At(name), 1000).value_or("(unreadable)"); }
};

TEST_F(FileContract, ListsEveryEntryWithItsKindAndSize)
{
    Create("Folder");
    Write("Übersicht 中文 😀.swt", "12345");
    for (int i = 0; i < 1500; ++i) // more than one portion of the system's answers
        Write("many" + std::to_string(i), "");

    const auto entries = files.List(folder).value();
    EXPECT_EQ(entries.size(), 1502u);
    std::vector<std::string> seen;
    for (const FileEntry& entry : entries)
        if (!entry.name.starts_with("many") || entry.IsFolder() || entry.size != 0)
            seen.push_back(entry.name + (entry.IsFolder() ? " folder " : " file ") + std::to_string(entry.size) +
                           (entry.IsFolder() || entry.modified > 0 ? "" : " undated"));
    EXPECT_THAT(seen, UnorderedElementsAre("Folder folder 0", "Übersicht 中文 😀.swt file 5"));
}

TEST_F(FileContract, TellsAnEmptyFolderFromOneThatCannotBeListed)
{
    Create("empty");
    Write("file.swt");
    EXPECT_EQ(Names("empty"), std::vector<std::string>{});
    const struct {
        std::string folder;
        Error error;
    } rows[] = {
        // clang-format off
        {At("missing"), error::PathNotFound}, {At("missing\\below"), error::PathNotFound},
        {At("file.swt"), error::InvalidFolder}, {At("*"), error::InvalidName}, {At("em?ty"), error::InvalidName},
        {At("em<"), error::InvalidName}, {"", error::InvalidName}, {"empty", error::InvalidName},
        {"\\\\?\\" + folder, error::InvalidName},
        // clang-format on
    };
    for (const auto& row : rows)
        EXPECT_EQ(CodeOf(files.List(row.folder)), row.error.code) << row.folder;
}

TEST_F(FileContract, StatGivesTheNameAsItStandsOnTheDisk)
{
    Create("Letters");
    Write("Letters\\Formal.swt", "abc");
    EXPECT_EQ(files.Stat(At("LETTERS\\\\formal.SWT")).value().name, "Formal.swt");
    EXPECT_EQ(files.Stat(At("letters\\")).value().name, "Letters");
    EXPECT_TRUE(files.Stat("C:\\").value().IsFolder());

    EXPECT_EQ(CodeOf(files.Stat(At("missing"))), error::FileNotFound.code);
    EXPECT_EQ(CodeOf(files.Stat(At("missing\\below"))), error::PathNotFound.code);
    EXPECT_EQ(CodeOf(files.Stat(At("*.swt"))), error::InvalidName.code);
}

TEST_F(FileContract, OnePlaceHasManySpellings)
{
    Create("Letters");
    Write("Letters\\a.swt", "here");
    for (const char* name : {"Letters\\\\a.swt", "LETTERS\\A.SWT", "Letters/a.swt", "Letters\\.\\a.swt",
                             "Letters\\..\\Letters\\a.swt", "Letters\\a.swt. ", "\\Letters\\a.swt"})
        EXPECT_EQ(Contents(name), "here") << name;
}

TEST_F(FileContract, CopiesWithoutEverReplacing)
{
    Create("Folder");
    Write("from", "new");
    Write("taken", "old");
    // clang-format off
    Check(&FileSystem::CopyFile, {
        {"from", "Folder\\copy", {}}, {"from", "taken", error::FileExists}, {"from", "FROM", error::FileExists},
        {"missing", "copy", error::FileNotFound}, {"missing\\file", "copy", error::PathNotFound},
        {"from", "missing\\copy", error::PathNotFound}, {"Folder", "copy", error::AccessDenied},
        {"from", "a:stream", error::InvalidName}});
    // clang-format on
    EXPECT_EQ(Contents("Folder\\copy"), "new");
    EXPECT_EQ(Contents("taken"), "old");
    EXPECT_EQ(files.Stat(At("Folder\\copy")).value().modified, files.Stat(At("from")).value().modified);
    EXPECT_THAT(Names(), UnorderedElementsAre("Folder", "from", "taken"));
}

TEST_F(FileContract, MovesInOneRenameAndNeverReplaces)
{
    Create("Old");
    Create("Other");
    Write("Old\\a.swt", "a");
    Write("file", "f");
    Write("taken", "t");
    // clang-format off
    Check(&FileSystem::Move, {
        {"Old", "OLD", {}}, {"OLD", "Other\\New", {}}, {"file", "taken", error::AlreadyExists},
        {"file", "Other", error::AlreadyExists}, {"Other", "taken", error::AlreadyExists},
        {"missing", "new", error::FileNotFound}, {"file", "missing\\new", error::PathNotFound},
        {"file", "new*", error::InvalidName}, {"file", "Other\\renamed", {}}});
    // clang-format on
    EXPECT_FALSE(files.Move(At("Other"), At("Other\\New\\below"))) << "into itself";

    EXPECT_THAT(Names(), UnorderedElementsAre("Other", "taken"));
    EXPECT_EQ(Contents("Other\\New\\a.swt"), "a");
    EXPECT_EQ(Contents("Other\\renamed"), "f");
    EXPECT_EQ(Contents("taken"), "t");
}

TEST_F(FileContract, RemovesOnlyWhatMayGo)
{
    Create("full");
    Write("full\\kept", "k");
    Create("empty");
    Write("file");
    Write("protected", "p");
    under->SetReadOnly(At("protected"));

    const auto deleteFile = &FileSystem::DeleteFile;
    const auto removeFolder = &FileSystem::RemoveFolder;
    const auto makeWritable = &FileSystem::MakeWritable;
    const struct {
        Result<> (FileSystem::*remove)(std::string_view);
        const char* name;
        Error expected;
    } rows[] = {
        // clang-format off
        {deleteFile, "protected", error::AccessDenied}, {deleteFile, "empty", error::AccessDenied},
        {deleteFile, "missing", error::FileNotFound}, {deleteFile, "missing\\file", error::PathNotFound},
        {deleteFile, "f*", error::InvalidName}, {deleteFile, "file", {}},
        {removeFolder, "full", error::DirectoryNotEmpty}, {removeFolder, "protected", error::InvalidFolder},
        {removeFolder, "missing", error::FileNotFound}, {removeFolder, "empty", {}},
        {makeWritable, "missing", error::FileNotFound}, {makeWritable, "protected", {}}, {deleteFile, "protected", {}},
        // clang-format on
    };
    for (const auto& row : rows)
        EXPECT_EQ(CodeOf((files.*row.remove)(At(row.name))), row.expected.code) << row.name;
    EXPECT_THAT(Names(), UnorderedElementsAre("full"));
    EXPECT_EQ(Contents("full\\kept"), "k");
}

TEST_F(FileContract, CreatesOneFolderWithAPossibleName)
{
    Create("there");
    Write("file");
    for (const char* taken : {"there", "THERE", "file"})
        EXPECT_EQ(CodeOf(files.CreateFolder(At(taken))), error::AlreadyExists.code) << taken;
    EXPECT_EQ(CodeOf(files.CreateFolder(At("a\\b"))), error::PathNotFound.code);
    for (const char* impossible : {"a*b", "a?b", "a<b", "a>b", "a|b", "a\"b", "a:b", "a\tb"})
        EXPECT_EQ(CodeOf(files.CreateFolder(At(impossible))), error::InvalidName.code) << impossible;
    EXPECT_THAT(Names(), UnorderedElementsAre("there", "file"));
}

TEST_F(FileContract, WritesNewFilesOnlyAndReadsThemWholeUpToTheLimit)
{
    const std::string bytes{"a\0b\r\n\x1A\xFF", 7};
    const std::string large(300'000, 'x');
    EXPECT_EQ(files.Write(At("file"), bytes), Result<>{});
    EXPECT_EQ(files.Write(At("empty"), ""), Result<>{});
    EXPECT_EQ(files.Write(At("large"), large), Result<>{});
    EXPECT_EQ(CodeOf(files.Write(At("file"), "other")), error::FileExists.code);
    EXPECT_EQ(CodeOf(files.Write(At("missing\\file"), "x")), error::PathNotFound.code);
    EXPECT_EQ(CodeOf(files.Write(At("a*"), "x")), error::InvalidName.code);
    EXPECT_THAT(Names(), UnorderedElementsAre("file", "empty", "large"));

    EXPECT_EQ(files.Read(At("file"), 7).value(), bytes);
    EXPECT_EQ(files.Read(At("empty"), 0).value(), "");
    EXPECT_EQ(files.Read(At("large"), large.size()).value(), large);
    EXPECT_EQ(CodeOf(files.Read(At("file"), 6)), error::FileTooLarge.code);
    EXPECT_EQ(CodeOf(files.Read(At("missing"), 9)), error::FileNotFound.code);
    EXPECT_EQ(CodeOf(files.Read(folder, 9)), error::AccessDenied.code);
}

TEST_F(FileContract, ReadsRangesOfAFileThatMayGoMeanwhile)
{
    Write("file", "0123456789");
    const auto bytes = files.Open(At("file"));
    ASSERT_TRUE(bytes);
    EXPECT_EQ(files.DeleteFile(At("file")), Result<>{});
    EXPECT_EQ((*bytes)->Size(), 10u);
    const struct {
        std::uint64_t offset;
        std::size_t room;
        const char* expected;
    } cases[] = {{0, 3, "012"},       {7, 3, "789"}, {7, 9, "789"}, {10, 1, ""},
                 {1ull << 40, 4, ""}, {2, 0, ""},    {1, 2, "12"}};
    for (const auto& [offset, room, expected] : cases) {
        std::string found(room, '-');
        found.resize((*bytes)->Read(offset, found));
        EXPECT_EQ(found, expected) << offset;
    }
    EXPECT_EQ(CodeOf(files.Open(At("missing"))), error::FileNotFound.code);
    EXPECT_EQ(CodeOf(files.Open(folder)), error::AccessDenied.code);
}

TEST_F(FileContract, ReplacesAFileInOneStep)
{
    Create("Folder");
    Write("new", "n");
    Write("old", "o");
    Write("protected", "p");
    under->SetReadOnly(At("protected"));
    // clang-format off
    Check(&FileSystem::Replace, {
        {"new", "protected", error::AccessDenied}, {"new", "Folder", error::AccessDenied},
        {"Folder", "old", error::AccessDenied}, {"missing", "old", error::FileNotFound},
        {"new", "missing\\file", error::PathNotFound}, {"new", "old", {}}, {"old", "Folder\\free", {}}});
    // clang-format on
    EXPECT_EQ(Contents("Folder\\free"), "n");
    EXPECT_EQ(Contents("protected"), "p");
    EXPECT_THAT(Names(), UnorderedElementsAre("Folder", "protected"));
}

TEST_F(FileContract, PathsCanBeLongerThanTheClassicBound)
{
    const std::string deep = under->MakeDeepFolder();
    const std::string file = path::Join(deep, "file.swt");
    Write(file, "deep");

    EXPECT_THAT(Names(deep), ElementsAre("file.swt"));
    EXPECT_EQ(files.Stat(At(file)).value().size, 4u);
    EXPECT_TRUE(files.CopyFile(At(file), At(file + "2")));
    EXPECT_TRUE(files.Move(At(file + "2"), At(file + "3")));
    EXPECT_EQ(Contents(file + "3"), "deep");
    EXPECT_TRUE(files.DeleteFile(At(file)));
    EXPECT_TRUE(files.DeleteFile(At(file + "3")));
    EXPECT_TRUE(files.RemoveFolder(At(deep)));
}

} // namespace
