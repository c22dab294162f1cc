#include "console/foundTable.h"

#include "base/formatSize.h"
#include "base/numberFormat.h"
#include "platform/paths.h"

namespace {

constexpr std::string_view bytesHeader = "Size (Bytes)";
constexpr std::string_view sizeHeader = "Size";

std::string cellOf(const modFind::Item& item, std::string_view header) {
    std::string text;
    if (header == "Name") {
        text = platform::displayName(item.nameAlone());
    } else if (header == "Folder") {
        platform::appendDisplayPath(text, item.folder);
    } else if (header == bytesHeader) {
        modFormat::appendNumber(text, item.size);
    } else if (header == sizeHeader) {
        modLvw::appendSize(text, item.size);
    } else {
        text = header == "Owner" ? item.owner : header == "Modified" ? item.modified : item.accessed;
    }
    return text;
}

} // namespace

FoundTable::FoundTable(std::span<const modFind::Item> items, bool withBytes)
    : items_(items), columns_{{"Name", Kind::text},      {"Folder", Kind::text}, {bytesHeader, Kind::bytes},
                              {sizeHeader, Kind::bytes}, {"Owner", Kind::text},  {"Modified", Kind::date},
                              {"Accessed", Kind::date}} {
    if (!withBytes) {
        std::erase_if(columns_, [](const Column& column) { return column.header == bytesHeader; });
    }
}

std::string_view FoundTable::text(std::size_t row, std::size_t column) const {
    text_ = cellOf(items_[row], columns_[column].header);
    return text_;
}

std::optional<double> FoundTable::number(std::size_t row, std::size_t column) const {
    return columns_[column].kind == Kind::bytes ? std::optional(items_[row].size) : std::nullopt;
}
