#include "collect/rowForm.h"

#include <gtest/gtest.h>

#include <random>

#include "base/dateFormat.h"
#include "collect/diskPaths.h"
#include "collect/rowBinary.h"
#include "collect/wallClock.h"
#include "support/errorNumberOf.h"
#include "support/reportFixture.h"

namespace {

using modRowForm::Row;

// A working database whose rows are told with the engine's own texts, however odd they are.
class RowForm : public testing::Test {
protected:
    void add(const std::string& names, const std::string& values) const {
        base.database->Define("insert into details (" + names + ") values (" + values + ")");
    }

    // Each row as the server's, and what is read from that. The first four columns are the scan's.
    void expectSameRows(char separator) const {
        const auto rows =
            base.database->OpenRecordset("select " + modRowForm::columnList() + " from details");
        modRowForm::Encoder encoder(*rows, {.host = "vm", .scan = "1", .number = 7, .started = 9}, separator);
        modRowForm::Decoder decoder(separator);
        int count = 0;
        for (; !rows->EndOfFile(); rows->MoveNext(), ++count) {
            std::string bytes;
            encoder.append(bytes);
            modRowBinary::Reader start(bytes);
            EXPECT_EQ(start.text(), "vm");
            EXPECT_EQ(start.text(), "1");
            EXPECT_EQ(start.number<std::uint64_t>(), 7U);
            EXPECT_EQ(start.number<std::uint32_t>(), 9U);
            const std::string_view whole = start.rest();
            Row row;
            for (std::size_t length = 0; length < whole.size(); ++length) {
                std::string_view part = whole.substr(0, length);
                EXPECT_FALSE(decoder.take(part, row)) << "of a row that was cut off";
                EXPECT_EQ(part.size(), length);
            }
            std::string_view rest = whole;
            ASSERT_TRUE(decoder.take(rest, row));
            EXPECT_TRUE(rest.empty());
            for (std::size_t i = 0; i < row.size(); ++i) {
                EXPECT_EQ(row[i], rows->Fields(modRowForm::columns[i]).value())
                    << "row " << count << ", " << modRowForm::columns[i];
            }
        }
        EXPECT_GT(count, 0);
    }

    // The bytes that a row has in column `odd`, and as its name on the disk.
    struct Shown {
        std::string parent;
        std::string name;
        std::string odd;
    };
    Shown shownOf(char separator) const {
        const auto rows =
            base.database->OpenRecordset("select " + modRowForm::columnList() + " from details");
        modRowForm::Encoder encoder(*rows, {}, separator);
        std::string bytes;
        encoder.append(bytes);
        modRowBinary::Reader reader(bytes);
        static_cast<void>(reader.text());
        static_cast<void>(reader.text());
        static_cast<void>(reader.number<std::uint64_t>());
        static_cast<void>(reader.number<std::uint32_t>());
        static_cast<void>(reader.text());
        Shown shown{std::string(reader.text()), std::string(reader.text()), {}};
        for (int i = 0; i < 3; ++i) {
            static_cast<void>(reader.text());
        }
        static_cast<void>(reader.number<std::uint8_t>());
        shown.odd = reader.text();
        return shown;
    }

    ReportFixture base;
};

const std::string usual =
    "drive, parentFolder, folder, fileName, fullPath, isFolder, size, sizeOnDisk, extension, "
    "dateModified, dateAccessed, dateInserted, owner";
const std::string usualRest =
    "0, 5.0, 4096.0, 'txt', '03/14/2004 09:05:07 PM', '12/31/2105 12:59:59 AM', '01/01/1970 "
    "12:00:01 AM', 'DOMAIN\\me'";

} // namespace

// What scans record needs nothing in `odd`, and is shown as on the disk.
TEST_F(RowForm, ofScansIsAsOnTheDisk) {
    struct Case {
        std::string drive, parent, behindDrive, name;
        char separator;
        std::string diskParent, diskName;
    };
    const Case cases[]{
        {"/\\", "/\\", "", "a", '/', "/", "a"},
        {"/\\", "/\\usr\\lib\\", "usr\\lib\\", "Who\uF03F", '/', "/usr/lib/", "Who?"},
        {"/home\\", "/home\\me\\", "me\\", "x\uEFFF\uEFC3y", '/', "/home/me/", "x\xFF\xC3y"},
        {"/media/a\uF05Cb\\", "/media/a\uF05Cb\\c\\", "c\\", "\uF00A\uF01B", '/', "/media/a\\b/c/", "\n\x1B"},
        {"\\\\srv\\share\\", "\\\\srv\\share\\d\\", "d\\", "e", '/', "//srv/share/d/", "e"},
        {"\\\\srv\\share\\", "\\\\srv\\share\\d\\", "d\\", "e", '\\', "\\\\srv\\share\\d\\", "e"},
        {"C:\\", "C:\\Users\\", "Users\\", "\xED\xA0\x80z", '\\', "C:\\Users\\", "\xED\xA0\x80z"},
    };
    for (const Case& each : cases) {
        base.database->Execute("delete * from details");
        add(usual, "'" + each.drive + "', '" + each.parent + "', '" + each.parent + "', '" + each.name +
                       "', '" + each.behindDrive + each.name + "', " + usualRest);
        const Shown shown = shownOf(each.separator);
        EXPECT_EQ(shown.parent, each.diskParent);
        EXPECT_EQ(shown.name, each.diskName);
        EXPECT_EQ(shown.odd, "") << each.diskParent;
        expectSameRows(each.separator);
        EXPECT_EQ(modDiskPaths::separatorOf(each.parent, each.separator == '/' ? "Debian" : "Windows 10"),
                  each.separator);
    }
}

TEST_F(RowForm, keepsWhateverALoadedRowHolds) {
    const std::string rows[]{
        "default values",
        "(isFolder) values (1)",
        "(isFolder, fileName) values (1, 'no end')",
        "(isFolder, fileName) values (1, '\\')",
        "(isFolder, fileName) values (7, 'x\\')",
        "(isFolder, fileName) values ('x', 'x')",
        "(isFolder, fileName) values (0.5, 'a\\b')",
        "(fileName, isFolder) values ('a/b', 0)",
        "(fileName, isFolder) values ('', 0)",
        "(fileName, isFolder) values ('a' || char(0) || 'b', 0)",
        "(fileName, isFolder) values (cast(x'ff80c3' as text), 0)",
        "(fileName, isFolder) values (cast(x'eda080' as text), 0)",
        "(fileName, isFolder) values ('\"|*?<>' || char(10), 0)",
        "(fileName, isFolder) values (char(61184, 61440, 61695, 65534), 0)",
        "(drive, parentFolder) values ('/', '/usr/lib')",
        "(drive, parentFolder) values ('', '')",
        "(drive, parentFolder, folder) values ('//', '//x/', '')",
        "(drive, parentFolder) values ('C:\\', 'D:\\x\\')",
        "(drive, parentFolder) values ('/x', '/x')",
        "(drive, parentFolder) values (null, '\\\\a\\b\\c\\')",
        "(size, sizeOnDisk) values (0.5, -0.0)",
        "(size, sizeOnDisk) values (9223372036854775807, -9223372036854775808)",
        "(size, sizeOnDisk) values (9e999, -9e999)",
        "(size, sizeOnDisk) values ('many', '12 ')",
        "(isFolder, fileCount, folderCount) values (1, 5, null)",
        "(isFolder, fileCount, folderCount) values (0, 5, 6)",
        "(isFolder, fileCount, folderCount) values (1, 1.5, 'x')",
        "(dateModified, dateAccessed) values ('', 'never')",
        "(dateModified, dateAccessed) values ('01/01/1970 12:00:00 AM', '01/01/2106 12:00:00 AM')",
        "(dateModified, dateAccessed) values ('02/29/2023 01:00:00 AM', '02/29/2024 01:00:00 AM')",
        "(dateModified, dateAccessed) values ('03/14/2004 13:05:07 PM', '03/14/2004 00:05:07 AM')",
        "(dateModified, dateAccessed) values ('03/14/2004 09:05:07 pm', ' 3/14/2004 09:05:07 AM')",
        "(dateInserted, scanCompleteTime) values (12, 12.5)",
        "(dateInserted, scanCompleteTime) values (1.5, '03/14/2004 09:05:07 PM')",
        "(extension, description, owner) values ('', '', '')",
        "(extension, description, owner) values (char(61503), 'File Folder', '''; drop table details --')",
        "(extension, description, owner) values (cast(x'fe' as text), char(9), 'a\\\\''')",
        "(idx, owner) values (-5, 'x')",
        "(idx, owner) values (9223372036854775807, 'x')",
    };
    const std::string longName = "replace(hex(zeroblob(300)), '0', 'é')"; // cut in column fullPath
    add("drive, parentFolder, fullPath", "'/\\', '/\\' || " + longName + " || '\\', " + longName);
    for (const std::string& row : rows) {
        base.database->Define("insert into details " + row);
    }
    expectSameRows('/');
    expectSameRows('\\');
}

TEST_F(RowForm, keepsAnyName) {
    std::mt19937 random(20261122); // NOLINT(cert-msc51-cpp): the same each time
    const char* const pieces[]{"\\",   "/",        "\uF05C", "\uF0FF",       "\uEF80", "\uEFFF", "é", "a",
                               "\xFF", "\xEF\x80", "?",      "\xED\xBF\xBF", "\uFFFE", "''",     " ", "."};
    const auto text = [&] {
        std::string result;
        for (auto i = random() % 6; i > 0; --i) {
            result += pieces[random() % std::size(pieces)];
        }
        return "'" + result + "'";
    };
    for (int i = 0; i < 500; ++i) {
        add("drive, parentFolder, folder, fileName, fullPath, extension, isFolder",
            text() + "," + text() + "," + text() + "," + text() + "," + text() + "," + text() + "," +
                std::to_string(random() % 2));
    }
    expectSameRows('/');
    expectSameRows('\\');
}

TEST(RowFormOf, whatIsNoRowIsRefused) {
    std::string row;
    for (int i = 0; i < 6; ++i) {
        modRowBinary::appendText(row, "x");
    }
    row.push_back('\0');
    const std::string numbers(2 * 8 + 4 * 4 + 3 * 8, '\0');
    const auto take = [&](std::string_view odd) {
        std::string bytes = row;
        modRowBinary::appendText(bytes, odd);
        bytes += numbers;
        std::string_view rest = bytes;
        Row taken;
        modRowForm::Decoder decoder('/');
        static_cast<void>(decoder.take(rest, taken));
    };
    EXPECT_EQ(errorNumberOf([&] { take(""); }), 0);
    for (const std::string_view odd :
         {std::string_view("\x12n"), std::string_view("\xFFn"), std::string_view("\x01"),
          std::string_view("\x01x"), std::string_view("\x01i\0\0", 4), std::string_view("\x01t\x05x"),
          std::string_view("\x01t\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x01")}) {
        EXPECT_EQ(errorNumberOf([&] { take(odd); }), databaseError::damaged) << odd;
    }
    for (const char byte : {'\xFF', '\x80'}) { // a length without end
        const std::string endless(20, byte);
        std::string_view rest = endless;
        Row taken;
        modRowForm::Decoder decoder('/');
        EXPECT_EQ(errorNumberOf([&] { static_cast<void>(decoder.take(rest, taken)); }),
                  databaseError::damaged);
    }
    for (const std::string_view scans : {std::string_view(""), std::string_view("\xFF\xFF\xFF\xFF", 4),
                                         std::string_view("\x01\0\0\0x", 5)}) {
        EXPECT_EQ(errorNumberOf([&] { static_cast<void>(modRowForm::decodedScans(scans)); }),
                  databaseError::damaged);
    }
}

TEST(RowFormOf, scansComeBack) {
    std::vector<modScans::Scan> scans(2);
    scans[0].host = "vm";
    scans[0].path = "/\\usr\\";
    scans[0].started = 5;
    scans[0].finished = -1;
    scans[0].excludes = "*.o\nx";
    scans[0].unreadableFolders = 2;
    scans[0].uniqueId = "0f";
    scans[1].cancelled = true;
    scans[1].programVersion = "1";
    const auto again = modRowForm::decodedScans(modRowForm::encodedScans(scans));
    ASSERT_EQ(again.size(), scans.size());
    for (std::size_t i = 0; i < scans.size(); ++i) {
        EXPECT_EQ(modRowForm::encodedScans({again[i]}), modRowForm::encodedScans({scans[i]}));
        EXPECT_EQ(again[i].started, scans[i].started);
        EXPECT_EQ(again[i].finished, scans[i].finished);
        EXPECT_EQ(again[i].excludes, scans[i].excludes);
        EXPECT_EQ(again[i].uniqueId, scans[i].uniqueId);
        EXPECT_EQ(again[i].cancelled, scans[i].cancelled);
    }
}

// Against the other functions for dates.
TEST(WallClock, knowsTheStoredForm) {
    std::mt19937 random(20261122); // NOLINT(cert-msc51-cpp): the same each time
    std::uint32_t before = 0;
    for (int i = 0; i < 20000; ++i) {
        const std::uint32_t seconds = 1 + static_cast<std::uint32_t>(random()) % 4291747199U;
        const std::string text = modWallClock::storedText(seconds);
        EXPECT_EQ(modWallClock::secondsOf(text), seconds) << text;
        const auto date = modFormat::parseDate(text);
        ASSERT_TRUE(date) << text;
        EXPECT_EQ(modFormat::formatDate(*date, modFormat::storedDatePicture), text);
        if (before != 0) {
            const auto other = modFormat::parseDate(modWallClock::storedText(before));
            EXPECT_EQ(modFormat::momentKey(*date) < modFormat::momentKey(*other), seconds < before);
        }
        before = seconds;
    }
    EXPECT_EQ(modWallClock::secondsOf("11/22/2026 07:10:00 PM"), 1795374600U);
}
