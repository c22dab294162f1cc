#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "db/dao.h"
#include "db/scanRecords.h"

// Rows of the working database as the server's, and back, every column equal whatever it holds.
//
// What the other columns of the server's row tell wrong is in its column `odd`: for each such column of the
// working database one byte with its place in `columns`, one of its kind, and the value
// (collect/rowBinary.h): "n" NULL, "i" a whole number (Int64), "d" a real one (Float64), "t" a text.
namespace modRowForm {

// Of table `details` of the working database.
inline constexpr std::array<std::string_view, 18> columns{
    "idx",          "drive",        "parentFolder", "fileName",
    "isFolder",     "folder",       "fullPath",     "extension",
    "description",  "owner",        "fileCount",    "folderCount",
    "dateInserted", "dateAccessed", "dateModified", "scanCompleteTime",
    "size",         "sizeOnDisk"};

// "idx, drive, ..."
[[nodiscard]] std::string columnList();

// The columns of the server's rows that a row is made from again: those of `details` that follow the scan's.
[[nodiscard]] std::string serverColumnList();

// What all rows of one attempt begin with.
struct Attempt {
    std::string host;
    std::string scan;
    std::uint64_t number = 0;
    std::uint32_t started = 0;
};

class Encoder {
public:
    // The rows are those of "select idx, drive, ..." (columnList) of the working database.
    Encoder(Recordset& rows, const Attempt& attempt, char separator);

    // Appends the current row in the order of modSchema::detailsColumns.
    void append(std::string& result);

private:
    void takeFolder();
    void appendOdd(std::string& odd, std::size_t column) const;
    void requireText(std::size_t column, std::string_view expected);
    [[nodiscard]] std::string_view asText(std::size_t column);
    [[nodiscard]] std::int64_t asWhole(std::size_t column, bool isExpected);
    [[nodiscard]] std::int64_t asBytes(std::size_t column);
    [[nodiscard]] std::uint32_t asMoment(std::size_t column);
    void appendFileName(std::string& result, std::string_view name, bool isAFolder);
    void appendExtension(std::string& result);

    std::array<Field*, columns.size()> fields_{};
    char separator_;
    std::string start_; // what the scan's columns are
    std::string odd_;   // of the current row
    std::string numbers_;

    // Of the last row's folder, which most rows share.
    bool hasFolder_ = false;
    std::string drive_;
    std::string parent_;
    std::string diskFolder_; // both as the server's
    bool driveIsOdd_ = false;
    bool parentIsOdd_ = false;
    std::string scratch_;

    struct Moment {
        std::string text;
        std::uint32_t seconds = 0;
    };
    std::array<Moment, columns.size()> moments_; // the last of each column
};

// A row of the working database, in the order of `columns`.
using Row = std::array<Value, columns.size()>;

class Decoder {
public:
    explicit Decoder(char separator) : separator_(separator) {}

    // Takes the first of the server's rows (of serverColumnList) off the bytes; false, and nothing is taken,
    // if they end before it does. Throws RuntimeError 3049 for what is no row.
    [[nodiscard]] bool take(std::string_view& bytes, Row& row);

private:
    void takeFolder(std::string_view diskDrive, std::string_view diskParent);

    char separator_;
    std::string diskDrive_;
    std::string diskParent_;
    std::string drive_;
    std::string parent_;
};

// The scans that rows come from, for the column `records`. The second throws RuntimeError 3049 for what is
// no such list.
[[nodiscard]] std::string encodedScans(const std::vector<modScans::Scan>& scans);
[[nodiscard]] std::vector<modScans::Scan> decodedScans(std::string_view bytes);

} // namespace modRowForm
