#include <memory>

#include "scan/changingTree.h"
#include "support/linux/smallDisk.h"

namespace {

TEST_F(ChangingTree, leadsNoWalkToAVolumeMountedMeanwhile) {
    std::unique_ptr<SmallDisk> disk;
    scanAndDo([&] {
        disk = std::make_unique<SmallDisk>(tree / "a/middle");
        if (disk->isThere()) {
            tree.write("a/middle/last/secret", "x");
        }
    });
    if (!disk || !disk->isThere()) {
        GTEST_SKIP() << "nothing can be mounted here";
    }
    EXPECT_EQ(secretsFound(), "0");
    EXPECT_EQ(reasonOfLast(), "Another volume has been mounted");
}

} // namespace
