#pragma once

#include <string>

// The chart's value axis, in megabytes.

// The labels are at value(first) to value(last), inclusive.
struct ChartAxis {
    int first = 0;
    int last = 0;
    double step = 0;

    [[nodiscard]] double value(int index) const noexcept { return index * step; }
};

// The axis from `least` to `greatest` (least <= 0 <= greatest), with the smallest step of 1, 2, 2.5 or 5
// times a power of ten that gives at most `mostSteps` steps. No step is finer than a label can show, so that
// no two labels read the same: for very small values, only 0 is left. The same goes for bounds that are not
// numbers.
[[nodiscard]] ChartAxis chartAxis(double least, double greatest, int mostSteps);

// A label of the axis: "#,##0.###Mb", such as "1.5Mb" or "1,024Mb".
[[nodiscard]] std::string chartAxisText(double megabytes);

// The value shown at a bar, in the same form; if it is too small to show, "<0.001Mb" instead of zero.
[[nodiscard]] std::string chartMarkText(double megabytes);

// What is shown at a bar of a size or, in the chart of changes, of what has grown or shrunk: "+1.5 Mb".
enum class ChartValues { sizes, changes };
[[nodiscard]] std::string chartValueText(double megabytes, ChartValues values);
