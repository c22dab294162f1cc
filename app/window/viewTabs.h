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
#include <string>

#include "app/clsSettings.h"
#include "db/workingDatabase.h"
#include "tree/folderTree.h"
#include "views/widgets/filesList.h"
#include "views/widgets/folderChart.h"
#include "views/widgets/groupLists.h"
#include "views/widgets/listView.h"
#include "views/widgets/systemIcons.h"

// The tab control XTab with the four views of the folder that is selected in the tree: the chart tc with its
// scroll bar fsb, and the lists lvwF, lvwT and lvwU. Reads the rows whenever it is asked to bring a view up
// to date; without a selected folder, or a database, the views stay as they are.
class ViewTabs final : public QObject {
    Q_OBJECT

public:
    // What the views stand on; nothing is owned.
    struct Surroundings {
        const FolderTree& tree;
        ImageList& icons;
        clsSettings& settings;
        const WorkingDatabase& database;
    };

    explicit ViewTabs(const Surroundings& surroundings, QObject* parent = nullptr);
    ~ViewTabs() override;

    [[nodiscard]] QTabWidget& tabs() noexcept { return XTab_; }
    [[nodiscard]] FolderChart& chart() noexcept { return tc_; }
    // The list of the active tab; null while that is the chart's.
    [[nodiscard]] const ListView* activeList() const;

    // The chart, up to date and as large as it is on the screen, or would be were it not behind another tab.
    [[nodiscard]] const FolderChart& chartAsShown();

    // Draws the chart anew. Errors are logged.
    void updateGraph();
    // Brings the view of the active tab up to date; a list is sorted as remembered and its first row
    // selected.
    void refreshActiveView() { refresh(true); }
    // Empties the files and folders list, so that it is filled from its first row again.
    void clearFilesList() { filesList_.clear(); }

    // Forgets what the views show: the rows are others now. Brings the active one up to date.
    void forget();

    // While one lives, a scan that goes on does not change the views.
    class Hold {
    public:
        explicit Hold(ViewTabs& views) : views_(views) { ++views_.holds_; }
        ~Hold() { --views_.holds_; }
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

    private:
        ViewTabs& views_;
    };

    // While a scan runs the active view is refreshed about once a second.
    void followScan(bool running);

    // Column widths and the active tab, in the window's own settings file.
    void restore(QSettings& state);
    void save(QSettings& state) const;

Q_SIGNALS:
    // A bar was activated.
    void barChosen(const std::string& label);
    // A row of the files and folders list was activated.
    void rowActivated(const std::string& key, const std::string& tag);
    // The context menu of the lists is wanted at this place of the screen.
    void menuRequested(const QPoint& place);
    // Ctrl+C in the list on show.
    void copyRequested();

private:
    // A list and how its sort order is remembered.
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
    void turnTab(int step);
    [[nodiscard]] std::string folderKey() const;
    void refresh(bool selectFirst);
    void growWithScan();
    QString tc_OnMarkTipToolGetText(double megabytes, int index);

    Surroundings with_;
    QTabWidget XTab_;
    QWidget chartPage_;
    QHBoxLayout chartLayout_{&chartPage_};
    FolderChart tc_;
    QScrollBar fsb_;
    ListView lvwF_;
    ListView lvwT_;
    ListView lvwU_;
    FilesList filesList_;
    GroupLists groupLists_;
    std::array<ListTab, 3> listTabs_; // behind the chart's tab, in their order
    // From wherever the keyboard is; the tab control's own keys work inside of it only.
    QShortcut nextTab_{QKeySequence(Qt::CTRL | Qt::Key_Tab), &XTab_};
    QShortcut previousTab_{QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab), &XTab_};
    std::string chartKey_; // of the folder that the chart shows
    QTimer tmrChart_;
    QTimer tmrListViewIcons_;
    int holds_ = 0;
};
