#include <gtest/gtest.h>

#include <filesystem>

#include "support/linux/smallDisk.h"
#include "support/scanFixture.h"

namespace fs = std::filesystem;

namespace {

// Changes the tree while it is scanned, when the walk comes to the folder "last" of a/middle.
class ChangingTree : public testing::Test, protected ScanFixture {
protected:
    ChangingTree() {
        tree.write("a/middle/last/file", "x");
        tree.write("outside/middle/last/secret", "x");
    }
    void scanAndDo(const std::function<void()>& change) {
        userInterface.onYield = [&] {
            const auto& [panel, text] = userInterface.statuses.back();
            if (panel == StatusPanel::folder && text.ends_with("last/")) {
                userInterface.onYield = {};
                change();
            }
        };
        scan("a");
    }
    [[nodiscard]] std::string reasonOfLast() const {
        const auto* const last = search.skipped.find(key("a") + "middle\\last\\");
        return last == nullptr ? "" : last->reason;
    }
};

TEST_F(ChangingTree, leadsNoWalkOutOfItByALink) {
    scanAndDo([this] {
        fs::rename(tree / "a/middle", tree / "moved");
        fs::create_directory_symlink(tree / "outside/middle", tree / "a/middle");
    });
    EXPECT_EQ(cell("select count(*) from details where fileName=\"secret\""), "0");
    EXPECT_EQ(reasonOfLast(), "The folder, or one above it, has become a link");
}

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
    EXPECT_EQ(cell("select count(*) from details where fileName=\"secret\""), "0");
    EXPECT_EQ(reasonOfLast(), "Another volume has been mounted");
}

} // namespace
