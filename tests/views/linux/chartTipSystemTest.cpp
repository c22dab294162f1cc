#include "views/chartTip.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "support/temporaryFolder.h"

// The separators are read once per process, so another region needs another process.
TEST(ChartTipDeathTest, decimalCommaEndsTheNumber) {
    constexpr const char* german = "de_DE.UTF-8";
    const bool installed = std::setlocale(LC_NUMERIC, german) != nullptr;
    std::setlocale(LC_NUMERIC, "C");
    if (!installed) {
        GTEST_SKIP() << german << " is not installed";
    }
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto inGerman = [] {
        ::setenv("LC_ALL", german, 1);
        std::cerr << modChartTip::sizePart(1536.9) << ' ' << modChartTip::sizePart(12.9) << ' '
                  << modChartTip::sizePart(0.9);
        std::exit(EXIT_SUCCESS);
    };
    EXPECT_EXIT(inGerman(), testing::ExitedWithCode(EXIT_SUCCESS), "1,50Gb 12,0Mb 0,0Kb");
}

// A folder may have the same name as the label of the files' bar.
TEST(ChartTip, tellsAFolderFromTheFilesBar) {
    const TemporaryFolder tree;
    std::filesystem::create_directory(tree / "|Files|");
    for (const auto& [folder, expected] : {std::pair(tree.internal() + "\\|Files|", "12.3Mb"),
                                           {tree.internal("|Files|"), "12.3Mb, 0 files, 0 folders"}}) {
        std::string text = "before";
        modChartTip::format(text, 12.3, folder);
        EXPECT_EQ(text, expected) << folder;
    }
}
