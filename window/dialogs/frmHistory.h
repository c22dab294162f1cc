#pragma once

#include <QDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QSplitter>
#include <QTimer>
#include <QVBoxLayout>
#include <cstddef>
#include <string>

#include "widgets/historyChart.h"
#include "widgets/listView.h"
#include "window/dialogs/clsDialogs.h"
#include "window/dialogs/historyLegend.h"
#include "window/dialogs/historyReader.h"

// The window that shows what saved scans tell of a folder and its largest subfolders: a chart of their sizes
// over time, and a list of the points of one of them, that of the selected point. It is not modal; it reads
// while it is shown.
class frmHistory final : public QDialog {
    Q_OBJECT

public:
    static constexpr std::size_t mostSubfolders = 8;

    // The dialogs are not owned.
    frmHistory(clsDialogs& dialogs, QWidget* parent);

    // The folder whose history is shown, a key; empty for none.
    void showFolder(const std::string& key);
    // A folder of saved scans, as typed.
    void setScans(const QString& typed);
    [[nodiscard]] QString scans() const { return txtScans_.text(); }

    [[nodiscard]] ListView& list() noexcept { return lvwHistory_; }
    // What the list shows.
    [[nodiscard]] const modExport::FolderHistory& listed() const;

    void restore(const QSettings& state);
    void save(QSettings& state) const;

Q_SIGNALS:
    // A saved scan, as an internal path.
    void openAsBefore(const std::string& file);
    void copyRequested();
    void exportRequested();

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void layOut();
    void layOutTop();
    void layOutButtons();
    void wire();
    void browse();
    void read();
    void showProgress(int files, int ofFiles);
    void endProgress();
    void takeAnswer(const HistoryReader::Answer& answer);
    void say(const QString& text);
    void fillChart();
    void fillList(std::size_t number);
    void followChart();
    void followList();
    void updateButtons();
    void activate();
    [[nodiscard]] QString tipOf(const modTimeChart::Place& place) const;
    [[nodiscard]] const modExport::HistoryPoint* selectedPoint() const;

    clsDialogs& dialogs_;
    HistoryReader reader_;
    std::string folder_; // a key
    HistoryReader::Answer answer_;
    HistoryReader::Question read_; // the last question
    std::size_t listed_ = 0;       // the number of the history in the list
    bool wantsFocus_ = false;      // the chart, when there is one
    bool isFollowing_ = false;     // one part of the window follows another

    QVBoxLayout layout_{this};
    QHBoxLayout scansRow_;
    QLabel lblScans_;
    QLineEdit txtScans_;
    QPushButton cmdBrowse_;
    QLabel lblFolder_;
    QLabel lblHistory_;
    QHBoxLayout progressRow_;
    QProgressBar prgHistory_;
    QPushButton cmdCancel_;
    QTimer tmrProgress_; // until it is worth while to show the bar
    QSplitter splitter_{Qt::Vertical};
    QWidget top_;
    QHBoxLayout topLayout_{&top_};
    HistoryChart chart_;
    HistoryLegend legend_;
    QWidget bottom_;
    QVBoxLayout bottomLayout_{&bottom_};
    QLabel lblListed_;
    ListView lvwHistory_;
    QDialogButtonBox buttons_;
    QPushButton cmdCompare_;
    QPushButton cmdExport_;
    QPushButton cmdCopy_;
    QPushButton cmdClose_;
};
