#include "views/chartHeading.h"

#include <gtest/gtest.h>

#include <vector>

TEST(ChartHeading, addsUpEverythingWhateverIsShown) {
    struct Case {
        std::vector<ChartEntry> entries;
        std::size_t shown;
        const char* text;
        ChartValues values = ChartValues::sizes;
    };
    for (const Case& c :
         {Case{{{"a", 1000}}, 1, "1,000 bytes \u00b7 1 of 1 shown"},
          Case{{{"wrapped", -1024}, {"b", 512}, {"c", 2048}}, 1, "1.5 Kb \u00b7 1 of 3 shown"},
          Case{{{"grown", 512}, {"shrunk", -2048}}, 2, "-1.5 Kb \u00b7 2 of 2 shown", ChartValues::changes},
          Case{{{"grown", 512}}, 1, "+512 bytes \u00b7 1 of 1 shown", ChartValues::changes},
          Case{std::vector<ChartEntry>(12345, {"d", 1048576.0}), 1200,
               "12.1 Gb \u00b7 1,200 of 12,345 shown"}}) {
        EXPECT_EQ(chartHeadingFigures(c.entries, c.shown, c.values), c.text);
    }
}
