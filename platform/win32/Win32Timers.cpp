#include "platform/win32/Win32Timers.h"

#include "platform/win32/Native.h"

#include <algorithm>
#include <map>

namespace platform::win32 {

namespace {

struct Timer {
    Post post;
    std::function<void()> elapsed;
    UINT_PTR id{};
    bool waits{}; ///< a tick has been posted and not run yet

    Timer() = default;
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    ~Timer();
};

/// The system gives a timer without a window nothing but its number.
std::map<UINT_PTR, std::weak_ptr<Timer>>& Running()
{
    static std::map<UINT_PTR, std::weak_ptr<Timer>> running;
    return running;
}

Timer::~Timer()
{
    if (id == 0)
        return;
    KillTimer(nullptr, id);
    Running().erase(id);
}

/// Loops of the system's own call this too, under any handler: the tick waits for the program's.
void CALLBACK Tick(HWND, UINT, UINT_PTR id, DWORD) noexcept
{
    const auto found = Running().find(id);
    const auto timer = found != Running().end() ? found->second.lock() : nullptr;
    if (timer == nullptr || timer->waits)
        return;
    try {
        timer->post([weak = std::weak_ptr{timer}] {
            if (const auto due = weak.lock()) {
                due->waits = false;
                due->elapsed();
            }
        });
        timer->waits = true;
    } catch (...) { // no memory: the next tick tries again
    }
}

} // namespace

Result<Ticket> Win32Timers::Start(std::chrono::milliseconds interval, std::function<void()> elapsed)
{
    const auto timer = std::make_shared<Timer>();
    timer->post = post;
    timer->elapsed = std::move(elapsed);
    const auto milliseconds = std::clamp<long long>(interval.count(), USER_TIMER_MINIMUM, USER_TIMER_MAXIMUM);
    timer->id = SetTimer(nullptr, 0, static_cast<UINT>(milliseconds), Tick);
    if (timer->id == 0)
        return LastError();
    Running().insert_or_assign(timer->id, timer);
    return Ticket{timer};
}

} // namespace platform::win32
