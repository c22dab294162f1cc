#include <gtest/gtest.h>

#include "db/folderRows.h"
#include "platform/folders.h"
#include "support/linux/smallDisk.h"
#include "support/scanFixture.h"

namespace fs = std::filesystem;

namespace {

class OtherVolume : public testing::Test, protected ScanFixture {
protected:
    using Rows = std::vector<std::string>;

    [[nodiscard]] Rows row(const std::string& folder) const {
        return rows("select description, size from details where " + modFolderRows::itself(folder));
    }
    // The volume as a folder of the volume above it.
    const std::string volume = key("a") + "volume\\";
};

TEST_F(OtherVolume, isAnEmptyFolderBesideItsOwnDrive) {
    tree.write("a/file", "12345");
    fs::create_directories(tree / "a/volume");
    const SmallDisk disk(tree / "a/volume");
    if (!disk.isThere()) {
        GTEST_SKIP() << "nothing can be mounted here";
    }
    tree.write("a/volume/inside", "123");
    const Rows skipped{std::string(modFolderRows::otherVolume) + "|0"};

    const auto result = scan();
    EXPECT_EQ(result.files, 1);
    EXPECT_EQ(result.unreadableFolders, 0);
    EXPECT_EQ(row(volume), skipped);
    EXPECT_EQ(row(key("a")), Rows{"File Folder|5"});
    ASSERT_NE(search.gaps.find(volume), nullptr);
    EXPECT_EQ(search.gaps.unreadableIn(key()).folders, 0U);

    EXPECT_EQ(platform::recordedPath(volume), key("a/volume")) << "its own drive";
    modProcessFiles::processMain(platform::recordedPath(volume), {search, settings, userInterface});
    EXPECT_EQ(row(volume), skipped);
    EXPECT_EQ(rows("select drive, size from details where fileName=\"inside\""),
              Rows{key("a/volume") + "|3"});

    search.resetScanCompleteTime(key("a"));
    scan();
    EXPECT_EQ(row(volume), skipped);
    EXPECT_EQ(row(key("a")), Rows{"File Folder|5"});
}

} // namespace
