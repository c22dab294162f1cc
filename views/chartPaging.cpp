#include "views/chartPaging.h"

#include <algorithm>

ChartPaging::ChartPaging(int bars, int room) noexcept
    : bars_(std::max(bars, 0)), visible_(std::min(bars_, std::clamp(room, 1, mostVisible))) {}

int ChartPaging::pageStep() const noexcept {
    return std::max(bars_ / 4, 1);
}

int ChartPaging::clamped(int position) const noexcept {
    return std::clamp(position, 0, lastPosition());
}

int ChartPaging::showing(int rank, int position) const noexcept {
    return clamped(std::clamp(position, std::min(rank - visible_ + 1, rank), rank));
}
