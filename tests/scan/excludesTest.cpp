#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

#include "base/excludes.h"
#include "support/scanFixture.h"
#include "support/testSystem.h"

namespace {

class ExcludesScan : public testing::Test, protected ScanFixture {
protected:
    ExcludesScan() {
        tree.write("a/big.tmp", std::string(3000, 'x'));
        tree.write("a/deep/x.txt", "1234567890");
        tree.write("a/deep/er/y.txt", "12345");
        tree.write("b/note.txt", std::string(200, 'x'));
    }
    void exclude(std::initializer_list<const char*> patterns) {
        Excludes excludes;
        for (const char* pattern : patterns) {
            excludes.add(pattern);
        }
        settings.setExcludes(std::move(excludes));
    }
    // What is recorded of the tree: names with sizes.
    std::vector<std::string> recorded() const {
        std::vector<std::string> names = rows("select fileName, size from details");
        for (std::string& name : names) {
            std::erase(name, '\\'); // behind a folder's
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    // With the name of the tree, whose folder has a row, too.
    std::vector<std::string> withRoot(std::vector<std::string> names, int size) const {
        names.push_back(tree.path().filename().string() + "|" + std::to_string(size));
        std::sort(names.begin(), names.end());
        return names;
    }
};

TEST_F(ExcludesScan, whatIsExcludedIsNeitherReadNorCounted) {
    for (const std::int16_t readers : std::initializer_list<std::int16_t>{0, 4}) {
        settings.setReaders(readers);
        search.resetAll();
        exclude({"*.tmp", "a/deep"});
        const testSystem::ClosedFolder closed(tree / "a/deep");
        const modProcessFiles::ScanResult result = scan();
        EXPECT_EQ(recorded(), withRoot({"a|0", "b|200", "note.txt|200"}, 200));
        EXPECT_EQ(result.excluded, 2);
        EXPECT_EQ(result.files, 1);
        EXPECT_EQ(result.unreadableFolders, 0);
        EXPECT_EQ(remarks(), "2 items were left out by excludes.");
        EXPECT_TRUE(areSumsRight());
    }
}

TEST_F(ExcludesScan, rowsGoWhenTheirFolderIsScannedAgain) {
    scan();
    exclude({"deep"});
    EXPECT_EQ(scan().excluded, 0) << "all is stamped";
    search.resetScanCompleteTime(key("a"));
    EXPECT_EQ(scan("a").excluded, 1);
    EXPECT_EQ(recorded(), withRoot({"a|3000", "b|200", "big.tmp|3000", "note.txt|200"}, 3200));
    EXPECT_TRUE(areSumsRight());

    exclude({"a"});
    search.resetScanCompleteTime(key("a"));
    EXPECT_EQ(scan("a").excluded, 1) << "the start itself";
    EXPECT_EQ(recorded(), withRoot({"b|200", "note.txt|200"}, 200));
    EXPECT_TRUE(areSumsRight());
    EXPECT_EQ(cell("select count(*) from details where isFolder=1 and scanCompleteTime is null"), "0")
        << "nothing is left to scan";

    exclude({});
    search.resetScanCompleteTime(key());
    EXPECT_EQ(scan().excluded, 0);
    EXPECT_EQ(cell("select sum(size) from details where isFolder=0"), "3215");
    EXPECT_TRUE(areSumsRight());
    EXPECT_EQ(remarks(), "");
}

// Whoever excludes a folder may still ask for one below it.
TEST_F(ExcludesScan, onlyTheWholePathOfTheStartCounts) {
    exclude({"a"});
    scan("a/deep");
    EXPECT_EQ(recorded(), (std::vector<std::string>{"deep|15", "er|5", "x.txt|10", "y.txt|5"}));
    scan();
    EXPECT_EQ(recorded(), withRoot({"b|200", "note.txt|200"}, 200)) << "they would count in nothing";
    search.resetAll();
    EXPECT_EQ(scan("a").excluded, 1);
    EXPECT_THAT(recorded(), testing::IsEmpty());
}

} // namespace
