#include "app/window/viewTabs.h"

#include <QHeaderView>
#include <algorithm>

#include "app/errorLog.h"
#include "tree/nodeKeys.h"
#include "views/chartTip.h"
#include "views/folderFigures.h"
#include "views/widgets/lvsort.h"

namespace {

constexpr std::string_view moduleName = "frmMain";
constexpr int millisecondsPerRefresh = 1000; // while a scan runs
constexpr int refreshesOwnShare = 20;        // but it never takes more than one part in so many of the time
constexpr int millisecondsPerIconLook = 60;

} // namespace

ViewTabs::ViewTabs(const Surroundings& surroundings, QObject* parent)
    : QObject(parent), with_(surroundings), lvwF_(FilesList::columns(), &with_.icons),
      lvwT_(GroupLists::fileTypeColumns(), nullptr), lvwU_(GroupLists::ownerColumns(), nullptr),
      filesList_(lvwF_, with_.icons), groupLists_(lvwT_, lvwU_),
      listTabs_{{{lvwF_, 2, &clsSettings::lvwFSortColumn, &clsSettings::setLvwFSortColumn,
                  &clsSettings::lvwFSortOrder, &clsSettings::setLvwFSortOrder},
                 {lvwT_, 3, &clsSettings::lvwTSortColumn, &clsSettings::setLvwTSortColumn,
                  &clsSettings::lvwTSortOrder, &clsSettings::setLvwTSortOrder},
                 {lvwU_, 2, &clsSettings::lvwUSortColumn, &clsSettings::setLvwUSortColumn,
                  &clsSettings::lvwUSortOrder, &clsSettings::setLvwUSortOrder}}} {
    layOut();
    wire();
}

// The pages go before the tab control, which tells of each that another one is active now.
ViewTabs::~ViewTabs() {
    XTab_.disconnect(this);
}

void ViewTabs::layOut() {
    XTab_.setObjectName(QStringLiteral("XTab"));
    tc_.setObjectName(QStringLiteral("tc"));
    fsb_.setObjectName(QStringLiteral("fsb"));
    fsb_.setOrientation(Qt::Vertical);
    lvwF_.setObjectName(QStringLiteral("lvwF"));
    lvwT_.setObjectName(QStringLiteral("lvwT"));
    lvwU_.setObjectName(QStringLiteral("lvwU"));
    chartLayout_.setContentsMargins(0, 0, 0, 0);
    chartLayout_.setSpacing(0);
    chartLayout_.addWidget(&tc_, 1);
    chartLayout_.addWidget(&fsb_);
    tc_.attachScrollBar(&fsb_);
    XTab_.addTab(&chartPage_, tr("Chart"));
    XTab_.addTab(&lvwF_, tr("Files && Folders"));
    XTab_.addTab(&lvwT_, tr("File Types"));
    XTab_.addTab(&lvwU_, tr("Owners"));
    XTab_.setAccessibleName(tr("Views of the selected folder"));
    lvwF_.setAccessibleName(tr("Files and folders"));
    lvwT_.setAccessibleName(tr("File types"));
    lvwU_.setAccessibleName(tr("Owners"));
    for (const ListTab& tab : listTabs_) {
        tab.list.setFrameShape(QFrame::NoFrame); // the tabs' frame is around it
    }
    for (QTimer* timer : {&tmrChart_, &tmrListViewIcons_}) {
        timer->setParent(this);
    }
    tmrChart_.setObjectName(QStringLiteral("tmrChart"));
    tmrChart_.setSingleShot(true);
    tmrChart_.setInterval(millisecondsPerRefresh);
    tmrListViewIcons_.setObjectName(QStringLiteral("tmrListViewIcons"));
    tmrListViewIcons_.setInterval(millisecondsPerIconLook);
}

void ViewTabs::wire() {
    connect(&XTab_, &QTabWidget::currentChanged, this, [this] {
        if (XTab_.currentWidget() == &lvwF_) {
            tmrListViewIcons_.start();
        } else {
            tmrListViewIcons_.stop();
        }
        refreshActiveView();
    });
    connect(&tc_, &FolderChart::barActivated, this, &ViewTabs::barChosen);
    connect(&nextTab_, &QShortcut::activated, this, [this] { turnTab(1); });
    connect(&previousTab_, &QShortcut::activated, this, [this] { turnTab(-1); });
    tc_.setTipProvider(
        [this](double megabytes, int index) { return tc_OnMarkTipToolGetText(megabytes, index); });
    for (ListTab& tab : listTabs_) {
        wireList(tab);
    }
    connect(&lvwF_, &ListView::itemActivated, this, &ViewTabs::rowActivated);
    connect(&tmrChart_, &QTimer::timeout, this, [this] { growWithScan(); });
    connect(&tmrListViewIcons_, &QTimer::timeout, this, [this] { filesList_.getListViewIcons(); });
}

void ViewTabs::wireList(ListTab& tab) {
    constexpr int toggledOrder = -1;
    connect(&tab.list, &ListView::menuRequested, this, &ViewTabs::menuRequested);
    connect(&tab.list, &ListView::copyRequested, this, &ViewTabs::copyRequested);
    connect(&tab.list, &ListView::columnClicked, this, [&tab, &settings = with_.settings](int column) {
        modLvw::lvsort(tab.list, column, toggledOrder, false);
        (settings.*tab.setColumn)(static_cast<std::int16_t>(column));
        (settings.*tab.setOrder)(static_cast<std::int16_t>(tab.list.sort().order));
    });
}

// Behind the last tab comes the first.
void ViewTabs::turnTab(int step) {
    XTab_.setCurrentIndex((XTab_.currentIndex() + step + XTab_.count()) % XTab_.count());
}

const ListView* ViewTabs::activeList() const {
    const int active = XTab_.currentIndex();
    return active < 1 ? nullptr : &listTabs_.at(static_cast<std::size_t>(active) - 1).list;
}

// --- From the rows to the views -------------------------------------------------------------------------

// The selected node's key where it is a folder whose rows can be read; empty otherwise.
std::string ViewTabs::folderKey() const {
    std::string key = with_.tree.selectedKey();
    return with_.database.isOpen() && modNodeKeys::isFolderKey(key) ? key : std::string();
}

void ViewTabs::updateGraph() {
    modGlobal::trapped(moduleName, "updateGraph", [this] {
        const std::string key = folderKey();
        if (key.empty()) {
            return;
        }
        tc_.setEntries(modFigures::chartEntries(with_.database.database(), key),
                       key == chartKey_ ? FolderChart::View::kept : FolderChart::View::largest);
        chartKey_ = key;
    });
}

const FolderChart& ViewTabs::chartAsShown() {
    if (!tc_.isVisible()) {
        chartPage_.resize(XTab_.currentWidget()->size());
        chartLayout_.setGeometry(chartPage_.rect());
    }
    updateGraph();
    return tc_;
}

void ViewTabs::refresh(bool selectFirst) {
    const int active = XTab_.currentIndex();
    if (active == 0) {
        updateGraph();
        return;
    }
    const std::string key = folderKey();
    if (key.empty()) {
        return;
    }
    Database& database = with_.database.database();
    const ListTab& tab = listTabs_.at(static_cast<std::size_t>(active) - 1);
    if (&tab.list == &lvwF_) {
        filesList_.updateFileFolderListview(database, key);
    } else if (&tab.list == &lvwT_) {
        groupLists_.updateFileTypeListview(database, key);
    } else {
        groupLists_.updateUserListview(database, key);
    }
    modLvw::sortAsRemembered(tab.list, (with_.settings.*tab.column)(), (with_.settings.*tab.order)(),
                             tab.defaultColumn, selectFirst);
}

void ViewTabs::forget() {
    filesList_.clear();
    groupLists_.clear();
    tc_.setEntries({});
    chartKey_.clear();
    refreshActiveView();
}

void ViewTabs::followScan(bool running) {
    if (running) {
        tmrChart_.start(millisecondsPerRefresh);
        tc_.setHint(tr("Scanning..."));
    } else {
        tmrChart_.stop();
        tc_.setHint(tr("Nothing to show: this folder is empty or could not be read."));
    }
}

// Who is looking at a row keeps it.
void ViewTabs::growWithScan() {
    QElapsedTimer cost;
    cost.start();
    if (holds_ == 0) {
        refresh(false);
    }
    tmrChart_.start(std::max(millisecondsPerRefresh, static_cast<int>(cost.elapsed()) * refreshesOwnShare));
}

// The text of the chart's tips. The pointer may rest on what stands for several entries: index -1.
QString ViewTabs::tc_OnMarkTipToolGetText(double megabytes, int index) {
    std::string text;
    modGlobal::trapped(moduleName, "tc_OnMarkTipToolGetText", [&] {
        const bool hasLabel = index >= 0 && index < static_cast<int>(tc_.entries().size());
        modChartTip::format(text, megabytes,
                            hasLabel ? with_.tree.selectedKey() +
                                           tc_.entries()[static_cast<std::size_t>(index)].label
                                     : std::string());
    });
    return QString::fromStdString(text);
}

// --- What is remembered ---------------------------------------------------------------------------------

// Widths alone, which can be looked at: what Qt saves of a header is taken as it is, whatever became of it.
void ViewTabs::restore(QSettings& state) {
    constexpr int widestColumn = 10'000;
    for (const ListTab& tab : listTabs_) {
        QHeaderView& bar = *tab.list.header();
        const QStringList widths = state.value(tab.list.objectName()).toStringList();
        for (int i = 0; i < bar.count() && i < widths.size(); ++i) {
            const int width = widths[i].toInt(); // 0 when it is no number, or follows the window
            if (width >= bar.minimumSectionSize() && width <= widestColumn) {
                bar.resizeSection(i, width);
            }
        }
    }
    XTab_.setCurrentIndex(state.value(XTab_.objectName()).toInt());
}

void ViewTabs::save(QSettings& state) const {
    for (const ListTab& tab : listTabs_) {
        const QHeaderView& bar = *tab.list.header();
        QStringList widths;
        for (int i = 0; i < bar.count(); ++i) {
            const bool follows = i == 0 && tab.list.fillsItsRoom();
            widths << QString::number(follows ? 0 : bar.sectionSize(i));
        }
        state.setValue(tab.list.objectName(), widths);
    }
    state.setValue(XTab_.objectName(), XTab_.currentIndex());
}
