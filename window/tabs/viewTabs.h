#pragma once

#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QObject>
#include <QScrollBar>
#include <QSettings>
#include <QShortcut>
#include <QTabWidget>
#include <QTimer>
#include <QWidget>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/clsSettings.h"
#include "db/workingDatabase.h"
#include "tree/folderSelection.h"
#include "tree/folderTree.h"
#include "widgets/filesList.h"
#include "widgets/folderChart.h"
#include "widgets/groupLists.h"
#include "widgets/listView.h"
#include "widgets/systemIcons.h"
#include "widgets/treemap.h"
#include "window/tabs/changesPage.h"
#include "window/tabs/filterBar.h"
#include "window/tabs/findPage.h"
#include "window/tabs/openComparison.h"
#include "window/tabs/treemapFeed.h"

// The tab control XTab with the views of the folder selected in the tree: the chart tc with its scroll
// bar fsb, or in their place the treemap tmp, the lists lvwF, lvwT and lvwU, Find and, while a comparison is
// open, Changes. It reads the rows whenever a view is updated; without a selected folder, or without a
// database, the views stay unchanged.
class ViewTabs final : public QObject, public FolderViews {
    Q_OBJECT

public:
    // The objects that the views use; none is owned.
    struct Dependencies {
        const FolderTree& tree;
        ImageList& icons;
        clsSettings& settings;
        const WorkingDatabase& database;
        const clsSearch& search;
        const OpenComparison& comparison;
    };

    explicit ViewTabs(const Dependencies& dependencies, QObject* parent = nullptr);
    ~ViewTabs() override;

    [[nodiscard]] QTabWidget& tabs() noexcept { return XTab_; }
    [[nodiscard]] FolderChart& chart() noexcept { return tc_; }
    [[nodiscard]] Treemap& treemap() noexcept { return tmp_; }
    // Shows the treemap instead of the chart, or the chart again; it is updated by updateGraph.
    void setTreemap(bool shown);
    // Shows the chart of changes instead of the chart of sizes, or that again; it is updated by updateGraph.
    void setChartOfChanges(bool shown);
    [[nodiscard]] bool showsChartOfChanges() const noexcept { return tc_.values() == ChartValues::changes; }
    // Of the bar with this label there: what it is about; nothing if there is none.
    [[nodiscard]] std::optional<modChanges::Change> changeOf(std::string_view label) const;
    [[nodiscard]] bool showsTreemap() const noexcept { return showsTreemap_; }
    [[nodiscard]] ListView& filesList() noexcept { return lvwF_; }
    // Goes up inside the active view; false if it shows all of the folder.
    bool goUp();
    // Gives the focus to the active view.
    void takeFocus();
    // The list on the active tab; null for the chart's tab.
    [[nodiscard]] const ListView* activeList() const;
    [[nodiscard]] ListView* activeList();
    // The lists whose rows are files and folders.
    [[nodiscard]] std::array<ListView*, 3> itemLists() noexcept {
        return {&lvwF_, &find_.list(), &changes_.list()};
    }
    // The folder whose contents the list on the active tab shows.
    [[nodiscard]] std::string listedFolder() const;
    // Whether rows of the list on the active tab may be those of a saved scan that is compared with.
    [[nodiscard]] bool listsSavedRows() const;
    // Goes to the tab Changes.
    void showChanges();
    // There, goes into a folder that is gone.
    void enterFormer(const std::string& key);
    // The box that narrows the active list; it stands below the tabs.
    [[nodiscard]] FilterBar& filterBar() noexcept { return filter_; }
    // Opens it; from the chart, goes to Find.
    void filterList();

    // The chart, updated, with the size that it has on the screen or would have if its tab were active.
    [[nodiscard]] const FolderChart& chartAsShown();

    // The same of the treemap.
    [[nodiscard]] Treemap& treemapAsShown();

    // Redraws the chart. Errors are logged.
    void updateGraph() override;
    // Updates the view of the active tab; a list is sorted as remembered and its first row selected.
    void refreshActiveView() override { refresh(true); }
    void followRows() override;
    // Empties the files and folders list, so that it is filled again from its first row.
    void clearFilesList() override { filesList_.clear(); }

    // Forgets what the views show, because the rows have changed. Updates the active view.
    void forget();

    // While an object lives, a running scan does not change the views.
    class Hold {
    public:
        explicit Hold(ViewTabs& views) : views_(views) { ++views_.holds_; }
        ~Hold() { --views_.holds_; }
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

    private:
        ViewTabs& views_;
    };

    // During a scan, the active view is refreshed about once a second.
    void followScan(bool running);

    // The column widths and the active tab, in the window's own settings file.
    void restore(QSettings& state);
    void save(QSettings& state) const;

Q_SIGNALS:
    // During a scan: the active view was refreshed. What is done now counts as part of the refresh.
    void grown();
    // A bar was activated.
    void barChosen(const std::string& label);
    // An item of the treemap in another folder was entered: that folder.
    void folderChosen(const std::string& key);
    // What is selected on the active tab lies in this folder below the selected one; empty for the selected
    // one.
    void pointedAt(const std::string& key);
    // A row of the files and folders list was activated.
    void rowActivated(const std::string& key, const std::string& tag);
    // A row of what was found or has changed was activated.
    void foundActivated(const std::string& key, const std::string& tag);
    // Requests the context menu of the lists at this position on the screen.
    void menuRequested(const QPoint& place);
    // Ctrl+C was pressed in the active list.
    void copyRequested();

private:
    // A list, and how its sort order is remembered.
    struct ListTab {
        ListView& list;
        int defaultColumn;
        std::int16_t (clsSettings::*column)() const noexcept;
        void (clsSettings::*setColumn)(std::int16_t) noexcept;
        std::int16_t (clsSettings::*order)() const noexcept;
        void (clsSettings::*setOrder)(std::int16_t) noexcept;
    };

    void layOut();
    void wire();
    void wireList(ListTab& tab);
    void wireFind();
    void wireChanges();
    void findOnly(FindBar::Field field, const std::string& groupKey);
    void followTab();
    void wireTreemap();
    void showFiles();
    void enterItem(const std::string& path);
    void updateTreemap(const std::string& key);
    void updateChartOfChanges(const std::string& key);
    void activateBar(const std::string& label);
    [[nodiscard]] static QString tipOfChange(const modChanges::Change& change);
    void layOutHidden();
    void showHint();
    void turnTab(int step);
    [[nodiscard]] std::string folderKey() const;
    void refresh(bool selectFirst);
    void growWithScan();
    QString tc_OnMarkTipToolGetText(double megabytes, int index);

    Dependencies dependencies_;
    QTabWidget XTab_;
    QWidget chartPage_;
    QHBoxLayout chartLayout_{&chartPage_};
    FolderChart tc_;
    QScrollBar fsb_;
    Treemap tmp_;
    TreemapFeed treemapFeed_;
    ListView lvwF_;
    ListView lvwT_;
    ListView lvwU_;
    FilesList filesList_;
    GroupLists groupLists_;
    FindPage find_;
    ChangesPage changes_;
    FilterBar filter_;
    std::array<ListTab, 3> listTabs_; // after the chart's tab, in this order
    // These work wherever the focus is; the tab control's own keys only work inside it.
    QShortcut nextTab_{QKeySequence(Qt::CTRL | Qt::Key_Tab), &XTab_};
    QShortcut previousTab_{QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab), &XTab_};
    std::vector<modChanges::Change> chartChanges_; // what the bars of the chart of changes are about
    std::string chartKey_;                         // the folder shown in the chart
    QTimer tmrChart_;
    QTimer tmrListViewIcons_;
    int holds_ = 0;
    bool scanning_ = false;
    bool showsTreemap_ = false;
};
