#include "views/chartSpread.h"

#include <algorithm>

// With what stands above each label taken off, places only have to ascend; labels that want to stand in each
// other's way become a block, which lies at the mean of what its labels want.
std::vector<double> modChartSpread::spread(std::span<const double> wanted, double height, double top,
                                           double bottom) {
    struct Block {
        double sum;
        std::size_t labels;
        [[nodiscard]] double place() const { return sum / static_cast<double>(labels); }
    };
    std::vector<Block> blocks;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        blocks.push_back({wanted[i] - static_cast<double>(i) * height, 1});
        while (blocks.size() > 1 && blocks[blocks.size() - 2].place() > blocks.back().place()) {
            const Block last = blocks.back();
            blocks.pop_back();
            blocks.back().sum += last.sum;
            blocks.back().labels += last.labels;
        }
    }
    const double lowest = std::max(top, bottom - static_cast<double>(wanted.size()) * height);
    std::vector<double> places;
    for (const Block& block : blocks) {
        for (std::size_t i = 0; i < block.labels; ++i) {
            places.push_back(std::clamp(block.place(), top, lowest) +
                             static_cast<double>(places.size()) * height);
        }
    }
    return places;
}
