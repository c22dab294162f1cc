#include "db/modDatabase.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <tuple>
#include <vector>

#include "export/databaseFile.h"
#include "platform/openFiles.h"
#include "platform/runtimeError.h"
#include "support/errorNumberOf.h"
#include "support/expected.h"
#include "support/recordingInterface.h"
#include "support/sqliteScript.h"
#include "support/temporaryFolder.h"

namespace fs = std::filesystem;

namespace {

class ModDatabase : public testing::Test {
protected:
    ModDatabase() { platform::copyFile(templateFile(), folder.typed("001.dat")); }

    WorkingDatabase prepare(const std::vector<std::string>& keep = {}) {
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
    // As left by a crash, or by a program that could not even write the template.
    const std::string whole = folder.read("main.dat");
    for (const std::string& left :
         {whole.substr(0, whole.size() / 2), whole + std::string(5000, '\x7F'), std::string()}) {
        folder.write("main.dat", left);
        EXPECT_EQ(prepare().details().rows->RecordCount(), 0);
    }
    EXPECT_TRUE(userInterface.messages.empty());
}

TEST_F(ModDatabase, destroysNoFileThatIsNotItsOwn) {
    const std::string columns = "(idx, fullPath, drive, parentFolder, isFolder, scanCompleteTime)";
    runSqliteScript(folder.typed("other tables"), "create table x (y);");
    runSqliteScript(folder.typed("other columns"), "create table details (fileName, size);");
    runSqliteScript(folder.typed("view"),
                    "create table x " + columns + "; create view details as select * from x;");
    runSqliteScript(folder.typed("log"), "pragma journal_mode = wal; create table details " + columns + ";");
    folder.write("settings.ini", "[APPLICATION_SETTINGS]\n");
    folder.write("damaged", "SQLite format 3" + std::string(5000, '\0'));
    folder.write("short", "S");
    const auto namesIn = [&] {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder.path())) {
            names.insert(entry.path().filename().string());
        }
        return names;
    };
    static_cast<void>(prepare()); // makes main.dat and its lock
    const std::set<std::string> before = namesIn();
    for (const char* name :
         {"other tables", "other columns", "view", "log", "settings.ini", "damaged", "short", "001.dat"}) {
        SCOPED_TRACE(name);
        const std::string content = folder.read(name);
        userInterface.messages.clear();
        const WorkingDatabase working =
            modDatabase::prepareDatabase(folder.internal(), folder.typed(name), userInterface);
        EXPECT_EQ(working.path(), folder.internal("main.dat"));
        ASSERT_EQ(userInterface.messages.size(), 1U);
        EXPECT_NE(userInterface.messages[0].find(folder.typed(name)), std::string::npos);
        EXPECT_EQ(folder.read(name), content);
        EXPECT_EQ(namesIn(), before) << "nothing is made beside it";
    }
    folder.write("main-2.dat", "precious");
    const WorkingDatabase first = prepare();
    EXPECT_EQ(prepare().path(), folder.internal("main-3.dat")) << "those beside it count as well";
    EXPECT_EQ(folder.read("main-2.dat"), "precious");
}

// The mark in a database's header (SQLite's application_id) tells what it is.
TEST_F(ModDatabase, knowsItsOwnFilesByTheirMark) {
    static_cast<void>(prepare());
    const std::string working = folder.read("main.dat");
    const std::string schema = "create table details (idx, fullPath, drive, parentFolder, isFolder, "
                               "scanCompleteTime); ";
    runSqliteScript(folder.typed("earlier"), schema);
    runSqliteScript(folder.typed("of another program"), "pragma application_id = 7; " + schema);
    {
        WorkingDatabase database = prepare();
        EXPECT_FALSE(modExport::copyDatabase(database, folder.typed("saved"), userInterface));
        EXPECT_EQ(folder.read("main.dat"), working) << "the scan goes on in it";
    }
    for (const auto& [name, content, isReplaced] :
         {std::tuple("earlier", folder.read("earlier"), true),
          std::tuple("damaged", working.substr(0, 100) + std::string(5000, '\x7F'), true),
          std::tuple("of another program", folder.read("of another program"), false),
          std::tuple("saved", folder.read("saved"), false)}) {
        folder.write(name, content);
        userInterface.messages.clear();
        const std::string path =
            modDatabase::prepareDatabase(folder.internal(), folder.typed(name), userInterface).path();
        EXPECT_EQ(path, folder.internal(isReplaced ? name : "main.dat"));
        EXPECT_EQ(folder.read(name) == content, !isReplaced) << name;
        EXPECT_EQ(userInterface.messages.empty(), isReplaced) << name;
    }
    EXPECT_NE(userInterface.messages.at(0).find("is a saved scan"), std::string::npos);
}

TEST_F(ModDatabase, followsNoLinkThatIsPutInItsPlace) {
    const auto saved = [&] { return folder.read("saved"); };
    static_cast<void>(prepare());
    fs::copy_file(folder / "main.dat", folder / "saved");
    const std::string before = saved();
    fs::remove(folder / "main.dat");
    if (!testSystem::makeLink(folder / "saved", folder / "main.dat") ||
        !testSystem::makeLink(folder / "nowhere", folder / "main-2.dat")) {
        GTEST_SKIP() << "this user cannot make links to files here";
    }
    EXPECT_EQ(errorNumberOf([&] { static_cast<void>(prepare()); }), 58);
    fs::remove(folder / "main.dat");
    {
        const WorkingDatabase first = prepare();
        EXPECT_EQ(prepare().path(), folder.internal("main-3.dat"));
    }
    fs::remove(folder / "main.dat.lock");
    testSystem::makeLink(folder / "nowhere", folder / "main.dat.lock");
    EXPECT_EQ(errorNumberOf([&] { static_cast<void>(prepare()); }), 75);
    EXPECT_FALSE(fs::exists(folder / "nowhere"));
    EXPECT_EQ(saved(), before);

    testSystem::makeLink(folder / "saved", folder / "own link");
    EXPECT_EQ(modDatabase::prepareDatabase(folder.internal(), folder.typed("own link"), userInterface).path(),
              folder.internal("saved"))
        << "a link that the user has named and made";
}

TEST_F(ModDatabase, isNotDisturbedByWhatTheEngineLeft) {
    static_cast<void>(prepare());
    const std::string journal = "\xD9\xD5\x05\xF9\x20\xA1\x63\xD7" + std::string(2000, '\1');
    for (const std::string& left : {journal, std::string(9, 'x')}) {
        folder.write("main.dat-journal", left);
        EXPECT_EQ(prepare().path(), folder.internal("main.dat"));
        EXPECT_EQ(fs::exists(folder / "main.dat-journal"), left != journal)
            << "no journal is not the engine's";
    }
    EXPECT_TRUE(userInterface.messages.empty());
}

TEST_F(ModDatabase, removesWhatAKilledProgramHasLeftBesideIt) {
    const auto beside = [&](int number) { return platform::replacementName("main.dat", number); };
    for (const int number : {1, 2}) {
        folder.write(beside(number), "left behind");
    }
    folder.write(platform::replacementName("other.dat", 1), "another's");
    WorkingDatabase working = prepare();
    EXPECT_FALSE(fs::exists(folder / beside(1)));
    EXPECT_FALSE(fs::exists(folder / beside(2)));
    EXPECT_TRUE(fs::exists(folder / platform::replacementName("other.dat", 1)));
    const auto companion = working.prepareCompanion();
    working.startAnew();
    EXPECT_TRUE(fs::exists(folder / beside(2))) << "this one is in use";
}

TEST_F(ModDatabase, leavesAFileThatIsInUseAlone) {
    const WorkingDatabase first = prepare();
    const WorkingDatabase second = prepare();
    EXPECT_EQ(second.path(), folder.internal("main-2.dat"));
    ASSERT_EQ(userInterface.messages.size(), 1U);
    EXPECT_NE(userInterface.messages[0].find("main-2.dat"), std::string::npos);
    EXPECT_EQ(first.details().rows->RecordCount(), 0);
    EXPECT_EQ(prepare({folder.internal("main-3.dat")}).path(), folder.internal("main-3.dat"));
    EXPECT_FALSE(fs::exists(folder / "main-3.dat")) << "it was deleted with its program";
    EXPECT_FALSE(fs::exists(folder / "main-3.dat.lock"));
    fs::copy_file(folder / "001.dat", folder / "main-3.dat");
    EXPECT_EQ(prepare({folder.internal("main-3.dat")}).path(), folder.internal("main-4.dat"))
        << "the file to keep is not overwritten";
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
    folder.write("main.dat", "precious");
    std::vector<std::tuple<const char*, int, const char*>> cases = {
        {"main.dat", 58, "main.dat"},          {"file", 0, ""},
        {"001.dat", 58, "main.dat"},           {"file/main.dat", 76, "main.dat"},
        {"no/where/main.dat", 76, "main.dat"}, {"folder", 75, "folder"}};
    if (testSystem::makePipe(folder / "pipe")) {
        cases.emplace_back("pipe", 75, "pipe");
    }
    for (const auto& [path, number, named] : cases) {
        try {
            static_cast<void>(
                modDatabase::prepareDatabase(folder.internal(), folder.typed(path), userInterface));
            EXPECT_EQ(number, 0) << path;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number(), number) << error.what();
            EXPECT_NE(std::string(error.what()).find(named), std::string::npos) << error.what();
        }
    }
    EXPECT_EQ(folder.read("main.dat"), "precious");
}

} // namespace
