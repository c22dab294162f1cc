#include <gtest/gtest.h>

#include "scan/modOwner.h"
#include "support/linux/unprivileged.h"
#include "support/scanFixture.h"

namespace fs = std::filesystem;

namespace {

class ScanPermissions : public testing::Test, protected ScanFixture {};

TEST_F(ScanPermissions, filesThatShowTheirNamesAloneAreRecordedAndTold) {
    tree.write("open/file", "x");
    tree.write("namesOnly/file", "x");
    tree.write("namesOnly/sub/file", "x");
    fs::permissions(tree / "namesOnly",
                    fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    modProcessFiles::ScanResult result;
    {
        const Unprivileged user;
        if (!user.is()) {
            GTEST_SKIP() << "the superuser cannot become another user here";
        }
        result = scan();
        scan(); // has nothing to read
    }
    EXPECT_EQ(result.unreadableFiles, 1);
    EXPECT_EQ(result.unreadableFolders, 1) << "the folder among the names";
    EXPECT_EQ(remarks(), "1 folder and 1 file could not be read.");
    EXPECT_EQ(search.gaps.unreadableIn(key("open")).files, 0U);
    ASSERT_EQ(search.gaps.files().size(), 1U);
    const auto& [folder, files] = *search.gaps.files().begin();
    EXPECT_EQ(folder, key("namesOnly"));
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(files[0].name + ": " + files[0].reason, "file: Permission denied");
    EXPECT_EQ(
        rows("select size, owner, dateModified is null from details where fileName=\"file\" order by size"),
        (std::vector<std::string>{"0|unknown|1", "1|" + modOwner::fileOwner(key()) + "|0"}));
    EXPECT_TRUE(userInterface.messages.empty());

    fs::permissions(tree / "namesOnly", fs::perms::owner_all);
    search.resetScanCompleteTime(key());
    EXPECT_EQ(search.gaps.unreadableIn(key()).files, 1U) << "its row is still there";
    search.resetScanCompleteTime(key("namesOnly"));
    EXPECT_EQ(search.gaps.unreadableIn(key()).files, 0U);
    EXPECT_EQ(scan().unreadableFiles, 0);
    EXPECT_EQ(remarks(), "");
    EXPECT_EQ(rows("select sum(size) from details where isFolder=0"), std::vector<std::string>{"3"});
}

} // namespace
