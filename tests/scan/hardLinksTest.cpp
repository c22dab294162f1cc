#include <gtest/gtest.h>

#include <filesystem>

#include "support/scanFixture.h"

namespace {

class HardLinksInScans : public testing::Test, protected ScanFixture {};

// The names of a file may lie in folders that are scanned apart, and come and go.
TEST_F(HardLinksInScans, aFileWithSeveralNamesTakesItsRoomOnTheDiskOnce) {
    namespace fs = std::filesystem;
    tree.write("a/data", std::string(50'000, 'x'));
    fs::create_directories(tree / "b");
    fs::create_hard_link(tree / "a/data", tree / "b/again");
    fs::create_hard_link(tree / "a/data", tree / "third");
    const auto counted = [this] { // those that count, and what all take
        std::vector<std::string> names =
            rows("select fileName from details where isFolder=0 and sizeOnDisk>0");
        std::string text = std::to_string(names.size());
        return text + (std::stod(cell("select sum(sizeOnDisk) from details where isFolder=0")) < 80'000
                           ? " once"
                           : " more than once");
    };
    EXPECT_EQ(cell("select sum(size) from details where isFolder=0"), "~");
    for (const char* const folder : {"b", "a", ""}) {
        scan(folder);
        EXPECT_EQ(counted(), "1 once") << folder;
    }
    EXPECT_EQ(cell("select sum(size) from details where isFolder=0"), "150000") << "sizes count each name";
    for (const char* const folder : {"a", "b", "", "a"}) {
        search.resetWholeFolder(key(folder));
        scan(folder);
        EXPECT_EQ(counted(), "1 once") << folder;
    }
    search.resetAll();
    scan();
    EXPECT_EQ(counted(), "1 once");
}

} // namespace
