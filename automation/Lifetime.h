#pragma once

#include <functional>

namespace automation {

/// Ends the program as soon as nothing needs it: no object, no lock of a host, no open browser. The count is the one
/// that the system keeps for a server process, so that the last release and the refusal of new activations are one
/// step: a host that comes a moment too late is given a new process instead of one that is going.
class Lifetime {
public:
    /// `end` is called once, when the last holder is gone.
    explicit Lifetime(std::function<void()> end);
    Lifetime(const Lifetime&) = delete;
    Lifetime& operator=(const Lifetime&) = delete;

    /// One reason to stay, for as long as it exists.
    class Holder {
    public:
        explicit Holder(Lifetime& owner) : lifetime{owner} { lifetime.Add(); }
        ~Holder() { lifetime.Remove(); }
        Holder(const Holder&) = delete;
        Holder& operator=(const Holder&) = delete;

    private:
        Lifetime& lifetime;
    };

    /// Whether the program is on its way out; it gives out nothing new then.
    bool Ending() const { return ending; }
    /// Ends the program when it was started for a host that never came.
    void EndIfNeverHeld();

private:
    void Add();
    void Remove();
    void End();

    std::function<void()> endProgram;
    bool everHeld{};
    bool ending{};
};

} // namespace automation
