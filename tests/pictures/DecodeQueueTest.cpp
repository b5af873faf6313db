// Which pictures of a long list are decoded first, and which are kept.
#include "pictures/DecodeQueue.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace {

using Rows = std::vector<int>;

/// Decodes up to `count` pictures; the rows in their order.
Rows Decode(pictures::DecodeQueue& queue, int count, Rows* evicted = nullptr)
{
    Rows order;
    while (count-- > 0)
        if (const auto row = queue.Next()) {
            order.push_back(*row);
            if (const auto gone = queue.Done(*row); gone && evicted != nullptr)
                evicted->push_back(*gone);
        }
    return order;
}

TEST(DecodeQueueTest, WhatIsInViewComesFirstThenTheRestFromThereOn)
{
    pictures::DecodeQueue queue;
    queue.Reset(8, 100);
    queue.Show(3, 4);
    EXPECT_TRUE(queue.WaitsInView());
    EXPECT_EQ(Decode(queue, 4), (Rows{3, 4, 5, 6}));
    EXPECT_FALSE(queue.WaitsInView());
    queue.Show(0, 1); // the user scrolls in the middle
    EXPECT_EQ(Decode(queue, 100), (Rows{0, 1, 2, 7}));
    queue.Reset(2, 100);
    EXPECT_EQ(Decode(queue, 100), (Rows{0, 1}));
}

TEST(DecodeQueueTest, NoMoreIsKeptThanThereIsRoomForButWhatIsInViewAlwaysIs)
{
    pictures::DecodeQueue queue;
    queue.Reset(10, 4);
    queue.Show(0, 1);
    Rows evicted;
    EXPECT_EQ(Decode(queue, 100, &evicted), (Rows{0, 1, 2, 3}));
    EXPECT_EQ(evicted, Rows{});
    queue.Show(6, 8);
    EXPECT_EQ(Decode(queue, 100, &evicted), (Rows{6, 7, 8}));
    EXPECT_EQ(evicted, (Rows{0, 1, 2}));
    EXPECT_FALSE(queue.IsDone(0));
    EXPECT_TRUE(queue.IsDone(3));
    queue.Show(0, 9); // a huge window
    EXPECT_EQ(Decode(queue, 100, &evicted).size(), 6u);
    for (int row = 0; row < 10; ++row)
        EXPECT_TRUE(queue.IsDone(row)) << row;
}

TEST(DecodeQueueTest, OddRangesDoNoHarm)
{
    for (const auto& [rows, first, last] : {std::tuple{0, 0, 5}, {5, -3, 100}, {5, 9, 12}, {5, 4, 2}, {-1, 0, 0}}) {
        pictures::DecodeQueue queue;
        queue.Reset(rows, 3);
        queue.Show(first, last);
        for (const int row : Decode(queue, 20))
            EXPECT_TRUE(row >= 0 && row < rows) << row;
        EXPECT_FALSE(queue.Next()) << rows << " " << first << " " << last;
        queue.Done(rows);
        EXPECT_FALSE(queue.IsDone(rows));
    }
}

} // namespace
