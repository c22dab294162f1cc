#include "views/chartSlices.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "views/chartSpread.h"

namespace {

std::vector<ChartSlice> slicesOf(std::vector<double> sizes) {
    std::sort(sizes.begin(), sizes.end());
    std::vector<ChartEntry> entries;
    for (const double size : sizes) {
        entries.push_back({"", size});
    }
    return chartSlices(entries);
}

} // namespace

TEST(ChartSlices, areTheLargestAndTheRest) {
    const std::vector<double> even(20, 5);
    std::vector<double> withZeros(22, 5);
    withZeros[20] = withZeros[21] = 0;
    const std::vector<double> sliver{1000, 1000, 1000, 1000, 1000, 1000, 1};
    const std::vector<double> slivers{1000, 1000, 1000, 1000, 1000, 1000, 1, 1};
    const std::vector<double> dust(10000, 1);
    struct Case {
        std::vector<double> sizes;
        std::size_t own;
        int rest;
    };
    for (const Case& c :
         {Case{{}, 0, 0}, Case{{0, -1024}, 0, 0}, Case{{-5, 0, 3, 4}, 2, 0}, Case{even, 15, 5},
          Case{withZeros, 15, 5}, Case{sliver, 7, 0}, Case{slivers, 6, 2}, Case{dust, 5, 9995}}) {
        const std::vector<ChartSlice> slices = slicesOf(c.sizes);
        ASSERT_EQ(slices.size(), c.own + (c.rest > 0 ? 1 : 0));
        EXPECT_EQ(chartRestCount(slices), c.rest > 0 ? c.sizes.size() - c.own : 0);
        double shares = 0;
        for (std::size_t i = 0; i < slices.size(); ++i) {
            EXPECT_EQ(slices[i].index,
                      i < c.own ? static_cast<int>(c.sizes.size() - 1 - i) : ChartSlice::rest);
            EXPECT_EQ(slices[i].entries, i < c.own ? 1 : c.rest);
            EXPECT_GT(slices[i].share, 0);
            shares += slices[i].share;
        }
        EXPECT_NEAR(shares, slices.empty() ? 0 : 1, 1e-9);
    }
}

TEST(ChartSlices, halfOfThemStandOnEachSide) {
    EXPECT_EQ(chartSliceOnTop({}), 0U);
    EXPECT_EQ(chartSliceOnTop(slicesOf({1, 1, 1, 1})), 0U);
    // Split in half by size, beginning with the largest, the sides would have one slice and six.
    EXPECT_EQ(chartSliceOnTop(slicesOf({64, 32, 16, 8, 4, 2, 1})), 4U);
}

TEST(ChartSpread, labelsKeepApartNearTheirPlaces) {
    struct Case {
        std::vector<double> wanted;
        std::vector<double> places; // within 0 to 100, each with a height of 10
    };
    for (const Case& c : {Case{{}, {}}, Case{{5, 50}, {5, 50}}, Case{{40, 40, 40}, {30, 40, 50}},
                          Case{{40, 45}, {37.5, 47.5}}, Case{{-20, 3}, {0, 10}}, Case{{95, 99}, {80, 90}},
                          Case{{50, 20}, {30, 40}},
                          Case{{0, 0, 0, 0, 0, 0, 0, 0, 0, 99}, {0, 10, 20, 30, 40, 50, 60, 70, 80, 90}}}) {
        EXPECT_EQ(modChartSpread::spread(c.wanted, 10, 0, 100), c.places);
    }
}
