#include "profiles/PhoneFormatter.h"
#include "profiles/FieldChecks.h"

#include <gtest/gtest.h>

using profiles::PhoneFormatter;

namespace {

const std::pair<const char*, const char*> shapes[] = {
    // clang-format off
    {"", "(none)"}, {"123456", "(none)"}, {"555123", "(none)"},
    // seven
    {"5551234", "555-1234"}, {"1234567", "123-4567"}, {"555123x", "(none)"}, {"+551234", "+55-1234"},
    {" 551234", "55-1234"},
    // eight
    {"18005551", "1-800-5551"}, {"55512345", "555-1234 5"}, {"5551234x", "555-1234 x"}, {"1551234x", "155-1234 x"},
    {"555123xx", "(none)"}, {"555.1234", "555-.123 4"}, {"555#1234", "(none)"}, {"5551234 ", "555-1234"},
    {"1234567 ", "1-234-567"},
    // nine
    {"12345678x", "1-234-5678 x"}, {"123456789", "1-234-5678 9"}, {"55512345x", "555-1234 5x"},
    {"555123456", "555-1234 56"}, {"5551234x1", "5-551234 x1"}, {"1551234x1", "1-551234 x1"}, {"555123x12", "(none)"},
    // ten
    {"8005551234", "(800) 555-1234"}, {"1005551234", "(100) 555-1234"}, {"55512345x1", "55-51234 5x1"},
    {"12345678x1", "1-234-5678 x1"}, {"5551234x12", "555-1234 x12"}, {"1234567x12", "123-4567 x12"},
    {"555123x123", "(none)"}, {"5551234 x1", "55-51234 x1"},
    // eleven
    {"18005551234", "1-800-555-1234"}, {"80055512345", "(800) 555-1234 5"}, {"8005551234x", "(800) 555-1234 x"},
    {"1005551234x", "(100) 555-1234 x"}, {"5551234 x12", "(none)"}, {"12345678x12", "(none)"},
    // twelve and more
    {"18005551234x", "1-800-555-1234 x"}, {"180055512345", "1-800-555-1234 5"}, {"80055512345x", "(800) 555-1234 5x"},
    {"8005551234x1", "(800) 555-1234 x1"}, {"1005551234x1", "(100) 555-1234 x1"}, {"12345678 ext", "1-234-5678 ext"},
    {"55512345 ext", "555-1234 5 ext"}, {"5551234 x123", "555-1234 x123"}, {"5551234ext 1", "555-1234 ext 1"}, {"1234567x 123", "123-4567 x 123"},
    {"555123 x1234", "555-123  x1234"}, {"8005551234 extension 99", "(800) 555-1234 extension 99"}, {"55512345ü日本", "(none)"}, {"55512345 ü日本", "555-1234 5 ü日本"},
    // blanks around do not keep a text from being numeric, but fill places like any character
    {"5551234   ", "(555) 123-4"}, {"  5551234", "5-5512 34"},
    // signs and separators are part of a number
    {"-5551234", "-55-5123 4"}, {"5,551234", "(none)"},
    // clang-format on
};

TEST(PhoneFormatterTest, GivesEachNumberItsShape)
{
    for (const auto& [typed, expected] : shapes)
        EXPECT_EQ(PhoneFormatter{'.'}.Format(typed).value_or("(none)"), expected) << typed;
}

TEST(PhoneFormatterTest, GoesByTheUsersDecimalSeparator)
{
    EXPECT_EQ(PhoneFormatter{','}.Format("555,1234"), "555-,123 4");
    EXPECT_EQ(PhoneFormatter{','}.Format("555.1234"), std::nullopt);
}

TEST(PhoneFormatterTest, RefusesTheCharactersOfTheTableAlone)
{
    for (const char c : std::string_view{"!@$%^&*?<>|;`~_/\\[]"})
        EXPECT_TRUE(PhoneFormatter{'.'}.Leave(std::string{"555"} + c + "1234").refused) << c;
    for (const char c : std::string_view{"#+.,:()-{}='\" x"})
        EXPECT_FALSE(PhoneFormatter{'.'}.Leave(std::string{"555"} + c + "1234").refused) << c;
}

TEST(PhoneFormatterTest, OneFlagServesAllFields)
{
    PhoneFormatter formatter{'.'};
    const auto left = [&](std::string_view text) { return formatter.Leave(text).text.value_or("(left)"); };
    EXPECT_EQ(left(""), "(left)");
    EXPECT_EQ(left("555-1234"), "(left)") << "has its separators, and the flag stays";
    EXPECT_EQ(left("12345"), "12345") << "no shape, but the turn is over";
    EXPECT_EQ(left("5551234"), "(left)");

    formatter.TextChanged("5");
    EXPECT_EQ(left("5551234"), "(left)");
    formatter.TextChanged("  "); // emptied
    EXPECT_EQ(left("5551234"), "555-1234");

    formatter.BeforeOvertyping("555", "5551234");
    EXPECT_EQ(left("8005551234"), "(left)");
    formatter.BeforeOvertyping(" 5551234", "5551234 "); // all of it
    EXPECT_EQ(left("8005551234 "), "(800) 555-1234");

    formatter.BeforeOvertyping("", "5");
    EXPECT_EQ(left("5551234"), "(left)");
    formatter.BeforeOvertyping("", ""); // the first key in an empty field
    EXPECT_TRUE(formatter.Leave("555*1234").refused);
    EXPECT_EQ(left("5551234"), "555-1234") << "a refusal leaves the flag";
}

TEST(FieldChecksTest, LetThroughTheirAlphabetsOnly)
{
    const struct {
        const char* text;
        bool state, zip;
    } checks[] = {
        {"", true, true},         {"New York", true, true},    {"azAZ", true, true},   {"N.Y.", false, false},
        {"K1A 0B1", false, true}, {"12345-6789", false, true}, {"@", false, false},    {"[", false, false},
        {"`", false, false},      {"{", false, false},         {"/", false, false},    {":", false, false},
        {"\t", false, false},     {"É", false, false},         {"a\nb", false, false},
    };
    for (const auto& check : checks) {
        EXPECT_EQ(profiles::IsStateText(check.text), check.state) << check.text;
        EXPECT_EQ(profiles::IsZipText(check.text), check.zip) << check.text;
    }
}

} // namespace
