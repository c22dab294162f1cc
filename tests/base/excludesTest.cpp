#include "base/excludes.h"

#include <gmock/gmock.h>

#include <utility>
#include <vector>

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
    std::erase_if(names, [](const std::string& name) { // Windows' files of settings hold no lone surrogates
        return platform::internalName(name).find("\xED\xA0\x80") != std::string::npos ||
               platform::internalName(name).find("\xED\xBF\xBF") != std::string::npos;
    });
    const modExcludes::Drive drive = modExcludes::driveOf(folder.internal());
    std::vector<std::pair<std::string, std::string>> paths; // internal and native
    for (const std::string& name : names) {
        paths.emplace_back(folder.internal() + "\\" + platform::internalName(name), "");
        modExcludes::appendNativePath(paths.back().second, paths.back().first, drive);
    }
    for (const auto& [path, native] : paths) {
        modExcludes::save(store, modExcludes::patternOf(path));
    }
    const std::vector<std::string> patterns = modExcludes::load(store).texts();
    ASSERT_EQ(patterns.size(), paths.size());
    for (std::size_t i = 0; i < paths.size(); ++i) {
        Excludes excludes;
        excludes.add(patterns[i]);
        for (const auto& [other, otherNative] : paths) {
            std::string compared = otherNative;
            EXPECT_EQ(excludes.take(compared), platform::sameName(paths[i].first, other))
                << patterns[i] << "  " << other;
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
