#include "automation/WindowsHeader.h"
#include "tests/automation/StandIn.h"
#include "tests/support/win32/Process.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using namespace support;

std::filesystem::path Server()
{
    return OwnFolder() / stand_in::ExeName;
}

/// An early-bound host.
class Host {
public:
    explicit Host(int attempts = 1)
    {
        HRESULT created = E_FAIL;
        while (attempts-- > 0 && FAILED(created))
            created = CoCreateInstance(CLSID_clsBrowser, nullptr, CLSCTX_LOCAL_SERVER, IID__clsBrowser,
                                       reinterpret_cast<void**>(&object));
        if (created != S_OK)
            throw std::runtime_error{"the object cannot be created: " + std::to_string(created)};
    }
    ~Host() { Release(); }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    void Release()
    {
        if (object)
            object->Release();
        object = nullptr;
    }

    HRESULT Start(const wchar_t* hostKind, std::wstring* answer = nullptr)
    {
        BSTR texts[] = {SysAllocString(hostKind), SysAllocString(L"2"), SysAllocString(L"\u00FC\u65E5"), nullptr,
                        SysAllocString(L" c ")};
        BSTR result = nullptr;
        const HRESULT outcome = object->Start(&texts[0], texts[1], &texts[2], &texts[3], &texts[4], &result);
        if (answer)
            answer->assign(result ? result : L"", SysStringLen(result));
        EXPECT_STREQ(texts[4], L" c ");
        for (const BSTR text : {texts[0], texts[1], texts[2], texts[3], texts[4], result})
            SysFreeString(text);
        return outcome;
    }

private:
    _clsBrowser* object{};
};

class HostTest : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        ASSERT_EQ((Child{Server(), L"/RegServer"}.ExitCode()), 0u);
    }
    static void TearDownTestSuite()
    {
        EXPECT_EQ((Child{Server(), L"/UnregServer"}.ExitCode()), 0u);
        CoUninitialize();
    }
    ~HostTest() override
    {
        CloseWindows();
        EXPECT_TRUE(WaitFor([] { return CountProcesses(stand_in::ExeName) == 0; })) << "the server stays";
        EndProcesses(stand_in::ExeName);
    }

    static HWND Window() { return FindWindowW(stand_in::WindowClass, nullptr); }
    static void CloseWindows()
    {
        while (const HWND window = Window()) {
            PostMessageW(window, WM_CLOSE, 0, 0);
            if (!WaitFor([window] { return !IsWindow(window); }))
                return;
        }
    }
};

TEST_F(HostTest, CarriesTextsBothWaysAndTurnsAnExceptionIntoAnErrorCode)
{
    Host host;
    std::wstring answer;
    EXPECT_EQ(host.Start(L"host", &answer), S_OK);
    EXPECT_EQ(answer, L"host|2|\u00FC\u65E5|| c ");
    CloseWindows();
    EXPECT_EQ(host.Start(L"THROWS"), E_FAIL);
    EXPECT_EQ(host.Start(L"OUT OF MEMORY"), E_OUTOFMEMORY);
    EXPECT_EQ(host.Start(L"FAILS"), S_OK);
}

TEST_F(HostTest, LivesWhileTheWindowIsOpenOrAHostHoldsTheObject)
{
    Host first;
    EXPECT_EQ(first.Start(L"first"), S_OK);
    first.Release();

    // The window keeps the process, which offers the object to the next host.
    Host second;
    EXPECT_EQ(CountProcesses(stand_in::ExeName), 1);
    std::wstring answer;
    EXPECT_EQ(second.Start(L"second", &answer), S_OK);
    EXPECT_EQ(answer, L"refused");

    // The object keeps the process when the window is closed, and opens the next one.
    CloseWindows();
    EXPECT_EQ(second.Start(L"again", &answer), S_OK);
    EXPECT_TRUE(answer.starts_with(L"again|"));
    CloseWindows();
    EXPECT_EQ(CountProcesses(stand_in::ExeName), 1);
    second.Release();
    EXPECT_TRUE(WaitFor([] { return CountProcesses(stand_in::ExeName) == 0; }));
}

TEST_F(HostTest, ServesAHostThatComesAsTheProcessEnds)
{
    for (int i = 0; i < 5; ++i) {
        // Where the system cannot suspend a class, the call breaks with the process, and the host asks again.
        Host late{6};
        EXPECT_EQ(late.Start(L"CLOSES AT ONCE"), S_OK);
    }
}

TEST_F(HostTest, PutsCallsOffWhileADialogIsOpen)
{
    Host host;
    EXPECT_EQ(host.Start(L"with a dialog"), S_OK);
    SendMessageW(Window(), stand_in::DialogMessage, 1, 0);
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(host.Start(L"in a loop"), RPC_E_SERVERCALL_RETRYLATER);
    // References and new objects are not the dialog's business; late-bound calls are.
    Script late{"Set b = CreateObject(\"TSBrowser.clsBrowser\")\r\nOn Error Resume Next\r\n"
                "r = b.Start(\"FAILS\", \"\", \"\", \"\", \"\")\r\nWScript.Echo \"[\" & r & \"]\" & Err.Number\r\n"
                "Set b = Nothing\r\n"};
    EXPECT_EQ(late.OutputAtEnd(), "[]" + std::to_string(RPC_E_SERVERCALL_RETRYLATER) + "\n");
    const Host other;

    SendMessageW(Window(), stand_in::DialogMessage, 0, 0);
    std::wstring answer;
    EXPECT_EQ(host.Start(L"in a loop", &answer), S_OK);
    EXPECT_EQ(answer, L"refused");
}

TEST_F(HostTest, EndsWhenNoHostComes)
{
    SetEnvironmentVariableW(stand_in::PatienceVariable, L"200");
    Child server{Server(), L"-Embedding"};
    SetEnvironmentVariableW(stand_in::PatienceVariable, nullptr);
    EXPECT_EQ(server.ExitCode(), 0u);
}

TEST_F(HostTest, LooksForNoLibraryBesideTheProgram)
{
    const auto planted = OwnFolder() / stand_in::PlantedLibrary;
    std::filesystem::copy_file(Server(), planted, std::filesystem::copy_options::overwrite_existing);
    EXPECT_NE(LoadLibraryW(planted.c_str()), nullptr) << "it could be loaded";
    Host host;
    std::wstring answer;
    EXPECT_EQ(host.Start(L"LOADS BY NAME", &answer), S_OK);
    EXPECT_EQ(answer, L"not found");
    FreeLibrary(GetModuleHandleW(stand_in::PlantedLibrary));
    std::filesystem::remove(planted);
}

TEST_F(HostTest, TakesWhateverAScriptPasses)
{
    const struct {
        const char* call;
        const char* printed;
    } rows[] = {
        {R"(r = b.Start("FAILS", "2", "3", "4", "5"))", "FAILS|2|3|4|5"},
        {R"(k = "FAILS" : a = "2" : c = "3" : d = "4" : e = "5" : r = b.Start(k, a, c, d, e))", "FAILS|2|3|4|5"},
        {R"(c = "x" : r = b.Start("FAI" & "LS", c & "y", Trim(" z "), (c), UCase(c)))", "FAILS|xy|z|x|X"},
        {R"(n = 7 : r = b.Start("FAILS", 2, n, -1, 1.5))", "FAILS|2|7|-1|1.5"},
        {R"(Dim never : r = b.Start("FAILS", never, never, Empty, ""))", "FAILS||||"},
        {R"(Dim l(1) : l(0) = "in a list" : r = b.Start("FAILS", l(0), l(0), l(1), ""))",
         "FAILS|in a list|in a list||"},
        {R"(b.Start "FAILS", "2", "3", "4", "5" : r = "no result wanted")", "no result wanted"},
        {R"(On Error Resume Next : r = b.Start("FAILS") : r = Err.Number)", "450"},
        {R"(On Error Resume Next : r = b.Start("FAILS", "", Null, "", "") : r = Err.Number)", "13"},
        {R"(On Error Resume Next : r = b.Stop() : r = Err.Number)", "438"},
        {R"(k = "FAILS" : c = " c " : r = b.Start(k, "", "", "", c) : r = k & c)", "FAILS c "},
    };
    std::string script = "Set keeper = CreateObject(\"TSBrowser.clsBrowser\")\r\n";
    std::string expected;
    int number = 0;
    for (const auto& row : rows) {
        const std::string name = "Row" + std::to_string(++number);
        script += "Sub " + name + "()\r\nDim b, r\r\nSet b = CreateObject(\"TSBrowser.clsBrowser\")\r\n" + row.call +
                  "\r\nWScript.Echo r\r\nEnd Sub\r\n" + name + "\r\n";
        expected += std::string{row.printed} + "\n";
    }
    // Given back by the script: a host that ends first may take its release with it.
    EXPECT_EQ(Script{script + "Set keeper = Nothing\r\n"}.OutputAtEnd(), expected);
}

TEST_F(HostTest, ServesScriptHostsOfTheOtherBitness)
{
    for (const wchar_t* const folder : {L"sysnative", L"syswow64"}) {
        if (!std::filesystem::exists(ScriptHost(folder)))
            continue;
        Script host{"Set b = CreateObject(\"TSBrowser.clsBrowser.1\")\r\n"
                    "WScript.Echo b.Start(\"FAILS\", \"\", \"\", \"\", \"\")\r\nSet b = Nothing\r\n",
                    folder};
        EXPECT_EQ(host.OutputAtEnd(), "FAILS||||\n") << folder;
    }
}

TEST_F(HostTest, OutlivesAHostThatIsKilled)
{
    {
        Script doomed{"Set b = CreateObject(\"TSBrowser.clsBrowser\")\r\n"
                      "b.Start \"killed\", \"\", \"\", \"\", \"\"\r\n"
                      "WScript.Echo \"started\"\r\n"
                      "Do\r\nLoop\r\n"};
        ASSERT_TRUE(WaitFor([&] { return doomed.Output() == "started\n"; }));
    }

    Host next;
    std::wstring answer;
    EXPECT_EQ(next.Start(L"next", &answer), S_OK);
    EXPECT_EQ(answer, L"refused");
    CloseWindows();
    EXPECT_EQ(next.Start(L"next", &answer), S_OK);
    EXPECT_TRUE(answer.starts_with(L"next|"));
    CloseWindows();
    next.Release();
    // The system takes back the references of a dead host after some minutes, and some systems never do.
    EndProcesses(stand_in::ExeName);
}

} // namespace
