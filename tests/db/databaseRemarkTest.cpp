#include "db/databaseRemark.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "db/modDatabase.h"
#include "export/databaseFile.h"
#include "platform/runtimeError.h"
#include "support/expected.h"
#include "support/recordingInterface.h"
#include "support/sqliteScript.h"
#include "support/temporaryFolder.h"
#include "support/testSystem.h"

using modSettings::Remark;
using testing::HasSubstr;

namespace {

// What is said of a path, beside what the next start then does with it.
TEST(DatabaseRemark, saysWhatTheNextStartDoes) {
    using Weight = Remark::Weight;
    const TemporaryFolder folder;
    RecordingInterface people;
    platform::copyFile(templateFile(), folder.internal("001.dat"));
    {
        const WorkingDatabase working =
            modDatabase::prepareDatabase(folder.internal(), folder.internal("old.dat"), people);
        platform::copyFile(folder.internal("old.dat"), folder.internal("saved"));
    }
    std::string saved = folder.read("saved");
    folder.write("saved", saved.replace(68, 4, "SPNS"));
    folder.write("notes.txt", "mine");
    folder.write("empty", "");
    runSqliteScript(folder.typed("other"), "create table x (y);");
    const bool hasLinks = testSystem::makeLink(folder / "old.dat", folder / "link") &&
                          testSystem::makeLink(folder / "saved", folder / "savedLink") &&
                          testSystem::makeLink(folder / "nowhere", folder / "lostLink");
    struct Case {
        const char* name;
        const char* remark;
        Weight weight;
        bool possible = true;
    };
    const Case cases[] = {
        {"new.dat", "", Weight::none},
        {"old.dat", "", Weight::none},
        {"empty", "", Weight::none},
        {"saved", "a saved scan", Weight::error},
        {"notes.txt", "not a database of this program", Weight::error},
        {"001.dat", "template", Weight::error},
        {"other", "earlier version", Weight::warning},
        {"link", "is a link to", Weight::note, hasLinks},
        {"savedLink", "a saved scan", Weight::error, hasLinks},
        {"lostLink", "a link", Weight::error, hasLinks},
        {"none/x.dat", "There is no folder", Weight::error},
    };
    for (const Case& c : cases) {
        if (!c.possible) {
            continue;
        }
        Remark remark = remarkOn(modSettings::keyNamed("databasePath"), folder.typed(c.name));
        modDatabase::addRemark(remark, folder.typed(c.name), folder.internal());
        EXPECT_EQ(remark.weight, c.weight) << c.name << ": " << remark.text;
        EXPECT_THAT(remark.text, HasSubstr(c.remark)) << c.name;

        people.messages.clear();
        bool isUsed = true;
        try {
            const WorkingDatabase working =
                modDatabase::prepareDatabase(folder.internal(), folder.typed(c.name), people);
            isUsed = people.messages.empty();
        } catch (const RuntimeError&) {
            isUsed = false;
        }
        EXPECT_EQ(isUsed, c.weight < Weight::warning) << c.name;
    }
}

} // namespace
