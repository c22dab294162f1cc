#include "views/overviewFigures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <map>

#include "support/scanFixture.h"
#include "views/folderFigures.h"
#include "views/folderSummary.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class OverviewFigures : public testing::Test, protected ScanFixture {
protected:
    modFigures::Overview overview(const std::string& folder, const modFigures::OverviewLimits& limits = {}) {
        return modFigures::overview(
            working.database(), folder, limits, [this](std::string_view path) { return unread == path; },
            [] {});
    }

    // What the chart shows of a folder, and of the folders below it, is what the overview tells.
    void expectAsInTheChart(const modFigures::OverviewFolder& folder, const std::string& path, int levels) {
        std::map<std::string, double> chart;
        double files = 0;
        for (const ChartEntry& entry : modFigures::chartEntries(working.database(), path)) {
            (entry.label == modFigures::filesLabel ? files : chart[entry.label]) = entry.size;
        }
        EXPECT_EQ(folder.ownFilesSize, files) << path;
        EXPECT_EQ(folder.subfolders, chart.size()) << path;
        EXPECT_EQ(folder.size, folder.ownFilesSize + folder.subfoldersSize) << path;
        double last = folder.size;
        for (const modFigures::OverviewFolder& each : folder.largest) {
            EXPECT_EQ(chart.at(each.name), each.size);
            EXPECT_LE(each.size, last) << "largest first";
            last = each.size;
            if (levels > 1) {
                expectAsInTheChart(each, path + each.name + "\\", levels - 1);
            }
        }
    }

    std::string unread;
};

// Which rows are read depends on how large a part of the table they are; what they give does not.
TEST_F(OverviewFigures, agreeWithTheViews) {
    int size = 1;
    for (const char* top : {"a", "b", "b b"}) {
        for (const char* file : {"/x.TXT", "/y.txt", "/c/z", "/c/d/e.bin", "/c/d/f/g/h.txt", "/ends."}) {
            tree.write(top + std::string(file), std::string(static_cast<std::size_t>(size *= 2), 'x'));
        }
    }
    tree.write("c", "file beside them");
    settings.setGetOwnerInfo(true);
    scan();
    for (const char* folder : {"", "a", "b", "b/c", "b/c/d/f/g"}) {
        SCOPED_TRACE(folder);
        const std::string path = key(folder);
        const modFigures::Overview figures = overview(path);
        const modFigures::FolderSummary summary = modFigures::summary(working.database(), path);
        EXPECT_EQ(figures.folder.size, summary.size);
        EXPECT_EQ(figures.files, summary.files);
        EXPECT_EQ(figures.folders, summary.folders);
        EXPECT_TRUE(figures.isComplete);
        expectAsInTheChart(figures.folder, path, 3);
        for (const bool ofOwners : {false, true}) {
            std::map<std::string, double> groups;
            for (const auto& group : ofOwners ? modFigures::owners(working.database(), path)
                                              : modFigures::fileTypes(working.database(), path)) {
                groups[group.name] = group.size;
            }
            std::int64_t files = 0;
            const auto& found = ofOwners ? figures.owners : figures.types;
            EXPECT_THAT(found, SizeIs(groups.size()));
            for (const modFigures::OverviewGroup& group : found) {
                EXPECT_EQ(groups.at(group.name), group.size) << group.name;
                files += group.files;
            }
            EXPECT_EQ(files, summary.files) << "each file is in one group";
        }
    }
}

TEST_F(OverviewFigures, sayWhetherAllWasScanned) {
    tree.write("a/file", "x");
    tree.write("b/c/file", "x");
    tree.write("b/d/file", "x");
    scan("b/c");
    const std::string root = key().substr(0, key().find('\\') + 1);
    EXPECT_TRUE(overview(key("b/c")).isComplete);
    EXPECT_FALSE(overview(key("b")).isComplete);
    EXPECT_FALSE(overview(key()).isComplete);
    EXPECT_FALSE(overview(root).isComplete);
    scan();
    EXPECT_TRUE(overview(key()).isComplete);
    EXPECT_TRUE(overview(key("b")).isComplete);
    working.database().Execute("update details set scanCompleteTime=null where fileName='b\\'");
    EXPECT_FALSE(overview(key("b")).isComplete);
}

TEST_F(OverviewFigures, haveTheLargestAndTheOldestOfTheLargest) {
    using namespace std::chrono_literals;
    for (int i = 1; i <= 600; ++i) {
        tree.write("f" + std::to_string(i), std::string(static_cast<std::size_t>(i), 'x'));
    }
    const auto age = [this](const char* name, std::chrono::hours since) {
        const auto now = std::filesystem::file_time_type::clock::now();
        std::filesystem::last_write_time(tree / name, now - since);
    };
    age("f541", 24h * 400);
    age("f600", 24h * 3000);
    age("f540", 24h * 9000); // not among the largest tenth
    scan();
    modFigures::OverviewLimits limits;
    limits.largestFiles = 2;
    limits.oldestFiles = 2;
    const modFigures::Overview figures = overview(key(), limits);
    const auto paths = [](const std::vector<modFigures::OverviewFile>& files) {
        std::vector<std::string> result;
        for (const modFigures::OverviewFile& file : files) {
            result.push_back(file.path.substr(file.path.rfind('\\') + 1));
        }
        return result;
    };
    EXPECT_THAT(paths(figures.largestFiles), ElementsAre("f600", "f599"));
    EXPECT_THAT(paths(figures.oldestFiles), ElementsAre("f600", "f541"));
    EXPECT_EQ(figures.consideredFiles, 60U);
    EXPECT_EQ(figures.leastConsidered, 541);
}

TEST_F(OverviewFigures, callEmptyWhatHoldsNothing) {
    for (const char* folder : {"full/inner", "empty", "closed", "full/deep/empty2"}) {
        std::filesystem::create_directories(tree / folder);
    }
    tree.write("full/zero", "");
    scan();
    EXPECT_THAT(overview(key()).emptyFolders,
                testing::UnorderedElementsAre(key("full/inner"), key("empty"), key("closed"),
                                              key("full/deep/empty2")));
    unread = key("closed");
    modFigures::OverviewLimits limits;
    limits.emptyFolders = 1;
    const modFigures::Overview figures = overview(key(), limits);
    EXPECT_THAT(figures.emptyFolders, SizeIs(1));
    EXPECT_EQ(figures.emptyFolderCount, 3U);
    EXPECT_THAT(overview(key("empty")).largestFiles, IsEmpty());
}

} // namespace
