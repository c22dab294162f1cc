#include "views/chartTip.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "support/temporaryFolder.h"
#include "support/unprivileged.h"

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

// The separators are read once per process, so another region needs another process.
TEST(ChartTipDeathTest, decimalCommaEndsTheNumber) {
    constexpr const char* german = "de_DE.UTF-8";
    const bool installed = std::setlocale(LC_NUMERIC, german) != nullptr;
    std::setlocale(LC_NUMERIC, "C");
    if (!installed) {
        GTEST_SKIP() << german << " is not installed";
    }
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto inGerman = [german] {
        ::setenv("LC_ALL", german, 1);
        std::cerr << modChartTip::sizePart(1536.9) << ' ' << modChartTip::sizePart(12.9) << ' '
                  << modChartTip::sizePart(0.9);
        std::exit(EXIT_SUCCESS);
    };
    EXPECT_EXIT(inGerman(), testing::ExitedWithCode(EXIT_SUCCESS), "1,50Gb 12,0Mb 0,0Kb");
}

TEST(ChartTip, countsWhatLiesDirectlyInTheFolder) {
    const TemporaryFolder tree;
    tree.write("one/file", "");
    tree.write("one/folder/deeper/not counted", "");
    tree.write("two/a", "");
    tree.write("two/b", "");
    fs::create_directory(tree / "two/empty");
    fs::create_directory(tree / "two/other");
    fs::create_directory_symlink(tree / "one", tree / "two/link");
    fs::create_directory(tree / "|Files|");
    const std::string parent = tree.internal() + "\\";
    struct Case {
        std::string folder;
        const char* expected;
    };
    for (const Case& c :
         {Case{"", "12.3Mb"}, Case{parent + "one", "12.3Mb, 1 file, 1 folder"},
          Case{parent + "two", "12.3Mb, 3 files, 2 folders"},
          Case{parent + "two\\empty", "12.3Mb, 0 files, 0 folders"}, Case{parent + "gone", "12.3Mb"},
          Case{parent + "two\\a", "12.3Mb"},
          // The label of the files' bar, though a folder has that name.
          Case{parent + "|Files|", "12.3Mb"}, Case{tree.internal("|Files|"), "12.3Mb, 0 files, 0 folders"}}) {
        std::string text = "before";
        modChartTip::format(text, 12.3, c.folder);
        EXPECT_EQ(text, c.expected) << c.folder;
    }
}

TEST(ChartTip, unreadableFolderIsDenied) {
    const TemporaryFolder tree;
    fs::create_directory(tree / "locked");
    fs::permissions(tree.path(), fs::perms::all);
    fs::permissions(tree / "locked", fs::perms::none);
    const Unprivileged somebody;
    if (!somebody.is()) {
        GTEST_SKIP() << "the superuser may read everything and cannot become anybody else here";
    }
    std::string text;
    modChartTip::format(text, 12.3, tree.internal("locked"));
    EXPECT_EQ(text, "(Access Denied)");
}
