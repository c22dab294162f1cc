#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <limits>
#include <utility>

#include "platform/locale.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "scan/clsFileSearch.h"
#include "scan/modOwner.h"
#include "support/scanFixture.h"
#include "support/testSystem.h"

namespace fs = std::filesystem;

namespace {

std::string textOf(std::time_t moment) {
    const std::tm* parts = std::localtime(&moment); // NOLINT: one thread
    char text[64];                                  // NOLINT
    return {text, std::strftime(text, sizeof text, "%m/%d/%Y %I:%M:%S %p", parts)};
}

std::string nativeName(std::string_view internalName) {
    std::string result;
    platform::appendNativeName(result, internalName);
    return result;
}

// Collects, with its own walk, the rows that a scan of the folder should give: path, size, dates, owner,
// extension, isFolder, joined by "|". Returns the folder's total.
double expectRows(const fs::path& folder, const std::string& key, const std::string& owner,
                  std::vector<std::string>& rows) {
    double total = 0;
    for (const testSystem::Entry& entry : testSystem::entriesOf(folder)) {
        const std::string& name = entry.name;
        const std::string dates = textOf(entry.accessed) + "|" + textOf(entry.modified) + "|" + owner;
        if (entry.isFolder) {
            const double size =
                expectRows(folder / testSystem::pathOf(nativeName(name)), key + name + "\\", owner, rows);
            rows.push_back(key + name + "\\|" + std::to_string(static_cast<long long>(size)) + "|" + dates +
                           "|(no extension)|1");
            total += size;
            continue;
        }
        const auto size = static_cast<std::int32_t>(static_cast<std::uint32_t>(entry.size));
        const std::size_t dot = name.rfind('.');
        std::string extension = dot == std::string::npos ? "(no extension)" : name.substr(dot + 1);
        std::transform(extension.begin(), extension.end(), extension.begin(), platform::asciiLower);
        rows.push_back(key + name + "|" + std::to_string(size) + "|" + dates + "|" +
                       (extension.empty() ? "~" : extension) + "|0");
        total += size;
    }
    return total;
}

class Scan : public testing::Test, protected ScanFixture {
protected:
    std::string recordedRows() {
        auto found =
            rows("select drive & fullPath, size, dateAccessed, dateModified, owner, extension, isFolder "
                 "from details order by drive, fullPath, size");
        std::sort(found.begin(), found.end());
        return joined(found);
    }
    static std::string joined(const std::vector<std::string>& lines) {
        std::string text;
        for (const std::string& line : lines) {
            text += line + "\n";
        }
        return text;
    }
    std::string count(const std::string& condition = "1=1") {
        return cell("select count(*) from details where " + condition);
    }
    std::string ownName() { return platform::internalName(testSystem::textOf(tree.path().filename())); }
    std::string sizeOf(std::string_view folder) {
        return cell("select size from details where isFolder=1 and fileName=\"" + std::string(folder) +
                    "\\\"");
    }
};

void makeHostileTree(const TemporaryFolder& tree) {
    for (const std::string& name : testSystem::hostileNames()) {
        tree.write("names/" + name, "xy");
    }
    tree.write("folders/" + testSystem::hostileNames().at(1) + "/in", "xyz");
    tree.write("docs/Report.TXT", std::string(1000, 'x'));
    tree.write("docs/.profile", "p");
    tree.write("docs/dot.", "d");
    tree.write("docs.old/README", "readme");
    tree.write("docs/deep/er/file.tar.gz", std::string(2000, 'x'));
    fs::create_directories(tree / "empty");
    testSystem::makeLink(tree / "docs", tree / "linked");
    testSystem::makeLink(tree / "nowhere", tree / "dangling");
    testSystem::makePipe(tree / "pipe");
    const std::pair<const char*, std::uintmax_t> sparse[] = {
        {"2GiB", 1ULL << 31}, {"3GiB", 3ULL << 30}, {"4GiB", 1ULL << 32}, {"5GiB+1", (5ULL << 30) + 1}};
    for (const auto& [name, size] : sparse) {
        tree.write(std::string("sparse/") + name, "");
        fs::resize_file(tree / (std::string("sparse/") + name), size);
    }
    testSystem::settleAccessTimes(tree.path());
}

TEST_F(Scan, recordsWhatAnIndependentWalkFinds) {
    makeHostileTree(tree);
    const auto result =
        scan(); // first, because the walk below changes the folders' access times and a scan does not
    std::vector<std::string> expected;
    const double total = expectRows(tree.path(), key(), modOwner::fileOwner(key()), expected);
    EXPECT_TRUE(result.stored);
    const std::string ownKey = key();
    std::string ownRow = cell("select size from details where drive & fullPath=\"" + ownKey + "\"");
    EXPECT_EQ(ownRow, std::to_string(static_cast<long long>(total)));
    auto found = rows("select drive & fullPath, size, dateAccessed, dateModified, owner, extension, isFolder "
                      "from details where drive & fullPath<>\"" +
                      ownKey + "\"");
    std::sort(found.begin(), found.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(joined(found), joined(expected));
    EXPECT_EQ(count("isFolder=1 and scanCompleteTime is null"), "0");
    EXPECT_EQ(result.wrappedFiles, 4);
    EXPECT_EQ(sizeOf("sparse"), std::to_string(-2147483648LL - 1073741824LL + 0 + 1073741825LL));
    // Checks the other columns of two rows independently.
    EXPECT_EQ(rows("select folder, fileName, description, parentFolder, dateInserted is null from details "
                   "where fileName=\"er\\\" or fileName=\"Report.TXT\" order by isFolder"),
              (std::vector<std::string>{
                  ownKey + "docs\\|Report.TXT|~|" + ownKey + "docs\\|0",
                  ownKey + "docs\\deep\\|er\\|File Folder|" + ownKey + "docs\\deep\\|0",
              }));
}

TEST_F(Scan, followsTheSettings) {
    tree.write("docs/Report.TXT", "x");
    tree.write("big", "");
    fs::resize_file(tree / "big", 3ULL << 30);
    settings.setGetOwnerInfo(false);
    settings.setCaseSensitiveExt(true);
    settings.setFullFileSizes(true);
    EXPECT_EQ(scan().wrappedFiles, 0);
    EXPECT_EQ(cell("select size from details where fileName=\"big\""), "3221225472");
    settings.setFullFileSizes(false);
    settings.setExact(true);
    search.resetWholeFolder(key());
    scan();
    EXPECT_EQ(count("owner is null"), "4");
    EXPECT_EQ(count("extension=\"TXT\""), "1");
    EXPECT_EQ(cell("select size from details where fileName=\"big\""), "3221225472");
    const std::string owner = modOwner::fileOwner(key());
    EXPECT_EQ(owner.substr(owner.find('\\')), "\\" + testSystem::accountName());
    EXPECT_EQ(modOwner::fileOwner(key("missing")), "unknown");
}

TEST_F(Scan, canAppendARowByStatement) {
    search.updateDetailSQLMETHOD("/\\a\\b.TXT", "", 5, "x", "", "me");
    EXPECT_EQ(rows("select fullPath, folder, fileName, extension, description, size, dateAccessed, "
                   "dateModified, owner, "
                   "drive, dateInserted is null from details"),
              std::vector<std::string>{"a\\b.TXT|/\\a\\|b.TXT|TXT|~|5|x|~|me|~|0"});
    EXPECT_THROW(search.updateDetailSQLMETHOD("/\\a", "say \"x\"", 5, "", "", ""), RuntimeError);
}

TEST_F(Scan, skipsWhatIsCompleteAndRefreshesNarrowly) {
    tree.write("a/b/c/file", "123");
    tree.write("a/direct", "12345");
    tree.write("a/b/inner", "1234567");
    scan("a");
    EXPECT_EQ(count(), "6");
    EXPECT_EQ(sizeOf("a"), "15");
    scan("a");
    EXPECT_EQ(count(), "6") << "a stamped folder is skipped with everything below it";
    scan();
    EXPECT_EQ(count(), "7") << "only the folder above is added";
    EXPECT_EQ(sizeOf(ownName()), "15");

    search.resetScanCompleteTime(key("a"));
    EXPECT_EQ(count(), "4") << "the folder's own row and its direct children are gone";
    const std::string completeTime = "select scanCompleteTime is null from details where fileName=\"";
    EXPECT_EQ(sizeOf(ownName()), "0") << "the folder above knows";
    EXPECT_EQ(cell(completeTime + ownName() + "\\\""), "1") << "and is not complete for so long";
    tree.write("a/b/inner", "1");
    tree.write("a/b/c/file", "1");
    scan("a");
    // The row of b was deleted, so b is scanned again; the row of c was not, so c is skipped.
    EXPECT_EQ(count("fileName=\"inner\""), "1");
    EXPECT_EQ(sizeOf("b"), "4");
    EXPECT_EQ(sizeOf("a"), "9");
    EXPECT_EQ(sizeOf(ownName()), "9");
    EXPECT_EQ(cell(completeTime + ownName() + "\\\""), "0");

    search.resetWholeFolder(key("a"));
    EXPECT_EQ(count(), "1") << "nothing is left of the folder";
    scan();
    EXPECT_EQ(sizeOf(ownName()), "7");
}

TEST_F(Scan, takesARefreshInItsMidst) {
    tree.write("a/b/inner", "1234567");
    tree.write("a/direct", "12345");
    tree.write("z/last", "123");
    for (const bool whole : {false, true}) {
        search.resetWholeFolder(key());
        const int before = userInterface.yields;
        userInterface.onYield = [&] {
            if (userInterface.yields ==
                before + 4) { // both a and b, or z and one of them, have been recorded
                whole ? search.resetWholeFolder(key("a")) : search.resetScanCompleteTime(key("a"));
            }
        };
        EXPECT_TRUE(scan().cancelled);
        for (const std::string& folder :
             rows("select drive & fullPath, size from details where isFolder=1")) {
            const std::string path = folder.substr(0, folder.find('|'));
            EXPECT_EQ(folder, path + "|" + valueText(search.folderSum(path)));
        }
        scan();
        EXPECT_EQ(count(), "7");
        EXPECT_EQ(count("scanCompleteTime is null and isFolder=1"), "0");
        EXPECT_EQ(sizeOf(ownName()), "15");
    }
}

// What the last scan recorded for each of them differs from what is there now.
TEST_F(Scan, followsWhatBecomesOfFilesAndFolders) {
    tree.write("top/fileToFolder", "123");
    tree.write("top/folderToFile/deep/er/x", "1234");
    tree.write("top/gone/deep/x", "12345");
    tree.write("top/gone2", "1");
    tree.write("top/stays/x", "123456");
    scan();
    for (const char* name : {"fileToFolder", "folderToFile", "gone", "gone2"}) {
        testSystem::removeAll(tree / "top" / name);
    }
    tree.write("top/fileToFolder/x", "12");
    tree.write("top/folderToFile", "1");
    scan("top/fileToFolder");
    EXPECT_EQ(sizeOf("top"), "18") << "a folder in a folder that is already recorded counts in it";
    search.resetScanCompleteTime(key("top"));
    scan("top");
    EXPECT_EQ(rows("select fileName, size from details where parentFolder Like \"*\\top\\*\" order by "
                   "fileName, size"),
              (std::vector<std::string>{"fileToFolder\\|2", "folderToFile|1", "stays\\|6", "x|2", "x|6"}));
    EXPECT_EQ(sizeOf(ownName()), "9");
    testSystem::removeAll(tree / "top");
    search.resetScanCompleteTime(key("top"));
    scan("top");
    EXPECT_EQ(rows("select fileName, size from details order by fileName desc"),
              (std::vector<std::string>{"top\\|0", ownName() + "\\|0"}));
}

TEST_F(Scan, recordsTheSameIntoAnEmptyAndAFilledTable) {
    const std::string longName(100, 'n');
    tree.write(longName + "/" + longName + "/" + longName + "/" + longName + "/file", "x");
    makeHostileTree(tree); // last, because it settles the access times
    scan();
    const auto* const columns =
        "select fullPath, drive, folder, fileName, extension, description, size, dateAccessed, "
        "dateModified, owner, parentFolder, isFolder, scanCompleteTime is null from details "
        "where drive<>\"elsewhere\\\" order by idx";
    const auto bulk = rows(columns);
    working.database().Execute("delete * from details");
    working.database().Execute("insert into details (drive, fullPath) values (\"elsewhere\\\", \"x\")");
    scan();
    EXPECT_EQ(joined(rows(columns)), joined(bulk));
    EXPECT_EQ(cell("select count(*) from sqlite_master where type=\"index\""), "2") << "the indexes are back";
}

TEST_F(Scan, cutsStoredPathsAt255CharactersAndFindsFoldersAllTheSame) {
    // Folders whose paths without the drive have 255, 256 and 400 characters, with multi-byte names.
    const std::string base = key().substr(testSystem::root().size());
    std::string path;
    while (platform::characterCount(base + path) < 200) {
        path += "\xC3\xA9\xC3\xA9\xC3\xA9/";
    }
    const std::string last = path + std::string(254 - platform::characterCount(base + path), 'f');
    const std::string deep = last + "y/" + std::string(143, 'z');
    tree.write(last + "/below.txt", "12");
    tree.write(last + "y/file", "123");
    tree.write(deep + "/file", "1234");
    scan();
    EXPECT_EQ(count("scanCompleteTime is null and isFolder=1"), "0");
    EXPECT_EQ(count("scanCompleteTime is not null and isFolder=0"), "0");
    for (const std::string& stored : rows("select fullPath from details")) {
        EXPECT_LE(platform::characterCount(stored), 255U);
    }
    EXPECT_EQ(cell("select parentFolder from details where fileName=\"below.txt\""), key(last));
    const std::string all = count();
    for (const std::string& folder : {last, last + "y", deep}) {
        scan(folder);
        EXPECT_EQ(count(), all) << "it is known to be complete: " << folder;
        search.resetScanCompleteTime(key(folder));
        EXPECT_LT(std::stoi(count()), std::stoi(all));
        scan(folder);
        EXPECT_EQ(count(), all);
        EXPECT_EQ(sizeOf(ownName()), "9");
    }
}

TEST_F(Scan, stopsAtTheNextFolderWhenCancelled) {
    for (const char* name : {"a/1", "b/2", "c/3", "file"}) {
        tree.write(name, "x");
    }
    userInterface.onYield = [&] { search.CancelScan = search.CancelScan || userInterface.yields == 2; };
    std::string handled;
    search.nextNode = "queued";
    const auto result = modProcessFiles::processMain(
        key(), {search, settings, userInterface, [&](const std::string& node) { handled = node; }});
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(rows("select fileName from details where isFolder=0"), std::vector<std::string>{"file"});
    EXPECT_EQ(rows("select size, scanCompleteTime is null from details where isFolder=1"),
              std::vector<std::string>{"1|1"})
        << "the folder itself is recorded but not stamped";
    EXPECT_FALSE(search.CancelScan);
    EXPECT_FALSE(search.processing);
    EXPECT_EQ(handled, "queued");
    EXPECT_EQ(userInterface.busyDepth, 0);
    userInterface.onYield = nullptr;
    search.resetScanCompleteTime(key());
    scan();
    EXPECT_EQ(count("isFolder=0"), "4") << "a later scan finds everything";
}

TEST_F(Scan, tellsHowItGoes) {
    tree.write("a/file", "x");
    scan();
    EXPECT_EQ(userInterface.yields, 2);
    const auto& statuses = userInterface.statuses;
    const auto shows = [&](StatusPanel panel, const std::string& text) {
        return std::find(statuses.begin(), statuses.end(), std::pair(panel, text)) != statuses.end();
    };
    EXPECT_TRUE(shows(StatusPanel::folder, platform::displayPath(key("a"))));
    EXPECT_TRUE(statuses.back().second.starts_with("Finished in "));
    EXPECT_TRUE(statuses.back().second.ends_with(" seconds."));
    EXPECT_EQ(modProcessFiles::getFolderFileDate(1079296517), textOf(1079296517));
    EXPECT_EQ(modProcessFiles::getFolderFileDate(std::numeric_limits<std::int64_t>::max()), "");
    EXPECT_EQ(modProcessFiles::finishedText(59.94), "Finished in 59.9 seconds.");
    EXPECT_EQ(modProcessFiles::finishedText(3), "Finished in 3 seconds.");
    EXPECT_EQ(modProcessFiles::finishedText(60), "Finished in 1 minutes.");
    EXPECT_EQ(modProcessFiles::finishedText(135), "Finished in 2.3 minutes.");
}

TEST_F(Scan, tellsHowFastItIs) {
    for (int folder = 0; folder < 50; ++folder) {
        for (const char* file : {"/a", "/b", "/c"}) {
            tree.write(std::to_string(folder) + file, "");
        }
    }
    for (const std::int64_t took : {2000, 0}) { // milliseconds
        search.resetScanCompleteTime(key());
        userInterface.statuses.clear();
        bool begun = false;
        modProcessFiles::processMain(key(), {search, settings, userInterface, {}, [&] {
                                                 return std::exchange(begun, true) ? took : 0;
                                             }});
        int folders = 0; // folders entered, each but the first with three files
        std::vector<std::string> expected;
        std::vector<std::string> told;
        for (const auto& [panel, text] : userInterface.statuses) {
            if (panel == StatusPanel::throughput) {
                told.push_back(text);
                expected.push_back(std::to_string((std::max(folders - 1, 0) * 3 + 1) / 2) + " files/sec");
            }
            folders += panel == StatusPanel::folder ? 1 : 0;
        }
        EXPECT_EQ(told, expected);
        EXPECT_EQ(told.size() > 1 && told.size() < 10, took > 0) << "now and then, and never of no time";
        EXPECT_EQ(userInterface.statuses.back().second,
                  "Finished in " + std::to_string(took / 1000) + " seconds.");
    }
}

TEST_F(Scan, reachesDepthsThatNoSingleCallDoes) {
    const int levels = testSystem::makeDeepFolders(tree.path());
    ASSERT_GT(levels, 0) << "the folders could not be made";
    EXPECT_TRUE(scan().stored);
    EXPECT_EQ(count(), std::to_string(levels + 2));
    EXPECT_EQ(count("size=7"), std::to_string(levels + 2));
    EXPECT_TRUE(userInterface.messages.empty());
}

TEST_F(Scan, takesAFolderThatCannotBeReadAsEmpty) {
    tree.write("closed/file", "x");
    tree.write("open/file", "x");
    modProcessFiles::ScanResult result;
    {
        const testSystem::ClosedFolder folder(tree / "closed");
        if (!folder.isClosed()) {
            GTEST_SKIP() << "the superuser cannot become another user here";
        }
        result = scan();
    }
    EXPECT_EQ(result.unreadableFolders, 1);
    EXPECT_EQ(sizeOf("closed"), "0");
    EXPECT_EQ(sizeOf("open"), "1");
    EXPECT_EQ(count("scanCompleteTime is not null"), "3");
    EXPECT_TRUE(userInterface.messages.empty());
    EXPECT_EQ(remarks(), "1 folder could not be read.");
    ASSERT_NE(search.gaps.find(key("closed")), nullptr);
    EXPECT_NE(search.gaps.find(key("closed"))->reason, "");
    EXPECT_EQ(search.gaps.unreadableIn(key("open")).folders, 0U);
    scan(); // has nothing to read
    EXPECT_EQ(remarks(), "1 folder could not be read.");
    search.resetScanCompleteTime(key());
    scan();
    EXPECT_EQ(remarks(), "");
    EXPECT_EQ(sizeOf("closed"), "1");
}

TEST_F(Scan, recordsALinkToAFolderAndDoesNotWalkIt) {
    tree.write("real/file", "xyz");
    if (!testSystem::makeLink(tree / "real", tree / "link")) {
        GTEST_SKIP() << "no links can be made here";
    }
    scan();
    EXPECT_EQ(rows("select isFolder from details where fileName=\"link\""), std::vector<std::string>{"0"});
    EXPECT_EQ(count("fileName=\"file\""), "1");
}

TEST_F(Scan, comparesPathsAsTheSystemDoes) {
    tree.write("Docs/File.TXT", "xyz");
    scan();
    const std::string found = platform::namesIgnoreCase() ? "1" : "0";
    const std::string other = platform::lowerCase(key("DOCS"));
    for (const std::string& condition :
         {"parentFolder=\"" + other + "\" and isFolder=0", "[drive] & [fullPath]=\"" + other + "\"",
          "drive & fullPath Like \"" + other + "f*\"", std::string("fileName=\"FILE.txt\"")}) {
        EXPECT_EQ(count(condition), found) << condition;
    }
    working.database().Execute("update details set owner=\"ME\" where isFolder=0");
    working.database().Execute("update details set owner=\"me\" where isFolder=1");
    EXPECT_EQ(rows("select owner, count(*) from details group by owner").size(),
              platform::namesIgnoreCase() ? 1U : 2U);
    search.resetScanCompleteTime(other);
    EXPECT_EQ(count("fileName=\"docs\\\" or fileName=\"Docs\\\""), platform::namesIgnoreCase() ? "0" : "1");
}

TEST_F(Scan, startsAtAFolderThatIsALink) {
    tree.write("real/file", "xyz");
    if (!testSystem::makeLink(tree / "real", tree / "link")) {
        GTEST_SKIP() << "no links can be made here";
    }
    scan("link");
    EXPECT_EQ(cell("select size from details where isFolder=1"), "3");
    EXPECT_EQ(count(), "2");
    scan();
    EXPECT_EQ(count(), "4") << "below its folder a link is a file: link, real, real's file, the folder";
    scan("link");
    scan("link");
    EXPECT_EQ(count(), "6") << "asked for, it is a folder once more";
    const auto gone = scan("missing");
    EXPECT_EQ(gone.unreadableFolders, 1);
}

TEST_F(Scan, listsSubfoldersJoinedByBars) {
    tree.write("a/x", "");
    tree.write("b.c/x", "");
    tree.write("file", "");
    testSystem::makeLink(tree / "a", tree / "link");
    clsFileSearch lister(userInterface);
    for (const std::string& start : {tree.internal(), key()}) {
        lister.setStartstr(start);
        lister.getFolders();
        const std::string either = key("a").substr(0, key("a").size() - 1);
        const std::string other = key("b.c").substr(0, key("b.c").size() - 1);
        EXPECT_TRUE(lister.folders() == either + "|" + other || lister.folders() == other + "|" + either);
    }
    lister.setStartstr(key("missing"));
    lister.getFolders();
    EXPECT_EQ(lister.folders(), "");
    lister.setStartstr(key());
    lister.setCancel(true);
    lister.getFolders();
    EXPECT_EQ(lister.folders(), "");
    lister.setFolders("a|b c");
    EXPECT_EQ(lister.subfolders(), (std::vector<std::string>{"a", "b c"}));
    EXPECT_EQ(lister.folders(), "a|b c");
    EXPECT_EQ(clsFileSearch::TrimNull(std::string_view("ab\0cd", 5)), "ab");
}

} // namespace
