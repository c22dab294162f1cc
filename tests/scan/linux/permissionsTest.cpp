#include <gtest/gtest.h>

#include "scan/modOwner.h"
#include "support/linux/unprivileged.h"
#include "support/scanFixture.h"

namespace fs = std::filesystem;

namespace {

class ScanPermissions : public testing::Test, protected ScanFixture {};

TEST_F(ScanPermissions, namesWithoutFactsAreRecordedAllTheSame) {
    tree.write("open/file", "x");
    tree.write("namesOnly/file", "x");
    fs::permissions(tree / "namesOnly",
                    fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    {
        const Unprivileged user;
        if (!user.is()) {
            GTEST_SKIP() << "the superuser cannot become another user here";
        }
        scan();
    }
    EXPECT_EQ(
        rows("select size, owner, dateModified is null from details where fileName=\"file\" order by size"),
        (std::vector<std::string>{"0|unknown|1", "1|" + modOwner::fileOwner(key()) + "|0"}));
    EXPECT_TRUE(userInterface.messages.empty());
}

} // namespace
