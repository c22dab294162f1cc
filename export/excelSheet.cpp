#include "export/excelSheet.h"

#include <xlsxwriter.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <random>
#include <system_error>

#include "app/pictures.h"
#include "export/xmlText.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"
#include "platform/text.h"

namespace modExport {

namespace {

constexpr std::size_t cellLimit = 32767; // UTF-16 units
constexpr std::size_t widestColumn = 255;
constexpr std::size_t margin = 2; // what the program draws beside the text
constexpr int firstYear = 1900;   // no date cell holds an earlier one

struct StyleFacts {
    bool bold = false;
    const char* numberFormat = nullptr;
    std::string_view around = {}; // what is shown beside a number's digits, or the like of a date
};

// In the order of ExcelSheet::Style.
constexpr std::array<StyleFacts, ExcelSheet::styles> styleFacts{{
    {},
    {true},
    {false, "#,##0\" bytes\"", " bytes"},
    {false, "#,##0"},
    {true, "#,##0\" bytes\"", " bytes"},
    {true, "#,##0"},
    {false, "mm/dd/yy hh:mm AM/PM", "03/14/04 09:05 PM"},
    {false, "mm/dd/yyyy hh:mm:ss AM/PM", "03/14/2004 09:05:07 PM"},
}};

const StyleFacts& factsOf(ExcelSheet::Style style) {
    return styleFacts[static_cast<std::size_t>(style)];
}

std::size_t shownLength(double number, const StyleFacts& style) {
    if (style.numberFormat == nullptr) {
        return static_cast<std::size_t>(std::snprintf(nullptr, 0, "%.15g", number));
    }
    const auto digits = static_cast<std::size_t>(std::snprintf(nullptr, 0, "%.0f", number));
    return digits + (digits - 1) / 3 + style.around.size();
}

std::string temporaryName() {
    std::random_device random;
    return "spannory-" + std::to_string(random()) + "-" + std::to_string(random()) + ".xlsx";
}

void cutToCellLimit(std::string& text) {
    if (text.size() <= cellLimit) {
        return;
    }
    std::size_t units = 0;
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t start = position;
        units += platform::decodeCodePoint(text, position) > 0xFFFF ? 2 : 1;
        if (units > cellLimit) {
            text.resize(start);
            return;
        }
    }
}

// The spreadsheet program reads "_x0041_" as the character of that code. Such a text, which encoded names
// do hold, is kept by encoding its first underscore.
void escapeCharacterCodes(std::string& text) {
    constexpr std::string_view hexDigits = "0123456789abcdefABCDEF";
    constexpr std::size_t length = 7;
    for (std::size_t at = text.find("_x"); at != std::string::npos; at = text.find("_x", at + 1)) {
        const std::string_view code = std::string_view(text).substr(at, length);
        if (code.size() == length && code.back() == '_' &&
            code.substr(2, 4).find_first_not_of(hexDigits) == std::string_view::npos) {
            text.insert(at, "_x005F");
            at += length - 1;
        }
    }
}

// The library looks neither whether the rows reached its file nor whether its second file with the whole
// sheet did, and would make a broken workbook on a full disk. So before it is completed the rows must be
// there, and room for the sheet and the workbook, which is never larger.
bool rowsAreSafe(std::FILE* rows, const std::string& folder) {
    constexpr std::uintmax_t otherParts = std::uintmax_t{256} << 10;
    const bool written = std::fflush(rows) == 0 && std::ferror(rows) == 0;
    const long size = std::ftell(rows);
    std::error_code unknown;
    const std::filesystem::space_info space = std::filesystem::space(folder, unknown);
    return written && size >= 0 &&
           (unknown || space.available >= 2 * static_cast<std::uintmax_t>(size) + otherParts);
}

int numberOf(lxw_error error) {
    if (error != LXW_ERROR_CREATING_XLSX_FILE && error != LXW_ERROR_CREATING_TMPFILE) {
        return errorNumber::diskFull; // nothing else stops the writing of a file that could be made
    }
    const bool denied = errno == EACCES || errno == EROFS;
    return denied ? errorNumber::permissionDenied : errorNumber::pathFileAccess;
}

} // namespace

void ExcelSheet::Discard::operator()(lxw_workbook* workbook) const noexcept {
    lxw_workbook_free(workbook);
}

ExcelSheet::ExcelSheet(std::size_t columns)
    : path_(platform::temporaryFolder() + temporaryName()), nativePath_(platform::toNative(path_)),
      nativeFolder_(platform::toNative(platform::temporaryFolder())), widths_(columns) {
    platform::FileSink(path_).close(); // fails here with its reason; the library would only print one
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    options.tmpdir = nativeFolder_.data();
    workbook_.reset(workbook_new_opt(nativePath_.c_str(), &options));
    sheet_ = workbook_ ? workbook_add_worksheet(workbook_.get(), nullptr) : nullptr;
    if (sheet_ == nullptr) {
        check(LXW_ERROR_CREATING_TMPFILE);
    }
}

ExcelSheet::~ExcelSheet() {
    workbook_.reset();
    try {
        platform::deleteFile(path_);
    } catch (...) { // not there unless the workbook was finished
    }
}

void ExcelSheet::text(std::size_t column, std::string_view value, Style style) {
    cell_.assign(value);
    widen(column, platform::characterCount(cell_));
    replaceForbiddenCharacters(cell_);
    escapeCharacterCodes(cell_);
    cutToCellLimit(cell_);
    check(worksheet_write_string(sheet_, row_, static_cast<lxw_col_t>(column), cell_.c_str(), format(style)));
}

void ExcelSheet::number(std::size_t column, double value, Style style) {
    if (!std::isfinite(value)) {
        return; // no cell can hold it
    }
    widen(column, shownLength(value, factsOf(style)));
    check(worksheet_write_number(sheet_, row_, static_cast<lxw_col_t>(column), value, format(style)));
}

void ExcelSheet::date(std::size_t column, std::string_view stored, Style style) {
    const auto time = modFormat::parseDate(stored);
    if (!time || time->year < firstYear) {
        text(column, stored);
        return;
    }
    lxw_datetime cell{static_cast<int>(time->year),     time->month, time->day, time->hour, time->minute,
                      static_cast<double>(time->second)};
    widen(column, factsOf(style).around.size());
    check(worksheet_write_datetime(sheet_, row_, static_cast<lxw_col_t>(column), &cell, format(style)));
}

void ExcelSheet::sumOfRowsAbove(std::size_t column, std::size_t rows, double sum, Style style) {
    const auto position = static_cast<lxw_col_t>(column);
    std::array<char, LXW_MAX_CELL_RANGE_LENGTH> range{};
    lxw_rowcol_to_range(range.data(), row_ - static_cast<lxw_row_t>(rows), position, row_ - 1, position);
    const std::string formula = std::string("=SUM(").append(range.data()).append(")");
    widen(column, shownLength(sum, factsOf(style)));
    check(worksheet_write_formula_num(sheet_, row_, position, formula.c_str(), format(style), sum));
}

void ExcelSheet::freezeRowsAbove() {
    worksheet_freeze_panes(sheet_, row_, 0);
}

std::string ExcelSheet::finish() {
    complete();
    return platform::readFile(path_, std::numeric_limits<std::uint64_t>::max());
}

void ExcelSheet::saveAs(std::string_view fileName) {
    complete();
    platform::copyFile(path_, fileName);
}

void ExcelSheet::complete() {
    for (std::size_t column = 0; column < widths_.size(); ++column) {
        const auto position = static_cast<lxw_col_t>(column);
        const auto width = static_cast<double>(std::min(widths_[column] + margin, widestColumn));
        check(worksheet_set_column(sheet_, position, position, width, nullptr));
    }
    if (!rowsAreSafe(sheet_->optimize_tmpfile, nativeFolder_)) {
        check(LXW_ERROR_ZIP_FILE_OPERATION);
    }
    sheet_ = nullptr;
    check(workbook_close(workbook_.release()));
}

void ExcelSheet::check(int error) const {
    if (error != LXW_NO_ERROR) {
        throw RuntimeError::about(numberOf(static_cast<lxw_error>(error)), platform::displayPath(path_));
    }
}

// Null for the plain style. Made when it is first wanted, so that a workbook holds those that it uses.
lxw_format* ExcelSheet::format(Style style) {
    if (style == Style::plain) {
        return nullptr;
    }
    lxw_format*& format = formats_[static_cast<std::size_t>(style)];
    if (format == nullptr) {
        const StyleFacts& facts = factsOf(style);
        format = workbook_add_format(workbook_.get());
        if (facts.bold) {
            format_set_bold(format);
        }
        if (facts.numberFormat != nullptr) {
            format_set_num_format(format, facts.numberFormat);
        }
    }
    return format;
}

void ExcelSheet::widen(std::size_t column, std::size_t characters) noexcept {
    if (inTable_) {
        widths_[column] = std::max(widths_[column], characters);
    }
}

} // namespace modExport
