#include "window/commands/itemProperties.h"

#include <algorithm>
#include <utility>

#include "base/clsFile.h"
#include "base/formatSize.h"
#include "base/numberFormat.h"
#include "db/folderRows.h"
#include "platform/owners.h"
#include "platform/paths.h"
#include "platform/properties.h"
#include "scan/dateTexts.h"
#include "views/folderSummary.h"

namespace {

using Kind = platform::Properties::Kind;

bool isFolder(const std::string& item) {
    return item.ends_with('\\');
}

// "1.5 Kb (1,536 bytes)".
std::string sizeText(double bytes) {
    constexpr double shownInBytes = 1024;
    const std::string text = modLvw::formatSize(bytes);
    return bytes < shownInBytes ? text : text + " (" + modFormat::formatNumber(bytes, "#,##0") + " bytes)";
}

std::string kindText(const platform::Properties& properties) {
    switch (properties.kind) {
    case Kind::folder:
        return "Folder";
    case Kind::link:
        return properties.linkTarget.empty() ? "Link" : "Link to " + properties.linkTarget;
    case Kind::other:
        return "Device, pipe or socket";
    default:
        return "File";
    }
}

// What was recorded of items, whichever of the two sizes is shown elsewhere.
class Sizes {
public:
    void add(Database& database, const std::string& item) {
        const clsFile file(item);
        modFolderRows::Totals totals;
        if (isFolder(item)) {
            const modFolderRows::RecordedFolder recorded = modFolderRows::find(database, item);
            totals = recorded.hasOwnRow ? recorded.totals : modFolderRows::totals(database, item);
        } else {
            const auto row =
                database.OpenRecordset("select size,sizeOnDisk from details where " +
                                       modFolderRows::fileIn(file.parentFolder(), file.lastFolder()));
            if (!row->EndOfFile()) {
                totals.addFile(row->Fields("size").number(), row->Fields("sizeOnDisk").number());
                totals.isKnown = !row->Fields("sizeOnDisk").isNull();
            }
        }
        size_ += modLvw::soundSize(totals.size);
        onDisk_ += modLvw::soundSize(totals.sizeOnDisk);
        isOnDiskKnown_ = isOnDiskKnown_ && totals.isKnown;
    }

    void appendTo(PropertyRows& rows) const {
        rows.emplace_back("Size (scanned)", sizeText(size_));
        if (isOnDiskKnown_) {
            rows.emplace_back("Size on disk (scanned)", sizeText(onDisk_));
        }
    }

private:
    double size_ = 0;
    double onDisk_ = 0;
    bool isOnDiskKnown_ = true;
};

// Without what lies in others of them.
std::vector<std::string> outermost(std::vector<std::string> items) {
    std::sort(items.begin(), items.end());
    std::vector<std::string> result;
    for (std::string& item : items) {
        const bool isInner = !result.empty() && isFolder(result.back()) && item.starts_with(result.back());
        if (!isInner) {
            result.push_back(std::move(item));
        }
    }
    return result;
}

PropertyRows rowsOfOne(Database* database, const std::string& item) {
    PropertyRows rows;
    rows.emplace_back("Name", platform::displayName(clsFile(item).lastFolder()));
    rows.emplace_back("Path", platform::displayPath(item));
    const auto properties = platform::propertiesOf(item);
    if (!properties) {
        rows.emplace_back("Kind", "It could not be read from the disk.");
    } else {
        rows.emplace_back("Kind", kindText(*properties));
    }
    if (isFolder(item) && database != nullptr) {
        const modFigures::FolderSummary summary = modFigures::summary(*database, item);
        if (summary.isRecorded) {
            Sizes sizes;
            sizes.add(*database, item);
            sizes.appendTo(rows);
            rows.emplace_back("Contains", modFigures::contentText(summary));
        } else {
            rows.emplace_back("Size (scanned)", "Not scanned yet");
        }
    }
    if (!properties) {
        return rows;
    }
    if (!isFolder(item)) {
        rows.emplace_back("Size", sizeText(static_cast<double>(properties->size)));
        rows.emplace_back("Size on disk", sizeText(static_cast<double>(properties->sizeOnDisk)));
    }
    DateTexts dates;
    rows.emplace_back("Modified", dates.of(properties->modified));
    rows.emplace_back("Accessed", dates.of(properties->accessed));
    rows.emplace_back("Owner", platform::displayName(platform::OwnerNames().ownerOf(item, *properties)));
    if (!properties->mode.empty()) {
        rows.emplace_back(platform::modeName, properties->mode);
    }
    return rows;
}

} // namespace

PropertyRows modProperties::rows(const WorkingDatabase& database, const std::vector<std::string>& items) {
    Database* const open = database.isOpen() ? &database.database() : nullptr;
    if (items.size() == 1) {
        return rowsOfOne(open, items.front());
    }
    const auto folders = std::count_if(items.begin(), items.end(), isFolder);
    PropertyRows rows{{"Items", std::to_string(items.size())},
                      {"Folders", std::to_string(folders)},
                      {"Files", std::to_string(static_cast<std::ptrdiff_t>(items.size()) - folders)}};
    if (open == nullptr) {
        return rows;
    }
    Sizes sizes;
    modFigures::FolderSummary content;
    for (const std::string& item : outermost(items)) {
        sizes.add(*open, item);
        if (isFolder(item)) {
            const modFigures::FolderSummary each = modFigures::summary(*open, item);
            content.files += each.files;
            content.folders += each.folders;
            content.hasUnkeptFiles = content.hasUnkeptFiles || each.hasUnkeptFiles;
        }
    }
    if (folders > 0) {
        rows.emplace_back("In the folders", modFigures::contentText(content));
    }
    sizes.appendTo(rows);
    return rows;
}
