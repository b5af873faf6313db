#include "PlatformUnderTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace platform;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace {

constexpr Hive hive = Hive::CurrentUser;
const std::string root = "Software\\TSBrowserTests";

class RegistryContract : public testing::Test {
protected:
    std::unique_ptr<PlatformUnderTest> under{PlatformUnderTest::Make()};
    Registry& registry{under->Get().registry};

    void SetUp() override
    {
        Clear(root);
        ASSERT_TRUE(registry.CreateKey(hive, root));
    }
    void TearDown() override { Clear(root); }

    void Clear(const std::string& key)
    {
        for (const std::string& name : registry.SubKeys(hive, key).value_or(std::vector<std::string>{}))
            Clear(key + "\\" + name);
        (void)registry.DeleteKey(hive, key);
    }
    static std::string Below(std::string_view key) { return root + "\\" + std::string{key}; }
};

TEST_F(RegistryContract, KeepsValuesOfEveryTypeUnchanged)
{
    using namespace std::string_literals;
    const RegistryValue rows[] = {
        // clang-format off
        {ValueType::String, ""}, {ValueType::String, "Größe € 😀"}, {ValueType::String, "before\0after"s},
        {ValueType::String, std::string(255, 'x')}, // with its terminator just as long as the first buffer
        {ValueType::String, std::string(20'000, 'y')}, {ValueType::ExpandString, "%TEMP%\\x"},
        {ValueType::Binary, "\0\x01\xFF\0"s}, {ValueType::Binary, ""}, {ValueType::Dword, "\x12\0\0\x80"s},
        {ValueType::MultiString, "a\0\0\0\0\0"s}, {ValueType::None, "?"}, {ValueType{11}, "12345678"}, // 64 bits
        // clang-format on
    };
    for (const RegistryValue& value : rows) {
        ASSERT_TRUE(registry.Set(hive, root, "value", value));
        EXPECT_EQ(registry.Query(hive, root, "value"), value) << static_cast<std::uint32_t>(value.type);
    }
    EXPECT_THAT(registry.ValueNames(hive, root).value(), ElementsAre("value"));
}

TEST_F(RegistryContract, FindsNamesInAnyLetterCaseAndKeepsTheFirst)
{
    ASSERT_TRUE(registry.CreateKey(hive, Below("Ärger\\Below")));
    ASSERT_TRUE(registry.CreateKey(hive, Below("ÄRGER\\\\BELOW")));
    ASSERT_TRUE(registry.Set(hive, Below("ärger\\below"), "N\\äme", {ValueType::String, "1"}));
    ASSERT_TRUE(registry.Set(hive, Below("Ärger\\Below"), "N\\ÄME", {ValueType::String, "2"}));
    ASSERT_TRUE(registry.Set(hive, Below("Ärger\\Below"), "", {ValueType::String, "unnamed"}));

    EXPECT_THAT(registry.SubKeys(hive, root).value(), ElementsAre("Ärger"));
    EXPECT_THAT(registry.SubKeys(hive, Below("Ärger")).value(), ElementsAre("Below"));
    EXPECT_THAT(registry.ValueNames(hive, Below("Ärger\\below")).value(), UnorderedElementsAre("N\\äme", ""));
    EXPECT_EQ(registry.Query(hive, Below("Ärger\\Below"), "n\\ämE").value().data, "2");
    EXPECT_EQ(registry.Query(hive, Below("Ärger\\Below"), "").value().data, "unnamed");
}

TEST_F(RegistryContract, ListsSubKeysByNameAndEveryValueName)
{
    const std::vector<std::string> names{"beta", "Alpha", std::string(200, 'n')};
    for (const std::string& name : names) {
        ASSERT_TRUE(registry.CreateKey(hive, Below(name)));
        ASSERT_TRUE(registry.Set(hive, root, name + name, {}));
    }
    EXPECT_THAT(registry.SubKeys(hive, root).value(), ElementsAre("Alpha", "beta", names[2]));
    EXPECT_THAT(registry.ValueNames(hive, root).value(),
                UnorderedElementsAre("betabeta", "AlphaAlpha", names[2] + names[2]));
}

TEST_F(RegistryContract, WhatIsMissingIsNotMade)
{
    const auto missing = error::FileNotFound.code;
    const std::string key = Below("missing");
    EXPECT_EQ(CodeOf(registry.Query(hive, key, "v")), missing);
    EXPECT_EQ(CodeOf(registry.Query(hive, root, "v")), missing);
    EXPECT_EQ(CodeOf(registry.Set(hive, key, "v", {})), missing);
    EXPECT_EQ(CodeOf(registry.DeleteValue(hive, key, "v")), missing);
    EXPECT_EQ(CodeOf(registry.DeleteValue(hive, root, "v")), missing);
    EXPECT_EQ(CodeOf(registry.DeleteKey(hive, key)), missing);
    EXPECT_EQ(CodeOf(registry.SubKeys(hive, key)), missing);
    EXPECT_EQ(CodeOf(registry.ValueNames(hive, key)), missing);
    EXPECT_THAT(registry.SubKeys(hive, root).value(), ElementsAre());
}

TEST_F(RegistryContract, DeletesAKeyOnlyWhenNothingIsBelow)
{
    ASSERT_TRUE(registry.CreateKey(hive, Below("a\\b")));
    ASSERT_TRUE(registry.Set(hive, Below("a\\b"), "v", {ValueType::String, "x"}));
    EXPECT_EQ(CodeOf(registry.DeleteKey(hive, Below("a"))), error::AccessDenied.code);
    EXPECT_EQ(registry.Query(hive, Below("a\\b"), "v").value().data, "x");
    EXPECT_TRUE(registry.DeleteKey(hive, Below("a\\b")));
    EXPECT_TRUE(registry.DeleteKey(hive, Below("a")));
    EXPECT_EQ(CodeOf(registry.DeleteKey(hive, "")), error::AccessDenied.code) << "a whole hive";
}

TEST_F(RegistryContract, RefusesNamesThatWouldReachAnother)
{
    using namespace std::string_literals;
    ASSERT_TRUE(registry.CreateKey(hive, Below("key")));
    ASSERT_TRUE(registry.Set(hive, root, "name", {ValueType::String, "kept"}));
    const auto refused = error::InvalidParameter.code;
    EXPECT_EQ(CodeOf(registry.Set(hive, root, "name\0x"s, {})), refused);
    EXPECT_EQ(CodeOf(registry.DeleteValue(hive, root, "name\0x"s)), refused);
    EXPECT_EQ(CodeOf(registry.DeleteKey(hive, Below("key\0x"s))), refused);
    EXPECT_EQ(CodeOf(registry.CreateKey(hive, Below("new\0x"s))), refused);
    EXPECT_TRUE(registry.CreateKey(hive, Below("key\\" + std::string(255, 'k'))));
    EXPECT_EQ(CodeOf(registry.CreateKey(hive, Below(std::string(256, 'k')))), refused);
    EXPECT_EQ(registry.Query(hive, root, "name").value().data, "kept");
    EXPECT_THAT(registry.SubKeys(hive, root).value(), ElementsAre("key"));
}

} // namespace
