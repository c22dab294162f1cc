#include "base/errorLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <regex>

#include "base/clsRegSettings.h"
#include "base/errorLogFiles.h"
#include "base/errorTrap.h"
#include "support/recordingInterface.h"
#include "support/temporaryFolder.h"

namespace {

using testing::ElementsAre;

class ErrorLog : public testing::Test {
public:
    ErrorLog() {
        store.setINIPath(folder.internal("settings.ini"));
        modGlobal::setErrorLog(&person,
                               [this] { return modGlobal::errorLogFiles(store, folder.internal()); });
    }
    ~ErrorLog() override { modGlobal::setErrorLog(); }

protected:
    TemporaryFolder folder;
    clsRegSettings store;
    RecordingInterface person;
};

// The test library's own regular expressions lack brackets on some systems.
MATCHER_P(MatchesRegex, expression, "") {
    return std::regex_match(arg, std::regex(expression));
}

const std::string stamp = "\t[01][0-9]/[0-3][0-9]/[0-9]{4} [01][0-9]:[0-5][0-9]:[0-5][0-9] [AP]M\r\n";

TEST_F(ErrorLog, appendsOneLinePerEntry) {
    modGlobal::logError(53, "first\tpart\r\nline", "modGlobal", "tvwSaveNodes", true);
    EXPECT_EQ(modGlobal::trapped("m", "p", []() -> int { throw RuntimeError(6); }), 0);
    modGlobal::trapped("m", "p", [] { throw std::runtime_error("other"); });
    modGlobal::trapped(
        "m", "p", [] { throw 1; }, modGlobal::Logging::quiet);
    EXPECT_THAT(folder.read("errorLog.txt"),
                MatchesRegex("53\tfirst\tpart\r\nline\tmodGlobal\ttvwSaveNodes" + stamp +
                             "6\tOverflow\tm\tp" + stamp + "5\tother\tm\tp" + stamp + "5\t[^\t]+\tm\tp" +
                             stamp));
    EXPECT_THAT(person.messages, ElementsAre("6 Overflow\r\n[m.p]", "5 other\r\n[m.p]"));
}

TEST_F(ErrorLog, secondFileIsMadeAnewForEachEntry) {
    store.SaveSetting("application_settings", "errorLogFile", folder.typed("missing.txt"), stpIni);
    store.SaveSetting("startup", "errorLogTextFile", folder.internal("second.txt"), stpIni);
    modGlobal::logError(53, "first", "m", "p", true);
    modGlobal::logError(53, "second", "m", "p", true);
    EXPECT_THAT(folder.read("second.txt"), MatchesRegex("53\tsecond\tm\tp" + stamp));
    EXPECT_FALSE(std::filesystem::exists(folder / "missing.txt"));
}

TEST_F(ErrorLog, filesStandInTheApplicationFolderByDefault) {
    for (const auto& [application, appended, madeAnew] :
         {std::array{"/\\a", "/\\a\\errorLog.txt", "/\\a\\errorLog.txt"},
          {"/\\a\\", "/\\a\\errorLog.txt", "/\\a\\errorLog.txt"},
          {"C:\\", "C:\\errorLog.txt", "C:\\\\errorLog.txt"}}) {
        const modGlobal::ErrorLogFiles files = modGlobal::errorLogFiles(store, application);
        EXPECT_EQ(files.appended, appended);
        EXPECT_EQ(files.madeAnew, madeAnew);
    }
}

TEST_F(ErrorLog, entriesThatCannotBeWrittenAreLost) {
    store.SaveSetting("application_settings", "errorLogFile", folder.typed(), stpIni);
    modGlobal::logError(70, "Permission denied", "m", "p", false);
    EXPECT_THAT(person.messages, ElementsAre("70 Permission denied\r\n[m.p]"));
    EXPECT_FALSE(std::filesystem::exists(folder / "errorLog.txt")) << "the second file is for missing ones";
}

} // namespace
