#pragma once

// Which bars of the chart are in view. Each bar has a rank; the largest bar has rank 0 and is at the top. The
// scroll position is the rank of the topmost bar in view.
class ChartPaging {
public:
    // The category axis shows at most this many bars, however tall the chart is.
    static constexpr int mostVisible = 15;

    // `bars` is the number of all bars, `room` the number that fits into the chart. At least one is shown.
    ChartPaging(int bars, int room) noexcept;

    [[nodiscard]] int visible() const noexcept { return visible_; }
    // The scroll bar's maximum; 0 when all bars are in view.
    [[nodiscard]] int lastPosition() const noexcept { return bars_ - visible_; }
    // A page is a quarter of all bars, however many are in view.
    [[nodiscard]] int pageStep() const noexcept;
    // The nearest valid position.
    [[nodiscard]] int clamped(int position) const noexcept;
    // The position nearest to the given one at which the bar of that rank is in view.
    [[nodiscard]] int showing(int rank, int position) const noexcept;

private:
    int bars_;
    int visible_;
};
