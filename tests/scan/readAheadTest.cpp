#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "support/scanFixture.h"

namespace {

class ReadAheadScan : public testing::Test, protected ScanFixture {
protected:
    // Folders of all shapes: deep, empty, with thousands of files, with hundreds of subfolders.
    void makeTree() {
        constexpr int manyFiles = 3000;
        constexpr int manyFolders = 300;
        for (int i = 0; i < manyFiles; ++i) {
            tree.write("many/" + std::string(20, 'n') + std::to_string(i), std::string(i % 7, 'x'));
        }
        for (int i = 0; i < manyFolders; ++i) {
            tree.write("wide/" + std::to_string(i) + "/sub/file", "x");
        }
        std::string deep = "deep";
        for (int i = 0; i < 40; ++i) {
            deep += "/d" + std::to_string(i);
            tree.write(deep + "/file", std::string(i, 'x'));
            std::filesystem::create_directory(tree / (deep + "/empty"));
        }
    }

    // Everything that is recorded and shown, but the times at which it was, and how often files were counted.
    [[nodiscard]] std::vector<std::string> outcome() {
        std::vector<std::string> all =
            rows("select idx, drive, fullPath, folder, fileName, extension, description, size, dateModified, "
                 "owner, isFolder, parentFolder, scanCompleteTime is null from details order by idx");
        for (const auto& [panel, text] : userInterface.statuses) {
            if (panel != StatusPanel::throughput && !text.starts_with("Finished")) {
                all.push_back(text);
            }
        }
        userInterface.statuses.clear();
        return all;
    }
};

// The first time, after a part has been scanned, and with subfolders that keep their rows.
TEST_F(ReadAheadScan, recordsTheSameRowsInTheSameOrder) {
    makeTree();
    const auto scans = [&](std::int16_t readers) {
        settings.setReaders(readers);
        search.resetAll();
        const std::vector<std::string> none = outcome();
        std::vector<std::string> all;
        const auto follow = [&] {
            const std::vector<std::string> found = outcome();
            all.insert(all.end(), found.begin(), found.end());
        };
        scan("wide/7");
        follow();
        scan();
        follow();
        search.resetScanCompleteTime(key());
        scan();
        follow();
        search.resetWholeFolder(key("deep"));
        search.resetScanCompleteTime(key("wide"));
        scan();
        follow();
        return all;
    };
    // Numbers go on from scan to scan.
    const auto withoutNumbers = [](std::vector<std::string> lines) {
        for (std::string& line : lines) {
            line.erase(0, line.find('|') == std::string::npos ? 0 : line.find('|'));
        }
        return lines;
    };
    const std::vector<std::string> expected = withoutNumbers(scans(0));
    ASSERT_GT(expected.size(), 4000U);
    for (const std::int16_t readers : std::to_array<std::int16_t>({1, 2, 7, 32, -1})) {
        EXPECT_EQ(withoutNumbers(scans(readers)), expected) << readers;
    }
}

// A thousand moments; in parts, which can run side by side.
class CancelledScan : public ReadAheadScan, public testing::WithParamInterface<unsigned> {};

INSTANTIATE_TEST_SUITE_P(Seeds, CancelledScan, testing::Range(4711U, 4716U));

TEST_P(CancelledScan, leavesWhatIsRightAndCanBeResumed) {
    for (int i = 0; i < 30; ++i) {
        tree.write(std::to_string(i % 6) + "/" + std::to_string(i) + "/sub/file", "x");
    }
    for (int i = 0; i < 1200; ++i) {
        tree.write("many/" + std::string(20, 'n') + std::to_string(i), "x");
    }
    scan();
    const int yieldsOfAll = userInterface.yields;
    std::mt19937 random(GetParam()); // the same moments each time
    constexpr int times = 200;
    for (int i = 0; i < times; ++i) {
        SCOPED_TRACE(i);
        search.resetAll();
        settings.setReaders(static_cast<std::int16_t>(1 + random() % 8));
        const int at = 1 + static_cast<int>(random() % static_cast<unsigned>(yieldsOfAll));
        userInterface.yields = 0;
        userInterface.onYield = [&] { search.CancelScan = search.CancelScan || userInterface.yields >= at; };
        scan();
        userInterface.onYield = nullptr;
        ASSERT_TRUE(areSumsRight());
        ASSERT_EQ(cell("select count(*) from (select distinct parentFolder, fileName from details)"),
                  cell("select count(*) from details"));
    }
    scan();
    EXPECT_EQ(cell("select count(*) from details where isFolder=0"), "1230") << "a later scan finds the rest";
    EXPECT_TRUE(areSumsRight());
}

} // namespace
