#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <ctime>
#include <filesystem>

#include "base/errorLog.h"
#include "export/excelReport.h"
#include "export/htmlReport.h"
#include "export/reportFormats.h"
#include "export/targetFile.h"
#include "export/textReport.h"
#include "export/xmlReport.h"
#include "support/reportFixture.h"
#include "support/zipPart.h"

using modExport::ReportFormat;
using modExport::reportQuery;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

constexpr std::array allFormats{ReportFormat::html, ReportFormat::text, ReportFormat::xml,
                                ReportFormat::excel};

class Reports : public testing::Test {
protected:
    void addSample() {
        fixture.add({"usr\\a,\"b<&>.txt", 1536, "never", "", "", false}); // reports begin with the largest
        fixture.add({"usr\\", 5368709120, "03/14/2004 09:05:07 PM", "02/29/2024 12:00:00 AM", "root", true});
    }

    bool run(ReportFormat format, std::string_view fileName) {
        return modExport::exportReportFile(format, fixture.context(), fileName);
    }

    bool run(ReportFormat format) { return run(format, fixture.folder.internal("report")); }

    void expectAtRest() {
        EXPECT_EQ(fixture.userInterface.busyDepth, 0);
        EXPECT_FALSE(fixture.userInterface.progressVisible);
    }

    ReportFixture fixture;
};

std::string repeated(std::string_view text, std::size_t times) {
    std::string result;
    for (; times > 0; --times) {
        result.append(text);
    }
    return result;
}

std::filesystem::file_time_type fileTime(const platform::LocalTime& local) {
    std::tm time{};
    time.tm_year = static_cast<int>(local.year) - 1900;
    time.tm_mon = local.month - 1;
    time.tm_mday = local.day;
    time.tm_hour = local.hour;
    time.tm_min = local.minute;
    time.tm_sec = local.second;
    time.tm_isdst = -1;
    return std::chrono::file_clock::from_sys(std::chrono::system_clock::from_time_t(std::mktime(&time)));
}

std::string html(ReportFixture& fixture) {
    return fixture.written(reportQuery(ReportFormat::html, 1), modExport::writeHtmlReport);
}

} // namespace

TEST_F(Reports, htmlPageIsWrittenAsTheTemplateSays) {
    addSample();
    // "T" stands for the title, the drive for the two paths.
    std::string expected = R"(<HTML><HEAD><TITLE>T</TITLE><HEAD><BODY><P align=center>
<TABLE cellSpacing=0 cellPadding=1 align=left border=1 style='BORDER-TOP: 0px; BORDER-LEFT-WIDTH: 0px; FONT-SIZE: smaller; BORDER-BOTTOM-WIDTH: 0px; WIDTH: 800px; BORDER-RIGHT-WIDTH: 0px' borderColor=gainsboro bgColor=whitesmoke background=''>
  <TR><TD colspan=7><P align=center><FONT face=Arial size=2><br><STRONG>T</STRONG></FONT></P><br></TD></TR>
  <TR>
    <td><FONT color=midnightblue face=Arial size=2><STRONG>Path</STRONG></FONT></td>
    <td><FONT color=midnightblue face=Arial size=2><STRONG>Size&nbsp;(Bytes)</STRONG></FONT></td>
    <td><FONT color=midnightblue face=Arial size=2><STRONG>Size&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;</STRONG></FONT></td>
    <td><FONT color=midnightblue face=Arial size=2><STRONG>Date&nbsp;Accessed&nbsp;&nbsp;&nbsp;</STRONG></FONT></td>
    <td><FONT color=midnightblue face=Arial size=2><STRONG>Date&nbsp;Modified&nbsp;&nbsp;&nbsp;</STRONG></FONT></td>
    <td><FONT color=midnightblue face=Arial size=2><STRONG>Owner</STRONG></FONT></td>
    <td><FONT color=midnightblue face=Arial size=2><STRONG>Type&nbsp;&nbsp;&nbsp;</STRONG></FONT></td>
  </TR>
  <TR>
    <td>DRIVEusr</td>
    <td> 5368709120 </td>
    <td>5.0 Gb</td>
    <td> 03/14/04 09:05 PM </td>
    <td> 02/29/24 12:00 AM </td>
    <td>root&nbsp;</td>
    <td>Folder</td>
  </TR>
  <TR>
    <td>DRIVEfile</td>
    <td> 1536 </td>
    <td>1.5 Kb</td>
    <td> never </td>
    <td>  </td>
    <td>&nbsp;</td>
    <td>File</td>
  </TR>
</TABLE>
</P></BODY></HTML>
)";
    const auto replace = [&expected](std::string_view text, std::string_view by) {
        const std::size_t at = expected.find(text);
        ASSERT_NE(at, std::string::npos) << text;
        expected.replace(at, text.size(), by);
    };
    fixture.settings.setGetOwnerInfo(true);
    const std::string withOwner = html(fixture);
    replace(">T<", ">" + fixture.title + "<");
    replace(">T<", ">" + fixture.title + "<");
    replace("DRIVEusr", shown("usr\\"));
    replace("DRIVEfile", shown("usr\\a,&quot;b&lt;&&gt;.txt")); // names on Windows may contain &
    EXPECT_EQ(withOwner, withLineEnds(expected));

    fixture.settings.setGetOwnerInfo(false);
    replace("colspan=7", "colspan=6");
    replace("    <td><FONT color=midnightblue face=Arial size=2><STRONG>Owner</STRONG></FONT></td>\n", "");
    replace("    <td>root&nbsp;</td>\n", "");
    replace("    <td>&nbsp;</td>\n", "");
    EXPECT_EQ(html(fixture), withLineEnds(expected));
}

TEST_F(Reports, pathsAreCutIntoPieces) {
    using modGlobal::htmlPathString;
    const auto piece = [](std::size_t length) { return std::string(length, 'x'); };
    EXPECT_EQ(htmlPathString("", 55), "");
    EXPECT_EQ(htmlPathString(piece(55), 55), piece(55));
    EXPECT_EQ(htmlPathString(piece(56), 55), piece(55) + "<BR>x");
    EXPECT_EQ(htmlPathString(piece(110), 55), piece(55) + "<BR>" + piece(55));
    EXPECT_EQ(htmlPathString(piece(120), 55), piece(55) + "<BR>" + piece(55) + "<BR>" + piece(10));
    EXPECT_EQ(htmlPathString("äöüß", 2), "äö<BR>üß");
    EXPECT_EQ(htmlPathString("äöü", 3), "äöü");
    fixture.add({piece(60)});
    const std::string path = shown(piece(60));
    EXPECT_THAT(html(fixture), HasSubstr("<td>" + path.substr(0, 55) + "<BR>" + path.substr(55) + "</td>"));
    const std::string quotes(60, '"'); // cut before escaping
    fixture.add({quotes});
    EXPECT_THAT(html(fixture), HasSubstr(repeated("&quot;", 55 - shown("").size()) + "<BR>"));
}

TEST_F(Reports, textHasSevenUnescapedFieldsWhateverTheSettings) {
    addSample();
    EXPECT_EQ(
        fixture.written(reportQuery(ReportFormat::text, 1),
                        [](modExport::ReportRows& rows, platform::Sink& sink) {
                            modExport::writeTextReport(rows, sink, ";", "'");
                        }),
        withLineEnds("'Path';'Size (Bytes)';'Size';'Date Accessed';'Date Modified';'Owner';'Type'\n'" +
                     shown("usr\\") +
                     "';'5368709120';'5.0 Gb';'03/14/04 09:05 PM';'02/29/24 12:00 AM';'root';'Folder'\n'" +
                     shown("usr\\a,\"b<&>.txt") + "';'1536';'1.5 Kb';'never';'';'';'File'\n"));
}

TEST_F(Reports, workbookHoldsRealValuesAndSurvivesAnyText) {
    addSample();
    fixture.add({"=1+1", 3, "", "", "q\x01r\xFF_x0041_", false});
    fixture.add({"long", 2, "", "", std::string(40000, 'y'), false});
    ASSERT_TRUE(run(ReportFormat::excel));
    EXPECT_THAT(fixture.userInterface.opened, ElementsAre(fixture.folder.internal("report")));
    const std::string workbook = fixture.folder.read("report");
    const std::string sheet = zipPart(workbook, "xl/worksheets/sheet1.xml");
    for (const std::string& part : std::initializer_list<std::string>{
             "<pane ySplit=\"2\" topLeftCell=\"A3\"", "<t>Size (bytes)</t>",
             "<c r=\"B3\"><v>5368709120</v></c>", "<c r=\"D3\" s=\"2\"><v>38060.87855324074</v></c>",
             "<t>5.0 Gb</t>", "<t>Folder</t>", "<t>never</t>",
             "<t>" + shown("usr\\a,\"b&lt;&amp;&gt;.txt") + "</t>", "<t>" + shown("=1+1") + "</t>",
             "<t>q_x0001_r\uEFFF_x005F_x0041_</t>"}) {
        EXPECT_THAT(sheet, HasSubstr(part));
    }
    EXPECT_THAT(sheet, HasSubstr("<t>" + std::string(32767, 'y') + "</t>"));
    EXPECT_THAT(zipPart(workbook, "xl/styles.xml"), HasSubstr("mm/dd/yy hh:mm AM/PM"));
}

TEST_F(Reports, exactHtmlNamesItsFoldersAndEscapesEveryValue) {
    addSample();
    fixture.settings.setExact(true);
    fixture.settings.setGetOwnerInfo(true);
    fixture.add({"usr\\&amp;\t\x01\xFF", 1, "", "", "<R&D>", false});
    modExport::ReportContext context = fixture.context();
    context.scannedFolders = [](Database&, std::size_t most) {
        return std::vector<std::string>(most, testSystem::root() + "R&D\\");
    };
    platform::TextSink sink;
    modExport::ReportRows rows(context, reportQuery(ReportFormat::html, 1));
    modExport::writeHtmlReport(rows, sink);
    const std::string folder = shown("R&amp;D\\");
    const std::string title =
        folder + ", " + folder + ", " + folder + " and more - Spannory - Detail Report (";
    for (const std::string& part : std::initializer_list<std::string>{
             "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>" + title,
             "<caption>" + title, "<th scope=\"col\">Type</th></tr>\n</thead>",
             "<tr><td>" + shown("usr\\a,&quot;b&lt;&amp;&gt;.txt") +
                 "</td><td>1536</td><td>1.5 Kb</td><td>never</td><td></td><td></td><td>File</td></tr>\n",
             "<td>" + shown("usr\\") + "&amp;amp;&#9;\uF001\uEFFF</td>", "<td>&lt;R&amp;D&gt;</td>"}) {
        EXPECT_THAT(sink.text(), HasSubstr(part));
    }
}

TEST_F(Reports, exactTextDoublesQuotesWhateverTheyAre) {
    fixture.add({"usr\\it's", 1536, "never", "", "o'b", false});
    const auto write = [](modExport::ReportRows& rows, platform::Sink& sink) {
        modExport::writeTextReport(rows, sink, ",", "'");
    };
    const std::string query = reportQuery(ReportFormat::text, 1);
    EXPECT_THAT(fixture.written(query, write), HasSubstr("'" + shown("usr\\it's") + "','1536',"));
    fixture.settings.setExact(true);
    EXPECT_THAT(fixture.written(query, write), HasSubstr("'Type'\r\n'" + shown("usr\\it''s") +
                                                         "','1536','1.5 Kb','never','','o''b','File'\r\n"));
}

// What Windows names could hold, an own scan's report writes as ever; a loaded scan may hold anything
// anywhere.
TEST_F(Reports, rowsOfALoadedScanHarmNoReader) {
    for (const std::string_view name : {"R&D", "&lt;b>", "&amp", "&eacute;", "&#60;", "a&b;c"}) {
        fixture.add({name, 1, "<i>", "x\r\n\"y", "=1+1,\"z", false});
    }
    fixture.settings.setGetOwnerInfo(true);
    const auto text = [&](const char* quote) {
        return fixture.written(reportQuery(ReportFormat::text, 1),
                               [&](modExport::ReportRows& rows, platform::Sink& sink) {
                                   modExport::writeTextReport(rows, sink, ",", quote);
                               });
    };
    const auto expectParts = [](const std::string& report, std::initializer_list<std::string> parts) {
        for (const std::string& part : parts) {
            EXPECT_THAT(report, HasSubstr(part));
        }
    };
    expectParts(html(fixture), {"R&D<", "&lt;b&gt;", "&amp<", "&#60;<", "=1+1,&quot;z&nbsp;"});
    expectParts(text("\""), {"\"=1+1,\"\"z\""});
    fixture.database->setHoldsLoadedRows(true);
    expectParts(html(fixture),
                {"R&D<", "&amp;lt;b&gt;", "&amp;amp<", "&amp;eacute;", "&amp;#60;<", "a&amp;b;c",
                 "<td> &lt;i&gt; </td>", "x&#13;&#10;&quot;y", "=1+1,&quot;z&nbsp;"});
    const std::string path = shown("R&D");
    expectParts(text("\""),
                {"\"" + path + R"(","1","1 bytes","<i>","x)" + "\r\n" + R"(""y","'=1+1,""z","File")"});
    expectParts(text("'"), {"'" + path + "','1','1 bytes','<i>','x\r\n\"y','''=1+1,\"z','File'"});
    expectParts(text(""), {path + ",1,1 bytes,<i>,\"x\r\n" + R"(""y","'=1+1,""z",File)"});
}

TEST_F(Reports, emptyResultTouchesNoFile) {
    for (const ReportFormat format : allFormats) {
        fixture.folder.write("report", "old");
        EXPECT_FALSE(run(format));
        EXPECT_EQ(fixture.folder.read("report"), "old");
        expectAtRest();
    }
    EXPECT_EQ(fixture.userInterface.messages, std::vector<std::string>(4, "No data to export."));
    EXPECT_THAT(fixture.userInterface.opened, IsEmpty());
}

TEST_F(Reports, onlyLargeReportsAskBeforeOpening) {
    fixture.addMany(10000);
    for (const ReportFormat format : allFormats) {
        fixture.folder.write("report", std::string(5'000'000, ' ')); // a longer file is replaced completely
        EXPECT_TRUE(run(format));
        EXPECT_LT(fixture.folder.read("report").size(), 5'000'000U);
        EXPECT_EQ(fixture.userInterface.progressMaximum, 10000);
        EXPECT_EQ(fixture.userInterface.progressValue, 10000);
        expectAtRest();
    }
    EXPECT_THAT(fixture.userInterface.questions, IsEmpty());
    EXPECT_EQ(fixture.userInterface.opened.size(), 4U);

    fixture.addMany(1);
    fixture.userInterface.answer = false;
    for (const ReportFormat format : {ReportFormat::html, ReportFormat::text, ReportFormat::xml}) {
        EXPECT_TRUE(run(format));
        EXPECT_EQ(fixture.userInterface.questions.back().first, Question::openLargeReport);
    }
    EXPECT_FALSE(run(ReportFormat::excel)); // it is not even created
    EXPECT_EQ(fixture.userInterface.questions.back().first, Question::largeExcelReport);
    EXPECT_EQ(fixture.userInterface.opened.size(), 4U);
    fixture.userInterface.answer = true;
    EXPECT_TRUE(run(ReportFormat::excel));
    EXPECT_EQ(fixture.userInterface.questions.size(), 5U);
    EXPECT_EQ(fixture.userInterface.opened.size(), 5U);
}

TEST_F(Reports, workbookRefusesTooManyRows) {
    fixture.addMany(65500);
    EXPECT_TRUE(run(ReportFormat::excel));
    fixture.addMany(1);
    EXPECT_FALSE(run(ReportFormat::excel));
    EXPECT_THAT(fixture.userInterface.messages,
                ElementsAre("There is too much data to export.  Please choose a different format."));
    fixture.settings.setExact(true);
    EXPECT_TRUE(run(ReportFormat::excel));
    const std::string sheet = zipPart(fixture.folder.read("report"), "xl/worksheets/sheet1.xml");
    EXPECT_THAT(sheet, HasSubstr("<row r=\"65502\"")) << "the headers and all rows";
    EXPECT_THAT(sheet, Not(HasSubstr("<row r=\"65503\"")));
    fixture.userInterface.answer = false;
    const auto runOnPairs = [this](int left, int right) { // virtual rows take no time
        const std::string query =
            "select a.drive, a.fullPath, a.size, a.dateAccessed, a.dateModified, a.owner, "
            "a.isFolder, a.parentFolder, a.fileName from details a, details b where a.idx<=" +
            std::to_string(left) + " and b.idx<=" + std::to_string(right);
        return modGlobal::exportXLSSizeReport(fixture.context(), query, fixture.folder.internal("report"));
    };
    EXPECT_FALSE(runOnPairs(1023, 1025)); // 1,048,575 rows
    EXPECT_EQ(fixture.userInterface.questions.back().first, Question::largeExcelReport);
    EXPECT_EQ(fixture.userInterface.messages.size(), 1U);
    EXPECT_FALSE(runOnPairs(1024, 1024));
    EXPECT_EQ(fixture.userInterface.messages.size(), 2U);
    expectAtRest();
}

TEST_F(Reports, failuresAreLoggedUnderTheRoutinesName) {
    addSample();
    modGlobal::setErrorLog(&fixture.userInterface);
    constexpr std::array procedures{"exportHTMLSizeReport", "exportTextSizeReport", "exportXMLSizeReport",
                                    "exportXLSSizeReport"};
    for (const ReportFormat format : allFormats) {
        const char* procedure = procedures[static_cast<std::size_t>(format)];
        const std::string place = "\r\n[modGlobal." + std::string(procedure) + "]";
        EXPECT_FALSE(run(format, fixture.folder.typed("no-folder/report")));
        EXPECT_THAT(
            fixture.userInterface.messages.back(),
            testing::EndsWith(fixture.folder.typed("no-folder/report") + " was not written." + place));
        if (const std::string full = testSystem::fullDevice(); !full.empty()) {
            EXPECT_FALSE(run(format, full));
            EXPECT_EQ(fixture.userInterface.messages.back(),
                      "61 The disk is full: " + full + " was not written." + place);
        }
        expectAtRest();
    }
    EXPECT_FALSE(modGlobal::exportHTMLSizeReport(fixture.context(), "SELECT", fixture.folder.internal("x")));
    EXPECT_THAT(fixture.userInterface.opened, IsEmpty());
    modGlobal::setErrorLog();
}

TEST_F(Reports, titlesAndNames) {
    const platform::LocalTime evening{2004, 3, 14, 21, 5, 7};
    EXPECT_EQ(modExport::reportTitle(1, evening), "Spannory - Detail Report (03/14/04 09:05 PM) ");
    EXPECT_EQ(modExport::reportTitle(2, evening), "Spannory - Summary Report (03/14/04 09:05 PM) ");
    EXPECT_EQ(modExport::defaultFileName(fileExtension(ReportFormat::text), evening),
              "03-14-2004-21-05-07.csv");
    EXPECT_EQ(modExport::saveDialogFilter(ReportFormat::html),
              "HTML Files (*.html)|*.html|All Files (*.*)|*.*");
}

TEST_F(Reports, overwriteOnlyWhatThePersonHasSeenTheDateOf) {
    const std::string file = fixture.folder.typed("there");
    fixture.folder.write("there", std::string(1536, 'x'));
    const platform::LocalTime noon{2004, 3, 14, 12, 5, 7};
    std::filesystem::last_write_time(fixture.folder / "there", fileTime(noon));
    EXPECT_TRUE(modExport::confirmOverwrite(fixture.userInterface, fixture.folder.typed("new")));
    EXPECT_THAT(fixture.userInterface.questions, IsEmpty());
    for (const bool answer : {false, true}) {
        fixture.userInterface.answer = answer;
        EXPECT_EQ(modExport::confirmOverwrite(fixture.userInterface, file), answer);
        EXPECT_EQ(fixture.userInterface.questions.back().second, "Overwrite existing file?");
        EXPECT_EQ(fixture.userInterface.confirmed.back(), file + " (03/14/2004 12:05:07 PM, 1.5 Kb)");
    }
}
