#include "export/keptScans.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "platform/environment.h"
#include "platform/files.h"
#include "support/scanFixture.h"
#include "support/sqliteScript.h"
#include "support/testSystem.h"

namespace {

namespace fs = std::filesystem;

class KeptScans : public testing::Test, protected ScanFixture {
protected:
    KeptScans() {
        tree.write("a/x", "12345");
        tree.write("b/x", "123");
        scan();
    }
    std::string keep(std::string_view name = {}, bool isAll = true) {
        return kept.keep(working, {key(name), false}, isAll, userInterface);
    }
    // A file with the name of a kept scan of the tree, whose rows are changed.
    std::string fake(const std::string& time, const std::string& script) {
        const std::string name = modExport::keptPrefix(platform::hostName(), key()) + time + ".mdb";
        platform::moveFile(keep(), folder.internal(name));
        if (!script.empty()) {
            runSqliteScript(folder.typed(name), script);
        }
        return name;
    }
    std::set<std::string> names() {
        std::set<std::string> result;
        for (const auto& entry : fs::directory_iterator(folder.path())) {
            result.insert(entry.path().filename().string());
        }
        return result;
    }

    TemporaryFolder folder;
    modExport::KeptScans kept{folder.typed()};
};

TEST_F(KeptScans, haveNamesForAnyFileSystem) {
    const std::string long255(255, 'n');
    std::set<std::string> all;
    for (const auto& [host, folderKey] : {std::pair<std::string, std::string>("vm", "/\\home\\me\\"),
                                          {"vm", "/home\\me\\"},
                                          {"vm", "/\\home-me\\"},
                                          {"vm", "/\\"},
                                          {"vm-home", "/\\me\\"},
                                          {"", "C:\\"},
                                          {"a/..\\b", "\\\\server\\share\\"},
                                          {"vm", "/\\" + long255 + "\\" + long255 + "\\"},
                                          {"vm", "/\\" + long255 + "\\" + long255 + "x\\"},
                                          {"m\xC3\xBCller", "/\\\xEF\x80\xBF:*\\CON\\..\\"}}) {
        const std::string prefix = modExport::keptPrefix(host, folderKey);
        EXPECT_TRUE(all.insert(prefix).second) << prefix;
        EXPECT_LT(prefix.size(), 120U);
        EXPECT_EQ(prefix.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-"),
                  std::string::npos)
            << prefix;
        EXPECT_NE(prefix.front(), '-');
        EXPECT_TRUE(modExport::isKeptName(prefix + "20261122T031500Z.mdb", prefix));
        EXPECT_TRUE(modExport::isKeptName(prefix + "20261122T031500Z-12.mdb", prefix));
        for (const char* end :
             {"", ".mdb", "20261122T031500Z", "20261122T031500Z.mdb.lock", "20261122T031500Z-.mdb",
              "20261122T031500Z-x.mdb", "20261122T03150xZ.mdb", "x20261122T031500Z.mdb"}) {
            EXPECT_FALSE(modExport::isKeptName(prefix + end, prefix)) << end;
        }
    }
    EXPECT_TRUE(modExport::keptPrefix("vm", "/\\home\\me\\").starts_with("vm-"));
}

TEST_F(KeptScans, areNewFilesEachTime) {
    std::set<std::string> files;
    for (int i = 0; i < 3; ++i) {
        files.insert(keep());
    }
    EXPECT_EQ(files.size(), 3U);
    EXPECT_EQ(names().size(), 3U) << "and nothing else";
    const std::string part = keep("a", false);
    modExport::loadDatabase(working, part, userInterface);
    EXPECT_EQ(rows("select fileName, size from details"), (std::vector<std::string>{"x|5", "a\\|5"}));
    EXPECT_EQ(cell("select path from scans"), key("a"));

    folder.write("file", "");
    const modExport::KeptScans nowhere(folder.typed("file"));
    EXPECT_THROW(nowhere.checkFolder(), RuntimeError);
    EXPECT_THROW(nowhere.keep(working, {key("a"), false}, true, userInterface), RuntimeError);
    EXPECT_EQ(names().size(), 5U);
}

// Of those that have the name, only what says itself that it is one is removed.
TEST_F(KeptScans, loseTheOldestOfTheSameFolderAlone) {
    const auto finished = [](const std::string& moment) {
        return "update scans set finished='" + moment + "';";
    };
    const std::string oldest = fake("20300101T000000Z", finished("2001-01-01 00:00:00"));
    const std::string older = fake("20300101T000001Z", finished("2001-01-02 00:00:00"));
    const std::string newer = fake("20010101T000000Z", finished("2040-01-02 00:00:00"));
    std::set<std::string> others{
        older,
        newer,
        fake("20010101T000001Z", finished("2001-01-01 00:00:00") + "update scans set host='other';"),
        fake("20010101T000002Z", finished("2001-01-01 00:00:00") + "update scans set path=path || 'a\\';"),
        fake("20010101T000003Z", "drop table scans;"),
        fake("20010101T000004Z", "pragma application_id=1;")};
    const std::string prefix = modExport::keptPrefix(platform::hostName(), key());
    const auto add = [&](const std::string& name, const std::string& text) {
        folder.write(name, text);
        others.insert(name);
    };
    add(prefix + "20010101T000005Z.mdb", "a letter");
    add(prefix + "20010101T000006Z.mdb.txt", "a letter");
    fs::copy_file(folder / oldest, folder / "copy.mdb");
    others.insert("copy.mdb");
    if (testSystem::makeLink(folder / "copy.mdb", folder / (prefix + "20010101T000007Z.mdb"))) {
        others.insert(prefix + "20010101T000007Z.mdb");
    }
    EXPECT_THAT(kept.removeOld(key("b"), 1), testing::IsEmpty());
    EXPECT_THAT(kept.removeOld(key(), 3), testing::IsEmpty());
    EXPECT_TRUE(names().contains(oldest));
    EXPECT_THAT(kept.removeOld(key(), 2), testing::IsEmpty());
    EXPECT_EQ(names(), others);

    const std::string hostile =
        fake("20010101T000008Z", "create trigger t after insert on details begin select 1; end;");
    EXPECT_THAT(kept.removeOld(key(), 1), testing::ElementsAre(testing::HasSubstr(hostile)));
    others.erase(older);
    others.insert(hostile);
    EXPECT_EQ(names(), others);
}

} // namespace
