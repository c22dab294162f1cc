#include <gtest/gtest.h>

#include "support/scanFixture.h"

namespace {

class LargeFolder : public testing::Test, protected ScanFixture {};

// Wherever a cancel arrives: while the folder is read, while its entries are recorded, for the first time or
// again.
TEST_F(LargeFolder, isLeftWhenTheScanIsCancelled) {
    constexpr int files = 2500;
    tree.write("large/sub/file", "12345");
    for (int i = 0; i < files; ++i) {
        tree.write("large/" + std::string(100, 'n') + std::to_string(i), "x");
    }
    settings.setReaders(0); // so that each scan yields equally often
    scan();
    const int yieldsOfAll = userInterface.yields;
    EXPECT_GT(yieldsOfAll, 4);
    for (const bool again : {false, true}) {
        for (int at = 1; at < yieldsOfAll; ++at) {
            SCOPED_TRACE(at);
            search.resetAll();
            if (again) {
                scan();
                search.resetScanCompleteTime(key("large"));
            }
            search.CancelScan = false;
            userInterface.yields = 0;
            userInterface.onYield = [&] {
                search.CancelScan = search.CancelScan || userInterface.yields == at;
            };
            EXPECT_TRUE(scan().cancelled);
            userInterface.onYield = nullptr;
            EXPECT_LE(userInterface.yields, at + 1);
            EXPECT_TRUE(areSumsRight());
            EXPECT_EQ(cell("select count(*) from details where fileName=\"large\\\" and scanCompleteTime is "
                           "not null"),
                      "0");
            scan();
            EXPECT_EQ(cell("select count(*) from details where isFolder=0"), std::to_string(files + 1))
                << "a later scan finds everything";
            EXPECT_TRUE(areSumsRight());
        }
    }
}

} // namespace
