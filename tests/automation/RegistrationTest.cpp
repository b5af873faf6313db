#include "tests/automation/Harness.h"
#include "tests/automation/StandIn.h"

#include <gtest/gtest.h>

namespace {

using harness::RegistrationTree;

class RegistrationTest : public testing::Test {
protected:
    RegistrationTest()
    {
        // Takes over what another copy may have registered, and away.
        Run(L"/RegServer");
        Run(L"/UnregServer");
    }
    ~RegistrationTest() override { Run(L"/UnregServer"); }

    static DWORD Run(const std::wstring& arguments) { return harness::Child{Server(), arguments}.ExitCode(); }
    static std::wstring Server() { return harness::OwnFolder() + stand_in::ExeName; }

    static std::wstring Value(HKEY root, const std::wstring& key)
    {
        wchar_t text[512]{};
        DWORD bytes = sizeof text;
        RegGetValueW(root, (L"Software\\Classes\\" + key).c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text, &bytes);
        return text;
    }
    static void Write(const std::wstring& key, const wchar_t* name, const std::wstring& data)
    {
        RegSetKeyValueW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + key).c_str(), name, REG_SZ, data.c_str(),
                        static_cast<DWORD>((data.size() + 1) * sizeof(wchar_t)));
    }
    static std::wstring ClassKey()
    {
        wchar_t id[39];
        StringFromGUID2(CLSID_clsBrowser, id, 39);
        return std::wstring{L"CLSID\\"} + id;
    }
};

TEST_F(RegistrationTest, IsTakenBackCompletelyHoweverOftenItWasMade)
{
    const auto before = RegistrationTree(HKEY_LOCAL_MACHINE);

    ASSERT_EQ(Run(L"/RegServer"), 0u);
    const auto registered = RegistrationTree(HKEY_LOCAL_MACHINE);
    EXPECT_NE(registered, before);
    EXPECT_EQ(Run(L"-regserver"), 0u);
    EXPECT_EQ(RegistrationTree(HKEY_LOCAL_MACHINE), registered);

    EXPECT_EQ(Run(L"-UNREGSERVER"), 0u);
    EXPECT_EQ(RegistrationTree(HKEY_LOCAL_MACHINE), before);
    EXPECT_EQ(Run(L"/UnregServer"), 0u);
    EXPECT_EQ(RegistrationTree(HKEY_LOCAL_MACHINE), before);
}

TEST_F(RegistrationTest, LeadsFromTheNameToTheQuotedProgram)
{
    ASSERT_EQ(Run(L"/RegServer"), 0u);
    const std::wstring current = Value(HKEY_LOCAL_MACHINE, L"TSBrowser.clsBrowser\\CurVer");
    const std::wstring classId = Value(HKEY_LOCAL_MACHINE, current + L"\\CLSID");
    EXPECT_EQ(classId, Value(HKEY_LOCAL_MACHINE, L"TSBrowser.clsBrowser\\CLSID"));
    const std::wstring key = L"CLSID\\" + classId;
    EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, key + L"\\LocalServer32"), L'"' + Server() + L'"');

    const std::wstring library = L"TypeLib\\" + Value(HKEY_LOCAL_MACHINE, key + L"\\TypeLib") + L"\\2.2\\0\\";
    EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, library + (sizeof(void*) == 8 ? L"win64" : L"win32")), Server());
    // Hosts of both bitnesses find how calls are carried across.
    wchar_t interfaceId[39];
    StringFromGUID2(IID__clsBrowser, interfaceId, 39);
    const auto tree = RegistrationTree(HKEY_LOCAL_MACHINE);
    for (const std::wstring view : {L"32:", L"64:"}) {
        const auto row = tree.find(view + L"Interface\\" + interfaceId + L"\\ProxyStubClsid32\\=");
        ASSERT_NE(row, tree.end());
        EXPECT_EQ(row->second, L"1:{00020424-0000-0000-C000-000000000046}");
    }
}

TEST_F(RegistrationTest, LeavesWhatOthersPutThere)
{
    ASSERT_EQ(Run(L"/RegServer"), 0u);
    Write(ClassKey(), L"AppID", L"{someone}");
    Write(ClassKey() + L"\\Their Key", nullptr, L"theirs");
    Write(L"TSBrowser.clsBrowser", nullptr, L"renamed by someone");
    EXPECT_EQ(Run(L"/UnregServer"), 0u);

    const auto left = RegistrationTree(HKEY_LOCAL_MACHINE);
    EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, ClassKey() + L"\\Their Key"), L"theirs");
    EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, L"TSBrowser.clsBrowser"), L"renamed by someone");
    EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, ClassKey()), L"");
    EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, ClassKey() + L"\\LocalServer32"), L"");
    EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, L"TSBrowser.clsBrowser\\CLSID"), L"");

    RegDeleteTreeW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + ClassKey()).c_str());
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\TSBrowser.clsBrowser");
}

TEST_F(RegistrationTest, LeavesTheRegistrationOfAnotherCopy)
{
    const std::wstring other = harness::OwnFolder() + L"another copy.exe";
    ASSERT_TRUE(CopyFileW(Server().c_str(), other.c_str(), FALSE));
    EXPECT_EQ((harness::Child{other, L"/RegServer"}.ExitCode()), 0u);
    const auto registered = RegistrationTree(HKEY_LOCAL_MACHINE);

    EXPECT_EQ(Run(L"/UnregServer"), 0u);
    EXPECT_EQ(RegistrationTree(HKEY_LOCAL_MACHINE), registered);

    EXPECT_EQ((harness::Child{other, L"/UnregServer"}.ExitCode()), 0u);
    DeleteFileW(other.c_str());
}

TEST_F(RegistrationTest, ForOneUserWritesOnlyThatUsersClass)
{
    // A new user has no classes yet; the key above ours is the system's and stays.
    HKEY classes{};
    ASSERT_EQ(
        RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Classes", 0, nullptr, 0, KEY_READ, nullptr, &classes, nullptr),
        ERROR_SUCCESS);
    RegCloseKey(classes);
    const auto usersBefore = RegistrationTree(HKEY_CURRENT_USER);
    ASSERT_EQ(Run(L"/RegServer /PerUser"), 0u);
    EXPECT_EQ(Value(HKEY_CURRENT_USER, ClassKey() + L"\\LocalServer32"), L'"' + Server() + L'"');
    EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, ClassKey() + L"\\LocalServer32"), L"");
    EXPECT_EQ(Run(L"/UnregServer /PerUser"), 0u);
    EXPECT_EQ(RegistrationTree(HKEY_CURRENT_USER), usersBefore);
}

TEST_F(RegistrationTest, RefusesAnUnknownCommandLineSilently)
{
    const auto before = RegistrationTree(HKEY_LOCAL_MACHINE);
    EXPECT_EQ(Run(L"/Install"), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(RegistrationTree(HKEY_LOCAL_MACHINE), before);
}

} // namespace
