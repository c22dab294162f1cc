#include "base/excludes.h"

#include <gmock/gmock.h>

#include "base/clsRegSettings.h"
#include "base/clsSettings.h"
#include "platform/locale.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"
#include "support/errorNumberOf.h"
#include "support/temporaryFolder.h"
#include "support/testSystem.h"

namespace {

using testing::ElementsAre;

class ExcludesTest : public testing::Test {
protected:
    ExcludesTest() { store.setINIPath(folder.internal("settings.ini")); }

    TemporaryFolder folder;
    clsRegSettings store;
};

TEST_F(ExcludesTest, areTheValuesOfASection) {
    folder.write("settings.ini", "[other]\nk=no\n[excludes]\n1=*.tmp\n;2=no\nname = b/c \n3\n4=\n5=*.tmp\n");
    clsSettings settings;
    EXPECT_TRUE(settings.excludes()->isEmpty());
    settings.load(store, folder.internal());
    EXPECT_THAT(settings.excludes()->texts(), ElementsAre("*.tmp", "b/c"));

    modExcludes::save(store, "added");
    EXPECT_THAT(modExcludes::load(store).texts(), ElementsAre("*.tmp", "b/c", "added"));
    EXPECT_EQ(store.GetSetting("Excludes", "2", "", stpIni), "added") << "the first number that is free";
}

TEST_F(ExcludesTest, areLinesOfAFile) {
    Excludes excludes;
    excludes.addLines("\xEF\xBB\xBF*.tmp\r\n\n  \n a b \n*.tmp\n\xFF");
    EXPECT_THAT(excludes.texts(), ElementsAre("*.tmp", " a b ", "\xFF"));
}

// Each name, as a pattern, comes back from the file and is the only one of all that fits.
TEST_F(ExcludesTest, keepEveryNameAsItIs) {
    std::vector<std::string> names = testSystem::hostileNames();
    for (const char* name : {"[x]", "a[b", "plain", " blanks ", "'quoted'", "\xC3\xA9"}) {
        names.emplace_back(name);
    }
    for (const std::string& name : names) {
        const std::string path = folder.internal() + "\\" + platform::internalName(name);
        store.DeleteSetting("Excludes", "", stpIni);
        modExcludes::save(store, modExcludes::patternOf(path));
        const Excludes excludes = modExcludes::load(store);
        for (const std::string& other : names) {
            std::string native;
            const std::string otherPath = folder.internal() + "\\" + platform::internalName(other);
            modExcludes::appendNativePath(native, otherPath, modExcludes::driveOf(otherPath));
            const bool isSame = platform::sameName(path, otherPath);
            EXPECT_EQ(excludes.take(native), isSame) << path << "  " << otherPath;
        }
    }
}

TEST_F(ExcludesTest, areRefusedIfTheFileDoesNotKeepThem) {
    EXPECT_EQ(errorNumberOf([&] { modExcludes::save(store, "/" + std::string(300, 'x')); }),
              errorNumber::overflow);
    EXPECT_TRUE(modExcludes::load(store).isEmpty()) << "half a path would be another one's";
    store.setINIPath(folder.internal("no/where.ini"));
    EXPECT_EQ(errorNumberOf([&] { modExcludes::save(store, "x"); }), errorNumber::permissionDenied);
}

} // namespace
