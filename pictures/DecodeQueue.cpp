#include "pictures/DecodeQueue.h"

#include <algorithm>

namespace pictures {

void DecodeQueue::Reset(int rows, int pictures)
{
    states.assign(static_cast<std::size_t>(std::max(rows, 0)), State::Waiting);
    count = 0;
    capacity = pictures;
    firstShown = 0;
    lastShown = -1;
    after = 0;
    before = -1;
}

void DecodeQueue::Show(int first, int last)
{
    first = std::clamp(first, 0, Rows());
    last = std::clamp(last, first - 1, Rows() - 1);
    if (first == firstShown && last == lastShown)
        return;
    firstShown = first;
    lastShown = last;
    after = last + 1;
    before = first - 1;
}

std::optional<int> DecodeQueue::Next()
{
    const auto row = FindNext();
    if (row) {
        states[static_cast<std::size_t>(*row)] = State::Begun;
        ++count;
    }
    return row;
}

std::optional<int> DecodeQueue::NextInView() const
{
    for (int row = firstShown; row <= lastShown; ++row)
        if (Is(row, State::Waiting))
            return row;
    return std::nullopt;
}

std::optional<int> DecodeQueue::FindNext()
{
    if (const auto row = NextInView())
        return row;
    const auto waits = [this](int row) { return Is(row, State::Waiting); };
    if (count >= capacity)
        return std::nullopt;
    while (after < Rows() && !waits(after))
        ++after;
    if (after < Rows())
        return after;
    while (before >= 0 && !waits(before))
        --before;
    if (before >= 0)
        return before;
    return std::nullopt;
}

std::optional<int> DecodeQueue::Done(int row)
{
    if (!Is(row, State::Begun))
        return std::nullopt;
    states[static_cast<std::size_t>(row)] = State::Done;
    if (count <= capacity)
        return std::nullopt;
    std::optional<int> farthest;
    int distance = 0;
    for (int other = 0; other < Rows(); ++other) {
        const int away = std::max(firstShown - other, other - lastShown); // not above 0 for a row in view
        if (IsDone(other) && away > distance) {
            farthest = other;
            distance = away;
        }
    }
    if (farthest) {
        states[static_cast<std::size_t>(*farthest)] = State::Waiting;
        --count;
        if (*farthest > lastShown)
            after = std::min(after, *farthest);
        else
            before = std::max(before, *farthest);
    }
    return farthest;
}

} // namespace pictures
