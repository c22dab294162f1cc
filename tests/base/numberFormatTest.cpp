#include "base/numberFormat.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>
#include <utility>

TEST(NumberFormat, numbersFollowTheDigits) {
    using limits = std::numeric_limits<double>;
    const auto expect = [](const char* picture, std::initializer_list<std::pair<double, const char*>> cases) {
        for (const auto& [number, expected] : cases) {
            EXPECT_EQ(modFormat::formatNumber(number, picture), expected) << number << ' ' << picture;
        }
    };
    expect("#,##0", {{0, "0"}, {999, "999"}, {1234567, "1,234,567"}});
    expect("###,###,###.0", {{0, ".0"}, {1234567890123, "1,234,567,890,123.0"}, {999.95, "1,000.0"}});
    expect("0", {{1234567, "1234567"}, {0.5, "1"}, {2.5, "3"}, {-2.5, "-3"}});
    expect("0.0", {{-0.04, "0.0"}, {0.149, "0.1"}, {9.96, "10.0"}, {limits::denorm_min(), "0.0"}});
    expect("0.0", {{limits::quiet_NaN(), ""}, {-limits::infinity(), "-inf"}});
    expect("0.00Gb", {{1.5, "1.50Gb"}, {1.005, "1.01Gb"}});
    expect("#,##0.###Mb", {{1.5, "1.5Mb"}, {2, "2Mb"}, {1.00049, "1Mb"}});
    expect("#.00", {{0.994, ".99"}, {0.999, "1.00"}});
    expect("0,000", {{5, "0,005"}});
    expect("0000000000000000000",
           {{42, "0000000000000000042"}, {9223372036854775808.0, "9223372036854775808"}});
    EXPECT_EQ(modFormat::formatNumber(limits::max(), "0").size(), 309U);
}
