#pragma once

#include "tests/support/win32/Process.h"

#include <deque>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace prove {

/// Somebody at mouse and keyboard who does anything in any order, in the windows of one process only.
class RandomUser {
public:
    RandomUser(DWORD usedProcess, unsigned seed) : process{usedProcess}, random{seed} {}

    /// One act in whatever is open; nothing while no window is.
    void Act();
    /// A step towards the end: what is open is given up, and the main window closed.
    void GoHome();
    /// Milliseconds until the window in front answers; at most about `limit`.
    std::chrono::milliseconds AnswerTime(std::chrono::milliseconds limit) const;

    /// The texts of the message boxes that came, and how often.
    std::map<std::wstring, int> Messages;
    bool SaidYes{}; ///< to anything: something may have been deleted at the user's wish
    /// Prints the last acts, and what is open.
    void Report() const;

private:
    std::deque<std::string> History;
    DWORD process;
    std::mt19937 random;
    HWND answered{}; ///< the box that was read last

    std::size_t Below(std::size_t bound) { return bound == 0 ? 0 : random() % bound; }
    bool Chance(std::size_t oneIn) { return Below(oneIn) == 0; }
    template <class Container>
    auto& OneOf(Container& container)
    {
        return container[Below(std::size(container))];
    }
    void Note(std::string act);

    bool IsOurs(HWND window) const;
    std::vector<HWND> Visible() const;
    HWND Front() const;
    void Answer(HWND box);
    void PressAnyKey(HWND front);
    void Type();
    void UseMouse();
    void UseMenu();
    void MoveWindow(HWND window);
    bool PointIn(HWND window, POINT& point);
};

} // namespace prove
