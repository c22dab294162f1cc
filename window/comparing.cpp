#include "window/comparing.h"

#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "base/dateFormat.h"
#include "base/errorTrap.h"
#include "base/formatSize.h"
#include "export/databaseFile.h"
#include "platform/locale.h"
#include "platform/paths.h"
#include "scan/savedScan.h"
#include "tree/nodeKeys.h"
#include "views/comparison.h"
#include "widgets/qtText.h"
#include "window/commands/databaseCommands.h"
#include "window/menu/menus.h"

namespace {

constexpr std::string_view moduleName = "frmMain";
constexpr std::size_t mostOffered = 1000; // folders of a saved scan
constexpr qint64 quick = 500;             // ms: what takes no longer is compared again without being asked

// The widest scanned folder at or above one; empty if there is none, or nothing tells.
std::string scannedFolder(const std::vector<modScans::Scan>& scans, Database& database,
                          std::string_view folder) {
    std::vector<std::string> scanned;
    scanned.reserve(scans.size());
    for (const modScans::Scan& scan : scans) {
        scanned.push_back(scan.path);
    }
    if (scanned.empty()) {
        scanned = modSavedScan::scannedFolders(database, mostOffered);
    }
    std::string widest;
    for (const std::string& each : scanned) {
        if (!each.empty() && modScans::isAtOrBelow(folder, each) &&
            (widest.empty() || each.size() < widest.size())) {
            widest = each;
        }
    }
    return widest;
}

QString sizeText(double bytes) {
    return QString::fromStdString(modLvw::formatSize(bytes));
}

QString dateText(platform::Seconds moment) {
    return QString::fromStdString(
        modFormat::formatDate(platform::localTime(moment), modFormat::storedDatePicture));
}

} // namespace

Comparing::Comparing(Dependencies dependencies)
    : dependencies_(std::move(dependencies)),
      choice_(dependencies_.dialogs, dependencies_.userInterface, dependencies_.database) {}

void Comparing::start() {
    connect(&dependencies_.open, &OpenComparison::changed, this, &Comparing::follow);
    connect(&dependencies_.selection, &FolderSelection::figuresChanged, this, &Comparing::followRows);
    connect(&dependencies_.selection, &FolderSelection::folderShown, this, &Comparing::showHeader);
    connect(&dependencies_.selection, &FolderSelection::scanned, this, &Comparing::scanned);
    connect(&dependencies_.selection, &FolderSelection::rowsLoaded, this, &Comparing::rowsReplaced);
    connect(&dependencies_.views, &ViewTabs::grown, this, &Comparing::followRows);
    follow();
}

std::string Comparing::selectedFolder() const {
    std::string key = dependencies_.tree.selectedKey();
    return modNodeKeys::isFolderKey(key) ? key : std::string();
}

// --- Comparing --------------------------------------------------------------------------------------------

void Comparing::chooseAndCompare() {
    if (!dependencies_.mayRun()) {
        return;
    }
    dependencies_.runExclusively([this] {
        if (const std::string file = choice_.toRead(DatabaseCommands::databaseFilter); !file.empty()) {
            open(file);
        }
    });
}

void Comparing::compareWith(const std::string& file) {
    if (dependencies_.mayRun()) {
        dependencies_.runExclusively([&] { open(file); });
    }
}

void Comparing::compareAgain() {
    if (dependencies_.open.isOpen() && dependencies_.mayRun()) {
        dependencies_.runExclusively([this] { runAgain(); });
    }
}

void Comparing::close() {
    dependencies_.open.close();
}

void Comparing::showChart(bool shown) {
    dependencies_.views.setChartOfChanges(shown && dependencies_.open.isOpen());
    modMenus::setMark(dependencies_.menu, "ViewChanges", dependencies_.views.showsChartOfChanges());
}

void Comparing::open(const std::string& file) {
    choice_.forgetLastOutcome();
    if (selectedFolder().empty() || !dependencies_.database.isOpen()) {
        dependencies_.userInterface.message(
            "Choose a folder first: what is shown of it is compared with the saved scan.");
        return;
    }
    const BusyPointer busy(dependencies_.userInterface);
    OpenComparison::Comparison comparison;
    comparison.file = platform::toInternal(file);
    {
        const WindowInterface::Cancellable work(
            dependencies_.userInterface, QStringLiteral("Reading %1").arg(modQt::shownPath(comparison.file)),
            dependencies_.window);
        comparison.earlier = std::make_unique<EarlierScan>(
            dependencies_.database, file, dependencies_.userInterface, [&] { return !work.isCancelled(); });
        if (!comparison.earlier->isComplete() || work.isCancelled()) {
            tellCancelled();
            return;
        }
    }
    modChanges::makeTable(comparison.earlier->database());
    std::optional<modChanges::Request> request = requestFor(*comparison.earlier, file);
    if (!request) {
        return;
    }
    if (std::optional<modChanges::Result> result = compare(*comparison.earlier, *request)) {
        comparison.request = std::move(*request);
        comparison.result = std::move(*result);
        dependencies_.open.set(std::move(comparison));
        dependencies_.views.showChanges();
    }
}

// Of the compared folder or, if that is no longer there, of the selected one.
void Comparing::runAgain() {
    const OpenComparison::Comparison& before = dependencies_.open.comparison();
    EarlierScan& earlier = *before.earlier;
    std::optional<modChanges::Request> request = before.request;
    if (!modFolderRows::find(dependencies_.database.database(), request->folder).isThere()) {
        request = requestFor(earlier, platform::displayPath(before.file));
    }
    if (!request) {
        return;
    }
    request->number = before.request.number + 1;
    const BusyPointer busy(dependencies_.userInterface);
    if (std::optional<modChanges::Result> result = compare(earlier, *request)) {
        dependencies_.open.replaceResult(std::move(*request), std::move(*result));
        dependencies_.views.refreshActiveView();
    } else {
        modChanges::forget(earlier.database(), request->number);
    }
}

// The rows of both have to be of the same kind below it: what one of the scans has not looked at is not new
// or gone. Of the two folders with which they began, the deeper one holds what both have.
std::optional<modChanges::Request> Comparing::requestFor(EarlierScan& earlier, const std::string& file) {
    std::string folder = selectedFolder();
    if (folder.empty()) {
        dependencies_.userInterface.message("Choose a folder first.");
        return {};
    }
    Database& rows = dependencies_.database.database();
    const std::string now = scannedFolder(modScans::all(rows), rows, folder);
    const std::string before = scannedFolder(earlier.scans(), earlier.database(), folder);
    if (!before.empty()) {
        folder = now.empty() ? folder : now.size() > before.size() ? now : before;
        return modChanges::Request{folder, folder};
    }
    std::string other = askForFolder(earlier, folder, file);
    return other.empty() ? std::nullopt : std::optional(modChanges::Request{folder, std::move(other)});
}

std::string Comparing::askForFolder(EarlierScan& earlier, const std::string& folder,
                                    const std::string& file) {
    FolderBeforeRequest request{modQt::shownFolder(folder), modQt::shownText(file), {}};
    for (const std::string& each : modSavedScan::scannedFolders(earlier.database(), mostOffered)) {
        request.folders << modQt::shownFolder(each);
    }
    for (;;) {
        const QString typed = dependencies_.dialogs.folderBefore(request);
        if (typed.isEmpty()) {
            return {};
        }
        std::string found = modSavedScan::findFolder(earlier.database(), typed.toStdString());
        if (!found.empty()) {
            return found;
        }
        dependencies_.userInterface.message("The saved scan has no folder " + typed.toStdString() + ".");
    }
}

std::optional<modChanges::Result> Comparing::compare(EarlierScan& earlier,
                                                     const modChanges::Request& request) {
    const WindowInterface::Cancellable work(
        dependencies_.userInterface, QStringLiteral("Comparing %1").arg(modQt::shownFolder(request.folder)),
        dependencies_.window);
    QElapsedTimer clock;
    clock.start();
    const std::int64_t rows = rowsVersion();
    modChanges::Result result =
        modChanges::compare({dependencies_.database.database(), earlier.database(),
                             dependencies_.userInterface, [&] { return !work.isCancelled(); }},
                            request);
    if (!result.complete || work.isCancelled()) {
        tellCancelled();
        return {};
    }
    rows_ = rows;
    cost_ = clock.elapsed();
    return result;
}

void Comparing::tellCancelled() {
    dependencies_.userInterface.status(StatusPanel::folder, "The comparison was cancelled.");
}

// --- Whether it is up to date -----------------------------------------------------------------------------

std::int64_t Comparing::rowsVersion() const {
    return dependencies_.database.isOpen() ? dependencies_.database.database().changes() : -1;
}

void Comparing::overlookChanges() {
    rows_ = rowsVersion();
}

void Comparing::rowsReplaced() {
    dependencies_.open.setOutdated();
}

void Comparing::scanned(const modProcessFiles::ScanResult& result) {
    if (!dependencies_.open.isOpen()) {
        return;
    }
    const std::string& folder = dependencies_.open.comparison().request.folder;
    const std::string& start = dependencies_.search.rootPath;
    const bool isElsewhere = !modScans::isAtOrBelow(start, folder) && !modScans::isAtOrBelow(folder, start);
    if (result.stored && isElsewhere && !dependencies_.open.isOutdated()) {
        overlookChanges();
    } else {
        followRows();
    }
}

// While a scan runs, only what it has to do with the comparison counts.
void Comparing::followRows() {
    if (!dependencies_.open.isOpen()) {
        return;
    }
    const std::string& folder = dependencies_.open.comparison().request.folder;
    const std::string& start = dependencies_.search.rootPath;
    if (!dependencies_.open.isOutdated() && rowsVersion() != rows_ &&
        (!dependencies_.search.processing || modScans::isAtOrBelow(start, folder) ||
         modScans::isAtOrBelow(folder, start))) {
        dependencies_.open.setOutdated();
    }
    if (dependencies_.database.isOpen() &&
        std::exchange(onDisk_, dependencies_.database.database().countsSizeOnDisk()) !=
            dependencies_.database.database().countsSizeOnDisk()) {
        showRemark();
    }
    showHeader();
    if (isAgainQuick() && !std::exchange(isAgainDue_, true)) {
        QTimer::singleShot(0, this, [this] {
            isAgainDue_ = false;
            if (dependencies_.open.isOutdated()) {
                compareAgain();
            }
        });
    }
}

// Whether it is to be compared again without being asked: what takes long, or was loaded without the compared
// folder, is not.
bool Comparing::isAgainQuick() const {
    return modGlobal::trapped(moduleName, "followRows", [this] {
        return dependencies_.open.isOutdated() && cost_ <= quick && !dependencies_.search.processing &&
               !dependencies_.search.isBulkLoad() && dependencies_.database.isOpen() &&
               modFolderRows::find(dependencies_.database.database(),
                                   dependencies_.open.comparison().request.folder)
                   .isThere();
    });
}

// --- What is said -----------------------------------------------------------------------------------------

void Comparing::follow() {
    for (const std::string_view item : {"CloseComparison", "ViewChanges"}) {
        modMenus::setItemEnabled(dependencies_.menu, item, dependencies_.open.isOpen());
    }
    showChart(dependencies_.views.showsChartOfChanges());
    showHeader();
    showRemark();
    showOutdated();
}

void Comparing::showHeader() {
    if (!dependencies_.open.isOpen() || !dependencies_.database.isOpen()) {
        dependencies_.header.setComparison({}, {});
        return;
    }
    modGlobal::trapped(moduleName, "showComparison", [this] {
        const std::string& file = dependencies_.open.comparison().file;
        dependencies_.header.setComparison(headerText(modQt::shownName(file.substr(file.rfind('\\') + 1))),
                                           headerText(modQt::shownPath(file)));
    });
}

QString Comparing::headerText(const QString& fileShown) const {
    const OpenComparison& open = dependencies_.open;
    const OpenComparison::Comparison& comparison = open.comparison();
    const std::string folder = selectedFolder();
    const bool covers = open.covers(folder);
    const std::optional<modChanges::Change> change = covers ? open.itself(folder) : std::nullopt;
    const auto sizeOf = [&](const std::optional<double>& size) {
        return !change ? QString() : size ? sizeText(*size) + u' ' : QStringLiteral("not there ");
    };
    QString text = open.isOutdated() ? QStringLiteral("Out of date. ") : QString();
    text += !covers
                ? QStringLiteral("Compared is only %1.").arg(modQt::shownFolder(comparison.request.folder))
            : change ? QStringLiteral("Change: %1.")
                           .arg(QString::fromStdString(modLvw::formatChange(change->change())))
                     : QStringLiteral("Nothing has changed.");
    text += QStringLiteral(" Before: %1(%2, %3). Now: %4(%5).")
                .arg(sizeOf(change ? change->before : std::nullopt), fileShown,
                     dateText(modExport::savedScanMoment(
                         platform::displayPath(comparison.file),
                         modScans::within(comparison.earlier->scans(), comparison.request.folderBefore))),
                     sizeOf(change ? change->now : std::nullopt), nowText());
    return text;
}

// When what is shown was scanned.
QString Comparing::nowText() const {
    const auto moment = modScans::lastFinished(modScans::within(
        modScans::all(dependencies_.database.database()), dependencies_.open.comparison().request.folder));
    return moment ? QStringLiteral("scanned ") + dateText(*moment) : QStringLiteral("as shown");
}

void Comparing::showRemark() {
    const OpenComparison& open = dependencies_.open;
    dependencies_.bar.dismiss(MessageBar::Topic::comparison);
    if (!open.isOpen() || open.isOutdated()) {
        return;
    }
    modGlobal::trapped(moduleName, "showComparison", [&] {
        const OpenComparison::Comparison& comparison = open.comparison();
        Database& rows = dependencies_.database.database();
        onDisk_ = rows.countsSizeOnDisk();
        std::string remark =
            modChanges::remark(modScans::within(comparison.earlier->scans(), comparison.request.folderBefore),
                               modScans::within(modScans::all(rows), comparison.request.folder),
                               comparison.result.oneLacksFiles);
        if (rows.countsSizeOnDisk()) {
            remark.append(remark.empty() ? "" : " ").append(modChanges::sizesRemark);
        }
        if (!remark.empty()) {
            dependencies_.bar.showMessage(MessageBar::Topic::comparison,
                                          {QString::fromStdString(remark), {}});
        }
    });
}

void Comparing::showOutdated() {
    if (!dependencies_.open.isOutdated()) {
        dependencies_.bar.dismiss(MessageBar::Topic::outdatedComparison);
        return;
    }
    dependencies_.bar.showMessage(MessageBar::Topic::outdatedComparison,
                                  {QStringLiteral("The comparison is older than what is shown."),
                                   {{QStringLiteral("Compare &Again"), [this] { compareAgain(); }},
                                    {QStringLiteral("C&lose Comparison"), [this] { close(); }}}});
}
