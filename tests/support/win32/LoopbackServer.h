#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace support {

/// A web server of the test's own on this machine, on a port that the system chooses.
class LoopbackServer {
public:
    /// One request that is being answered.
    class Client {
    public:
        Client(std::uintptr_t socket, const std::atomic<bool>& ending) : socket{socket}, ending{ending} {}
        /// False when the other side has gone, or the server ends.
        bool Send(const std::string& bytes);
        /// Waits until the other side goes or the server ends.
        void Wait();

    private:
        std::uintptr_t socket;
        const std::atomic<bool>& ending;
    };
    /// Answers a request, given what stands between "GET " and the version. The connection is closed after it. Called
    /// on a thread of its own.
    using Answer = std::function<void(const std::string& target, Client& client)>;

    explicit LoopbackServer(Answer answer);
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    /// "http://127.0.0.1:1234/"
    std::string Address() const;
    /// What was asked for so far.
    std::vector<std::string> Targets() const;

    /// A whole answer with a page in it.
    static std::string Page(const std::string& body);
    static std::string Redirect(const std::string& location);

private:
    Answer answer;
    std::uintptr_t listener{};
    int port{};
    std::atomic<bool> ending{};
    mutable std::mutex mutex;
    std::vector<std::string> targets;
    std::vector<std::thread> clients;
    std::thread accepting;

    void Accept();
    void Serve(std::uintptr_t socket);
};

} // namespace support
