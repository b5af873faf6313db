#include "platform/win32/Win32Web.h"
#include "tests/support/win32/LoopbackServer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

using namespace platform;
using namespace std::chrono_literals;
using support::LoopbackServer;

namespace {

constexpr std::size_t Room = 256 * 1024;

/// A server that answers by the name that is asked for, and the downloader that asks it.
class Win32WebTest : public testing::Test {
protected:
    win32::Win32Web web;
    Cancelled cancelled{false};
    LoopbackServer server{[](const std::string& target, LoopbackServer::Client& client) {
        if (target.starts_with("/page"))
            client.Send(LoopbackServer::Page("<title>a</title>"));
        else if (target == "/moved")
            client.Send(LoopbackServer::Redirect("file:///C:/x.htm"));
        else if (target == "/gone")
            client.Send("HTTP/1.0 404 Not Found\r\n\r\nnothing");
        else if (target == "/endless")
            for (client.Send("HTTP/1.0 200 OK\r\n\r\n"); client.Send(std::string(65536, 'x'));) {
            }
        else if (target == "/slow")
            // The first byte comes with the head: a system may then wait for all that was asked for, on the caller's
            // thread.
            for (client.Send("HTTP/1.0 200 OK\r\n\r\nx"); client.Send("x");)
                std::this_thread::sleep_for(20ms);
        else
            client.Wait();
    }};

    Result<WebReply> Get(const std::string& name, std::chrono::milliseconds time = 20s)
    {
        return web.Get(server.Address() + name, {time, Room}, cancelled);
    }
};

TEST_F(Win32WebTest, TellsWhatTheServerAnswersAndFollowsNothing)
{
    const auto page = Get("page?a=%20b&c=1#place");
    ASSERT_TRUE(page);
    EXPECT_EQ(page->status, 200);
    EXPECT_EQ(page->body, "<title>a</title>");
    const auto moved = Get("moved");
    ASSERT_TRUE(moved);
    EXPECT_EQ(moved->status, 302);
    EXPECT_EQ(moved->location, "file:///C:/x.htm");
    const auto gone = Get("gone");
    ASSERT_TRUE(gone);
    EXPECT_EQ(gone->status, 404);
    EXPECT_EQ(gone->body, "nothing");
    EXPECT_EQ(server.Targets(), (std::vector<std::string>{"/page?a=%20b&c=1", "/moved", "/gone"}));
}

TEST_F(Win32WebTest, KeepsItsBounds)
{
    const auto endless = Get("endless");
    ASSERT_TRUE(endless);
    EXPECT_EQ(endless->body.size(), Room);
    EXPECT_EQ(Get("silent", 300ms).error(), error::Timeout);
    EXPECT_EQ(Get("slow", 300ms).error(), error::Timeout);
    EXPECT_EQ(web.Get("http://127.0.0.1:1/", {20s, Room}, cancelled).error(), error::CannotConnect);
}

TEST_F(Win32WebTest, EndsSoonWhenNobodyWaitsAnyMore)
{
    for (const char* name : {"silent", "slow"}) {
        cancelled = false;
        std::chrono::steady_clock::time_point asked;
        std::thread other{[&] {
            std::this_thread::sleep_for(200ms);
            asked = std::chrono::steady_clock::now();
            cancelled = true;
        }};
        EXPECT_EQ(Get(name).error(), error::Cancelled) << name;
        const auto after = std::chrono::steady_clock::now();
        other.join();
        EXPECT_LT(after - asked, 5s) << name << ": long before its own time was over";
    }
}

} // namespace
