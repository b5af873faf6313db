#include "platform/Path.h"

#include <gtest/gtest.h>

using namespace platform;

TEST(PathTest, JoinsWithExactlyOneSeparator)
{
    const struct {
        const char *folder, *name, *expected;
    } rows[] = {
        // clang-format off
        {"C:\\a", "b", "C:\\a\\b"},                         {"C:\\a\\", "b", "C:\\a\\b"},
        {"C:\\a\\\\", "\\b", "C:\\a\\b"},                   {"C:", "b", "C:\\b"},
        {"C:\\", "b", "C:\\b"},                             {"", "b", "b"},
        {"C:\\a", "b\\c", "C:\\a\\b\\c"},                   {"C:/a/", "b", "C:/a\\b"},
        {"\\\\server\\share", "b", "\\\\server\\share\\b"},
        // clang-format on
    };
    for (const auto& row : rows)
        EXPECT_EQ(path::Join(row.folder, row.name), row.expected) << row.folder;
}

TEST(PathTest, TakesPathsApart)
{
    const struct {
        const char *path, *parent, *name;
    } rows[] = {
        // clang-format off
        {"C:\\a\\b.swt", "C:\\a", "b.swt"},       {"C:\\a\\\\b", "C:\\a", "b"},
        {"C:\\a", "C:", "a"},                     {"a", "", "a"},
        {"", "", ""},                             {"C:\\a\\", "C:", ""},
        {"Letters\\Formal", "Letters", "Formal"}, {"a/b\\c/d", "a/b", "c/d"},
        // clang-format on
    };
    for (const auto& row : rows) {
        EXPECT_EQ(path::Parent(row.path), row.parent) << row.path;
        EXPECT_EQ(path::Name(row.path), row.name) << row.path;
    }
}

TEST(PathTest, EndingsAreTheLastFourBytes)
{
    EXPECT_EQ(path::LastFour("a.swt"), ".swt");
    EXPECT_EQ(path::LastFour("swt"), "swt");
    EXPECT_EQ(path::WithoutLastFour("a.swt"), "a");
    EXPECT_EQ(path::WithoutLastFour("swt"), "");
}

TEST(PathTest, NormalizesWithoutLosingRootsAndShares)
{
    const struct {
        const char *path, *normalized, *trimmed;
    } rows[] = {
        // clang-format off
        {"C:\\", "C:\\", "C:\\"}, {"C:\\\\", "C:\\", "C:\\"}, {"C:", "C:", "C:"}, {"\\a", "\\a", "\\a"},
        {"a\\b\\", "a\\b", "a\\b"}, {"", "", ""}, {"C:/a//b/", "C:\\a\\b", "C:/a//b"},
        {"C:\\a\\\\b\\\\\\", "C:\\a\\b", "C:\\a\\\\b"},
        {"\\\\server\\share\\", "\\\\server\\share", "\\\\server\\share"},
        {"\\\\\\server\\\\share", "\\\\server\\share", "\\\\\\server\\\\share"},
        // clang-format on
    };
    for (const auto& row : rows) {
        EXPECT_EQ(path::Normalized(row.path), row.normalized) << row.path;
        EXPECT_EQ(path::WithoutTrailingSeparator(row.path), row.trimmed) << row.path;
    }
}

TEST(PathTest, SameIgnoresCaseAndSeparators)
{
    EXPECT_TRUE(path::Same("C:\\Vorlagen\\ÜBER", "c:/vorlagen\\\\über\\"));
    EXPECT_TRUE(path::Same("C:", "C:\\"));
    EXPECT_FALSE(path::Same("C:\\a", "C:\\a b"));
    EXPECT_FALSE(path::Same("\\\\a\\b", "\\a\\b"));
}

TEST(PathTest, BelowAFolderIsNotBesideIt)
{
    const struct {
        const char *path, *folder;
        bool isBelow;
    } rows[] = {
        // clang-format off
        {"C:\\a\\b", "C:\\a", true},     {"C:\\a\\b\\c", "C:\\a\\", true}, {"c:\\ÜBER\\b", "C:\\über", true},
        {"C:\\a", "C:\\", true},         {"Letters\\Old", "letters", true}, {"C:\\a", "C:\\a", false},
        {"C:\\ab\\c", "C:\\a", false},   {"D:\\a\\b", "C:\\a", false},       {"C:\\", "C:\\a", false},
        // clang-format on
    };
    for (const auto& row : rows)
        EXPECT_EQ(path::IsBelow(row.path, row.folder), row.isBelow) << row.path << " in " << row.folder;
}

TEST(PathTest, OnlyDrivesAndSharesAreAbsolute)
{
    for (const char* absolute : {"C:\\", "c:\\a", "C:/a", "\\\\server\\share", "//server/share/a"})
        EXPECT_TRUE(path::IsAbsolute(absolute)) << absolute;
    for (const char* other : {"", "C:", "C:a", "\\a", "a\\b", "\\\\server", "\\\\server\\", "\\\\?\\C:\\a",
                              "\\\\.\\COM1", "http://a/b", "1:\\a", "\\\\\\a"})
        EXPECT_FALSE(path::IsAbsolute(other)) << other;
}
