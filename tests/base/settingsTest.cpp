#include "base/clsSettings.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "base/clsRegSettings.h"
#include "base/errorLog.h"
#include "platform/registry.h"
#include "support/recordingInterface.h"
#include "support/temporaryFolder.h"
#include "support/testSystem.h"

namespace {

class Settings : public testing::Test {
public:
    Settings() { modGlobal::setErrorLog(&person); }
    ~Settings() override { modGlobal::setErrorLog(); }

protected:
    clsSettings loaded() {
        clsSettings settings;
        settings.load(store, folder.internal());
        return settings;
    }

    TemporaryFolder folder;
    clsRegSettings store;
    RecordingInterface person;
};

TEST_F(Settings, iniStore) {
    testSystem::setVariable("SPANNORY_TEST_SET", "value");
    testSystem::setVariable("SPANNORY_TEST_EMPTY", "");
    store.setINIPath(folder.internal("settings.ini"));
    EXPECT_EQ(store.GetSetting("s", "*", "SPANNORY_TEST_SET", stpIni), "value") << "the default too";
    for (const auto& [text, read] : std::initializer_list<std::pair<std::string, std::string>>{
             {"v", "v"},
             {"SPANNORY_TEST_SET", "value"},
             {"SPANNORY_TEST_EMPTY", "SPANNORY_TEST_EMPTY"},
             {"x SPANNORY_TEST_SET", "x SPANNORY_TEST_SET"}}) {
        EXPECT_FALSE(store.SaveSetting("s", "*", text, stpIni)) << "not reported, on purpose";
        EXPECT_EQ(store.GetSetting("S", "*", "d", stpIni), read);
    }
    EXPECT_TRUE(store.DeleteSetting("s", "*", stpIni));
    EXPECT_EQ(folder.read("settings.ini"), "[s]\r\n");
    EXPECT_TRUE(store.DeleteSetting("s", "", stpIni));
    EXPECT_EQ(folder.read("settings.ini"), "");
}

TEST_F(Settings, registryStoreAndUnknownStores) {
    const std::string company = store.Company();
    store.setCompany(" Other ");
    EXPECT_EQ(store.Company(), "Other");
    store.setCompany("  "); // restores the initial name, as an empty AppName does
    store.setAppName("");
    store.setINIPath(folder.typed("settings.ini"));
    testSystem::setVariable("SPANNORY_TEST_SET", "value");
    EXPECT_TRUE(store.SaveSetting("s", "k", "SPANNORY_TEST_SET", stpRegistry));
    EXPECT_TRUE(store.SaveSetting("", "*", "unnamed", stpRegistry));
    EXPECT_EQ(store.GetSetting("s", "k", "d", stpRegistry), "SPANNORY_TEST_SET") << "not expanded";
    EXPECT_EQ(store.GetSetting("", "*", "d", stpRegistry), "unnamed");
    EXPECT_FALSE(store.DeleteSetting("s", "k", stpRegistry)) << "deletes go to the other root";
    using enum platform::RegistryRoot;
    const platform::Registry registry(folder.internal() + "\\");
    const std::string key = "Software\\" + company + "\\Spannory";
    for (const char* name : {"", "k"}) {
        EXPECT_TRUE(registry.writeText(currentUser, key + "\\s", name, "user's"));
    }
    EXPECT_TRUE(store.DeleteSetting("s", "*", stpRegistry));
    EXPECT_EQ(registry.readText(currentUser, key + "\\s", ""), std::nullopt);
    EXPECT_EQ(registry.readText(currentUser, key + "\\s", "k"), "user's");
    EXPECT_TRUE(store.DeleteSetting("s", "", stpRegistry));
    EXPECT_EQ(registry.readText(currentUser, key + "\\s", "k"), std::nullopt);
    EXPECT_EQ(store.GetSetting("s", "k", "d", stpRegistry), "SPANNORY_TEST_SET") << "the machine's stays";
    EXPECT_TRUE(registry.deleteSubkey(localMachine, key, "s"));

    EXPECT_FALSE(store.SaveSetting("s", "k", "v", 1));
    EXPECT_TRUE(store.DeleteSetting("s", "k", 1));
    EXPECT_EQ(store.GetSetting("s", "k", "d", 1), "d");
}

TEST_F(Settings, defaultsAndRoundTrip) {
    clsSettings settings = loaded();
    EXPECT_FALSE(settings.caseSensitiveExt());
    EXPECT_TRUE(settings.getOwnerInfo());
    EXPECT_TRUE(settings.getExtensionInfo());
    EXPECT_FALSE(settings.fullFileSizes());
    EXPECT_FALSE(settings.exact());
    EXPECT_EQ(settings.databasePath(), folder.internal("main.dat"));
    EXPECT_FALSE(std::filesystem::exists(folder / "settings.ini"));
    settings.setGetOwnerInfo(false);
    settings.setLvwTSortOrder(-1);
    settings.save(store);
    EXPECT_EQ(folder.read("settings.ini"),
              "[User_Settings]\r\nDetailListSortColumn=2\r\nDetailListSortOrder=1\r\n"
              "FileTypeListSortColumn=3\r\nFileTypeListSortOrder=-1\r\n"
              "UserListSortColumn=2\r\nUserListSortOrder=1\r\n[Application_Settings]\r\ngetOwnerInfo=0\r\n");
    EXPECT_FALSE(loaded().getOwnerInfo());
    EXPECT_EQ(loaded().lvwTSortOrder(), -1);
    EXPECT_FALSE(loaded().exact());
    store.SaveSetting("application_settings", "exact", "1", stpIni);
    EXPECT_TRUE(loaded().exact());
}

TEST_F(Settings, conversions) {
    const std::string overflow = "6 Overflow: UserListSortColumn=";
    const std::string mismatch = "13 Type mismatch: UserListSortColumn=";
    struct Case {
        std::string text;
        bool isTrue; // for fullFileSizes, False by default
        int number;  // for UserListSortColumn, 2 by default
        std::size_t errors;
        std::string firstError;
    };
    const std::vector<Case> cases = {
        {" -1 ", true, -1, 0, ""},         {"+0.5", true, 0, 0, ""},       {"1.5", true, 2, 0, ""},
        {"0.0", false, 0, 0, ""},          {"1e2", true, 100, 0, ""},      {"-32768.5", true, -32768, 0, ""},
        {"32767.5", true, 2, 1, overflow}, {"tRuE", true, 2, 1, mismatch}, {"1x", false, 2, 2, mismatch},
        {"", false, 2, 2, mismatch},       {"inf", false, 2, 2, mismatch}, {"1e999", false, 2, 2, overflow},
    };
    for (const auto& c : cases) {
        folder.write("settings.ini", "[User_Settings]\nUserListSortColumn='" + c.text +
                                         "'\n[application_settings]\nfullFileSizes='" + c.text + "'\n");
        const clsSettings settings = loaded();
        EXPECT_EQ(settings.fullFileSizes(), c.isTrue) << c.text;
        EXPECT_EQ(settings.lvwUSortColumn(), c.number) << c.text;
        const auto messages = std::exchange(person.messages, {});
        ASSERT_EQ(messages.size(), c.errors) << c.text;
        if (c.errors > 0) {
            EXPECT_EQ(messages[0], c.firstError + c.text + "\r\n[frmMain.form_load]");
        }
    }
}

TEST_F(Settings, aPathThatWouldBeCutIsRefused) {
    const std::string longest(254, 'x');
    for (const std::string& path : {longest, longest + "x"}) {
        folder.write("settings.ini", "[APPLICATION_SETTINGS]\ndatabasePath=" + path + "\n");
        const bool fits = path.size() == longest.size();
        EXPECT_EQ(loaded().databasePath(), fits ? path : folder.internal("main.dat"));
        EXPECT_EQ(person.messages.size(), fits ? 0U : 1U);
    }
    EXPECT_EQ(store.GetSetting("application_settings", "databasePath", "", stpIni), longest);
}

TEST_F(Settings, networkIsUsedOnlyForAnExactZero) {
    store.setINIPath(folder.internal("settings.ini"));
    EXPECT_FALSE(dontUseNetwork(store));
    for (const std::string text : {"0", "1", "00", "yes", ""}) {
        store.SaveSetting("startup", "dontUseNetwork", text, stpIni);
        EXPECT_EQ(dontUseNetwork(store), text != "0") << text;
    }
}

} // namespace
