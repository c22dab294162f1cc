#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "platform/folders.h"
#include "support/temporaryFolder.h"

namespace {

// A disk may take long for each entry, and a folder of a few hundred fits one answer of the system.
TEST(FolderReader, endsWithinAFolderWhenItMayNotGoOn) {
    TemporaryFolder tree;
    constexpr int files = 100;
    for (int i = 0; i < files; ++i) {
        tree.write(std::to_string(i), "");
    }
    platform::FolderReader reader;
    platform::FolderListing listing;
    ASSERT_TRUE(reader.read(tree.internal(), listing, true));
    EXPECT_EQ(listing.size(), files);
    reader.setGoesOn([] { return false; });
    constexpr std::chrono::milliseconds untilItLooks{60};
    std::this_thread::sleep_for(untilItLooks);
    EXPECT_FALSE(reader.read(tree.internal(), listing));
    EXPECT_LT(listing.size(), files);
}

} // namespace
