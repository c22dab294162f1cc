#include "views/quickSort.h"

#include <utility>

#include "base/errorTrap.h"

namespace modQuickSort {

namespace {

// Half of the sum; halves are rounded to the even number.
std::size_t middle(std::ptrdiff_t low, std::ptrdiff_t high) {
    const auto sum = static_cast<std::size_t>(low + high);
    const std::size_t half = sum / 2;
    return sum % 2 == 0 ? half : half + half % 2;
}

void sortRange(std::span<ChartEntry> entries, std::ptrdiff_t low, std::ptrdiff_t high) {
    const auto at = [entries](std::ptrdiff_t index) -> ChartEntry& {
        return entries[static_cast<std::size_t>(index)];
    };
    while (low < high) {
        const double pivot = entries[middle(low, high)].size;
        std::ptrdiff_t left = low;
        std::ptrdiff_t right = high;
        while (left <= right) {
            while (at(left).size < pivot) {
                ++left;
            }
            while (at(right).size > pivot) {
                --right;
            }
            if (left <= right) {
                std::swap(at(left++), at(right--));
            }
        }
        // Recursing only into the smaller part keeps the stack shallow, whatever the order of the entries.
        if (right - low < high - left) {
            sortRange(entries, low, right);
            low = left;
        } else {
            sortRange(entries, left, high);
            high = right;
        }
    }
}

} // namespace

void quickSortUDT(std::span<ChartEntry> entries, std::ptrdiff_t low, std::ptrdiff_t high) {
    modGlobal::trapped("modQuickSort", "quickSortUDT", [&] {
        if (low >= high) {
            return;
        }
        if (low < 0 || high >= std::ssize(entries)) {
            throw RuntimeError(errorNumber::subscriptOutOfRange);
        }
        sortRange(entries, low, high);
    });
}

} // namespace modQuickSort
