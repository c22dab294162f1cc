#include "views/squarify.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

namespace {

constexpr TreemapRect room{10, 20, 600, 400};

std::vector<double> random(std::size_t count, double spread) {
    std::mt19937 source(static_cast<std::mt19937::result_type>(count));
    std::lognormal_distribution<double> sizes(0, spread);
    std::vector<double> result(count);
    std::generate(result.begin(), result.end(), [&] { return sizes(source); });
    std::sort(result.rbegin(), result.rend());
    return result;
}

TEST(Squarify, coversTheRoomInProportionAndWithoutOverlaps) {
    struct Case {
        const char* what;
        std::vector<double> sizes;
    };
    for (const Case& each :
         {Case{"one", {5}}, Case{"equal", std::vector<double>(200, 3.0)}, Case{"alike", random(300, 0.3)},
          Case{"apart", random(300, 3)}, Case{"one giant", {0x1p96, 1, 1, 1}},
          Case{"halves", {64, 32, 16, 8, 4, 2, 1}}}) {
        SCOPED_TRACE(each.what);
        const std::vector<TreemapRect> found = squarified(each.sizes, room);
        ASSERT_EQ(found.size(), each.sizes.size());
        const double total = std::accumulate(each.sizes.begin(), each.sizes.end(), 0.0);
        for (std::size_t i = 0; i < found.size(); ++i) {
            EXPECT_NEAR(found[i].area(), each.sizes[i] / total * room.area(), 1e-6);
            EXPECT_GE(found[i].width, 0);
            EXPECT_GE(found[i].height, 0);
            EXPECT_GE(found[i].left, room.left);
            EXPECT_GE(found[i].top, room.top);
            EXPECT_LE(found[i].right(), room.right() + 1e-9);
            EXPECT_LE(found[i].bottom(), room.bottom() + 1e-9);
            for (std::size_t j = 0; j < i; ++j) {
                const double width =
                    std::min(found[i].right(), found[j].right()) - std::max(found[i].left, found[j].left);
                const double height =
                    std::min(found[i].bottom(), found[j].bottom()) - std::max(found[i].top, found[j].top);
                EXPECT_FALSE(width > 1e-6 && height > 1e-6) << i << " and " << j;
            }
        }
    }
}

// The example of the paper: a room of 6 by 4 with these areas.
TEST(Squarify, isThatOfItsAuthors) {
    const std::vector<TreemapRect> found = squarified(std::vector<double>{6, 6, 4, 3, 2, 2, 1}, {0, 0, 6, 4});
    EXPECT_EQ(found[0], (TreemapRect{0, 0, 3, 2}));
    EXPECT_EQ(found[1], (TreemapRect{0, 2, 3, 2}));
    EXPECT_NEAR(found[2].width, 12.0 / 7, 1e-9);
    EXPECT_NEAR(found[2].height, 7.0 / 3, 1e-9);
    EXPECT_NEAR(found[3].left, 3 + 12.0 / 7, 1e-9);
}

TEST(Squarify, keepsEqualOnesNearlySquare) {
    for (const TreemapRect& each : squarified(std::vector<double>(1000, 1.0), room)) {
        EXPECT_LT(std::max(each.width / each.height, each.height / each.width), 2.5);
    }
}

TEST(Squarify, takesWhatHasNoRoom) {
    for (const TreemapRect& each : squarified(std::vector<double>{3, 2, 1}, {5, 5, 0, 10})) {
        EXPECT_EQ(each.area(), 0);
        EXPECT_FALSE(std::isnan(each.left) || std::isnan(each.top));
    }
}

} // namespace
