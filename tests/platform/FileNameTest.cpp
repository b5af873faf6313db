#include "platform/FileName.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace platform;

TEST(FileNameTest, KnowsTheNamesThatTheSystemKeepsOrChanges)
{
    std::vector<std::string> reserved{"con",     "PRN", "Aux", "nul.txt",   "aux .x",    " con",     "CONIN$",
                                      "conout$", "a.",  "a ",  "com\u00B9", "LPT\u00B2", "lpt9.old", "COM\u00B3.x"};
    for (char digit = '1'; digit <= '9'; ++digit)
        for (const char* port : {"COM", "Lpt"})
            reserved.push_back(port + std::string{digit});
    for (const std::string& name : reserved)
        EXPECT_TRUE(file_name::IsReserved(name)) << name;
    for (const char* name : {"Console", "com", "com#", "COM0", "com10", "coma", "lpt\u2074", "x.con", "a.b", " a", "1"})
        EXPECT_FALSE(file_name::IsReserved(name)) << name;
}

TEST(FileNameTest, KnowsTheCharactersThatNoNameHolds)
{
    for (int c = 1; c < 0x80; ++c) {
        const std::string name{'a', static_cast<char>(c)};
        const bool forbidden = std::string{"\\/:*?\"<>|"}.find(static_cast<char>(c)) != std::string::npos;
        EXPECT_EQ(file_name::HasForbiddenCharacter(name), forbidden) << c;
        EXPECT_EQ(file_name::HasControlCharacter(name), c < 0x20) << c;
    }
    EXPECT_FALSE(file_name::HasControlCharacter("Größe 文書"));
    EXPECT_EQ(file_name::ForbiddenInPaths, ":*?\"<>|");
}
