#include "tests/support/win32/LoopbackServer.h"

#include <winsock2.h>

#include <stdexcept>

namespace support {
namespace {

/// Whether something has come, or with "room" whether something can be sent, within a glance.
bool IsReady(SOCKET socket, bool room = false)
{
    fd_set set;
    FD_ZERO(&set);
    FD_SET(socket, &set);
    timeval glance{0, 50'000};
    return select(0, room ? nullptr : &set, room ? &set : nullptr, nullptr, &glance) > 0;
}

} // namespace

bool LoopbackServer::Client::Send(const std::string& bytes)
{
    for (std::size_t sent = 0; sent < bytes.size();) {
        if (ending)
            return false;
        if (!IsReady(socket, true))
            continue;
        const int now = send(socket, bytes.data() + sent, static_cast<int>(bytes.size() - sent), 0);
        if (now <= 0)
            return false;
        sent += static_cast<std::size_t>(now);
    }
    return true;
}

void LoopbackServer::Client::Wait()
{
    char byte = 0;
    while (!ending)
        if (IsReady(socket) && recv(socket, &byte, 1, 0) <= 0)
            return;
}

LoopbackServer::LoopbackServer(Answer answer) : answer{std::move(answer)}
{
    WSADATA data{};
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    int size = sizeof(address);
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0)
        throw std::runtime_error{"no sockets"};
    listener = socket(AF_INET, SOCK_STREAM, 0);
    if (bind(listener, reinterpret_cast<sockaddr*>(&address), size) != 0 || listen(listener, 16) != 0 ||
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size) != 0)
        throw std::runtime_error{"no server"};
    port = ntohs(address.sin_port);
    accepting = std::thread{[this] { Accept(); }};
}

LoopbackServer::~LoopbackServer()
{
    ending = true;
    accepting.join();
    for (std::thread& client : clients)
        client.join();
    closesocket(listener);
    WSACleanup();
}

std::string LoopbackServer::Address() const
{
    return "http://127.0.0.1:" + std::to_string(port) + "/";
}

std::vector<std::string> LoopbackServer::Targets() const
{
    const std::lock_guard lock{mutex};
    return targets;
}

void LoopbackServer::Accept()
{
    while (!ending)
        if (IsReady(listener))
            if (const SOCKET client = accept(listener, nullptr, nullptr); client != INVALID_SOCKET)
                clients.emplace_back([this, client] { Serve(client); });
}

void LoopbackServer::Serve(std::uintptr_t socket)
{
    // Sending never waits for a reader that has stopped reading without going: the server could not end.
    u_long atOnce = 1;
    ioctlsocket(socket, FIONBIO, &atOnce);
    std::string request;
    char buffer[4096];
    while (!ending && !request.contains("\r\n\r\n")) {
        if (!IsReady(socket))
            continue;
        const int got = recv(socket, buffer, sizeof(buffer), 0);
        if (got <= 0)
            break;
        request.append(buffer, static_cast<std::size_t>(got));
    }
    if (request.starts_with("GET ")) {
        const std::string target = request.substr(4, request.find(' ', 4) - 4);
        {
            const std::lock_guard lock{mutex};
            targets.push_back(target);
        }
        Client client{socket, ending};
        answer(target, client);
    }
    shutdown(socket, SD_SEND);
    closesocket(socket);
}

std::string LoopbackServer::Page(const std::string& body)
{
    return "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nConnection: close\r\nContent-Length: " +
           std::to_string(body.size()) + "\r\n\r\n" + body;
}

std::string LoopbackServer::Redirect(const std::string& location)
{
    return "HTTP/1.1 302 Found\r\nConnection: close\r\nContent-Length: 0\r\nLocation: " + location + "\r\n\r\n";
}

} // namespace support
