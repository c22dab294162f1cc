#include "views/folderSummary.h"

#include <algorithm>

#include "base/clsFile.h"
#include "base/formatSize.h"
#include "base/numberFormat.h"
#include "db/folderRows.h"

namespace {

bool isRoot(std::string_view key) {
    return clsFile(key).fullPathNoDrive().empty();
}

} // namespace

// What was recorded deeper down does not count as the folder's until its subfolders have rows.
modFigures::FolderSummary modFigures::summary(Database& database, std::string_view key) {
    const modFolderRows::RecordedFolder recorded = modFolderRows::find(database, key);
    const modFolderRows::ItemCounts counts =
        recorded.hasContent ? modFolderRows::count(database, key) : modFolderRows::ItemCounts();
    const double size = modFolderRows::countedSize(database, key, recorded);
    const bool asksTotals = counts.files == 0 && recorded.hasContent && !recorded.hasOwnRow;
    const modFolderRows::Totals totals = asksTotals ? modFolderRows::totals(database, key) : recorded.totals;
    const std::int64_t files = counts.files > 0 ? counts.files : totals.files;
    return {modLvw::soundSize(size),
            files,
            counts.folders,
            recorded.isThere(),
            database.countsSizeOnDisk(),
            !recorded.stamp.empty(),
            files == 0 && totals.size > 0};
}

std::string modFigures::summaryText(const FolderSummary& summary) {
    return modLvw::formatSize(summary.size) + (summary.onDisk ? " on disk, " : ", ") + contentText(summary);
}

std::string modFigures::contentText(const FolderSummary& summary) {
    return (summary.hasUnkeptFiles
                ? "files not kept"
                : modFormat::countedText(static_cast<double>(summary.files), "file", "files")) +
           ", " + modFormat::countedText(static_cast<double>(summary.folders), "folder", "folders");
}

double modFigures::fileSize(Database& database, std::string_view path) {
    const clsFile file(path);
    const auto rows = database.OpenRecordset("select " + database.selectedSize() + " from details where " +
                                             modFolderRows::fileIn(file.parentFolder(), file.lastFolder()));
    return rows->EndOfFile() ? 0 : modLvw::soundSize(rows->Fields(0).number());
}

std::optional<double> modFigures::scannedSize(Database& database, std::string_view key) {
    const auto own = database.OpenRecordset("select " + database.selectedSize() + " from details where " +
                                            modFolderRows::itself(key));
    if (!own->EndOfFile()) {
        return modLvw::soundSize(own->Fields(0).number());
    }
    // A drive's root has no row; below one that was not scanned itself, there are only deeper rows.
    const auto direct =
        database.OpenRecordset("select sum(" + database.sizeColumn() + ") as total from details where " +
                               modFolderRows::directlyIn(key));
    const bool isScanned = isRoot(key) && !direct->EndOfFile() && !direct->Fields(0).isNull();
    return isScanned ? std::optional(modLvw::soundSize(direct->Fields(0).number())) : std::nullopt;
}

std::string modFigures::percentText(double share) {
    constexpr double least = 0.1;
    const double percent = share * 100;
    std::string text = percent > 0 && percent < least ? "<" : "";
    modFormat::appendFormattedNumber(text, percent > 0 ? std::max(percent, least) : percent, "#,##0.0");
    return text + "%";
}

std::string modFigures::shareText(double size, const platform::DriveSpace& space) {
    std::string text;
    if (size >= 0 && space.used > 0 && size <= space.used) {
        text += percentText(size / space.used) + " of used space, ";
    }
    return text + modLvw::formatSize(space.free) + " free";
}

std::string modFigures::spaceText(const platform::DriveSpace& space) {
    return modLvw::formatSize(space.used) + " used, " + modLvw::formatSize(space.free) + " free of " +
           modLvw::formatSize(space.total);
}
