#include "window/commands/itemCommands.h"

#include <QFile>
#include <QStandardPaths>
#include <algorithm>
#include <numeric>

#include "base/clsFile.h"
#include "base/errorTrap.h"
#include "base/excludes.h"
#include "base/formatSize.h"
#include "db/folderRows.h"
#include "platform/answering.h"
#include "platform/fileManager.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/trash.h"
#include "views/folderSummary.h"
#include "widgets/qtText.h"
#include "window/commands/itemProperties.h"

namespace {

constexpr std::string_view moduleName = "frmMain";
constexpr std::size_t mostFilesOpened = 10;

bool isFolder(const std::string& item) {
    return item.ends_with('\\');
}

// The root of a drive, which is no entry of any folder.
bool isRoot(const std::string& item) {
    return isFolder(item) && clsFile(item).fullPathNoDrive().empty();
}

std::string shown(const std::string& item) {
    return modQt::shownFolder(item).toStdString();
}

// Why it failed; empty if it is in the trash now.
QString movedToTrash(const std::string& item) {
    const std::string native = platform::toNative(item);
    const QString name = QFile::decodeName(native.c_str());
    if (QFile::encodeName(name).toStdString() != native) {
        return QStringLiteral("Its name is not text that the trash can keep.");
    }
    try { // without a folder to move it to, Qt would move it to the working directory
        const QString userData = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
        platform::provideTrash(platform::toInternal(QFile::encodeName(userData).toStdString()));
    } catch (const RuntimeError& error) {
        return QString::fromUtf8(error.what());
    }
    QFile file(name);
    if (file.moveToTrash()) {
        return {};
    }
    const QString reason = file.errorString();
    return reason.isEmpty() ? QStringLiteral("The system gives no reason.") : reason;
}

} // namespace

bool ItemCommands::isLoaded(const std::string& item) const {
    return dependencies_.database.isOpen() && dependencies_.selection.holdsLoadedRows() &&
           dependencies_.selection.isLoaded(isFolder(item) ? item
                                                           : std::string(clsFile(item).parentFolder()));
}

// What was loaded may also be on this computer. A volume that may never answer is asked only by a scan.
bool ItemCommands::isHereNow(const std::string& folder) const {
    return !isLoaded(folder) || platform::mayNotAnswer(folder) || platform::folderExists(folder);
}

ItemCommands::Offer ItemCommands::offerFor(const Items& items) const {
    Offer offer;
    if (items.empty()) {
        return offer;
    }
    const bool isHere =
        std::none_of(items.begin(), items.end(), [&](const auto& item) { return isLoaded(item); });
    const bool isFree = isHere && !dependencies_.search.processing && dependencies_.database.isOpen();
    const bool areFiles = std::none_of(items.begin(), items.end(), isFolder);
    offer.open = items.size() == 1 || (areFiles && items.size() <= mostFilesOpened);
    offer.show = isHere && items.size() == 1;
    offer.copyPath = true;
    offer.properties = isHere;
    offer.scanAgain = !dependencies_.search.processing && dependencies_.database.isOpen() &&
                      std::any_of(items.begin(), items.end(),
                                  [&](const auto& item) { return isFolder(item) && isHereNow(item); });
    offer.trash =
        isFree && !dependencies_.settings.readOnly() && std::none_of(items.begin(), items.end(), isRoot);
    offer.exclude = offer.trash;
    return offer;
}

void ItemCommands::tellGone(const Items& items) const {
    dependencies_.userInterface.status(StatusPanel::folder,
                                       items.size() == 1 ? shown(items.front()) + " is no longer there."
                                                         : "Some of these are no longer there.");
}

void ItemCommands::open(const Items& items) {
    modGlobal::trapped(moduleName, "open", [&] {
        if (!offerFor(items).open) {
            return;
        }
        for (const std::string& item : items) {
            if (isFolder(item)) {
                dependencies_.selection.showFolder(item);
            } else {
                dependencies_.userInterface.openFile(item);
            }
        }
    });
}

void ItemCommands::showInFileManager(const Items& items) {
    modGlobal::trapped(moduleName, "showInFileManager", [&] {
        if (offerFor(items).show && !platform::showInFileManager(items.front())) {
            dependencies_.userInterface.message("There is no file manager that could show " +
                                                shown(items.front()) + ".");
        }
    });
}

void ItemCommands::copyPath(const Items& items) {
    modGlobal::trapped(moduleName, "copyPath", [&] {
        if (!offerFor(items).copyPath) {
            return;
        }
        std::string text;
        for (const std::string& item : items) {
            const std::string native = platform::toNative(item);
            text.append(text.empty() ? "" : "\n")
                .append(native.empty() ? platform::displayPath(item) : native);
        }
        dependencies_.clipboard.clear();
        dependencies_.clipboard.setText(text);
        dependencies_.userInterface.status(
            StatusPanel::folder,
            items.size() == 1 ? "Copied: " + text : std::to_string(items.size()) + " paths copied.");
    });
}

void ItemCommands::showProperties(const Items& items) {
    modGlobal::trapped(moduleName, "showProperties", [&] {
        if (offerFor(items).properties) {
            const BusyPointer busy(dependencies_.userInterface);
            dependencies_.dialogs.properties(modProperties::rows(dependencies_.database, items));
        }
    });
}

void ItemCommands::scanAgain(const Items& items) {
    modGlobal::trapped(moduleName, "scanAgain", [&] {
        if (!offerFor(items).scanAgain) {
            return;
        }
        for (const std::string& item : items) {
            if (isFolder(item) && !dependencies_.selection.scanFolderAgain(item)) {
                return;
            }
        }
    });
}

double ItemCommands::sizeOf(const std::string& item) const {
    Database& database = dependencies_.database.database();
    return isFolder(item) ? modFigures::summary(database, item).size : modFigures::fileSize(database, item);
}

std::string ItemCommands::question(const Items& items) const {
    Database& database = dependencies_.database.database();
    if (items.size() == 1) {
        const std::string& item = items.front();
        const std::string amount = isFolder(item)
                                       ? modFigures::summaryText(modFigures::summary(database, item))
                                       : modLvw::formatSize(sizeOf(item));
        return "Move " + shown(item) + " (" + amount + ") to the trash?";
    }
    constexpr std::size_t mostNames = 10;
    const double total = std::accumulate(items.begin(), items.end(), 0.0,
                                         [&](double sum, const auto& item) { return sum + sizeOf(item); });
    std::string text = "Move these " + std::to_string(items.size()) + " items (" + modLvw::formatSize(total) +
                       ") to the trash?\n";
    for (std::size_t i = 0; i < std::min(items.size(), mostNames); ++i) {
        text += "\n" + shown(items[i]);
    }
    return text + (items.size() > mostNames ? "\n…" : "");
}

void ItemCommands::moveToTrash(const Items& items) {
    modGlobal::trapped(moduleName, "moveToTrash", [&] {
        if (!offerFor(items).trash ||
            !dependencies_.dialogs.confirm(QString::fromStdString(question(items)), {})) {
            return;
        }
        Items moved;
        std::string failures;
        {
            const BusyPointer busy(dependencies_.userInterface);
            for (const std::string& item : items) {
                const QString failure = movedToTrash(item);
                if (failure.isEmpty()) {
                    moved.push_back(item);
                } else {
                    failures.append("\n").append(shown(item)).append(": ").append(failure.toStdString());
                }
            }
            dependencies_.selection.entriesRemoved(moved);
        }
        if (!moved.empty()) {
            dependencies_.userInterface.status(
                StatusPanel::folder,
                "Moved to the trash: " +
                    (moved.size() == 1 ? shown(moved.front()) : std::to_string(moved.size()) + " items"));
        }
        if (!failures.empty()) {
            dependencies_.userInterface.message("Not moved to the trash:" + failures);
        }
    });
}

void ItemCommands::exclude(const Items& items) {
    modGlobal::trapped(moduleName, "exclude", [&] {
        if (!offerFor(items).exclude) {
            return;
        }
        Items excluded;
        std::string failures;
        {
            const BusyPointer busy(dependencies_.userInterface);
            Excludes excludes = *dependencies_.settings.excludes();
            for (const std::string& item : items) {
                const std::string failure = keepExcluded(item, excludes);
                if (failure.empty()) {
                    excluded.push_back(item);
                } else {
                    failures.append("\n").append(shown(item)).append(": ").append(failure);
                }
            }
            dependencies_.settings.setExcludes(std::move(excludes));
            dependencies_.selection.entriesRemoved(excluded);
        }
        if (!excluded.empty()) {
            dependencies_.userInterface.status(
                StatusPanel::folder, "Excluded from scans: " +
                                         (excluded.size() == 1 ? shown(excluded.front())
                                                               : std::to_string(excluded.size()) + " items"));
        }
        if (!failures.empty()) {
            dependencies_.userInterface.message("Not excluded:" + failures);
        }
    });
}

// Why it could not be stored; empty if it was.
std::string ItemCommands::keepExcluded(const std::string& item, Excludes& excludes) const {
    try {
        const std::string pattern = modExcludes::patternOf(item);
        modExcludes::save(dependencies_.store, pattern);
        excludes.add(pattern);
        return {};
    } catch (const RuntimeError& error) {
        return error.what();
    }
}
