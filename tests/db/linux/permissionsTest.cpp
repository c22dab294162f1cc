#include <gtest/gtest.h>

#include "db/modDatabase.h"
#include "platform/files.h"
#include "support/errorNumberOf.h"
#include "support/expected.h"
#include "support/linux/unprivileged.h"
#include "support/recordingInterface.h"
#include "support/temporaryFolder.h"

namespace fs = std::filesystem;

namespace {

TEST(DatabasePermissions, areTold) {
    const TemporaryFolder folder;
    RecordingInterface userInterface;
    platform::copyFile(templateFile(), folder.typed("001.dat"));
    fs::permissions(folder / "001.dat", fs::perms::none);
    fs::create_directories(folder / "closed");
    fs::permissions(folder / "closed", fs::perms::owner_read | fs::perms::owner_exec);
    fs::create_directories(folder / "open");
    fs::permissions(folder / "open", fs::perms::all);
    const Unprivileged user;
    if (!user.is()) {
        GTEST_SKIP() << "the superuser cannot become another user here";
    }
    const auto prepare = [&](const char* path) {
        return [&, path] {
            static_cast<void>(
                modDatabase::prepareDatabase(folder.internal(), folder.typed(path), userInterface));
        };
    };
    EXPECT_EQ(errorNumberOf(prepare("closed/main.dat")), 70);
    EXPECT_EQ(errorNumberOf(prepare("open/main.dat")), databaseError::fileMissing) << "unreadable template";
}

} // namespace
