#include "views/folderSummary.h"

#include <gtest/gtest.h>

#include "support/scanFixture.h"

namespace {

class FolderSummary : public testing::Test, protected ScanFixture {
protected:
    FolderSummary() {
        tree.write("a/big.bin", std::string(3000, 'x'));
        tree.write("a/deep/x.txt", std::string(10, 'x'));
        tree.write("a.more/y.txt", std::string(5, 'x')); // its path sorts into the midst of a's
        tree.write("own.txt", std::string(50, 'x'));
    }
    std::string text(const std::string& folder) {
        const modFigures::FolderSummary summary = modFigures::summary(working.database(), folder);
        return (summary.isRecorded ? "" : "(none) ") + modFigures::summaryText(summary) +
               (summary.isStamped ? "" : " ...");
    }
    std::string size(const std::string& folder) {
        const auto size = modFigures::scannedSize(working.database(), folder);
        return size ? std::to_string(static_cast<int>(*size)) : "none";
    }
};

TEST_F(FolderSummary, countsWhatIsAnywhereBelow) {
    scan();
    const struct {
        std::string folder;
        const char* text;
        const char* size;
    } cases[]{{key(), "3.0 Kb, 4 files, 3 folders", "3065"},
              {key("a"), "2.9 Kb, 2 files, 1 folder", "3010"},
              {key("a/deep"), "10 bytes, 1 file, 0 folders", "10"},
              {key("a.more"), "5 bytes, 1 file, 0 folders", "5"},
              {key("b"), "(none) 0 bytes, 0 files, 0 folders ...", "none"}};
    for (const auto& each : cases) {
        EXPECT_EQ(text(each.folder), each.text) << each.folder;
        EXPECT_EQ(size(each.folder), each.size) << each.folder;
    }
}

TEST_F(FolderSummary, ofAFolderOfWhichOnlyAPartWasScannedHasNoSize) {
    scan("a/deep");
    EXPECT_EQ(text(key("a")), "10 bytes, 1 file, 1 folder ...");
    EXPECT_EQ(size(key("a")), "none");
}

TEST_F(FolderSummary, ofADrivesRootIsMadeOfWhatLiesInIt) {
    for (const char* path : {"Q:\\a\\one.txt", "Q:\\two.txt", "Q:\\b\\c\\three.txt"}) {
        EXPECT_TRUE(search.updateDetail(path, {}, 1, {}, {}, {}));
    }
    for (const char* path : {"Q:\\a\\", "Q:\\b\\c\\", "Q:\\b\\"}) {
        EXPECT_TRUE(search.recordFolder(path, {{.size = 1}, 0, false, {}, {}, {}}));
    }
    EXPECT_EQ(text("Q:\\"), "3 bytes, 3 files, 3 folders ...");
    EXPECT_EQ(size("Q:\\"), "3");
    scan();
    EXPECT_EQ(text("Q:\\"), "3 bytes, 3 files, 3 folders ...") << "beside another drive";
}

TEST(DriveTexts, leaveOutAShareThatIsNone) {
    constexpr double gigabyte = 1073741824;
    const platform::DriveSpace space{7 * gigabyte, 2 * gigabyte, 5 * gigabyte};
    EXPECT_EQ(modFigures::spaceText(space), "2.0 Gb used, 5.0 Gb free of 7.0 Gb");
    EXPECT_EQ(modFigures::shareText(gigabyte / 4, space), "12.5% of used space, 5.0 Gb free");
    EXPECT_EQ(modFigures::shareText(1, space), "<0.1% of used space, 5.0 Gb free");
    EXPECT_EQ(modFigures::shareText(0, space), "0.0% of used space, 5.0 Gb free");
    EXPECT_EQ(modFigures::shareText(-gigabyte, space), "5.0 Gb free");
    EXPECT_EQ(modFigures::shareText(5 * gigabyte, space), "5.0 Gb free");
    EXPECT_EQ(modFigures::shareText(1, {gigabyte, 0, gigabyte}), "1.0 Gb free");
}

} // namespace
