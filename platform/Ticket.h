#pragma once

#include <memory>
#include <utility>

namespace platform {

/// What the owner of something that is under way holds: a job, a timer, a watched process. When it goes (with its
/// owner, by Drop, or for another one in its place), the thing ends as soon as it can, and the owner hears no more of
/// it. Made and let go on the window's thread, before the system goes that gave it.
class [[nodiscard]] Ticket {
public:
    Ticket() = default;
    explicit Ticket(std::shared_ptr<void> underWay) : held{std::move(underWay)} {}
    Ticket(Ticket&&) noexcept = default;
    Ticket& operator=(Ticket&&) noexcept = default;
    ~Ticket() = default;

    void Drop() { held.reset(); }
    /// Whether it holds anything, which may have ended by itself meanwhile.
    explicit operator bool() const { return held != nullptr; }

private:
    std::shared_ptr<void> held;
};

} // namespace platform
