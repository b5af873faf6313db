#pragma once

namespace platform {

/// This process among the others.
class Process {
public:
    virtual ~Process() = default;
    /// Marks a browser as open for this user's session. False when one is open already, in this process or another.
    virtual bool ClaimSingleInstance() = 0;
    /// Takes the mark back (a process that dies gives it back by itself). Harmless without a mark.
    virtual void ReleaseSingleInstance() = 0;
};

} // namespace platform
