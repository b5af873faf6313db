#pragma once

#include <optional>
#include <vector>

namespace pictures {

/// Which row of a list gets its picture next: what is in view first, then what follows, then what lies before, as long
/// as there is room for the pictures.
class DecodeQueue {
public:
    /// `capacity`: how many pictures are kept at a time; those in view are kept in any case.
    void Reset(int rows, int capacity);
    /// The rows in view, both ends included; `last` < `first` for none.
    void Show(int first, int last);
    /// The row to begin with now; nothing when every one has begun, or there is no room for more.
    std::optional<int> Next();
    /// Whether Next would give a row in view.
    bool WaitsInView() const { return NextInView().has_value(); }
    /// The row, which Next gave, has its picture now. Gives the row whose picture must go for it: the farthest from the
    /// view.
    std::optional<int> Done(int row);
    bool IsDone(int row) const { return Is(row, State::Done); }

private:
    enum class State : unsigned char { Waiting, Begun, Done };

    std::vector<State> states;
    int count{}; ///< of those that have begun or are done
    int capacity{};
    int firstShown{};
    int lastShown{-1};
    int after{};  ///< rows from lastShown + 1 up to here have begun
    int before{}; ///< rows from firstShown - 1 down to here have begun

    int Rows() const { return static_cast<int>(states.size()); }
    bool Is(int row, State state) const
    {
        return row >= 0 && row < Rows() && states[static_cast<std::size_t>(row)] == state;
    }
    std::optional<int> NextInView() const;
    std::optional<int> FindNext();
};

} // namespace pictures
