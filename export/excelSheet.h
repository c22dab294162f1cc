#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct lxw_format;
struct lxw_workbook;
struct lxw_worksheet;

namespace modExport {

// A workbook with one sheet, written row by row from the top with bounded memory, through files in the
// system's temporary folder that vanish with it. Every failure throws RuntimeError: 61 when the folder is
// full, 70 or 75 when a file cannot be made there.
class ExcelSheet {
public:
    enum class Style { plain, bold };
    static constexpr std::size_t columns = 7;

    ExcelSheet();
    ~ExcelSheet();
    ExcelSheet(const ExcelSheet&) = delete;
    ExcelSheet& operator=(const ExcelSheet&) = delete;

    // Always text, never taken for a formula or an address; cut where a cell can hold no more.
    void text(std::size_t column, std::string_view value, Style style = Style::plain);
    void number(std::size_t column, double value);
    // A stored date as a real one; as text when it is none.
    void date(std::size_t column, std::string_view stored);
    void nextRow() noexcept { ++row_; }

    // The rows before this one do not count for the columns' widths.
    void startTable() noexcept { inTable_ = true; }
    // The rows so far stay in view.
    void freezeRowsAbove();

    // Completes the workbook and returns the file's bytes. Nothing can be written afterwards.
    [[nodiscard]] std::string finish();

private:
    struct Discard {
        void operator()(lxw_workbook* workbook) const noexcept;
    };

    void check(int error) const;
    void widen(std::size_t column, std::size_t characters) noexcept;

    std::string path_; // internal
    std::string nativePath_;
    std::string nativeFolder_;
    std::unique_ptr<lxw_workbook, Discard> workbook_;
    lxw_worksheet* sheet_ = nullptr; // this and the formats are the workbook's
    lxw_format* bold_ = nullptr;
    lxw_format* dateFormat_ = nullptr;
    std::uint32_t row_ = 0;
    bool inTable_ = false;
    std::string cell_;
    std::array<std::size_t, columns> widths_{}; // in characters
};

} // namespace modExport
