#include "views/quickSort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

// Any order, including equal sizes; many equal or sorted entries need neither much time nor much stack.
TEST(QuickSort, sortsEntriesWithTheirLabels) {
    std::vector<std::vector<double>> cases{std::vector<double>(200'000, 1), std::vector<double>(200'000)};
    std::generate(cases[1].begin(), cases[1].end(), [next = 200'000.0]() mutable { return --next; });
    std::mt19937 random(7);
    for (std::size_t round = 0; round < 200; ++round) {
        std::vector<double>& sizes = cases.emplace_back(round % 30);
        std::generate(sizes.begin(), sizes.end(), [&] { return static_cast<double>(random() % 10); });
    }
    for (std::vector<double>& sizes : cases) {
        std::vector<ChartEntry> entries;
        for (const double size : sizes) {
            entries.push_back({std::to_string(size), size});
        }
        modQuickSort::quickSortUDT(entries, 0, std::ssize(entries) - 1);
        std::sort(sizes.begin(), sizes.end());
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            ASSERT_EQ(entries[i].size, sizes[i]) << i;
            ASSERT_EQ(entries[i].label, std::to_string(sizes[i])) << i;
        }
    }
}
