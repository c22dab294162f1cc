#include "export/folderHistory.h"
#include "base/formatSize.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pugixml.hpp>

#include "export/databaseFile.h"
#include "export/historyReport.h"
#include "export/readHistories.h"
#include "support/scanFixture.h"
#include "support/sqliteScript.h"
#include "support/zipPart.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class FolderHistory : public testing::Test, protected ScanFixture {
protected:
    FolderHistory() {
        tree.write("a/x", "12345");
        tree.write("b/x", "123");
    }
    // A saved scan of what is there, finished on that day.
    void save(const std::string& name, const std::string& day, const std::string& script = {}) {
        search.resetAll();
        scan();
        const std::string file = folder.typed(name);
        EXPECT_FALSE(modExport::copyDatabase(working, file, userInterface));
        runSqliteScript(file, "update scans set finished='2026-01-" + day + " 12:00:00';" + script);
    }
    modExport::FolderHistory read(std::string_view name) {
        return modExport::readHistory(modExport::savedScansAt(folder.typed()), tree.typed(name),
                                      [] { return true; });
    }
    // "5 1 file +2 bytes cancelled other", for each point.
    static std::vector<std::string> told(const modExport::FolderHistory& history) {
        std::vector<std::string> result;
        for (const modExport::HistoryPoint& point : history.points) {
            std::string text = point.folder ? std::to_string(static_cast<int>(point.folder->size)) : "-";
            text.append("|").append(point.folder && point.folder->files ? std::to_string(*point.folder->files)
                                                                        : "");
            text.append("|").append(point.change ? modLvw::formatChange(*point.change) : std::string());
            result.push_back(text.append("|").append(modExport::remarkOf(point)));
        }
        return result;
    }

    TemporaryFolder folder;
};

TEST_F(FolderHistory, isReadFromOldToNew) {
    save("3.mdb", "03", "delete from details where isFolder=0; update details set fileCount=null;");
    tree.write("a/y", std::string(2000, 'x'));
    save("1.MDB", "09");
    std::filesystem::remove_all(tree / "a");
    save("2.mdb", "04", "update scans set cancelled=1;");
    tree.write("a/x", "1");
    save("4.mdb", "05", "update scans set cancelled=1;");
    save("other host.mdb", "07", "update scans set host='other'; update details set size=7;");
    save("other folder.mdb", "07", "update scans set path='/\\elsewhere\\'; delete from details;");
    save("unknown.mdb", "07", "drop table scans; delete from details;");
    folder.write("broken.mdb", "a letter");
    folder.write("a letter", "which is no saved scan");

    const modExport::FolderHistory history = read("a");
    EXPECT_THAT(told(history),
                ElementsAre("5|||", "-|||not there", "1|1|-4 bytes|cancelled", "7|1||", "2005|2|+2.0 Kb|"));
    EXPECT_EQ(history.others, 2U);
    EXPECT_THAT(history.failures, ElementsAre(HasSubstr("broken.mdb was not loaded")));
    EXPECT_TRUE(history.hasFolder() && history.hasSeveralHosts());
    EXPECT_EQ(history.largest(), 2005);

    const modExport::FolderHistory none = read("never there");
    EXPECT_FALSE(none.hasFolder());
    EXPECT_THAT(none.points, SizeIs(5)) << "which are of the folder above";
    EXPECT_THAT(
        modExport::readHistory(modExport::savedScansAt(folder.typed()), tree.typed(), [] { return false; })
            .points,
        IsEmpty());
}

TEST_F(FolderHistory, needsSavedScans) {
    EXPECT_THROW(static_cast<void>(modExport::savedScansAt(folder.typed())), RuntimeError);
    const std::vector<std::string> missing = modExport::savedScansAt(folder.typed("missing.mdb"));
    EXPECT_THAT(modExport::readHistory(missing, tree.typed(), [] { return true; }).failures,
                ElementsAre(HasSubstr("missing.mdb")));
}

TEST_F(FolderHistory, isWrittenWithItsCurve) {
    save("1.mdb", "03", "update scans set host='=1+1<b>';");
    tree.write("a/&b.txt/y", std::string(2000, 'x'));
    save("2.mdb", "05");
    const modExport::FolderHistory history = read("a");

    modExport::exportHistory(modExport::ReportFormat::text, history, userInterface,
                             application.typed("h.txt"));
    const std::string text = application.read("h.txt");
    EXPECT_TRUE(text.starts_with("Date,Size (Bytes),Change (Bytes),Files,Folders,Remark,Host,Saved Scan\r\n"))
        << text;
    EXPECT_THAT(text, HasSubstr(",5,,1,0,,'=1+1<b>,"));
    EXPECT_THAT(text, HasSubstr(",2005,,2,1,,"));

    modExport::exportHistory(modExport::ReportFormat::html, history, userInterface,
                             application.typed("h.html"));
    const std::string page = application.read("h.html");
    EXPECT_THAT(page, HasSubstr("<td>=1+1&lt;b&gt;</td>"));
    EXPECT_THAT(page, HasSubstr("points=\"0,219 1000,20\"")) << page.substr(page.find("<svg"), 600);
    EXPECT_THAT(page, HasSubstr(">2.0 Kb</text>"));
    const std::string curve = modExport::historyCurve(history);
    EXPECT_TRUE(pugi::xml_document().load_buffer(curve.data(), curve.size()));

    modExport::exportHistory(modExport::ReportFormat::excel, history, userInterface,
                             application.typed("h.xlsx"));
    const std::string chart = zipPart(application.read("h.xlsx"), "xl/charts/chart1.xml");
    EXPECT_THAT(chart, HasSubstr("<c:f>Sheet1!$A$4:$A$5</c:f>"));
    EXPECT_THAT(chart, HasSubstr("<c:f>Sheet1!$B$4:$B$5</c:f>"));
    EXPECT_THAT(zipPart(application.read("h.xlsx"), "xl/worksheets/sheet1.xml"), HasSubstr("<v>2005</v>"));
    EXPECT_THAT(userInterface.messages, IsEmpty());

    modExport::FolderHistory single = history;
    single.points.resize(1);
    EXPECT_EQ(modExport::historyCurve(single), "");
    for (modExport::HistoryPoint& point : single.points) {
        point.folder->size = -3e38;
    }
    single.points.push_back(single.points.front());
    EXPECT_THAT(modExport::historyCurve(single), HasSubstr("points=\"0,220 0,220\""));
}

} // namespace
