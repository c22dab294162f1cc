#include "db/scanRecords.h"

#include <gtest/gtest.h>

#include <functional>

#include "base/excludes.h"
#include "platform/environment.h"
#include "platform/paths.h"
#include "support/scanFixture.h"

namespace {

class ScanRecords : public testing::Test, protected ScanFixture {
protected:
    ScanRecords() {
        for (const char* file : {"a/one/x", "a/two/x", "b/x", "c"}) {
            tree.write(file, "12345");
        }
    }
    // The scanned folders below the tree, in order, each with a blank behind it; "." is the tree itself.
    std::string recorded() {
        std::string result;
        for (const modScans::Scan& each : modScans::all(working.database())) {
            std::string name = each.path.substr(key().size());
            result += (name.empty() ? "." : name) + (each.cancelled ? "! " : " ");
        }
        return result;
    }
};

TEST_F(ScanRecords, tellHowTheRowsCameToBe) {
    Excludes excludes;
    excludes.add("*.o");
    excludes.add("b");
    settings.setExcludes(std::move(excludes));
    settings.setExact(true);
    const platform::Seconds before = platform::now();
    scan();
    const std::vector<modScans::Scan> scans = modScans::all(working.database());
    ASSERT_EQ(scans.size(), 1U);
    const modScans::Scan& only = scans.front();
    EXPECT_EQ(only.path, key());
    EXPECT_EQ(only.host, platform::hostName());
    EXPECT_EQ(only.system, platform::systemName());
    EXPECT_NE(only.system, "");
    EXPECT_EQ(only.excludes, "*.o\nb");
    EXPECT_TRUE(only.exact && only.withOwners && !only.cancelled);
    EXPECT_TRUE(only.started >= before && only.finished >= only.started && only.finished <= platform::now());
    EXPECT_EQ(only.programVersion.find_first_not_of("0123456789."), std::string::npos);
    EXPECT_EQ(cell("select started from scans").size(), 19U);
}

TEST_F(ScanRecords, areThoseOfTheRowsThatAreThere) {
    const auto scanned = [this](const char* name) { return [this, name] { scan(name); }; };
    const struct {
        const char* what;
        std::function<void()> step;
        std::string records;
    } steps[] = {
        {"a scan", scanned("a/one"), "a\\one\\ "},
        {"nothing: complete folders are not scanned again", scanned("a/one"), "a\\one\\ "},
        {"another one", scanned("b"), "a\\one\\ b\\ "},
        {"one above, which skips those two", scanned(""), "a\\one\\ b\\ . "},
        {"a refresh",
         [this] {
             search.resetScanCompleteTime(key("b"));
             scan("b");
         },
         "a\\one\\ . b\\ "},
        {"a refresh from scratch", [this] { search.resetWholeFolder(key("a")); }, ". b\\ "},
        {"a scan inside an earlier one", scanned("a/two"), ". b\\ a\\two\\ "},
        {"a file that is gone", [this] { search.removeEntry(key() + "c"); }, ". b\\ a\\two\\ "},
        {"a folder that is gone", [this] { search.removeEntry(key("a")); }, ". b\\ "},
        {"a cancelled scan of all, which has not come to all folders",
         [this] {
             search.resetScanCompleteTime(key());
             search.resetScanCompleteTime(key("b"));
             const std::string inner = platform::displayPath(key("b"));
             userInterface.onYield = [this, inner] {
                 search.CancelScan = search.CancelScan || userInterface.statuses.back().second == inner;
             };
             scan();
             userInterface.onYield = {};
         },
         ".! "},
        {"a start that is left out",
         [this] {
             Excludes excludes;
             excludes.add(tree.typed("b"));
             settings.setExcludes(std::move(excludes));
             scan("b");
         },
         ".! "},
        {"no rows", [this] { search.resetAll(); }, ""},
    };
    for (const auto& [what, step, records] : steps) {
        step();
        EXPECT_EQ(recorded(), records) << what;
    }
}

// One that was scanned again with all above it takes the place of the earlier one.
TEST_F(ScanRecords, areReplacedWithTheirFolders) {
    scan("a/one");
    search.resetScanCompleteTime(key("a/one"));
    scan();
    EXPECT_EQ(recorded(), ". ");
    working.database().Execute("insert into scans (path) values ('" + key("a/one") + "')");
    working.database().Execute("insert into scans (path) values ('" + key() + std::string(40000, 'x') + "')");
    search.resetScanCompleteTime(key());
    scan();
    EXPECT_EQ(recorded(), "a\\one\\ . ") << "rows that were not recorded anew, and what no scan has written";
}

TEST_F(ScanRecords, areFoundForAFolder) {
    std::vector<modScans::Scan> scans(4);
    scans[0].path = "/\\home\\";
    scans[0].finished = 20;
    scans[1].path = "/\\home\\me\\";
    scans[1].finished = 10;
    scans[2].finished = 5;
    scans[3].path = "C:\\";
    const std::pair<const char*, const char*> folders[] = {{"/\\home\\", "/\\home\\"},
                                                           {"/\\home\\me\\deep\\", "/\\home\\me\\"},
                                                           {"/\\home\\men\\", "/\\home\\"},
                                                           {"/\\", ""},
                                                           {"C:\\x\\", "C:\\"}};
    for (const auto& [folder, path] : folders) {
        const modScans::Scan* const scan = modScans::ofFolder(scans, folder);
        EXPECT_EQ(scan == nullptr ? "" : scan->path, path) << folder;
    }
    EXPECT_EQ(modScans::lastFinished(scans), 20);
    EXPECT_FALSE(modScans::lastFinished({}));
}

} // namespace
