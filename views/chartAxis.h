#pragma once

#include <string>

// The chart's value axis, in megabytes.

// Labels stand at value(first) to value(last), both included.
struct ChartAxis {
    int first = 0;
    int last = 0;
    double step = 0;

    [[nodiscard]] double value(int index) const noexcept { return index * step; }
};

// The axis from `least` to `greatest` (least <= 0 <= greatest), with the smallest step of 1, 2, 2.5 or 5
// times a power of ten that makes at most `mostSteps` of them. No step is finer than what a label can show,
// so that no two labels read alike: very small values leave the 0 alone. Bounds that are no numbers do, too.
[[nodiscard]] ChartAxis chartAxis(double least, double greatest, int mostSteps);

// A label of the axis: "#,##0.###Mb", as in "1.5Mb" and "1,024Mb".
[[nodiscard]] std::string chartAxisText(double megabytes);

// A bar's own value, likewise; one that is too small for the picture reads "<0.001Mb" instead of zero.
[[nodiscard]] std::string chartMarkText(double megabytes);
