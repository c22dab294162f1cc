#include "window/folderHeader.h"

#include <algorithm>
#include <numeric>

#include "base/clsFile.h"
#include "base/errorTrap.h"
#include "base/excludes.h"
#include "base/formatSize.h"
#include "platform/drives.h"
#include "views/folderFigures.h"
#include "widgets/qtText.h"

namespace {

constexpr std::string_view moduleName = "frmMain";
const QString scanningText = QStringLiteral("Scanning …"); // until there are figures

bool isDriveRoot(std::string_view key) {
    return clsFile(key).fullPathNoDrive().empty();
}

void present(CutLabel& label, const QString& text, const QString& tip = {}) {
    label.setText(text);
    label.setToolTip(modQt::tip(tip.isEmpty() ? text : tip));
}

} // namespace

FolderHeader::FolderHeader(const Dependencies& dependencies, QWidget* parent)
    : QWidget(parent), dependencies_(dependencies) {
    setObjectName(QStringLiteral("folderHeader"));
    const int margin = fontMetrics().height() / 4;
    rows_.setContentsMargins(0, 0, 0, margin);
    rows_.setSpacing(0);
    rows_.addWidget(&crumbs_);
    figures_.setContentsMargins(margin, 0, margin, 0);
    figures_.addWidget(&lblFigures_, 1);
    figures_.addWidget(&lblExcludes_);
    figures_.addWidget(&lblDrive_);
    rows_.addLayout(&figures_);
    rows_.addWidget(&lblSavedScan_);
    rows_.addWidget(&lblComparison_);
    lblFigures_.setObjectName(QStringLiteral("lblFigures"));
    lblExcludes_.setObjectName(QStringLiteral("lblExcludes"));
    lblDrive_.setObjectName(QStringLiteral("lblDrive"));
    lblSavedScan_.setObjectName(QStringLiteral("lblSavedScan"));
    lblSavedScan_.setIndent(margin);
    lblComparison_.setObjectName(QStringLiteral("lblComparison"));
    lblComparison_.setIndent(margin);
    for (CutLabel* label : {&lblFigures_, &lblExcludes_, &lblDrive_, &lblSavedScan_, &lblComparison_}) {
        label->setTextFormat(Qt::PlainText);
        label->setCutAt(label == &lblSavedScan_ ? Qt::ElideMiddle : Qt::ElideRight);
    }
    lblSavedScan_.hide();
    lblComparison_.hide();
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(&crumbs_, &Breadcrumbs::folderChosen, this, &FolderHeader::folderChosen);
    showFolder({});
}

void FolderHeader::showFolder(const std::string& key) {
    if (key == key_ && !key.empty()) {
        return;
    }
    key_ = key;
    crumbs_.showFolder(key);
    crumbs_.setVisible(!key.empty());
    present(lblFigures_, key.empty() ? QStringLiteral("Choose a folder on the left, type a path, or drop a "
                                                      "folder here.")
                                     : QString());
    present(lblDrive_, {});
    lblExcludes_.hide();
}

void FolderHeader::pointAt(const std::string& key) {
    if (!key_.empty()) {
        crumbs_.showFolder(key_, key);
    }
}

void FolderHeader::refresh() {
    if (!key_.empty() && dependencies_.database.isOpen()) {
        modGlobal::trapped(moduleName, "refreshHeader", [this] { readFigures(); });
    }
}

// Nobody knows what was excluded from a loaded scan.
void FolderHeader::showExcludes() {
    constexpr std::size_t mostShown = 20;
    const std::vector<std::string>& patterns = dependencies_.settings.excludes()->texts();
    lblExcludes_.setVisible(!patterns.empty() && !dependencies_.selection.isLoaded(key_));
    QString tip = QStringLiteral("Not scanned, and not counted, is what fits:");
    for (std::size_t i = 0; i < std::min(patterns.size(), mostShown); ++i) {
        tip += u'\n' + modQt::shownText(patterns[i]);
    }
    present(lblExcludes_,
            patterns.size() == 1 ? QStringLiteral("1 exclude")
                                 : QStringLiteral("%1 excludes").arg(patterns.size()),
            patterns.size() > mostShown ? tip + QStringLiteral("\n…") : tip);
}

void FolderHeader::readFigures() {
    showExcludes();
    showSavedScan();
    const modFigures::FolderSummary summary = summaryOfKey();
    const bool isCut = isIncomplete(summary);
    const QString text = summary.isRecorded ? QString::fromStdString(modFigures::summaryText(summary)) +
                                                  (isCut ? QStringLiteral(" …") : QString())
                         : isBeingScanned() ? scanningText
                                            : QString();
    present(lblFigures_, text,
            isCut ? text + QStringLiteral("\nNot all of the folder has been scanned.") : text);
    // A loaded scan may be of another time or machine.
    const auto space = summary.isRecorded && !dependencies_.selection.isLoaded(key_)
                           ? platform::driveSpace(clsFile(key_).drive())
                           : std::nullopt;
    if (!space) {
        present(lblDrive_, {});
        return;
    }
    present(lblDrive_, QString::fromStdString(modFigures::shareText(summary.size, *space)),
            modQt::shownPath(clsFile(key_).drive()) + QStringLiteral(": ") +
                QString::fromStdString(modFigures::spaceText(*space)));
}

// While a scan fills an empty table, reading the table would take longer and longer. During another scan,
// what it has recorded of a folder that has no row yet counts, as it does in the chart.
modFigures::FolderSummary FolderHeader::summaryOfKey() const {
    const clsSearch& search = dependencies_.search;
    if (!search.isBulkLoad()) {
        Database& database = dependencies_.database.database();
        modFigures::FolderSummary summary = modFigures::summary(database, key_);
        if (search.processing && summary.isRecorded && !summary.isStamped) {
            const auto entries = modFigures::chartEntries(database, key_, modFigures::ScanState::running);
            summary.size = modLvw::soundSize(
                std::accumulate(entries.begin(), entries.end(), 0.0,
                                [](double sum, const ChartEntry& entry) { return sum + entry.size; }));
        }
        return summary;
    }
    const clsSearch::Progress& progress = search.progress();
    const bool onDisk = dependencies_.database.database().countsSizeOnDisk();
    return {onDisk ? progress.sizeOnDisk : progress.size, progress.files, progress.folders,
            search.rootPath == key_, onDisk};
}

bool FolderHeader::isIncomplete(const modFigures::FolderSummary& summary) const {
    return isBeingScanned() ||
           (isDriveRoot(key_) ? dependencies_.selection.isUnfinished(key_) : !summary.isStamped);
}

bool FolderHeader::isBeingScanned() const {
    return dependencies_.search.processing && key_.starts_with(dependencies_.search.rootPath);
}

void FolderHeader::followScan(bool running) {
    if (running && lblFigures_.text().isEmpty()) {
        present(lblFigures_, scanningText);
    } else if (!running && lblFigures_.text() == scanningText) {
        present(lblFigures_, {});
    }
}

// Whether both have room beside each other must not depend on the figures, which would jump during a scan.
void FolderHeader::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    constexpr int characters = 76; // of the longest figures that are usual
    const bool isNarrow = width() < characters * fontMetrics().averageCharWidth();
    figures_.setDirection(isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    figures_.setSpacing(isNarrow ? 0 : fontMetrics().height());
}

void FolderHeader::setSavedScan(const QString& text) {
    savedScan_ = text;
    showSavedScan();
}

// A refresh may have replaced some of the loaded rows, or all.
void FolderHeader::showSavedScan() {
    const bool isLoaded = savedScan_.isEmpty() || key_.empty() || dependencies_.selection.isLoaded(key_);
    const bool isPartlyLoaded = !isLoaded && dependencies_.selection.holdsLoadedRowsIn(key_);
    present(lblSavedScan_,
            isPartlyLoaded ? QStringLiteral("Partly scanned again. ") + savedScan_ : savedScan_);
    lblSavedScan_.setVisible(!savedScan_.isEmpty() && (isLoaded || isPartlyLoaded));
}

void FolderHeader::setComparison(const QString& text, const QString& tip) {
    present(lblComparison_, text, tip);
    lblComparison_.setVisible(!text.isEmpty());
}
