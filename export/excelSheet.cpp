#include "export/excelSheet.h"

#include <xlsxwriter.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "base/dateFormat.h"
#include "export/xmlText.h"
#include "platform/fileError.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace modExport {

namespace {

constexpr std::size_t cellLimit = 32767; // UTF-16 units
constexpr std::size_t widestColumn = 255;
constexpr std::size_t longestTitle = 200; // of a chart, in characters
constexpr std::size_t margin = 2;         // space that the application adds beside the text
constexpr int firstYear = 1900;           // date cells cannot hold earlier years

struct StyleFacts {
    bool bold = false;
    const char* numberFormat = nullptr;
    std::string_view around = {}; // the text around a number's digits; for a date, one of the same width
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

// The spreadsheet application reads "_x0041_" as the character with that code. Such a text, which encoded
// names may contain, is preserved by encoding its first underscore.
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

// In the form that the spreadsheet application itself writes. (TAB and LF stay.)
void encodeControlCharacters(std::string& text) {
    const auto isEncoded = [](char c) {
        return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n';
    };
    for (auto at = std::find_if(text.begin(), text.end(), isEncoded); at != text.end();
         at = std::find_if(at, text.end(), isEncoded)) {
        std::array<char, 8> code{};
        std::snprintf(code.data(), code.size(), "_x%04X_", static_cast<unsigned>(*at));
        const auto place = at - text.begin();
        text.replace(static_cast<std::size_t>(place), 1, code.data());
        at = text.begin() + place;
    }
}

// The library does not check whether the rows reached its file, nor whether its second file received the
// whole sheet, and would create a broken workbook on a full disk. So before the workbook is completed, the
// rows must be in their file, and there must be room for the sheet and for the workbook, which is never
// larger.
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
        return errorNumber::diskFull; // nothing else prevents writing a file that could be created
    }
    const bool denied = errno == EACCES || errno == EROFS;
    return denied ? errorNumber::permissionDenied : errorNumber::pathFileAccess;
}

} // namespace

void ExcelSheet::Discard::operator()(lxw_workbook* workbook) const noexcept {
    lxw_workbook_free(workbook);
}

ExcelSheet::ExcelSheet(std::size_t columns)
    : path_(folder_.path() + "sheet.xlsx"), nativePath_(platform::toNative(path_)),
      nativeFolder_(platform::toNative(folder_.path())), widths_(columns) {
    platform::FileSink(path_).close(); // fails here with its reason, which the library would only print
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    options.tmpdir = nativeFolder_.data();
    workbook_.reset(workbook_new_opt(nativePath_.c_str(), &options));
    sheet_ = workbook_ ? workbook_add_worksheet(workbook_.get(), nullptr) : nullptr;
    if (sheet_ == nullptr) {
        check(LXW_ERROR_CREATING_TMPFILE);
    }
}

ExcelSheet::~ExcelSheet() = default;

void ExcelSheet::text(std::size_t column, std::string_view value, Style style) {
    cell_.assign(value);
    widen(column, platform::characterCount(cell_));
    moveForbiddenCharacters(cell_, Document::workbook);
    escapeCharacterCodes(cell_);
    encodeControlCharacters(cell_);
    cutToCellLimit(cell_);
    check(worksheet_write_string(sheet_, row_, static_cast<lxw_col_t>(column), cell_.c_str(), format(style)));
}

void ExcelSheet::number(std::size_t column, double value, Style style) {
    if (!std::isfinite(value)) {
        return; // a cell cannot hold it
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
    if (!std::isfinite(sum)) {
        return; // as those cells that have made it so
    }
    const auto position = static_cast<lxw_col_t>(column);
    std::array<char, LXW_MAX_CELL_RANGE_LENGTH> range{};
    lxw_rowcol_to_range(range.data(), row_ - static_cast<lxw_row_t>(rows), position, row_ - 1, position);
    const std::string formula = std::string("=SUM(").append(range.data()).append(")");
    widen(column, shownLength(sum, factsOf(style)));
    check(worksheet_write_formula_num(sheet_, row_, position, formula.c_str(), format(style), sum));
}

void ExcelSheet::setTitle(const std::string& title) {
    std::string copy = title; // the library takes texts that it may modify
    lxw_doc_properties properties{};
    properties.title = copy.data();
    check(workbook_set_properties(workbook_.get(), &properties));
}

void ExcelSheet::tableHead(std::span<const std::string_view> headers) {
    inTable_ = true;
    for (std::size_t column = 0; column < headers.size(); ++column) {
        text(column, headers[column], Style::bold);
    }
    nextRow();
    worksheet_freeze_panes(sheet_, row_, 0);
}

void ExcelSheet::chart(const Chart& facts) {
    lxw_chart* const chart = workbook_add_chart(workbook_.get(), LXW_CHART_SCATTER_STRAIGHT_WITH_MARKERS);
    lxw_chart_series* const series = chart == nullptr ? nullptr : chart_add_series(chart, nullptr, nullptr);
    if (series == nullptr) {
        check(LXW_ERROR_CREATING_TMPFILE);
    }
    const auto first = static_cast<lxw_row_t>(facts.firstRow);
    const auto last = static_cast<lxw_row_t>(facts.firstRow + facts.rows - 1);
    const auto horizontal = static_cast<lxw_col_t>(facts.horizontal);
    const auto vertical = static_cast<lxw_col_t>(facts.vertical);
    chart_series_set_categories(series, sheet_->name, first, horizontal, last, horizontal);
    chart_series_set_values(series, sheet_->name, first, vertical, last, vertical);
    std::string title = facts.title;
    moveForbiddenCharacters(title, Document::workbook);
    encodeControlCharacters(title);
    title.resize(platform::firstCharacters(title, longestTitle).size());
    chart_title_set_name(chart, title.c_str());
    chart_axis_set_num_format(chart->x_axis, "mm/dd/yy");
    chart_axis_set_num_format(chart->y_axis, "#,##0");
    chart_legend_set_position(chart, LXW_CHART_LEGEND_NONE);
    check(worksheet_insert_chart(sheet_, first, static_cast<lxw_col_t>(facts.column), chart));
}

void ExcelSheet::finish(platform::Sink& sink) {
    complete();
    platform::copyFile(path_, sink);
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
        throw platform::fileError(numberOf(static_cast<lxw_error>(error)), path_, platform::NotDone::written);
    }
}

// Null for the plain style. Created when first needed, so that a workbook only has the formats that it uses.
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
