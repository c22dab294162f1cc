#include "export/changesReport.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/errorTrap.h"
#include "base/formatSize.h"
#include "base/numberFormat.h"
#include "export/listFile.h"
#include "export/listTable.h"
#include "platform/paths.h"
#include "views/changes.h"

namespace modExport {

namespace {

using modChanges::Change;
using modChanges::Reader;

constexpr std::string_view changeHeader = "Change";

std::optional<double> bytesOf(const Change& change, std::string_view header) {
    return header == "Before (Bytes)" ? change.before
           : header == "Now (Bytes)"  ? change.now
                                      : std::optional(change.change());
}

std::string cellOf(const Change& change, ListTable::Column column) {
    const std::string_view header = column.header;
    std::string text;
    if (header == "Path") {
        platform::appendDisplayPath(text, change.path());
    } else if (header == "Type") {
        text = change.isFolder ? "Folder" : "File";
    } else if (header == "State") {
        text = modChanges::stateText(change.state);
    } else if (header == changeHeader) {
        text = modLvw::formatChange(change.change());
    } else if (const auto bytes = bytesOf(change, header); column.kind == ListTable::Kind::bytes) {
        if (bytes) {
            modFormat::appendNumber(text, *bytes);
        }
    } else {
        text = header == "Owner" ? change.owner : change.modified;
    }
    return text;
}

// Row after row of the table.
class ChangesList final : public ListTable {
public:
    ChangesList(Database& database, bool foldersOnly, ReportFormat format)
        : reader_(database, foldersOnly ? "isFolder=1" : "",
                  format == ReportFormat::xml ? Reader::Order::byPath : Reader::Order::largestFirst),
          count_(static_cast<std::size_t>(reader_.count())), columns_{{"Path", Kind::text},
                                                                      {"Type", Kind::text},
                                                                      {"State", Kind::text},
                                                                      {"Before (Bytes)", Kind::bytes},
                                                                      {"Now (Bytes)", Kind::bytes},
                                                                      {"Change (Bytes)", Kind::bytes},
                                                                      {changeHeader, Kind::bytes},
                                                                      {"Owner", Kind::text},
                                                                      {"Modified", Kind::date}} {
        if (format == ReportFormat::excel) { // which shows its numbers so
            std::erase_if(columns_, [](const Column& column) { return column.header == changeHeader; });
        }
    }

    [[nodiscard]] std::span<const Column> columns() const override { return columns_; }
    [[nodiscard]] std::size_t rowCount() const override { return count_; }
    [[nodiscard]] std::string_view text(std::size_t row, std::size_t column) const override {
        text_ = cellOf(at(row), columns_[column]);
        return text_;
    }
    [[nodiscard]] std::optional<double> number(std::size_t row, std::size_t column) const override {
        const Column& wanted = columns_[column];
        return wanted.kind == Kind::bytes ? bytesOf(at(row), wanted.header) : std::nullopt;
    }
    [[nodiscard]] bool hasTotals() const override { return false; } // folders hold what files do
    [[nodiscard]] bool mayBeEmpty() const override { return true; } // nothing has changed

private:
    const Change& at(std::size_t row) const {
        for (; row_ < row; ++row_) {
            reader_.next();
        }
        return reader_.row();
    }

    mutable Reader reader_;
    mutable std::size_t row_ = 0;
    mutable std::string text_; // the last one requested
    std::size_t count_;
    std::vector<Column> columns_;
};

} // namespace

void exportChanges(ReportFormat format, Database& database, bool foldersOnly, std::string_view caption,
                   clsUserInterface& userInterface, std::string_view fileName) {
    modGlobal::trapped("modExport", "exportChanges", [&] {
        const ChangesList list(database, foldersOnly, format);
        exportListFile(format, list, caption, userInterface, fileName, true);
    });
}

} // namespace modExport
