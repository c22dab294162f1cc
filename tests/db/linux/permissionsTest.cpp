#include <gtest/gtest.h>
#include <sys/stat.h>

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

// A pipe would keep the engine waiting, and an unfinished transaction's journal be rolled back.
TEST(DatabaseNeighbours, areNotWaitedFor) {
    const TemporaryFolder folder;
    RecordingInterface userInterface;
    platform::copyFile(templateFile(), folder.typed("001.dat"));
    platform::copyFile(templateFile(), folder.typed("saved.mdb"));
    for (const char* name : {"main.dat-journal", "main.dat-wal", "saved.mdb-journal", "saved.mdb-wal"}) {
        ASSERT_EQ(::mkfifo((folder / name).c_str(), 0600), 0);
    }
    WorkingDatabase working =
        modDatabase::prepareDatabase(folder.internal(), folder.typed("main.dat"), userInterface);
    EXPECT_EQ(working.database().OpenRecordset("select count(*) from details")->Fields(0).text(), "0");
    const auto saved = DBEngine::OpenDatabase(folder.internal("saved.mdb"), OpenMode::readOnly);
    EXPECT_EQ(saved->OpenRecordset("select count(*) from details")->Fields(0).text(), "0");
}

} // namespace
