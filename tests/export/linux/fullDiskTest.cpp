#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/profile.h"
#include "support/everyWriter.h"
#include "support/linux/smallDisk.h"

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class FullDisk : public testing::Test, protected EveryWriter {};

TEST_F(FullDisk, costsNoFileThatWasThere) {
    const TemporaryFolder folder;
    const SmallDisk disk(folder.path());
    if (!disk.isThere()) {
        GTEST_SKIP() << "only the superuser can make a small volume";
    }
    const std::string old(1000, 'o');
    const std::string settingsBefore = "[a]\nk=" + std::string(200, 'v') + "\n";
    folder.write("report", old);
    folder.write("settings.ini", settingsBefore);
    disk.fill("everything else");
    for (const Writer& writer : writers()) {
        for (const char* name : {"report", "new"}) {
            SCOPED_TRACE(writer.name + " " + name);
            userInterface.messages.clear();
            writer.write(folder.typed(name));
            EXPECT_THAT(
                userInterface.messages,
                ElementsAre(HasSubstr("61 The disk is full: " + folder.typed(name) + " was not written.")));
            EXPECT_EQ(folder.read("report"), old);
            EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 3);
        }
    }
    EXPECT_FALSE(platform::writeProfileValue("a", "j", "1", folder.typed("settings.ini")));
    EXPECT_EQ(folder.read("settings.ini"), settingsBefore);
}

} // namespace
