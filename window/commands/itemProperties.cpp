#include "window/commands/itemProperties.h"

#include "base/clsFile.h"
#include "base/formatSize.h"
#include "base/numberFormat.h"
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
        rows.emplace_back(summary.onDisk ? "Size on disk (scanned)" : "Size (scanned)",
                          summary.isRecorded ? sizeText(summary.size) : "Not scanned yet");
        if (summary.isRecorded) {
            rows.emplace_back("Contains", modFigures::contentText(summary));
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
    double size = 0;
    std::size_t folders = 0;
    for (const std::string& item : items) {
        folders += isFolder(item) ? 1 : 0;
        if (open != nullptr) {
            size +=
                isFolder(item) ? modFigures::summary(*open, item).size : modFigures::fileSize(*open, item);
        }
    }
    return {{"Items", std::to_string(items.size())},
            {"Folders", std::to_string(folders)},
            {"Files", std::to_string(items.size() - folders)},
            {"Size (scanned)", sizeText(size)}};
}
