#include "base/formatSize.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(FormatSize, choosesTheUnitBeforeRounding) {
    struct Case {
        double bytes;
        const char* expected;
    };
    for (const Case& c :
         {Case{-5, "-5 bytes"}, Case{0, "0 bytes"}, Case{1, "1 bytes"}, Case{1023, "1,023 bytes"},
          Case{1023.6, "1,024 bytes"}, Case{1024, "1.0 Kb"}, Case{1536, "1.5 Kb"}, Case{1075, "1.0 Kb"},
          Case{1076, "1.1 Kb"}, Case{1048575, "1,024.0 Kb"}, Case{1048576, "1.0 Mb"},
          Case{1073741823, "1,024.0 Mb"}, Case{1073741824, "1.0 Gb"}, Case{5368709120, "5.0 Gb"},
          Case{1099511627776, "1,024.0 Gb"}, Case{9007199254740992, "8,388,608.0 Gb"}, Case{std::nan(""), ""},
          Case{HUGE_VAL, "73,786,976,294,838,206,464.0 Gb"},
          Case{-1e300, "-79,228,162,514,264,337,593,543,950,336 bytes"}}) {
        EXPECT_EQ(modLvw::formatSize(c.bytes), c.expected) << c.bytes;
    }
}
