#include "window/dialogs/frmHistory.h"

#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QScreen>
#include <utility>

#include "base/numberFormat.h"
#include "export/historyLines.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"
#include "widgets/helpTopic.h"
#include "widgets/lvsort.h"
#include "widgets/qtText.h"
#include "window/dialogs/historyList.h"

namespace {

constexpr int toggledOrder = -1;
constexpr int descending = 1;

void nameButton(QPushButton& button, const char* name, const char* text, const char* tip) {
    button.setObjectName(QString::fromUtf8(name));
    button.setText(QString::fromUtf8(text));
    button.setToolTip(QString::fromUtf8(tip));
    button.setAutoDefault(false); // none looks as if Enter elsewhere pressed it
}

QLabel& namedLabel(QLabel& label, const char* name) {
    label.setObjectName(QString::fromUtf8(name));
    label.setTextFormat(Qt::PlainText);
    label.setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace

frmHistory::frmHistory(clsDialogs& dialogs, QWidget* parent)
    : QDialog(parent), dialogs_(dialogs), legend_(chart_), lvwHistory_(modHistoryList::columns(), nullptr) {
    setObjectName(QStringLiteral("frmHistory"));
    setWindowTitle(QStringLiteral("History"));
    modQt::setHelpTopic(*this, "history.html");
    layOut();
    wire();
    say({});
}

void frmHistory::layOut() {
    layOutTop();
    topLayout_.setContentsMargins(0, 0, 0, 0);
    topLayout_.addWidget(&chart_, 1);
    topLayout_.addWidget(&legend_);
    lvwHistory_.setObjectName(QStringLiteral("lvwHistory"));
    lvwHistory_.setAccessibleName(QStringLiteral("Saved scans of the folder"));
    lvwHistory_.setSelectionMode(QAbstractItemView::ExtendedSelection);
    lvwHistory_.setExactDates(true);
    lvwHistory_.setSort({true, modHistoryList::date - 1, descending});
    namedLabel(lblListed_, "lblListed").setBuddy(&lvwHistory_);
    bottomLayout_.setContentsMargins(0, 0, 0, 0);
    bottomLayout_.addWidget(&lblListed_);
    bottomLayout_.addWidget(&lvwHistory_, 1);
    splitter_.setObjectName(QStringLiteral("splHistory"));
    splitter_.setChildrenCollapsible(false);
    splitter_.addWidget(&top_);
    splitter_.addWidget(&bottom_);
    splitter_.setStretchFactor(0, 2);
    splitter_.setStretchFactor(1, 1);
    layout_.addWidget(&splitter_, 1);
    layout_.addStretch(0);
    layOutButtons();
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    resize((QSize(58, 40) * fontMetrics().height()).boundedTo(screen()->availableSize() * 0.9));
}

void frmHistory::layOutTop() {
    lblScans_.setText(QStringLiteral("&Saved scans in:"));
    lblScans_.setBuddy(&txtScans_);
    txtScans_.setObjectName(QStringLiteral("txtScans"));
    txtScans_.setAccessibleName(QStringLiteral("Folder of saved scans"));
    txtScans_.setToolTip(QStringLiteral("A folder with saved scans (*.mdb); Enter reads them"));
    nameButton(cmdBrowse_, "cmdBrowse", "&Browse...", "Choose the folder with the saved scans");
    scansRow_.addWidget(&lblScans_);
    scansRow_.addWidget(&txtScans_, 1);
    scansRow_.addWidget(&cmdBrowse_);
    layout_.addLayout(&scansRow_);
    namedLabel(lblFolder_, "lblFolder");
    QFont bold = lblFolder_.font();
    bold.setBold(true);
    lblFolder_.setFont(bold);
    lblFolder_.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    namedLabel(lblHistory_, "lblHistory").setWordWrap(true);
    layout_.addWidget(&lblFolder_);
    layout_.addWidget(&lblHistory_);
    prgHistory_.setObjectName(QStringLiteral("prgHistory"));
    prgHistory_.setAccessibleName(QStringLiteral("Saved scans read"));
    nameButton(cmdCancel_, "cmdCancelReading", "Ca&ncel", "Show what has been read so far");
    progressRow_.addWidget(&prgHistory_, 1);
    progressRow_.addWidget(&cmdCancel_);
    layout_.addLayout(&progressRow_);
    tmrProgress_.setSingleShot(true);
    tmrProgress_.setInterval(300);
}

void frmHistory::layOutButtons() {
    nameButton(cmdCompare_, "cmdCompare", "C&ompare",
               "Compare with the selected saved scan, as what was before (Enter in the chart or list)");
    nameButton(cmdExport_, "cmdExport", "&Export...", "Write the list as a page, as text or as a workbook");
    nameButton(cmdCopy_, "cmdCopyHistory", "&Copy List", "Copy the whole list to the clipboard (Ctrl+C)");
    nameButton(cmdClose_, "cmdClose", "Close", "");
    buttons_.addButton(&cmdCompare_, QDialogButtonBox::ActionRole);
    buttons_.addButton(&cmdExport_, QDialogButtonBox::ActionRole);
    buttons_.addButton(&cmdCopy_, QDialogButtonBox::ActionRole);
    buttons_.addButton(&cmdClose_, QDialogButtonBox::RejectRole);
    layout_.addWidget(&buttons_);
}

void frmHistory::wire() {
    connect(&txtScans_, &QLineEdit::returnPressed, this, [this] {
        wantsFocus_ = true;
        read();
    });
    connect(&cmdBrowse_, &QPushButton::clicked, this, &frmHistory::browse);
    connect(&cmdCancel_, &QPushButton::clicked, &reader_, &HistoryReader::cancel);
    connect(&reader_, &HistoryReader::progressed, this, &frmHistory::showProgress);
    connect(&reader_, &HistoryReader::answered, this, &frmHistory::takeAnswer);
    connect(&tmrProgress_, &QTimer::timeout, this, [this] {
        prgHistory_.show();
        cmdCancel_.show();
    });
    connect(&chart_, &HistoryChart::pointSelected, this, &frmHistory::followChart);
    connect(&chart_, &HistoryChart::pointActivated, this, &frmHistory::activate);
    connect(lvwHistory_.selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &frmHistory::followList);
    connect(&lvwHistory_, &ListView::itemActivated, this, &frmHistory::activate);
    connect(&lvwHistory_, &ListView::columnClicked, this,
            [this](int column) { modLvw::lvsort(lvwHistory_, column, toggledOrder, false); });
    connect(&lvwHistory_, &ListView::copyRequested, this, &frmHistory::copyRequested);
    connect(&cmdCompare_, &QPushButton::clicked, this, &frmHistory::activate);
    connect(&cmdExport_, &QPushButton::clicked, this, &frmHistory::exportRequested);
    connect(&cmdCopy_, &QPushButton::clicked, this, [this] {
        lvwHistory_.clearSelection();
        Q_EMIT copyRequested();
    });
    connect(&buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

// --- Reading --------------------------------------------------------------------------------------------

void frmHistory::showFolder(const std::string& key) {
    if (key == folder_) {
        return;
    }
    folder_ = key;
    if (isVisible()) {
        read();
    }
}

void frmHistory::setScans(const QString& typed) {
    txtScans_.setText(typed);
    if (isVisible()) {
        read();
    }
}

void frmHistory::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!event->spontaneous()) {
        wantsFocus_ = true;
        txtScans_.setFocus();
        read();
    }
}

void frmHistory::browse() {
    try {
        setScans(QString::fromStdString(dialogs_.chooseFolder(txtScans_.text().toStdString())));
    } catch (const RuntimeError& error) {
        if (error.number() != errorNumber::dialogCancelled) {
            say(modQt::shownText(error.what()));
        }
    }
}

void frmHistory::read() {
    lblFolder_.setText(modQt::shownFolder(folder_));
    lblFolder_.setToolTip(modQt::tip(lblFolder_.text()));
    const QString scans = txtScans_.text().trimmed();
    if (folder_.empty() || scans.isEmpty()) {
        reader_.cancel();
        read_ = {};
        say(folder_.empty()
                ? QStringLiteral("Select a folder in the main window.")
                : QStringLiteral("Choose a folder of saved scans. File, Export Data, Access Database saves "
                                 "a scan; spannory-scan --keep saves one each time it runs."));
        return;
    }
    read_ = {scans.toStdString(), platform::displayPath(folder_), mostSubfolders};
    lblHistory_.setText(QStringLiteral("Reading the saved scans..."));
    prgHistory_.setRange(0, 0);
    tmrProgress_.start();
    reader_.ask(read_);
}

void frmHistory::showProgress(int files, int ofFiles) {
    prgHistory_.setRange(0, ofFiles);
    prgHistory_.setValue(files);
}

void frmHistory::endProgress() {
    tmrProgress_.stop();
    prgHistory_.hide();
    cmdCancel_.hide();
}

void frmHistory::takeAnswer(const HistoryReader::Answer& answer) {
    if (answer.question != read_) {
        return;
    }
    answer_ = answer;
    endProgress();
    if (!answer.failure.empty()) {
        say(modQt::shownText(answer.failure));
        return;
    }
    lblHistory_.setText(modQt::shownText(modExport::historyRemark(answer.histories, answer.files)));
    splitter_.setVisible(answer.histories.folder.hasFolder());
    fillChart();
    fillList(0);
    if (std::exchange(wantsFocus_, false) && splitter_.isVisible()) {
        chart_.setFocus();
    }
}

// Instead of a picture.
void frmHistory::say(const QString& text) {
    endProgress();
    answer_.histories = {};
    lblHistory_.setText(text);
    splitter_.hide();
    fillChart();
    fillList(0);
}

// --- What is shown --------------------------------------------------------------------------------------

QString frmHistory::tipOf(const modTimeChart::Place& place) const {
    const modTimeChart::Line& line = chart_.chart().lines().at(place.line);
    const auto& history = modExport::historyOf(answer_.histories, line.group);
    const bool namesHost = modExport::hostsOf(answer_.histories).size() > 1;
    QStringList lines;
    for (const QString& text :
         QString::fromStdString(modExport::pointText(history, line.points.at(place.point).row, namesHost))
             .split(u'\n')) {
        lines << modQt::shownText(text.toStdString());
    }
    return lines.join(u'\n');
}

void frmHistory::fillChart() {
    chart_.setChart(modTimeChart::TimeChart(modExport::historyLines(answer_.histories)),
                    [this](const modTimeChart::Place& place) { return tipOf(place); });
    QStringList paths;
    for (const modTimeChart::Line& line : chart_.chart().lines()) {
        paths << modQt::shownText(
            modExport::shownFolderOf(modExport::historyOf(answer_.histories, line.group)));
    }
    legend_.fill(paths);
}

const modExport::FolderHistory& frmHistory::listed() const {
    return modExport::historyOf(answer_.histories, listed_);
}

void frmHistory::fillList(std::size_t number) {
    const bool wasFollowing = std::exchange(isFollowing_, true);
    listed_ = number;
    lvwHistory_.rows().clear();
    lvwHistory_.rows().append(modHistoryList::rows(listed()));
    modLvw::lvsort(lvwHistory_, lvwHistory_.sort().key + 1, lvwHistory_.sort().order, false);
    const std::string count =
        modFormat::countedText(static_cast<double>(listed().points.size()), "saved scan", "saved scans");
    lblListed_.setText(modQt::shownText(modExport::shownFolderOf(listed())) + QStringLiteral(": ") +
                       QString::fromStdString(count));
    isFollowing_ = wasFollowing;
    updateButtons();
}

// The list shows the line of the selected point, and selects its row.
void frmHistory::followChart() {
    const auto& place = chart_.selectedPlace();
    if (!place || isFollowing_) {
        return;
    }
    isFollowing_ = true;
    const modTimeChart::Line& line = chart_.chart().lines().at(place->line);
    if (line.group != listed_) {
        fillList(line.group);
    }
    if (const int row = lvwHistory_.rows().find(std::to_string(line.points.at(place->point).row)); row >= 0) {
        lvwHistory_.selectRow(row);
    }
    isFollowing_ = false;
    updateButtons();
}

void frmHistory::followList() {
    const int row = lvwHistory_.currentIndex().row();
    if (row < 0 || isFollowing_) {
        return;
    }
    isFollowing_ = true;
    const std::size_t wanted = std::stoul(std::string(lvwHistory_.rows().row(row).key()));
    const auto& lines = chart_.chart().lines();
    for (std::size_t line = 0; line < lines.size(); ++line) {
        for (std::size_t point = 0; point < lines[line].points.size(); ++point) {
            if (lines[line].group == listed_ && lines[line].points[point].row == wanted) {
                chart_.select(modTimeChart::Place{line, point});
            }
        }
    }
    isFollowing_ = false;
    updateButtons();
}

const modExport::HistoryPoint* frmHistory::selectedPoint() const {
    const auto& place = chart_.selectedPlace();
    if (!place) {
        return nullptr;
    }
    const modTimeChart::Line& line = chart_.chart().lines().at(place->line);
    return &modExport::historyOf(answer_.histories, line.group).points.at(line.points.at(place->point).row);
}

void frmHistory::updateButtons() {
    const bool hasRows = lvwHistory_.rows().rowCount() > 0;
    cmdExport_.setEnabled(hasRows);
    cmdCopy_.setEnabled(hasRows);
    cmdCompare_.setEnabled(selectedPoint() != nullptr);
}

// The file may be gone with the next answer, which comparing may bring.
void frmHistory::activate() {
    if (const auto* const point = selectedPoint(); point != nullptr) {
        const std::string file = point->file;
        Q_EMIT openAsBefore(file);
    }
}

// Without a default button, Enter presses the one that has the focus.
void frmHistory::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_F5) {
        read();
    } else if (!isEnter) {
        QDialog::keyPressEvent(event);
    } else if (auto* const button = qobject_cast<QPushButton*>(focusWidget()); button != nullptr) {
        button->click();
    }
}

// --- What is remembered ---------------------------------------------------------------------------------

void frmHistory::restore(const QSettings& state) {
    if (restoreGeometry(state.value(QStringLiteral("historyGeometry")).toByteArray())) {
        resize(size().boundedTo(screen()->virtualSize())); // whatever the file contained
    }
    splitter_.restoreState(state.value(QStringLiteral("historySplitter")).toByteArray());
    setScans(state.value(QStringLiteral("historyScans")).toString());
}

void frmHistory::save(QSettings& state) const {
    state.setValue(QStringLiteral("historyGeometry"), saveGeometry());
    state.setValue(QStringLiteral("historySplitter"), splitter_.saveState());
    state.setValue(QStringLiteral("historyScans"), scans());
}
