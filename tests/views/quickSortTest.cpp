#include "views/quickSort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

namespace {

void expectSorted(std::vector<double> sizes) {
    std::vector<ChartEntry> entries;
    for (const double size : sizes) {
        entries.push_back({std::to_string(size), size});
    }
    modQuickSort::quickSortUDT(entries, 0, std::ssize(entries) - 1);
    std::sort(sizes.begin(), sizes.end());
    ASSERT_EQ(entries.size(), sizes.size());
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        ASSERT_EQ(entries[i].size, sizes[i]) << i;
        ASSERT_EQ(entries[i].label, std::to_string(sizes[i])) << i;
    }
}

} // namespace

TEST(QuickSort, sortsWhateverTheOrder) {
    expectSorted({});
    expectSorted({1});
    expectSorted({2, 1});
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        std::vector<double> sizes(random() % 30);
        std::generate(sizes.begin(), sizes.end(), [&] { return static_cast<double>(random() % 10); });
        expectSorted(sizes);
    }
}

TEST(QuickSort, manyEntriesDoNotExhaustTheStack) {
    std::vector<double> sizes(200000, 1);
    expectSorted(sizes);
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        sizes[i] = static_cast<double>(sizes.size() - i);
    }
    expectSorted(sizes);

    // Each pivot is the smallest entry left, so that every step takes off a single one.
    std::vector<double> worst(20000);
    std::vector<std::size_t> places(worst.size());
    std::iota(places.begin(), places.end(), 0U);
    for (std::size_t low = 0; low < worst.size(); ++low) {
        const std::size_t sum = low + worst.size() - 1;
        const std::size_t middle = sum / 2 + (sum % 2) * (sum / 2 % 2);
        worst[places[middle]] = static_cast<double>(low);
        std::swap(places[low], places[middle]);
    }
    expectSorted(worst);
}

TEST(QuickSort, sortsWithinItsBoundsOnly) {
    std::vector<ChartEntry> entries{{"", 5}, {"", 4}, {"", 3}, {"", 2}, {"", 1}};
    modQuickSort::quickSortUDT(entries, 1, 3);
    modQuickSort::quickSortUDT(entries, 0, 5);
    modQuickSort::quickSortUDT(entries, -1, 4);
    for (std::size_t i = 0; const double size : {5, 2, 3, 4, 1}) {
        EXPECT_EQ(entries[i++].size, size);
    }
}
