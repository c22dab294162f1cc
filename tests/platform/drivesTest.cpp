#include "platform/drives.h"

#include <gtest/gtest.h>

#include "base/clsFile.h"
#include "platform/folders.h"
#include "support/temporaryFolder.h"

namespace {

TEST(DriveSpace, isWhatTheSystemSaysOfAFolderOnTheDrive) {
    const TemporaryFolder folder;
    const std::string root(clsFile(platform::recordedPath(folder.internal())).drive());
    const auto space = platform::driveSpace(root);
    ASSERT_TRUE(space) << root;
    const std::filesystem::space_info expected = std::filesystem::space(folder / "");
    constexpr double tolerance = 1 << 30; // others write meanwhile
    EXPECT_NEAR(space->free, static_cast<double>(expected.available), tolerance);
    EXPECT_NEAR(space->used, static_cast<double>(expected.capacity - expected.free), tolerance);
    EXPECT_LE(space->used, space->total);
}

TEST(DriveSpace, isNotKnownOfWhatIsNoDrive) {
    for (const char* root : {"", "/no/such mount\\", "\\\\no-such-server\\share\\"}) {
        EXPECT_FALSE(platform::driveSpace(root)) << root;
    }
}

} // namespace
