#include "views/chartTip.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "support/temporaryFolder.h"
#include "support/testSystem.h"

namespace fs = std::filesystem;

TEST(ChartTip, sizesRoundToThousandthsBeforeTheUnitIsChosen) {
    struct Case {
        double megabytes;
        const char* expected;
    };
    for (const Case& c :
         {Case{1536, "1.50Gb"}, Case{1024, "1.00Gb"}, Case{1023.9996, "1.00Gb"}, Case{1023.999, "1024.0Mb"},
          Case{12.34, "12.3Mb"}, Case{1, "1.0Mb"}, Case{0.9996, "1.0Mb"}, Case{0.5, "512.0Kb"},
          Case{0.0004, "0.0Kb"}, Case{0, "0.0Kb"}, Case{-1024, "-1048576.0Kb"}, Case{std::nan(""), "0.0Kb"},
          Case{HUGE_VAL, "0.0Kb"}}) {
        EXPECT_EQ(modChartTip::sizePart(c.megabytes), c.expected) << c.megabytes;
    }
}

TEST(ChartTip, countsWhatLiesDirectlyInTheFolder) {
    const TemporaryFolder tree;
    tree.write("one/file", "");
    tree.write("one/folder/deeper/not counted", "");
    tree.write("two/a", "");
    tree.write("two/b", "");
    fs::create_directory(tree / "two/empty");
    fs::create_directory(tree / "two/other");
    if (!testSystem::makeLink(tree / "one", tree / "two/link")) {
        tree.write("two/link", "");
    }
    const std::string parent = tree.internal() + "\\";
    struct Case {
        std::string folder;
        const char* expected;
    };
    for (const Case& c :
         {Case{"", "12.3Mb"}, Case{parent + "one", "12.3Mb, 1 file, 1 folder"},
          Case{parent + "two", "12.3Mb, 3 files, 2 folders"},
          Case{parent + "two\\empty", "12.3Mb, 0 files, 0 folders"}, Case{parent + "gone", "12.3Mb"},
          Case{parent + "two\\a", "12.3Mb"}, Case{parent + "|Files|", "12.3Mb"}}) { // the bar of the files
        std::string text = "before";
        modChartTip::format(text, 12.3, c.folder);
        EXPECT_EQ(text, c.expected) << c.folder;
    }
}

TEST(ChartTip, unreadableFolderIsDenied) {
    const TemporaryFolder tree;
    fs::create_directory(tree / "locked");
    fs::permissions(tree.path(), fs::perms::all);
    const testSystem::ClosedFolder locked(tree / "locked");
    if (!locked.isClosed()) {
        GTEST_SKIP() << "the superuser may read everything and cannot become anybody else here";
    }
    std::string text;
    modChartTip::format(text, 12.3, tree.internal("locked"));
    EXPECT_EQ(text, "(Access Denied)");
}
