#include "base/settingsSheet.h"

#include <gmock/gmock.h>

#include <set>

#include "base/clsRegSettings.h"
#include "base/clsSettings.h"
#include "base/excludes.h"
#include "platform/paths.h"
#include "support/temporaryFolder.h"
#include "support/testSystem.h"

using modSettings::Key;
using modSettings::keyNamed;
using modSettings::Remark;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Weight = Remark::Weight;

namespace {

class Sheet : public testing::Test {
protected:
    // The sheet of a program that has just started with this file.
    SettingsSheet open(const std::string& file) {
        folder.write("settings.ini", file);
        settings.load(store, folder.internal());
        return {store, settings, folder.internal()};
    }
    [[nodiscard]] std::string file() const { return folder.read("settings.ini"); }

    TemporaryFolder folder;
    clsRegSettings store;
    clsSettings settings;
};

TEST_F(Sheet, showsWhatHoldsAndSaysWhatIsWrongWithTheFile) {
    testSystem::setVariable("SPANNORY_TEST_SET", "1");
    struct Case {
        const char* key;
        const char* text; // in the file
        const char* value;
        Weight weight;
        const char* remark;
    };
    constexpr std::string_view application = "APPLICATION_SETTINGS";
    const Case cases[] = {
        {"exact", "TRUE", "1", Weight::none, ""},
        {"readOnly", "-1", "1", Weight::none, ""},
        {"fullFileSizes", "0.0", "0", Weight::none, ""},
        {"fullFileSizes", "maybe", "", Weight::warning, "\"maybe\", which is neither"},
        {"fullFileSizes", "SPANNORY_TEST_SET", "1", Weight::note, "value \"1\""},
        {"getOwnerInfo", "", "", Weight::warning, "neither"},
        {"DetailListSortColumn", "4.4", "4", Weight::none, ""},
        {"DetailListSortColumn", "40000", "", Weight::warning, "no number"},
        {"UserListSortOrder", "-7", "1", Weight::none, ""},
        {"dontUseNetwork", "00", "1", Weight::note, "anything but 0"},
        {"dontUseNetwork", "0", "0", Weight::none, ""},
        {"databasePath", "", "", Weight::warning, "no path"},
        {"errorLogFile", "/no/such/folder/x", "/no/such/folder/x", Weight::warning, "There is no folder"},
    };
    for (const Case& c : cases) {
        const Key& key = keyNamed(c.key);
        const SettingsSheet sheet =
            open("[" + std::string(key.section) + "]\n" + c.key + "=" + c.text + "\n");
        EXPECT_EQ(sheet.value(key), c.value) << c.key << '=' << c.text;
        const Remark remark = sheet.fileRemark(key);
        EXPECT_EQ(remark.weight, c.weight) << c.key << '=' << c.text << ": " << remark.text;
        EXPECT_THAT(remark.text, HasSubstr(c.remark));
        if (key.section == application) {
            EXPECT_EQ(sheet.fileText(key), c.text);
        }
    }
    const SettingsSheet missing = open("");
    for (const Key& key : modSettings::keys()) {
        EXPECT_EQ(missing.value(key), SettingsSheet::standard(key)) << key.name;
        EXPECT_EQ(missing.fileRemark(key).weight, Weight::none) << key.name;
    }
}

// The window writes them at its end, whatever the file says meanwhile.
TEST_F(Sheet, showsTheWindowsStateOfItsOwnKeys) {
    static_cast<void>(open("[User_Settings]\nUserListSortColumn=x\n"));
    folder.write("settings.ini", "[APPLICATION_SETTINGS]\ngetOwnerInfo=1\nfullFileSizes=1\n");
    settings.setGetOwnerInfo(false);
    settings.setLvwUSortColumn(3);
    const SettingsSheet sheet(store, settings, folder.internal());
    EXPECT_EQ(sheet.value(keyNamed("getOwnerInfo")), "0");
    EXPECT_EQ(sheet.value(keyNamed("UserListSortColumn")), "3");
    EXPECT_EQ(sheet.value(keyNamed("fullFileSizes")), "1");
}

TEST_F(Sheet, storesOnlyWhatIsChangedAndKeepsTheRest) {
    const std::string before = "; mine\r\n[Application_Settings]\r\nGETOWNERINFO=1\r\nstranger=x\r\n"
                               "readOnly=perhaps\r\ndatabasePath=/old\r\n; end\r\n";
    SettingsSheet sheet = open(before);
    SettingsSheet::Values values;
    for (const Key& key : modSettings::keys()) {
        values[key.name] = sheet.value(key);
    }
    EXPECT_THAT(sheet.store(values), IsEmpty());
    EXPECT_THAT(sheet.stored(), IsEmpty());
    EXPECT_EQ(file(), before);

    values["getOwnerInfo"] = "0";
    values["databasePath"] = platform::displayPath(folder.internal("main.dat"));
    values["errorLogTextFile"] = "'a b'";
    EXPECT_THAT(sheet.store(values), IsEmpty());
    EXPECT_THAT(sheet.stored(), ElementsAre("getOwnerInfo", "databasePath", "errorLogTextFile"));
    EXPECT_EQ(file(), "; mine\r\n[Application_Settings]\r\nGETOWNERINFO=0\r\nstranger=x\r\n"
                      "readOnly=perhaps\r\n; end\r\n[startup]\r\nerrorLogTextFile=\"'a b'\"\r\n");
    EXPECT_EQ(store.GetSetting("startup", "errorLogTextFile", "", stpIni), "'a b'");

    values["readOnly"] = "1";
    values["databasePath"] = "";
    values["errorLogTextFile"] = "";
    EXPECT_THAT(sheet.store(values), IsEmpty());
    EXPECT_THAT(file(), HasSubstr("readOnly=1"));
    EXPECT_EQ(store.storedText("startup", "errorLogTextFile"), std::nullopt);
}

TEST_F(Sheet, showsExcludesAsLinesAndSaysWhichMissTheirPurpose) {
    testSystem::setVariable("SPANNORY_TEST_SET", "*.old");
    const Key& excludes = keyNamed("Excludes");
    const std::string cut(254, 'x');
    struct Case {
        std::string section; // its lines in the file
        std::string value;
        Weight weight;
        const char* remark;
    };
    const Case cases[] = {
        {"", "", Weight::none, ""},
        {"1=*.tmp\n;2=no\nname = b/c \n3\n4=\n5=*.tmp\n", "*.tmp\nb/c\n*.tmp", Weight::none, ""},
        {"a=x\nA=y\nb=z\n", "x\nz", Weight::none, ""},
        {"a='\" '\n", "\" ", Weight::note, "blank"},
        {"a=x\ty\n", "x\xEF\x80\x89y", Weight::none, ""},
        {"a=/\n", "/", Weight::none, ""},
        {"a=build/\n", "build/", Weight::warning, "\"build/\" leaves out nothing"},
        {"a=**\n", "**", Weight::warning, "fits everything"},
        {"a=[[]x]\n", "[[]x]", Weight::none, ""},
        {"a=x[ab\n", "x[ab", Weight::note, "[ without a ]"},
        {"a=SPANNORY_TEST_SET\n", "SPANNORY_TEST_SET", Weight::note, "value \"*.old\""},
        {"a=b[\nb=c[\nc=d[\nd=e[\ne=/*\n", "b[\nc[\nd[\ne[\n/*", Weight::warning, "\"/*\" fits"},
        {"a=b[\nb=c[\nc=d[\nd=e[\ne=/*\n", "b[\nc[\nd[\ne[\n/*", Weight::warning, "about 2 more"},
        {"long=" + cut + "x\n", cut, Weight::warning, "for the key long"},
    };
    for (const Case& c : cases) {
        const SettingsSheet sheet = open("[other]\n1=no\n[EXCLUDES]\n" + c.section);
        EXPECT_EQ(sheet.value(excludes), c.value);
        const Remark remark = sheet.fileRemark(excludes);
        EXPECT_EQ(remark.weight, c.weight) << c.section << ": " << remark.text;
        EXPECT_THAT(remark.text, HasSubstr(c.remark));
    }
    EXPECT_EQ(remarkOn(excludes, "ok\n" + cut).weight, Weight::none);
    const Remark tooLong = remarkOn(excludes, "*\na/\n[\n" + cut + "x");
    EXPECT_EQ(tooLong.weight, Weight::error);
    EXPECT_THAT(tooLong.text, testing::StartsWith('"' + cut.substr(0, 60) + "…\" has 255 characters"));
}

TEST_F(Sheet, storesWhichExcludesWereChangedAndKeepsTheRest) {
    struct Case {
        std::string before; // lines of the section
        std::string typed;
        std::string after;
    };
    const Case cases[] = {
        {"", "*.tmp\n\n  \nb", "1=*.tmp|2=b|"},
        {"; mine|x=a|4=b|1=c|", "a\nc", "; mine|x=a|1=c|"},
        {"x=a|4=b|", "a\nnew", "x=a|4=new|"},      // a line that was changed keeps its key
        {"x=a|4=b|", "b\na", "x=a|4=b|"},          // the order means nothing
        {"2=a|", "b\na\nb\na\nc", "2=a|1=b|3=c|"}, // and one is enough
        {"x=a|y=a|", "a", "y=a|"},
        {"x=a|X=b|y=c|", "c", "y=c|"}, // what was hidden does not come up
        {"e=|k|x=a|", "", "e=|k|"},
        {"1=x|", "x\n b \n'q'\n\"", "1=x|2=\" b \"|3=\"'q'\"|4=\"|"},
        {"1=[|", "[\nx\ty\n\xC3\xA9\n;c\n[s]\na=b", "1=[|2=x\xEF\x80\x89y|3=\xC3\xA9|4=;c|5=[s]|6=a=b|"},
    };
    const auto lines = [](std::string text) {
        for (std::size_t at = text.find('|'); at != std::string::npos; at = text.find('|')) {
            text.replace(at, 1, "\r\n");
        }
        return text;
    };
    const Key& excludes = keyNamed("Excludes");
    for (const Case& c : cases) {
        const auto whole = [&](const std::string& section) {
            return "[Excludes]\r\n" + lines(section) + "[z]\r\nother=1\r\n";
        };
        SettingsSheet sheet = open(whole(c.before));
        EXPECT_THAT(sheet.store({{"Excludes", sheet.value(excludes)}}), IsEmpty());
        EXPECT_THAT(sheet.stored(), IsEmpty());
        EXPECT_THAT(sheet.store({{"Excludes", c.typed}}), IsEmpty());
        EXPECT_THAT(sheet.stored(), ElementsAre("Excludes"));
        EXPECT_EQ(file(), whole(c.after)) << c.before << " -> " << c.typed;
        EXPECT_EQ(SettingsSheet(store, settings, folder.internal()).value(excludes), sheet.value(excludes));
    }

    SettingsSheet sheet = open("[Excludes]\r\n1=a\r\n");
    modExcludes::save(store, "meanwhile");
    EXPECT_THAT(sheet.store({{"Excludes", ""}}), IsEmpty());
    EXPECT_EQ(sheet.value(excludes), "meanwhile") << "nobody has seen it here";
}

// Whatever was excluded comes back from its line, which is one line in any editor.
TEST_F(Sheet, keepsEveryExcludeThatIsNotChanged) {
    static_cast<void>(open(""));
    std::vector<std::string> names = testSystem::hostileNames();
    for (const char* name : {"'q'", "\xC2\xA0", "\xEF\xBF\xBC"}) {
        names.emplace_back(name);
    }
    std::erase_if(names, [](const std::string& name) { // Windows' files of settings hold no lone surrogates
        return platform::internalName(name).find("\xED\xA0\x80") != std::string::npos ||
               platform::internalName(name).find("\xED\xBF\xBF") != std::string::npos;
    });
    for (const std::string& name : names) {
        modExcludes::save(store,
                          modExcludes::patternOf(folder.internal() + "\\" + platform::internalName(name)));
    }
    const std::vector<std::string> before = modExcludes::load(store).texts();
    ASSERT_FALSE(before.empty());
    SettingsSheet sheet(store, settings, folder.internal());
    EXPECT_THAT(sheet.store({{"Excludes", "new\n" + sheet.value(keyNamed("Excludes"))}}), IsEmpty());
    std::vector<std::string> after = modExcludes::load(store).texts();
    ASSERT_EQ(after.back(), "new");
    after.pop_back();
    EXPECT_EQ(after, before);
}

TEST_F(Sheet, saysWhatCannotBeStored) {
    SettingsSheet sheet = open("[startup]\n");
    EXPECT_EQ(sheet.whyNotWritable(), "");
    EXPECT_THAT(sheet.store({{"errorLogTextFile", "two\nlines"}, {"exact", "1"}}),
                ElementsAre("errorLogTextFile"));
    EXPECT_THAT(sheet.stored(), ElementsAre("exact")) << "what could be stored is known";
    const testSystem::ReadOnlyFile readOnly(folder / "settings.ini");
    if (!readOnly.isReadOnly()) {
        GTEST_SKIP() << "this user may write to every file";
    }
    EXPECT_THAT(sheet.whyNotWritable(), HasSubstr("settings.ini cannot be written"));
    EXPECT_THAT(sheet.store({{"exact", "0"}}), ElementsAre("exact"));
    EXPECT_EQ(sheet.value(keyNamed("exact")), "1");
}

TEST_F(Sheet, needsAFileOfItsOwn) {
    SettingsSheet sheet = open("");
    std::filesystem::remove(folder / "settings.ini");
    std::filesystem::create_directory(folder / "settings.ini");
    EXPECT_THAT(sheet.whyNotWritable(), HasSubstr("not an ordinary file"));
    EXPECT_THAT(sheet.store({{"exact", "1"}}), ElementsAre("exact"));
}

TEST_F(Sheet, leavesReadOnlyToTheCommandLine) {
    SettingsSheet sheet = open("[APPLICATION_SETTINGS]\nreadOnly=0\n");
    EXPECT_EQ(sheet.whyFixed(keyNamed("readOnly")), "");
    settings.forceReadOnly();
    settings.setReadOnly(false);
    EXPECT_TRUE(settings.readOnly());
    SettingsSheet forced(store, settings, folder.internal());
    EXPECT_EQ(forced.value(keyNamed("readOnly")), "1");
    EXPECT_THAT(forced.whyFixed(keyNamed("readOnly")), HasSubstr("--read-only"));
    EXPECT_THAT(forced.store({{"readOnly", "0"}}), IsEmpty());
    EXPECT_THAT(forced.stored(), IsEmpty());
    EXPECT_THAT(file(), HasSubstr("readOnly=0"));
}

TEST(SettingRemark, tellsWhetherAFileCouldBeWritten) {
    const TemporaryFolder folder;
    folder.write("log", "");
    const bool hasLink = testSystem::makeLink(folder / "log", folder / "link");
    const bool hasPipe = testSystem::makePipe(folder / "pipe");
    testSystem::setVariable("SPANNORY_TEST_SET", folder.typed("log"));
    const std::string longText = folder.typed(std::string(255, 'x'));
    struct Case {
        std::string text;
        const char* remark;
        Weight weight;
        bool possible = true;
    };
    const Case cases[] = {
        {"", "", Weight::none},
        {folder.typed("log"), "", Weight::none},
        {folder.typed("new"), "no such file yet", Weight::note},
        {"SPANNORY_TEST_SET", "environment variable", Weight::note},
        {"some.log", "started in this folder", Weight::note},
        {longText, "at most 254", Weight::error},
        {"a\nb", "line break", Weight::error},
        {folder.typed(), "is a folder", Weight::error},
        {folder.typed("none/log"), "There is no folder", Weight::error},
        {folder.typed("log/log"), "There is no folder", Weight::error},
        {folder.typed("link"), "is a link", Weight::error, hasLink},
        {folder.typed("pipe"), "not an ordinary file", Weight::error, hasPipe},
    };
    for (const Case& c : cases) {
        if (c.possible) {
            const Remark remark = remarkOn(keyNamed("errorLogFile"), c.text);
            EXPECT_EQ(remark.weight, c.weight) << c.text << ": " << remark.text;
            EXPECT_THAT(remark.text, HasSubstr(c.remark)) << c.text;
        }
    }
    const testSystem::ReadOnlyFile locked(folder / "log");
    EXPECT_EQ(remarkOn(keyNamed("errorLogFile"), folder.typed("log")).weight == Weight::error,
              locked.isReadOnly());
}

} // namespace
