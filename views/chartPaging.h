#pragma once

// Which of the chart's bars are in view. Bars have a rank, 0 being the largest, which is drawn on top; the
// scroll position is the rank of the topmost bar in view.
class ChartPaging {
public:
    // The category axis shows no more than these, however tall the chart is.
    static constexpr int mostVisible = 15;

    // `bars` in all; `room` is for how many the chart is tall enough. One is shown in any case.
    ChartPaging(int bars, int room) noexcept;

    [[nodiscard]] int visible() const noexcept { return visible_; }
    // The scroll bar's maximum; 0 when all bars are in view.
    [[nodiscard]] int lastPosition() const noexcept { return bars_ - visible_; }
    // A page is a quarter of all bars, however many are in view.
    [[nodiscard]] int pageStep() const noexcept;
    // The nearest position there is.
    [[nodiscard]] int clamped(int position) const noexcept;
    // The position nearest to the given one at which the bar of that rank is in view.
    [[nodiscard]] int showing(int rank, int position) const noexcept;

private:
    int bars_;
    int visible_;
};
