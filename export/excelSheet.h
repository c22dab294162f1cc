#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct lxw_format;
struct lxw_workbook;
struct lxw_worksheet;

namespace modExport {

// What is said of rows that are more than a workbook is to hold.
inline constexpr std::string_view tooMuchDataMessage =
    "There is too much data to export.  Please choose a different format.";

// A workbook with one sheet, written row by row from the top with bounded memory, through files in the
// system's temporary folder that vanish with it. Every failure throws RuntimeError: 61 when the folder is
// full, 70 or 75 when a file cannot be made there.
class ExcelSheet {
public:
    // Which texts may be bold, and what is shown of numbers ("1,234 bytes", "1,234") and dates (to the minute
    // in reports, to the second in lists).
    enum class Style { plain, bold, bytes, count, boldBytes, boldCount, reportDate, listDate };
    static constexpr std::size_t styles = 8;
    static constexpr std::size_t mostRows = 1'048'576;

    explicit ExcelSheet(std::size_t columns);
    ~ExcelSheet();
    ExcelSheet(const ExcelSheet&) = delete;
    ExcelSheet& operator=(const ExcelSheet&) = delete;

    // Always text, never taken for a formula or an address; cut where a cell can hold no more.
    void text(std::size_t column, std::string_view value, Style style = Style::plain);
    // An infinity, or what is no number, leaves the cell empty.
    void number(std::size_t column, double value, Style style = Style::plain);
    // A stored date as a real one; as text when it is none.
    void date(std::size_t column, std::string_view stored, Style style);
    // A formula that adds up so many cells right above. The sum is stored with it, for programs that do not
    // calculate.
    void sumOfRowsAbove(std::size_t column, std::size_t rows, double sum, Style style);
    void nextRow() noexcept { ++row_; }

    // The rows before this one do not count for the columns' widths.
    void startTable() noexcept { inTable_ = true; }
    // The rows so far stay in view.
    void freezeRowsAbove();

    // Either completes the workbook, after which nothing can be written: returns the file's bytes, or puts
    // the file in the place of the one of that name.
    [[nodiscard]] std::string finish();
    void saveAs(std::string_view fileName);

private:
    struct Discard {
        void operator()(lxw_workbook* workbook) const noexcept;
    };

    void complete();
    void check(int error) const;
    [[nodiscard]] lxw_format* format(Style style);
    void widen(std::size_t column, std::size_t characters) noexcept;

    std::string path_; // internal
    std::string nativePath_;
    std::string nativeFolder_;
    std::unique_ptr<lxw_workbook, Discard> workbook_;
    lxw_worksheet* sheet_ = nullptr; // this and the formats are the workbook's
    std::array<lxw_format*, styles> formats_{};
    std::uint32_t row_ = 0;
    bool inTable_ = false;
    std::string cell_;
    std::vector<std::size_t> widths_; // in characters, one of each column
};

} // namespace modExport
