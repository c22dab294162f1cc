#include "scan/changingTree.h"

#include <filesystem>

#include "support/testSystem.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* becameLink = "The folder, or one above it, has become a link";

// Which folder is replaced by a link to its like outside of the tree.
class TreeWithALinkMeanwhile : public ChangingTree, public testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(Scan, TreeWithALinkMeanwhile, testing::Values("middle", "middle/last"));

TEST_P(TreeWithALinkMeanwhile, leadsNoWalkOutOfIt) {
    bool isLink = false;
    scanAndDo([&] {
        fs::rename(tree / "a" / GetParam(), tree / "moved");
        isLink = testSystem::makeLink(tree / "outside" / GetParam(), tree / "a" / GetParam());
    });
    if (!isLink) {
        GTEST_SKIP() << "no links can be made here";
    }
    EXPECT_EQ(secretsFound(), "0");
    EXPECT_EQ(reasonOfLast(), becameLink);
    search.resetScanCompleteTime(key("a"));
    EXPECT_EQ(scan("a").unreadableFolders, 0) << "where it is met, a link is a file";
    EXPECT_EQ(secretsFound(), "0");
}

} // namespace
