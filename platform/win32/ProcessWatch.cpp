#include "platform/win32/ProcessWatch.h"

#include "platform/win32/Native.h"

namespace platform::win32 {

namespace {

struct Watch {
    ObjectHandle process;
    Post post;
    std::function<void(std::uint32_t)> ended;
    HANDLE wait{};
    /// What the thread that waits hands over: made before it begins, as nothing may fail there.
    std::function<void()> tell;

    Watch() = default;
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch()
    {
        // Returns once the thread that waits is not at work for this watch any more.
        if (wait != nullptr)
            UnregisterWaitEx(wait, INVALID_HANDLE_VALUE);
    }
};

void CALLBACK HasEnded(void* context, BOOLEAN) noexcept
{
    auto* const watch = static_cast<Watch*>(context);
    try {
        watch->post(std::move(watch->tell));
    } catch (...) { // no memory to say so
    }
}

} // namespace

Result<Ticket> WatchProcess(ObjectHandle process, Post post, std::function<void(std::uint32_t exitCode)> ended)
{
    const auto watch = std::make_shared<Watch>();
    watch->process = std::move(process);
    watch->post = std::move(post);
    watch->ended = std::move(ended);
    watch->tell = [weak = std::weak_ptr{watch}] {
        const auto watching = weak.lock();
        DWORD code{};
        if (watching != nullptr && GetExitCodeProcess(watching->process.Get(), &code))
            watching->ended(code);
    };
    if (!RegisterWaitForSingleObject(&watch->wait, watch->process.Get(), HasEnded, watch.get(), INFINITE,
                                     WT_EXECUTEONLYONCE)) {
        watch->wait = nullptr;
        return LastError();
    }
    return Ticket{watch};
}

} // namespace platform::win32
