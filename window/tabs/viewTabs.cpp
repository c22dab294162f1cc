#include "window/tabs/viewTabs.h"

#include <QHeaderView>
#include <QTabBar>
#include <algorithm>
#include <utility>

#include "base/errorTrap.h"
#include "tree/nodeKeys.h"
#include "views/chartTip.h"
#include "views/folderFigures.h"
#include "widgets/helpTopic.h"
#include "widgets/listPlace.h"
#include "widgets/lvsort.h"
#include "widgets/qtText.h"

namespace {

constexpr std::string_view moduleName = "frmMain";
constexpr int millisecondsPerRefresh = 1000; // during a scan
constexpr int refreshesOwnShare = 20;        // but refreshes take at most this fraction (1/n) of the time
constexpr int millisecondsPerIconLook = 60;

} // namespace

ViewTabs::ViewTabs(const Dependencies& dependencies, QObject* parent)
    : QObject(parent), dependencies_(dependencies),
      treemapFeed_({tmp_, dependencies_.database, dependencies_.search, [this] { return holds_ == 0; }}),
      lvwF_(FilesList::columns(), &dependencies_.icons), lvwT_(GroupLists::fileTypeColumns(), nullptr),
      lvwU_(GroupLists::ownerColumns(), nullptr), filesList_(lvwF_, dependencies_.icons),
      groupLists_(lvwT_, lvwU_),
      find_({dependencies_.icons, dependencies_.settings, dependencies_.database,
             [this] { return folderKey(); }, [this] { return holds_ > 0; }, dependencies_.comparison}),
      changes_({dependencies_.icons, dependencies_.comparison, [this] { return folderKey(); }}),
      listTabs_{{{lvwF_, 2, &clsSettings::lvwFSortColumn, &clsSettings::setLvwFSortColumn,
                  &clsSettings::lvwFSortOrder, &clsSettings::setLvwFSortOrder},
                 {lvwT_, 3, &clsSettings::lvwTSortColumn, &clsSettings::setLvwTSortColumn,
                  &clsSettings::lvwTSortOrder, &clsSettings::setLvwTSortOrder},
                 {lvwU_, 2, &clsSettings::lvwUSortColumn, &clsSettings::setLvwUSortColumn,
                  &clsSettings::lvwUSortOrder, &clsSettings::setLvwUSortOrder}}} {
    layOut();
    wire();
}

// The pages must be destroyed before the tab control, which would otherwise signal each page as newly active.
ViewTabs::~ViewTabs() {
    XTab_.disconnect(this);
}

void ViewTabs::layOut() {
    XTab_.setObjectName(QStringLiteral("XTab"));
    tc_.setObjectName(QStringLiteral("tc"));
    fsb_.setObjectName(QStringLiteral("fsb"));
    tmp_.setObjectName(QStringLiteral("tmp"));
    fsb_.setOrientation(Qt::Vertical);
    lvwF_.setObjectName(QStringLiteral("lvwF"));
    lvwT_.setObjectName(QStringLiteral("lvwT"));
    lvwU_.setObjectName(QStringLiteral("lvwU"));
    chartLayout_.setContentsMargins(0, 0, 0, 0);
    chartLayout_.setSpacing(0);
    chartLayout_.addWidget(&tc_, 1);
    chartLayout_.addWidget(&fsb_);
    chartLayout_.addWidget(&tmp_, 1);
    tmp_.hide();
    tc_.attachScrollBar(&fsb_);
    XTab_.addTab(&chartPage_, QStringLiteral("Chart"));
    XTab_.addTab(&lvwF_, QStringLiteral("Files && Folders"));
    XTab_.addTab(&lvwT_, QStringLiteral("File Types"));
    XTab_.addTab(&lvwU_, QStringLiteral("Owners"));
    XTab_.addTab(&find_, QStringLiteral("Find"));
    XTab_.setAccessibleName(QStringLiteral("Views of the selected folder"));
    lvwF_.setAccessibleName(QStringLiteral("Files and folders"));
    lvwT_.setAccessibleName(QStringLiteral("File types"));
    lvwU_.setAccessibleName(QStringLiteral("Owners"));
    modQt::setHelpTopic(chartPage_, "chart.html");
    modQt::setHelpTopic(lvwF_, "files.html");
    modQt::setHelpTopic(lvwT_, "types.html");
    modQt::setHelpTopic(lvwU_, "owners.html");
    lvwF_.setSelectionMode(QAbstractItemView::ExtendedSelection);
    for (const ListTab& tab : listTabs_) {
        tab.list.setFrameShape(QFrame::NoFrame); // the tabs already have a frame
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
    connect(&XTab_, &QTabWidget::currentChanged, this, &ViewTabs::followTab);
    connect(&tc_, &FolderChart::barActivated, this, &ViewTabs::activateBar);
    connect(&tc_, &FolderChart::barEntered, this, [this](const std::string& label) {
        if (label == modFigures::filesLabel) {
            showsChartOfChanges() ? showChanges() : showFiles();
        }
    });
    // A click leaves the focus where it was; then keys such as F1 would be for another part of the window.
    connect(
        XTab_.tabBar(), &QTabBar::tabBarClicked, this,
        [this](int tab) {
            if (tab >= 0) {
                takeFocus();
            }
        },
        Qt::QueuedConnection);
    wireTreemap();
    connect(&nextTab_, &QShortcut::activated, this, [this] { turnTab(1); });
    connect(&previousTab_, &QShortcut::activated, this, [this] { turnTab(-1); });
    tc_.setTipProvider(
        [this](double megabytes, int index) { return tc_OnMarkTipToolGetText(megabytes, index); });
    for (ListTab& tab : listTabs_) {
        wireList(tab);
    }
    connect(&lvwF_, &ListView::itemActivated, this, &ViewTabs::rowActivated);
    connect(&filesList_.further(), &ColumnChoice::changed, this, &ViewTabs::refreshActiveView);
    connect(&tmrChart_, &QTimer::timeout, this, [this] { growWithScan(); });
    connect(&tmrListViewIcons_, &QTimer::timeout, this, [this] {
        filesList_.getListViewIcons();
        find_.fetchIcons();
        changes_.fetchIcons();
    });
    wireFind();
    wireChanges();
}

void ViewTabs::wireFind() {
    connect(&find_.list(), &ListView::menuRequested, this, &ViewTabs::menuRequested);
    connect(&find_.list(), &ListView::copyRequested, this, &ViewTabs::copyRequested);
    connect(&find_.list(), &ListView::itemActivated, this, &ViewTabs::foundActivated);
    connect(&lvwT_, &ListView::itemActivated, this,
            [this](const std::string& key) { findOnly(FindBar::Field::extension, key); });
    connect(&lvwU_, &ListView::itemActivated, this,
            [this](const std::string& key) { findOnly(FindBar::Field::owner, key); });
}

bool ViewTabs::goUp() {
    if (XTab_.currentWidget() == &changes_) {
        return changes_.goUp();
    }
    return XTab_.currentWidget() == &chartPage_ && !showsTreemap_ && tc_.up();
}

// The files of a row of the file types or the owners.
void ViewTabs::findOnly(FindBar::Field field, const std::string& groupKey) {
    constexpr std::string_view prefix = "KEY_";
    find_.findOnly(field, groupKey.substr(prefix.size()));
    XTab_.setCurrentWidget(&find_);
    find_.list().setFocus();
}

void ViewTabs::filterList() {
    if (activeList() == nullptr) {
        XTab_.setCurrentWidget(&find_);
        find_.focusName();
    } else {
        filter_.open();
    }
}

void ViewTabs::followTab() {
    if (XTab_.currentWidget() == &lvwF_ || XTab_.currentWidget() == &find_ ||
        XTab_.currentWidget() == &changes_) {
        tmrListViewIcons_.start();
    } else {
        tmrListViewIcons_.stop();
    }
    filter_.setList(activeList());
    refreshActiveView();
}

void ViewTabs::wireTreemap() {
    connect(&tmp_, &Treemap::itemEntered, this, &ViewTabs::enterItem);
    const auto point = [this] {
        const bool isShown = showsTreemap_ && XTab_.currentWidget() == &chartPage_;
        Q_EMIT pointedAt(isShown ? tmp_.selectedFolder() : std::string());
    };
    connect(&tmp_, &Treemap::itemSelected, this, point);
    connect(&XTab_, &QTabWidget::currentChanged, this, point);
}

// What lies directly in the selected folder is listed on the next tab, as the bar of the files is.
void ViewTabs::enterItem(const std::string& path) {
    const std::string folder = path.substr(0, path.rfind('\\') + 1);
    if (folder != folderKey()) {
        Q_EMIT folderChosen(folder);
    } else if (folder != path) {
        showFiles();
    }
}

void ViewTabs::showFiles() {
    XTab_.setCurrentWidget(&lvwF_);
    lvwF_.setFocus();
}

void ViewTabs::wireList(ListTab& tab) {
    constexpr int toggledOrder = -1;
    connect(&tab.list, &ListView::menuRequested, this, &ViewTabs::menuRequested);
    connect(&tab.list, &ListView::copyRequested, this, &ViewTabs::copyRequested);
    connect(&tab.list, &ListView::columnClicked, this,
            [this, &tab, &settings = dependencies_.settings](int column) {
                const ListView::AllRows all(tab.list);
                tab.list.setExactDates(settings.exact());
                modLvw::lvsort(tab.list, column, toggledOrder, false);
                if (&tab.list == &lvwF_) {
                    filesList_.further().noteSort();
                    if (filesList_.further().sort()) {
                        return; // the settings know the fixed columns only
                    }
                }
                (settings.*tab.setColumn)(static_cast<std::int16_t>(column));
                (settings.*tab.setOrder)(static_cast<std::int16_t>(tab.list.sort().order));
            });
}

// After the last tab comes the first.
void ViewTabs::turnTab(int step) {
    XTab_.setCurrentIndex((XTab_.currentIndex() + step + XTab_.count()) % XTab_.count());
}

const ListView* ViewTabs::activeList() const {
    const int active = XTab_.currentIndex();
    if (XTab_.currentWidget() == &find_) {
        return &find_.list();
    }
    if (XTab_.currentWidget() == &changes_) {
        return &changes_.list();
    }
    return active < 1 ? nullptr : &listTabs_.at(static_cast<std::size_t>(active) - 1).list;
}

ListView* ViewTabs::activeList() {
    return const_cast<ListView*>(
        std::as_const(*this).activeList()); // NOLINT(cppcoreguidelines-pro-type-const-cast): its own
}

void ViewTabs::takeFocus() {
    if (ListView* const list = activeList()) {
        list->setFocus();
    } else if (showsTreemap_) {
        tmp_.setFocus();
    } else {
        tc_.setFocus();
    }
}

// --- From the rows to the views -------------------------------------------------------------------------

// The key of the selected node if it is a folder whose rows can be read; otherwise empty.
std::string ViewTabs::folderKey() const {
    std::string key = dependencies_.tree.selectedKey();
    return dependencies_.database.isOpen() && modNodeKeys::isFolderKey(key) ? key : std::string();
}

void ViewTabs::updateGraph() {
    modGlobal::trapped(moduleName, "updateGraph", [this] {
        const std::string key = folderKey();
        if (key.empty()) {
            return;
        }
        if (showsTreemap_) {
            updateTreemap(key);
            return;
        }
        if (showsChartOfChanges()) {
            updateChartOfChanges(key);
            return;
        }
        const bool onDisk = dependencies_.database.database().countsSizeOnDisk();
        tc_.setFolder(modQt::shownPath(key) + (onDisk ? QStringLiteral(" (on disk)") : QString()));
        tc_.setEntries(modFigures::chartEntries(dependencies_.database.database(), key,
                                                scanning_ ? modFigures::ScanState::running
                                                          : modFigures::ScanState::ended),
                       key == chartKey_ ? FolderChart::View::kept : FolderChart::View::largest);
        if (tc_.hasFocus() && chartKey_.size() > key.size() && chartKey_.starts_with(key)) {
            tc_.selectLabel( // where one came from
                std::string_view(chartKey_).substr(key.size(),
                                                   chartKey_.find('\\', key.size()) - key.size()));
        }
        chartKey_ = key;
    });
}

void ViewTabs::setTreemap(bool shown) {
    if (shown) {
        XTab_.setCurrentWidget(&chartPage_);
    }
    if (shown == showsTreemap_) {
        return;
    }
    const bool hadFocus = tc_.hasFocus() || tmp_.hasFocus();
    showsTreemap_ = shown;
    tc_.setVisible(!shown);
    fsb_.setVisible(!shown && fsb_.isEnabled());
    tmp_.setVisible(shown);
    if (hadFocus) {
        takeFocus();
    }
    if (!shown) {
        treemapFeed_.clear();
    }
}

// It is read while it is on show.
void ViewTabs::updateTreemap(const std::string& key) {
    if (XTab_.currentWidget() == &chartPage_) {
        treemapFeed_.show(key);
    } else if (tmp_.tree() && tmp_.tree()->folder() != key) {
        treemapFeed_.clear();
    }
}

void ViewTabs::layOutHidden() {
    if (XTab_.currentWidget() != &chartPage_) {
        chartPage_.resize(XTab_.currentWidget()->size());
        chartLayout_.setGeometry(chartPage_.rect());
    }
}

const FolderChart& ViewTabs::chartAsShown() {
    layOutHidden();
    updateGraph();
    return tc_;
}

Treemap& ViewTabs::treemapAsShown() {
    layOutHidden();
    if (const std::string key = folderKey(); !key.empty()) {
        treemapFeed_.show(key);
        treemapFeed_.finish();
    }
    return tmp_;
}

void ViewTabs::refresh(bool selectFirst) {
    const int active = XTab_.currentIndex();
    if (active == 0) {
        updateGraph();
        return;
    }
    if (XTab_.currentWidget() == &find_) {
        selectFirst ? find_.refresh() : find_.follow();
        return;
    }
    if (XTab_.currentWidget() == &changes_) {
        changes_.refresh();
        return;
    }
    const std::string key = folderKey();
    if (key.empty()) {
        return;
    }
    Database& database = dependencies_.database.database();
    const ListTab& tab = listTabs_.at(static_cast<std::size_t>(active) - 1);
    const ListPlace place(tab.list);
    const ListView::AllRows all(tab.list);
    tab.list.setExactDates(dependencies_.settings.exact());
    if (&tab.list == &lvwF_) {
        filesList_.updateFileFolderListview(database, key);
    } else if (&tab.list == &lvwT_) {
        groupLists_.updateFileTypeListview(database, key);
    } else {
        groupLists_.updateUserListview(database, key);
    }
    const auto& sort = filesList_.further().sort();
    if (&tab.list == &lvwF_ && sort) {
        modLvw::lvsort(tab.list, filesList_.further().placeOf(sort->further), sort->order, selectFirst);
    } else {
        modLvw::sortAsRemembered(tab.list, (dependencies_.settings.*tab.column)(),
                                 (dependencies_.settings.*tab.order)(), tab.defaultColumn, selectFirst);
    }
    place.restore(tab.list);
}

void ViewTabs::followRows() {
    XTab_.currentWidget() == &find_ ? find_.reread() : refresh(false);
}

void ViewTabs::forget() {
    filesList_.clear();
    groupLists_.clear();
    find_.clear();
    changes_.clear();
    tc_.setEntries({});
    tc_.setFolder({});
    treemapFeed_.clear();
    chartKey_.clear();
    refreshActiveView();
}

void ViewTabs::showHint() {
    const QString hint = scanning_
                             ? QStringLiteral("Scanning...")
                             : QStringLiteral("Nothing to show: the folder is empty or could not be read.");
    tc_.setHint(hint);
    tmp_.setHint(hint);
}

void ViewTabs::followScan(bool running) {
    scanning_ = running;
    showHint();
    if (running) {
        treemapFeed_.scanBegins();
        tmrChart_.start(millisecondsPerRefresh);
    } else {
        tmrChart_.stop();
    }
}

// Keeps the row that the user is looking at.
void ViewTabs::growWithScan() {
    QElapsedTimer cost;
    cost.start();
    const bool isTreemap = XTab_.currentIndex() == 0 && showsTreemap_;
    if (holds_ == 0 && !(isTreemap && treemapFeed_.isReading())) {
        refresh(false);
    }
    Q_EMIT grown();
    const auto spent = static_cast<int>(cost.elapsed() + (isTreemap ? treemapFeed_.cost().count() : 0));
    tmrChart_.start(std::max(millisecondsPerRefresh, spent * refreshesOwnShare));
}

// The text of the chart's tips. Index -1 means that the pointer is on several entries.
QString ViewTabs::tc_OnMarkTipToolGetText(double megabytes, int index) {
    std::string text;
    modGlobal::trapped(moduleName, "tc_OnMarkTipToolGetText", [&] {
        const bool hasLabel = index >= 0 && index < static_cast<int>(tc_.entries().size());
        if (const auto change =
                hasLabel ? changeOf(tc_.entries()[static_cast<std::size_t>(index)].label) : std::nullopt) {
            text = tipOfChange(*change).toStdString();
            return;
        }
        modChartTip::format(text, megabytes,
                            hasLabel ? dependencies_.tree.selectedKey() +
                                           tc_.entries()[static_cast<std::size_t>(index)].label
                                     : std::string());
    });
    return QString::fromStdString(text);
}

// --- What is remembered ---------------------------------------------------------------------------------

// Only widths, which can be checked: Qt restores a saved header state without checking it.
void ViewTabs::restore(QSettings& state) {
    constexpr int widestColumn = 10'000;
    filesList_.further().restore(state);
    for (ListView* const list : {&lvwF_, &lvwT_, &lvwU_, &find_.list(), &changes_.list()}) {
        QHeaderView& bar = *list->header();
        const QStringList widths = state.value(list->objectName()).toStringList();
        for (int i = 0; i < bar.count() && i < widths.size(); ++i) {
            const int width = widths[i].toInt(); // 0 if not a number, or if it follows the window
            if (width >= bar.minimumSectionSize() && width <= widestColumn) {
                bar.resizeSection(i, width);
            }
        }
    }
    find_.restore(state);
    changes_.restore(state);
    XTab_.setCurrentIndex(state.value(XTab_.objectName()).toInt());
}

void ViewTabs::save(QSettings& state) const {
    filesList_.further().save(state);
    for (const ListView* const list :
         std::initializer_list<const ListView*>{&lvwF_, &lvwT_, &lvwU_, &find_.list(), &changes_.list()}) {
        const QHeaderView& bar = *list->header();
        QStringList widths;
        for (int i = 0; i < bar.count(); ++i) {
            const bool follows = i == 0 && list->fillsItsRoom();
            widths << QString::number(follows ? 0 : bar.sectionSize(i));
        }
        state.setValue(list->objectName(), widths);
    }
    find_.save(state);
    changes_.save(state);
    state.setValue(XTab_.objectName(), XTab_.currentIndex());
}
