#include "db/modDatabase.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "platform/runtimeError.h"
#include "support/recordingInterface.h"
#include "support/temporaryFolder.h"
#include "support/unprivileged.h"

namespace fs = std::filesystem;

namespace {

class ModDatabase : public testing::Test {
protected:
    ModDatabase() { platform::copyFile(SPANNORY_TEMPLATE, folder.typed("001.dat")); }

    WorkingDatabase prepare(std::string_view keep = {}) {
        return modDatabase::prepareDatabase(folder.internal(), folder.internal("main.dat"), userInterface,
                                            keep);
    }

    TemporaryFolder folder;
    RecordingInterface userInterface;
};

TEST_F(ModDatabase, startsEveryRunEmpty) {
    {
        WorkingDatabase working = prepare();
        working.details().rows->AddNew();
        working.details().size.setNumber(1);
        working.details().rows->Update();
        EXPECT_EQ(working.details().rows->RecordCount(), 1);
    }
    EXPECT_EQ(prepare().details().rows->RecordCount(), 0);
    folder.write("main.dat", "left over by a crash");
    EXPECT_EQ(prepare().details().rows->RecordCount(), 0);
    EXPECT_TRUE(userInterface.messages.empty());
}

TEST_F(ModDatabase, leavesAFileThatIsInUseAlone) {
    const WorkingDatabase first = prepare();
    const WorkingDatabase second = prepare();
    EXPECT_EQ(second.path(), folder.internal("main-2.dat"));
    ASSERT_EQ(userInterface.messages.size(), 1U);
    EXPECT_NE(userInterface.messages[0].find("main-2.dat"), std::string::npos);
    EXPECT_EQ(first.details().rows->RecordCount(), 0);
    EXPECT_EQ(prepare(folder.internal("main-3.dat")).path(), folder.internal("main-3.dat"));
    EXPECT_FALSE(fs::exists(folder / "main-3.dat")) << "it went with its program";
    fs::copy_file(folder / "001.dat", folder / "main-3.dat");
    EXPECT_EQ(prepare(folder.internal("main-3.dat")).path(), folder.internal("main-4.dat"))
        << "the file to be kept is not made anew";
}

TEST_F(ModDatabase, knowsAFileByAnyOfItsNames) {
    const WorkingDatabase first = prepare();
    fs::create_symlink(folder / "main.dat", folder / "other.dat");
    const WorkingDatabase second =
        modDatabase::prepareDatabase(folder.internal(), folder.internal("other.dat"), userInterface);
    EXPECT_EQ(second.path(), folder.internal("main-2.dat"));
}

TEST_F(ModDatabase, saysWhatIsWrongWithTheFile) {
    folder.write("file", "");
    ::mkfifo(folder.typed("pipe").c_str(), 0600);
    fs::create_directories(folder / "folder");
    fs::permissions(folder / "001.dat", fs::perms::none);
    const std::tuple<const char*, int, const char*> cases[] = {
        {"file/main.dat", 76, "main.dat"},
        {"no/where/main.dat", 76, "main.dat"},
        {"pipe", 75, "pipe"},
        {"folder", 75, "folder"},
        {"closed/main.dat", 70, "main.dat"},
        {"open/main.dat", databaseError::fileMissing, "001.dat"}, // the template cannot be read
    };
    fs::create_directories(folder / "closed");
    fs::create_directories(folder / "open");
    fs::permissions(folder / "open", fs::perms::all);
    const Unprivileged user;
    if (!user.is()) {
        GTEST_SKIP() << "the superuser cannot become another user here";
    }
    for (const auto& [path, number, named] : cases) {
        try {
            static_cast<void>(
                modDatabase::prepareDatabase(folder.internal(), folder.typed(path), userInterface));
            ADD_FAILURE() << path;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number(), number) << error.what();
            EXPECT_NE(std::string(error.what()).find(named), std::string::npos) << error.what();
        }
    }
}

} // namespace
