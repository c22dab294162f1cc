#include "scan/savedScan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "db/folderRows.h"
#include "platform/locale.h"
#include "support/scanFixture.h"

namespace {

// The parent's key, a bar, and the name.
using Row = std::pair<const char*, bool>; // and whether it is a folder

void addRows(Database& database, const std::vector<Row>& rows) {
    const auto table = database.OpenRecordset("details");
    for (const auto& [path, isFolder] : rows) {
        const std::string_view text(path);
        const std::size_t bar = text.find('|');
        table->AddNew();
        table->Fields("parentFolder").setText(text.substr(0, bar));
        table->Fields("fileName").setText(text.substr(bar + 1));
        table->Fields("drive").setText(text.substr(0, text.find('\\') + 1));
        const std::string whole = std::string(text.substr(0, bar)).append(text.substr(bar + 1));
        table->Fields("fullPath").setText(std::string_view(whole).substr(whole.find('\\') + 1));
        table->Fields("isFolder").setInteger(isFolder ? 1 : 0);
        table->Update();
    }
}

TEST(SavedScan, findsFoldersOfOtherSystems) {
    ScanFixture fixture;
    Database& database = fixture.working.database();
    addRows(database, {{"C:\\Windows\\|a", false},
                       {"/\\usr\\|b", false},
                       {"/\\a\"b\\|\"", false},
                       {"/\\|mnt\\", true},
                       {"/\\mnt\\|disk\\", true},
                       {"/mnt/disk\\x\\|f", false}});
    const std::pair<const char*, const char*> typed[] = {
        {"C:\\Windows", "C:\\Windows\\"},
        {"C:/Windows/", "C:\\Windows\\"},
        {"/\\usr", "/\\usr\\"},
        {"/mnt", "/\\mnt\\"},
        {"/mnt/disk/x", "/mnt/disk\\x\\"},
        {"/mnt/disk", "/\\mnt\\disk\\"},
        {"/\\nothing", ""},
        {"/\\u\"sr", ""},
        {"/\\a\"b", "/\\a\"b\\"},
        {"/\\x\" or \"\"=\"", ""},
        {"", ""},
    };
    for (const auto& [path, key] : typed) {
        EXPECT_EQ(modSavedScan::findFolder(database, path), key) << path;
    }
}

TEST(SavedScan, knowsWhatWasScannedByItsRows) {
    const struct {
        const char* name;
        std::vector<Row> rows;
        std::vector<std::string> scanned;
        std::vector<std::pair<const char*, bool>> walked;
    } cases[] = {
        {"a folder",
         {{"/\\usr\\|a", false}, {"/\\|usr\\", true}},
         {"/\\usr\\"},
         {{"/\\", false}, {"/\\usr\\", true}}},
        {"a drive with files",
         {{"/\\usr\\|a", false}, {"/\\|usr\\", true}, {"/\\|b", false}},
         {"/\\"},
         {{"/\\", true}}},
        {"a drive with folders alone",
         {{"/home\\|me\\", true}, {"/home\\|you\\", true}},
         {"/home\\"},
         {{"/home\\", true}, {"/home\\me\\", false}}},
        {"two folders of one that was not scanned",
         {{"/\\usr\\|lib\\", true}, {"/\\usr\\|share\\", true}},
         {"/\\usr\\lib\\", "/\\usr\\share\\"},
         {{"/\\usr\\", false}}},
        {"a parent with a quote",
         {{"/\\\"x\\|a", false}},
         {"/\\\"x\\"},
         {{"/\\\"x\\", true}, {"/\\\" or 1=1 or \"\\", false}}},
        {"nothing", {}, {}, {{"/\\", false}}},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        ScanFixture fixture;
        Database& database = fixture.working.database();
        addRows(database, each.rows);
        EXPECT_EQ(modSavedScan::scannedFolders(database, 1000), each.scanned);
        EXPECT_LE(modSavedScan::scannedFolders(database, 1).size(), 1U);
        const auto last = static_cast<std::int64_t>(each.rows.size());
        for (const auto& [key, expected] : each.walked) {
            EXPECT_EQ(modSavedScan::wasWalked(database, key, last), expected) << key;
            EXPECT_FALSE(modSavedScan::wasWalked(database, key, 0)) << "no later row counts";
        }
    }
}

TEST(SavedScan, keepsStampsAsTheyWere) {
    ScanFixture fixture;
    Database& database = fixture.working.database();
    addRows(database, {{"/\\a\"b\\|it's \"x\"\\", true}});
    const std::string folder = "/\\a\"b\\it's \"x\"\\";
    for (const char* stamp : {"o'clock \"\"", ""}) {
        modFolderRows::setStamp(database, folder, stamp);
        EXPECT_EQ(modFolderRows::find(database, folder).stamp, stamp);
    }
}

TEST(SavedScan, findsTheFoldersOfADriveByTheSystemsRule) {
    ScanFixture fixture;
    Database& database = fixture.working.database();
    const std::string drive = "\\\\nas\\Media\\";
    database.Execute("insert into details (drive,fileName,parentFolder,isFolder) values ('" + drive +
                     "','films\\','" + drive + "',1)");
    EXPECT_EQ(modSavedScan::findFolder(database, drive + "films"), drive + "films\\");
    EXPECT_EQ(modSavedScan::findFolder(database, "\\\\NAS\\media\\films"),
              platform::namesIgnoreCase() ? drive + "films\\" : "");
    EXPECT_EQ(modSavedScan::findFolder(database, drive + "music"), "");
}

} // namespace
