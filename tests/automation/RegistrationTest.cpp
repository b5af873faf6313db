#include "automation/WindowsHeader.h"
#include "tests/automation/StandIn.h"
#include "tests/support/win32/Process.h"
#include "tests/support/win32/Registry.h"

#include <gtest/gtest.h>

namespace {

using namespace support;

const std::wstring Classes = L"Software\\Classes\\";

std::wstring Braced(const GUID& id)
{
    wchar_t text[39];
    StringFromGUID2(id, text, 39);
    return text;
}

std::wstring Value(HKEY root, const std::wstring& key)
{
    return TextAt(root, Classes + key);
}

/// The keys and values of our class, interface, type library and names in the views of both bitnesses, and how many
/// keys stand beside them.
std::map<REGSAM, RegistryTree> Registered(HKEY root = HKEY_LOCAL_MACHINE)
{
    std::map<REGSAM, RegistryTree> trees;
    for (const REGSAM view : {KEY_WOW64_32KEY, KEY_WOW64_64KEY}) {
        for (const std::wstring& own : {L"CLSID\\" + Braced(CLSID_clsBrowser), L"Interface\\" + Braced(IID__clsBrowser),
                                        L"TypeLib\\" + Braced(LIBID_TSBrowser), std::wstring{L"TSBrowser.clsBrowser"},
                                        std::wstring{L"TSBrowser.clsBrowser.1"}})
            trees[view].merge(ReadRegistry(root, Classes + own, view));
        for (const wchar_t* const place : {L"", L"CLSID", L"Interface", L"TypeLib"}) {
            HKEY key{};
            DWORD children = 0;
            RegOpenKeyExW(root, (Classes + place).c_str(), 0, KEY_READ | view, &key);
            RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &children, nullptr, nullptr, nullptr, nullptr, nullptr,
                             nullptr, nullptr);
            RegCloseKey(key);
            trees[view][place].first = children;
        }
    }
    return trees;
}

class RegistrationTest : public testing::Test {
protected:
    RegistrationTest()
    {
        // Takes over what another copy may have registered, and away.
        Run(L"/RegServer");
        Run(L"/UnregServer");
    }
    ~RegistrationTest() override { Run(L"/UnregServer"); }

    static DWORD Run(const std::wstring& arguments, const wchar_t* exe = stand_in::ExeName)
    {
        return Child{OwnFolder() / exe, arguments}.ExitCode();
    }

    const std::wstring server = (OwnFolder() / stand_in::ExeName).wstring();
    const std::wstring classKey = L"CLSID\\" + Braced(CLSID_clsBrowser);
};

TEST_F(RegistrationTest, LeadsFromTheNameToTheQuotedProgramAndIsTakenBackCompletely)
{
    const auto before = Registered();
    ASSERT_EQ(Run(L"/RegServer"), 0u);
    const auto registered = Registered();
    EXPECT_EQ(Run(L"-regserver"), 0u);
    EXPECT_TRUE(Registered() == registered);

    const std::wstring current = Value(HKEY_LOCAL_MACHINE, L"TSBrowser.clsBrowser\\CurVer");
    for (const std::wstring& name : {current, std::wstring{L"TSBrowser.clsBrowser"}})
        EXPECT_EQ(L"CLSID\\" + Value(HKEY_LOCAL_MACHINE, name + L"\\CLSID"), classKey);
    EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, classKey + L"\\LocalServer32"), L'"' + server + L'"');
    const std::wstring library = L"TypeLib\\" + Value(HKEY_LOCAL_MACHINE, classKey + L"\\TypeLib") + L"\\2.2\\0\\";
    EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, library + (sizeof(void*) == 8 ? L"win64" : L"win32")), server);
    // Hosts of both bitnesses find how calls are carried across.
    const std::wstring carrier = Classes + L"Interface\\" + Braced(IID__clsBrowser) + L"\\ProxyStubClsid32\\=";
    for (const auto& [view, tree] : registered) {
        ASSERT_TRUE(tree.contains(carrier)) << view;
        EXPECT_STREQ(reinterpret_cast<const wchar_t*>(tree.at(carrier).second.c_str()),
                     L"{00020424-0000-0000-C000-000000000046}");
    }

    for (const wchar_t* const again : {L"-UNREGSERVER", L"/UnregServer"}) {
        EXPECT_EQ(Run(again), 0u);
        EXPECT_TRUE(Registered() == before);
    }
    EXPECT_EQ(Run(L"/Install"), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_TRUE(Registered() == before);
}

TEST_F(RegistrationTest, LeavesWhatOthersPutThere)
{
    ASSERT_EQ(Run(L"/RegServer"), 0u);
    SetText(HKEY_LOCAL_MACHINE, Classes + classKey, L"AppID", L"{someone}");
    SetText(HKEY_LOCAL_MACHINE, Classes + classKey + L"\\Their Key", L"", L"theirs");
    SetText(HKEY_LOCAL_MACHINE, Classes + L"TSBrowser.clsBrowser", L"", L"renamed by someone");
    EXPECT_EQ(Run(L"/UnregServer"), 0u);

    EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, classKey + L"\\Their Key"), L"theirs");
    EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, L"TSBrowser.clsBrowser"), L"renamed by someone");
    for (const std::wstring& ours :
         {classKey, classKey + L"\\LocalServer32", std::wstring{L"TSBrowser.clsBrowser\\CLSID"}})
        EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, ours), L"");
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, (Classes + classKey).c_str());
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, (Classes + L"TSBrowser.clsBrowser").c_str());

    // Registered by its short names, as an installer may start it; taken back by the long ones.
    const auto before = Registered();
    wchar_t shortName[MAX_PATH];
    ASSERT_LT(0u, GetShortPathNameW(server.c_str(), shortName, MAX_PATH));
    ASSERT_NE(shortName, server);
    EXPECT_EQ(Run(L"/RegServer"), 0u);
    SetText(HKEY_LOCAL_MACHINE, Classes + classKey + L"\\LocalServer32", L"", L'"' + std::wstring{shortName} + L'"');
    EXPECT_EQ(Run(L"/UnregServer"), 0u);
    EXPECT_TRUE(Registered() == before);

    // Another copy of the program.
    constexpr wchar_t other[] = L"another copy.exe";
    ASSERT_TRUE(CopyFileW(server.c_str(), (OwnFolder() / other).c_str(), FALSE));
    EXPECT_EQ(Run(L"/RegServer", other), 0u);
    const auto registered = Registered();
    EXPECT_EQ(Run(L"/UnregServer"), 0u);
    EXPECT_TRUE(Registered() == registered);
    EXPECT_EQ(Run(L"/UnregServer", other), 0u);
    std::filesystem::remove(OwnFolder() / other);
}

TEST_F(RegistrationTest, ForOneUserWritesOnlyThatUsersClass)
{
    // A new user has no classes yet; the key above ours is the system's and stays.
    SetText(HKEY_CURRENT_USER, L"Software\\Classes", L"", L"");
    const auto before = Registered(HKEY_CURRENT_USER);
    ASSERT_EQ(Run(L"/RegServer /PerUser"), 0u);
    EXPECT_EQ(Value(HKEY_CURRENT_USER, classKey + L"\\LocalServer32"), L'"' + server + L'"');
    EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, classKey + L"\\LocalServer32"), L"");
    EXPECT_EQ(Run(L"/UnregServer /PerUser"), 0u);
    EXPECT_TRUE(Registered(HKEY_CURRENT_USER) == before);
}

} // namespace
