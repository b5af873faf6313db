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
    /// Nothing when there is nothing left to do.
    std::optional<int> Next();
    /// The row has its picture now. Gives the row whose picture must go for it: the farthest from the view.
    std::optional<int> Done(int row);
    bool IsDone(int row) const { return row >= 0 && row < Rows() && done[static_cast<std::size_t>(row)]; }

private:
    std::vector<bool> done;
    int count{};
    int capacity{};
    int firstShown{};
    int lastShown{-1};
    int after{};  ///< rows from lastShown + 1 up to here are done
    int before{}; ///< rows from firstShown - 1 down to here are done

    int Rows() const { return static_cast<int>(done.size()); }
};

} // namespace pictures
