#pragma once

#include <QBoxLayout>
#include <QWidget>
#include <string>

#include "db/workingDatabase.h"
#include "scan/clsSearch.h"
#include "tree/folderSelection.h"
#include "views/folderSummary.h"
#include "window/breadcrumbs.h"
#include "window/statusPanels.h"

// What stands above the tabs: the path of the shown folder, its figures and its share of the drive, and the
// name of a saved scan; also whether patterns exclude something. Without a folder, it says how to choose one.
class FolderHeader final : public QWidget {
    Q_OBJECT

public:
    // Nothing is owned.
    struct Dependencies {
        const WorkingDatabase& database;
        const clsSearch& search;
        const FolderSelection& selection;
        const clsSettings& settings;
    };

    explicit FolderHeader(const Dependencies& dependencies, QWidget* parent = nullptr);

    // Shows the folder's path, and its figures as soon as they are refreshed. An empty key: no folder.
    void showFolder(const std::string& key);

    // Continues the path to a folder below the shown one, whose figures stay; an empty key: not any more.
    void pointAt(const std::string& key);

    // Reads the figures again. During a scan, and after one that was cancelled, they end in "…".
    void refresh();

    // Until the first figures of a folder are there, says that it is being scanned.
    void followScan(bool running);

    // Shows this text for folders of which loaded rows are left, until another comes; empty for none.
    void setSavedScan(const QString& text);

    // What is compared, and the sizes of the folder in both scans; empty for nothing.
    void setComparison(const QString& text, const QString& tip);

Q_SIGNALS:
    // A folder of the path was chosen.
    void folderChosen(const std::string& key);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void readFigures();
    void showExcludes();
    void showSavedScan();
    [[nodiscard]] modFigures::FolderSummary summaryOfKey() const;
    [[nodiscard]] bool isBeingScanned() const;
    [[nodiscard]] bool isIncomplete(const modFigures::FolderSummary& summary) const;

    Dependencies dependencies_;
    std::string key_;
    QString savedScan_;
    QVBoxLayout rows_{this};
    Breadcrumbs crumbs_;
    QBoxLayout figures_{QBoxLayout::LeftToRight}; // or, in a narrow window, one below the other
    CutLabel lblFigures_;
    CutLabel lblExcludes_;
    CutLabel lblDrive_;
    CutLabel lblSavedScan_;
    CutLabel lblComparison_;
};
