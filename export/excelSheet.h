#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "export/workbookFolder.h"

struct lxw_format;
struct lxw_workbook;
struct lxw_worksheet;

namespace platform {
class Sink;
}

namespace modExport {

// The message if there are more rows than a workbook can hold.
inline constexpr std::string_view tooMuchDataMessage =
    "There is too much data to export.  Please choose a different format.";

// A workbook with one sheet, written row by row from the top in limited memory, using files in a
// WorkbookFolder of its own. Every failure throws RuntimeError: 61 if the folder is full, 70
// or 75 if a file cannot be created there.
class ExcelSheet {
public:
    // Texts may be bold. Numbers are shown as "1,234 bytes" or "1,234"; dates to the minute in reports, to
    // the second in lists.
    enum class Style { plain, bold, bytes, count, boldBytes, boldCount, reportDate, listDate };
    static constexpr std::size_t styles = 8;
    static constexpr std::size_t mostRows = 1'048'576;

    explicit ExcelSheet(std::size_t columns);
    ~ExcelSheet();
    ExcelSheet(const ExcelSheet&) = delete;
    ExcelSheet& operator=(const ExcelSheet&) = delete;

    // Always a text, never a formula or an address; cut to what a cell can hold.
    void text(std::size_t column, std::string_view value, Style style = Style::plain);
    // An infinity, or a value that is not a number, leaves the cell empty.
    void number(std::size_t column, double value, Style style = Style::plain);
    // A stored date becomes a real date; any other text stays a text.
    void date(std::size_t column, std::string_view stored, Style style);
    // A formula that adds up this many cells directly above. The sum is stored with it, for programs that do
    // not calculate.
    void sumOfRowsAbove(std::size_t column, std::size_t rows, double sum, Style style);
    void nextRow() noexcept { ++row_; }

    // The document's title, which applications show with its other properties.
    void setTitle(const std::string& title);

    // The row of the column headers, which stays in view together with the rows above it. Only texts after
    // this call affect the widths of the columns.
    void tableHead(std::span<const std::string_view> headers);

    // Adds a chart of points, joined by lines, beside the rows that were written.
    struct Chart {
        std::string title;
        std::size_t horizontal = 0; // the column with the dates
        std::size_t vertical = 0;   // the column with the numbers
        std::size_t firstRow = 0;   // of the points, counted from 0
        std::size_t rows = 0;
        std::size_t column = 0; // where it stands, at the first row
    };
    void chart(const Chart& facts);

    // Completes the workbook, after which nothing more can be written, and writes its bytes to the sink.
    void finish(platform::Sink& sink);

private:
    struct Discard {
        void operator()(lxw_workbook* workbook) const noexcept;
    };

    void complete();
    void check(int error) const;
    [[nodiscard]] lxw_format* format(Style style);
    void widen(std::size_t column, std::size_t characters) noexcept;

    WorkbookFolder folder_; // whose leftovers the next program removes, if this one is killed
    std::string path_;      // in internal form
    std::string nativePath_;
    std::string nativeFolder_;
    std::unique_ptr<lxw_workbook, Discard> workbook_;
    lxw_worksheet* sheet_ = nullptr; // owned by the workbook, like the formats
    std::array<lxw_format*, styles> formats_{};
    std::uint32_t row_ = 0;
    bool inTable_ = false;
    std::string cell_;
    std::vector<std::size_t> widths_; // in characters, one per column
};

} // namespace modExport
