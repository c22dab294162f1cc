#include "views/chartSpread.h"

#include <algorithm>

// With the height of the labels above it subtracted, each place only has to be at least the one before.
// Labels that would overlap form a block at the mean of the places that they want.
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
