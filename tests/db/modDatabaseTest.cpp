#include "db/modDatabase.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <tuple>
#include <vector>

#include "platform/runtimeError.h"
#include "support/expected.h"
#include "support/recordingInterface.h"
#include "support/temporaryFolder.h"

namespace fs = std::filesystem;

namespace {

class ModDatabase : public testing::Test {
protected:
    ModDatabase() { platform::copyFile(templateFile(), folder.typed("001.dat")); }

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
    ASSERT_TRUE(testSystem::makeLink(folder.path(), folder / "same"));
    const WorkingDatabase second =
        modDatabase::prepareDatabase(folder.internal(), folder.internal("same/main.dat"), userInterface);
    EXPECT_EQ(second.path(), folder.internal("main-2.dat"));
}

TEST_F(ModDatabase, saysWhatIsWrongWithTheFile) {
    folder.write("file", "");
    fs::create_directories(folder / "folder");
    std::vector<std::tuple<const char*, int, const char*>> cases = {
        {"file/main.dat", 76, "main.dat"}, {"no/where/main.dat", 76, "main.dat"}, {"folder", 75, "folder"}};
    if (testSystem::makePipe(folder / "pipe")) {
        cases.emplace_back("pipe", 75, "pipe");
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
