#include "views/chartPaging.h"

#include <gtest/gtest.h>

#include <array>

TEST(ChartPaging, showsFifteenAtMostAndPagesByAQuarter) {
    struct Case {
        int bars;
        int room;
        int visible;
        int lastPosition;
        int pageStep;
    };
    for (const Case& c :
         {Case{0, 15, 0, 0, 1}, Case{1, 15, 1, 0, 1}, Case{15, 40, 15, 0, 3}, Case{16, 40, 15, 1, 4},
          Case{16, 11, 11, 5, 4}, Case{3, 0, 1, 2, 1}, Case{10000, 15, 15, 9985, 2500}}) {
        const ChartPaging paging(c.bars, c.room);
        EXPECT_EQ(paging.visible(), c.visible) << c.bars;
        EXPECT_EQ(paging.lastPosition(), c.lastPosition) << c.bars;
        EXPECT_EQ(paging.pageStep(), c.pageStep) << c.bars;
        EXPECT_EQ(paging.clamped(-1), 0);
        EXPECT_EQ(paging.clamped(1 << 30), c.lastPosition);
    }
}

TEST(ChartPaging, scrollsNoFurtherThanNeededToShowABar) {
    const ChartPaging paging(100, 15);
    for (const auto& [rank, from, to] : {std::array{20, 10, 10},
                                         {24, 10, 10},
                                         {25, 10, 11},
                                         {10, 10, 10},
                                         {9, 10, 9},
                                         {0, 85, 0},
                                         {99, 0, 85}}) {
        EXPECT_EQ(paging.showing(rank, from), to) << rank;
    }
}
