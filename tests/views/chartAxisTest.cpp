#include "views/chartAxis.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

std::string labels(double least, double greatest, int mostSteps) {
    const ChartAxis axis = chartAxis(least, greatest, mostSteps);
    std::string result;
    for (int i = axis.first; i <= axis.last; ++i) {
        result += (result.empty() ? "" : " ") + chartAxisText(axis.value(i));
    }
    return result;
}

} // namespace

TEST(ChartAxis, stepsAreRoundAndLabelsDiffer) {
    struct Case {
        double least;
        double greatest;
        int mostSteps;
        const char* expected;
    };
    for (const Case& c :
         {Case{0, 10, 5, "0Mb 2Mb 4Mb 6Mb 8Mb 10Mb"}, Case{0, 10, 4, "0Mb 2.5Mb 5Mb 7.5Mb 10Mb"},
          Case{0, 10, 2, "0Mb 5Mb 10Mb"}, Case{0, 12.4, 3, "0Mb 5Mb 10Mb"}, Case{0, 9.9, 1, "0Mb"},
          Case{0, 1234567, 3, "0Mb 500,000Mb 1,000,000Mb"}, Case{0, 0.3, 3, "0Mb 0.1Mb 0.2Mb 0.3Mb"},
          Case{0, 0.09, 4, "0Mb 0.025Mb 0.05Mb 0.075Mb"},
          // 0.0025 would read 0.003: no step is finer than a label can show.
          Case{0, 0.01, 4, "0Mb 0.005Mb 0.01Mb"}, Case{0, 0.003, 10, "0Mb 0.001Mb 0.002Mb 0.003Mb"},
          Case{0, 0.0004, 10, "0Mb"}, Case{0, 1e-300, 10, "0Mb"},
          Case{-1024, 600, 4, "-1,000Mb -500Mb 0Mb 500Mb"}, Case{-3, 0, 3, "-3Mb -2Mb -1Mb 0Mb"},
          Case{0, 0, 5, "0Mb"}, Case{0, std::nan(""), 5, "0Mb"}, Case{0, HUGE_VAL, 5, "0Mb"},
          Case{0, 5, 0, "0Mb 5Mb"}}) {
        EXPECT_EQ(labels(c.least, c.greatest, c.mostSteps), c.expected) << c.least << ' ' << c.greatest;
    }
}

TEST(ChartAxis, marksTellTheSmallestFromNothing) {
    for (const auto& [megabytes, expected] : {std::pair{1.5, "1.5Mb"},
                                              {28419.4951, "28,419.495Mb"},
                                              {1024.0, "1,024Mb"},
                                              {0.0005, "0.001Mb"},
                                              {0.0004, "<0.001Mb"},
                                              {0.0, "0Mb"},
                                              {-1024.0, "-1,024Mb"}}) {
        EXPECT_EQ(chartMarkText(megabytes), expected);
    }
}
