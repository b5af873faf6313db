#include "tests/endtoend/BrowserTest.h"
#include "tests/support/win32/LoopbackServer.h"

#include <chrono>

namespace endtoend {
namespace {

/// The browser, and an update service of the test.
class UpdateServiceTest : public BrowserTest {
protected:
    static constexpr const char* Offer =
        "<html><head><title>Update</title></head><body><form>"
        "<INPUT type=hidden name=IsUpdateRequired value=1>"
        "<input type='hidden' name='MessageText' value='Build 2 &lt;b&gt; &amp; more'>"
        "<input name=ProductPath value=\"C:\\Windows\\regedit.exe\"></form></body></html>";
    static HWND Message()
    {
        return FindTop(L"TSBrowserForm", [](HWND window) { return ButtonOf(window, L"O&K") != nullptr; });
    }
    void OpenAsking(const std::wstring& host)
    {
        Installation::Set(L"Options", L"WebHostPath", host);
        Installation::Set(L"Options", L"NotifyCount", L"0");
        EXPECT_TRUE(Open());
    }
    static std::wstring Wide(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }

    static constexpr wchar_t ProxyKey[] =
        L"Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings\\Connections";
    /// As the system's own dialog stores a proxy for all kinds of addresses.
    static void SetProxy(const std::string& proxy)
    {
        const auto number = [](std::size_t value) { return std::string{static_cast<char>(value), '\0', '\0', '\0'}; };
        constexpr std::size_t version = 0x46, directOrProxy = 3;
        const std::string stored = number(version) + number(1) + number(directOrProxy) + number(proxy.size()) + proxy +
                                   number(0) + number(0) + std::string(32, '\0');
        RegSetKeyValueW(HKEY_CURRENT_USER, ProxyKey, L"DefaultConnectionSettings", REG_BINARY, stored.data(),
                        static_cast<DWORD>(stored.size()));
    }
};

TEST_F(UpdateServiceTest, ShowsTheOfferBesideTheWindowAndOpensNoProgram)
{
    LoopbackServer server{
        [](const std::string&, LoopbackServer::Client& client) { client.Send(LoopbackServer::Page(Offer)); }};
    OpenAsking(Wide(server.Address()));
    const HWND message = Await(Message);
    ASSERT_TRUE(message);
    EXPECT_EQ(GetWindow(message, GW_OWNER), MainWindow());
    EXPECT_TRUE(IsWindowEnabled(MainWindow()));
    EXPECT_NE(GetForegroundWindow(), message);
    Press(ButtonOf(message, L"O&K"));
    EXPECT_EQ(AnswerBox(), L"Tessaly Desk: File not found.");
    EXPECT_TRUE(AwaitGone(message));
    EXPECT_TRUE(server.Targets().front().starts_with("/UpdateNotify.asp?MajorVersion=2&MinorVersion=2&"));
    Close();
}

/// A service that never answers, and a proxy: the browser opens and closes as if there were nothing.
TEST_F(UpdateServiceTest, WaitsForNoServiceAndAsksThroughTheUsersProxy)
{
    LoopbackServer server{[](const std::string&, LoopbackServer::Client& client) { client.Wait(); }};
    std::size_t before = 0;
    const auto reached = [&] { return server.Targets().size() > before; };
    OpenAsking(Wide(server.Address()));
    EXPECT_TRUE(WaitFor(reached));
    EXPECT_FALSE(Message());
    const auto closing = std::chrono::steady_clock::now();
    Close();
    EXPECT_LT(std::chrono::steady_clock::now() - closing, std::chrono::seconds{10}) << "it waits for nobody";
    // The user's proxy is used; and when it is dead, nobody gets to the service any more.
    const BorrowedKey connections{HKEY_CURRENT_USER, ProxyKey};
    before = server.Targets().size();
    SetProxy(server.Address().substr(std::string_view{"http://"}.size()));
    OpenAsking(L"http://nowhere.invalid/");
    EXPECT_TRUE(WaitFor(reached));
    EXPECT_TRUE(server.Targets().back().starts_with("http://nowhere.invalid"));
    Close();
    SetProxy("127.0.0.1:1");
    before = server.Targets().size();
    OpenAsking(Wide(server.Address()));
    EXPECT_FALSE(WaitFor(reached, std::chrono::seconds{1}));
    Close();
    EXPECT_FALSE(SystemDialog());
}

} // namespace
} // namespace endtoend
