#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>

#include "base/errorLog.h"
#include "export/clipboard.h"
#include "export/listClipboard.h"
#include "export/listTable.h"
#include "export/listWorkbook.h"
#include "export/workbookFolder.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/ownership.h"
#include "platform/runtimeError.h"
#include "support/recordingInterface.h"
#include "support/temporaryFolder.h"
#include "support/testSystem.h"
#include "support/zipPart.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using modExport::ListTable;

struct MemoryTable : ListTable {
    struct Cell {
        std::string_view text;
        std::optional<double> number = {};
    };
    MemoryTable(std::vector<Column> itsHeaders, std::vector<std::vector<Cell>> itsRows)
        : headers(std::move(itsHeaders)), rows(std::move(itsRows)), count(rows.size()) {}
    [[nodiscard]] std::span<const Column> columns() const override { return headers; }
    [[nodiscard]] std::size_t rowCount() const override { return count; }
    [[nodiscard]] std::string_view text(std::size_t row, std::size_t column) const override {
        return rows[row][column].text;
    }
    [[nodiscard]] std::optional<double> number(std::size_t row, std::size_t column) const override {
        return rows[row][column].number;
    }

    std::vector<Column> headers;
    std::vector<std::vector<Cell>> rows;
    std::size_t count;
};

struct MemoryClipboard final : modExport::Clipboard {
    void clear() override { content = "cleared"; }
    void setText(std::string_view text) override {
        content = fails ? throw RuntimeError(errorNumber::outOfMemory) : std::string(text);
    }

    std::string content = "as before";
    bool fails = false;
};

// Files that the code creates in the temporary folder go to `temporary`.
struct Lists : testing::Test {
    Lists() {
        testSystem::setVariable(temporaryVariable, temporary.typed());
        modGlobal::setErrorLog(&userInterface);
    }
    ~Lists() override {
        modGlobal::setErrorLog();
        testSystem::setVariable(temporaryVariable, before);
        EXPECT_EQ(userInterface.busyDepth, 0);
        EXPECT_FALSE(userInterface.progressVisible);
    }
    void copy(const ListTable& table, bool exact = false, bool areLoaded = false) {
        modGlobal::copyClipboardLvw(table, userInterface, clipboard, exact, areLoaded);
    }
    void print(std::string_view fileName) {
        modGlobal::printToExcel(files, "Details - /srv/", userInterface, fileName);
    }

    TemporaryFolder folder;
    TemporaryFolder temporary;
    std::string temporaryVariable = testSystem::temporaryFolderVariable();
    std::string before = platform::environmentVariable(temporaryVariable).value_or("");
    RecordingInterface userInterface;
    MemoryClipboard clipboard;
    MemoryTable files{{{"Name", ListTable::Kind::text},
                       {"Size", ListTable::Kind::bytes},
                       {"Modified", ListTable::Kind::date},
                       {"Count", ListTable::Kind::count}},
                      {{{"=1+1"}, {"5.0 Gb", 5368709120}, {"03/14/2004 09:05:07 PM"}, {"3", 3}},
                       {{"a, \"b\""}, {"none"}, {"never"}, {"12", 12}}}};
};

} // namespace

TEST_F(Lists, clipboardTextHasHeadersAndRowsUnquoted) {
    copy(files);
    EXPECT_EQ(clipboard.content, "Name,Size,Modified,Count\r\n"
                                 "=1+1,5.0 Gb,03/14/2004 09:05:07 PM,3\r\n"
                                 "a, \"b\",none,never,12");
    EXPECT_EQ(userInterface.progressMaximum, 2);
    EXPECT_EQ(userInterface.progressValue, 2);
    copy(MemoryTable{{{"Name", ListTable::Kind::text}}, {{{"one"}}, {{"two"}}}});
    EXPECT_EQ(clipboard.content, "Name\r\none\r\ntwo");
}

TEST_F(Lists, clipboardRowsAreKeptWhole) {
    struct Case {
        std::string_view name;
        std::string_view plain;
        std::string_view exact;
    };
    constexpr std::array cases{
        Case{"Who?", "Who?", "Who?"},
        Case{"a,b", "a,b", "\"a,b\""}, // odd on purpose: shifts the columns after it
        Case{"a\"b", "a\"b", "\"a\"\"b\""},
        Case{"\"q\"", "\"\"\"q\"\"\"", "\"\"\"q\"\"\""},
        Case{"a,\"b", "\"a,\"\"b\"", "\"a,\"\"b\""},
        Case{"two\nlines", "\"two\nlines\"", "\"two\nlines\""},
        Case{"two\rlines", "\"two\rlines\"", "\"two\rlines\""},
    };
    for (const Case& each : cases) {
        const MemoryTable table{{{"Name", ListTable::Kind::text}}, {{{each.name}}}};
        for (const bool exact : {false, true}) {
            copy(table, exact);
            EXPECT_EQ(clipboard.content, "Name\r\n" + std::string(exact ? each.exact : each.plain));
        }
    }
}

TEST_F(Lists, clipboardRowsOfALoadedScanAreNoFormulas) {
    for (const auto& [name, expected] : {std::pair("=1+1", "'=1+1"),
                                         {"@SUM(A1)", "'@SUM(A1)"},
                                         {"+1", "'+1"},
                                         {"-1", "'-1"},
                                         {"\t=1", "'\t=1"},
                                         {"\r=1", "\"'\r=1\""},
                                         {"x,=1+1", "\"x,=1+1\""},
                                         {"o\"\r\n=1,\"", "\"o\"\"\r\n=1,\"\"\""},
                                         {"Who?", "Who?"}}) {
        copy(MemoryTable{{{"Name", ListTable::Kind::text}, {"Size", ListTable::Kind::bytes}},
                         {{{name}, {"-1.0 Gb", -1073741824}}}},
             false, true);
        EXPECT_EQ(clipboard.content, "Name,Size\r\n" + std::string(expected) + ",-1.0 Gb");
    }
}

TEST_F(Lists, listsOfNoRowsAndOfTooManyAreRefused) {
    files.count = 0;
    copy(files);
    print(folder.internal("list.xlsx"));
    files.count = 1'048'573; // one more than fit below caption, blank line, headers and totals
    print(folder.internal("list.xlsx"));
    EXPECT_THAT(userInterface.messages,
                ElementsAre("The list is empty.", "The list is empty.",
                            "There is too much data to export.  Please choose a different format."));
    EXPECT_EQ(clipboard.content, "as before");
    EXPECT_EQ(userInterface.progressMaximum, 0);
    EXPECT_FALSE(exists(folder / "list.xlsx"));
}

TEST_F(Lists, workbookHoldsNumbersDatesAndTotals) {
    print(folder.internal("list.xlsx"));
    EXPECT_THAT(userInterface.opened, ElementsAre(folder.internal("list.xlsx")));
    const std::string sheet = zipPart(folder.read("list.xlsx"), "xl/worksheets/sheet1.xml");
    for (const char* part :
         {R"(<pane ySplit="3" topLeftCell="A4")", R"(<c r="A1" s="1" t="inlineStr"><is><t>Details - /srv/)",
          R"(<c r="B3" s="1" t="inlineStr"><is><t>Size)", "<t>=1+1</t>", "<t>none</t>", "<t>never</t>",
          R"(<c r="B4" s="2"><v>5368709120</v>)", R"(<c r="C4" s="3"><v>38060.87855324074</v>)",
          R"(<c r="D5" s="4"><v>12</v>)", R"(<c r="A6" s="1" t="inlineStr"><is><t>Total)",
          R"(<c r="B6" s="5"><f>SUM(B4:B5)</f><v>5368709120</v>)",
          R"(<c r="D6" s="6"><f>SUM(D4:D5)</f><v>15</v>)",
          // The columns fit "a, "b"" (not the caption) and "5,368,709,120 bytes".
          R"(<col min="1" max="1" width="8.)", R"(<col min="2" max="2" width="21.)"}) {
        EXPECT_THAT(sheet, HasSubstr(part));
    }
    EXPECT_THAT(sheet, Not(HasSubstr("SUM(C4"))) << "dates have no total";
    EXPECT_THAT(zipPart(folder.read("list.xlsx"), "xl/styles.xml"),
                AllOf(HasSubstr("#,##0&quot; bytes&quot;"), HasSubstr("mm/dd/yyyy hh:mm:ss AM/PM")));
}

TEST_F(Lists, failuresAreLoggedUnderTheRoutinesName) {
    clipboard.fails = true;
    copy(files);
    EXPECT_THAT(userInterface.messages.back(), HasSubstr("[modGlobal.copyClipboardLvw]"));
    EXPECT_EQ(clipboard.content, "cleared");
    constexpr std::string_view place = "\r\n[modGlobal.printToExcel]";
    if (const std::string full = testSystem::fullDevice(); !full.empty()) {
        print(full);
        EXPECT_EQ(userInterface.messages.back(),
                  "61 The disk is full: " + full + " was not written." + std::string(place));
    }
    folder.write("list.xlsx", "old");
    testSystem::setVariable(temporaryVariable, folder.typed("none"));
    print(folder.internal("list.xlsx"));
    EXPECT_THAT(userInterface.messages.back(), AllOf(HasSubstr(folder.typed("none")), HasSubstr(place)));
    EXPECT_EQ(folder.read("list.xlsx"), "old");
    EXPECT_THAT(userInterface.opened, IsEmpty());
}

TEST_F(Lists, workbooksLieInAFolderOfTheirOwnWhileTheProgramRuns) {
    namespace fs = std::filesystem;
    const platform::LocalTime evening{2004, 3, 14, 21, 5, 7};
    temporary.write("Spannory-others/precious", "x"); // readable by others, so it is no such folder
    fs::permissions(temporary / "Spannory-others", fs::perms::group_all, fs::perm_options::add);
    temporary.write("Spannory-left/lock", ""); // by a program that was killed
    temporary.write("Spannory-left/Spannory-03-14-2004-21-05-07.xlsx", "x");
    fs::permissions(temporary / "Spannory-left", fs::perms::owner_all);
    const auto folders = [&] { return std::distance(fs::directory_iterator(temporary.path()), {}); };
    std::ptrdiff_t others = 0;
    {
        modExport::WorkbookFolder ours;
        EXPECT_FALSE(fs::exists(temporary / "Spannory-left"));
        others = folders();
        const std::string name = ours.newWorkbook(evening);
        temporary.write("Spannory-left/lock", "");
        temporary.write("Spannory-left/sheet.xlsx", "half a workbook");
        fs::permissions(temporary / "Spannory-left", fs::perms::owner_all);
        print(name);
        EXPECT_FALSE(fs::exists(temporary / "Spannory-left")) << "each workbook removes what is left";
        EXPECT_THAT(name, EndsWith("\\Spannory-03-14-2004-21-05-07.xlsx"));
        EXPECT_THAT(ours.newWorkbook(evening), EndsWith("\\Spannory-03-14-2004-21-05-07-2.xlsx"));
        EXPECT_EQ(folders(), others + 1) << "nothing else is left there";
        EXPECT_TRUE(platform::isOwnFolder(name.substr(0, name.rfind('\\') + 1)));
        const modExport::WorkbookFolder another;
        EXPECT_TRUE(platform::fileExists(name)) << "it is in use";
    }
    EXPECT_EQ(folders(), others);
}
