#include "support/scanFixture.h"

#include "base/modGlobal.h"
#include "platform/files.h"
#include "support/expected.h"

namespace {

WorkingDatabase prepare(const TemporaryFolder& application, clsUserInterface& userInterface) {
    platform::copyFile(templateFile(), application.internal("001.dat"));
    return modDatabase::prepareDatabase(application.internal(), application.internal("main.dat"),
                                        userInterface);
}

} // namespace

ScanFixture::ScanFixture() : working(prepare(application, userInterface)), search(working, settings) {
    settings.setGetOwnerInfo(true);
    settings.setReaders(-1);
}

modProcessFiles::ScanResult ScanFixture::scan(std::string_view name) {
    const auto result = modProcessFiles::processMain(key(name), {search, settings, userInterface});
    search.makeIndexes();
    return result;
}

std::string ScanFixture::remarks() const {
    std::string text;
    for (const auto& [panel, shown] : userInterface.statuses) {
        text = panel == StatusPanel::remarks ? shown : text;
    }
    return text;
}

std::string ScanFixture::key(std::string_view name) const {
    return modGlobal::addBackslash(tree.internal(name));
}

std::vector<std::string> ScanFixture::rows(std::string_view statement) const {
    std::vector<std::string> result;
    const auto records = working.database().OpenRecordset(statement);
    for (; !records->EndOfFile(); records->MoveNext()) {
        std::string line;
        for (int i = 0; i < records->FieldCount(); ++i) {
            const Field& field = records->Fields(i);
            line += (i == 0 ? "" : "|") + (field.isNull() ? "~" : std::string(field.text()));
        }
        result.push_back(std::move(line));
    }
    return result;
}

std::string ScanFixture::cell(std::string_view statement) const {
    const auto all = rows(statement);
    return all.empty() ? std::string() : all.front().substr(0, all.front().find('|'));
}

bool ScanFixture::areSumsRight() const {
    return cell("select count(*) from details as f where isFolder=1 and size <> (select sum(size) from "
                "details as c where c.parentFolder=f.parentFolder & f.fileName)") == "0" &&
           cell("select count(*) from details as f where isFolder=1 and size <> 0 and (select count(*) "
                "from details as c where c.parentFolder=f.parentFolder & f.fileName)=0") == "0";
}
