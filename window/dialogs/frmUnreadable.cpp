#include "window/dialogs/frmUnreadable.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "base/clsFile.h"
#include "platform/paths.h"
#include "scan/figureGaps.h"
#include "widgets/helpTopic.h"
#include "widgets/lvsort.h"

namespace {

constexpr std::array<ListColumn, 2> listColumns{
    {{"Path", "", false, "A folder's path, not a very long one"},
     {"Reason", "", false, "Transport endpoint is not connected"}}};

// Kinds of rows, in the order of the list.
enum Group : std::size_t { folderGroup, fileGroup, volumeGroup };
constexpr std::array groupPictures{QStyle::SP_DirClosedIcon, QStyle::SP_FileIcon, QStyle::SP_DriveHDIcon};

using Groups = std::array<std::vector<ListRow>, groupPictures.size()>;

// The path without the separator at its end, which only a drive's root keeps. clsFile takes no path that is
// too long to be read.
std::string shownPath(const std::string& key) {
    constexpr std::size_t longestRoot = 1000;
    std::string path = platform::displayPath(key);
    if (path.ends_with(platform::displaySeparator) &&
        (key.size() > longestRoot || clsFile(key).drive() != key)) {
        path.pop_back();
    }
    return path;
}

void append(Groups& groups, Group group, const std::string& path, const std::string& reason) {
    const std::string shown = shownPath(path);
    const std::array<ListCell, 2> cells{{{shown, {}}, {reason, {}}}};
    groups.at(group).emplace_back(path, std::string_view(), cells).icon = QString::number(group);
}

Groups groupsOf(const FigureGaps& gaps) {
    Groups groups;
    for (const auto& [path, skipped] : gaps.folders()) {
        const bool isOther = skipped.kind == FigureGaps::Kind::otherVolume;
        append(groups, isOther ? volumeGroup : folderGroup, path, skipped.reason);
    }
    for (const auto& [path, files] : gaps.files()) {
        for (const FigureGaps::File& file : files) {
            append(groups, fileGroup, path + file.name, file.reason);
        }
    }
    return groups;
}

QString headLine(const Unreadable& unreadable, std::size_t others, bool withLoadedRows) {
    std::string text = unreadable.isAny() ? unreadableText(unreadable)
                       : withLoadedRows   ? ""
                                          : "All folders could be read.";
    if (withLoadedRows) {
        text.append(text.empty() ? "" : " ").append("What a saved scan could not read is not known.");
    }
    if (others > 0) {
        text += " " + std::to_string(others) +
                (others == 1 ? " other volume is not included." : " other volumes are not included.");
    }
    return QString::fromStdString(text);
}

// In quotes if a tab, a line break or a quote in it would make it look like several cells.
QString copiedCell(const std::string& text) {
    QString cell = QString::fromStdString(text);
    if (text.find_first_of("\t\r\n") == std::string::npos && !text.starts_with('"')) {
        return cell;
    }
    return u'"' + cell.replace(u'"', QStringLiteral("\"\"")) + u'"';
}

} // namespace

frmUnreadable::frmUnreadable(QWidget* parent)
    : QDialog(parent), layout_(this), lvwUnreadable_(listColumns, &images_) {
    setObjectName(QStringLiteral("frmUnreadable"));
    setWindowTitle(QStringLiteral("Unreadable Folders"));
    modQt::setHelpTopic(*this, "trouble.html");
    for (std::size_t i = 0; i < groupPictures.size(); ++i) {
        images_.add(QString::number(i), style()->standardIcon(groupPictures.at(i), nullptr, this));
    }
    layOut();
    connect(&lvwUnreadable_, &ListView::itemActivated, this,
            [this](const std::string& key) { Q_EMIT folderChosen(key.substr(0, key.rfind('\\') + 1)); });
    connect(&lvwUnreadable_, &ListView::columnClicked, this, [this](int column) {
        constexpr int toggledOrder = -1;
        modLvw::lvsort(lvwUnreadable_, column, toggledOrder, false);
    });
    connect(&lvwUnreadable_, &ListView::copyRequested, this, &frmUnreadable::copyList);
    connect(&cmdCopy_, &QPushButton::clicked, this, &frmUnreadable::copyList);
    connect(&buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
    fill({});
}

void frmUnreadable::layOut() {
    lblUnreadable_.setObjectName(QStringLiteral("lblUnreadable"));
    lblUnreadable_.setTextFormat(Qt::PlainText);
    lvwUnreadable_.setObjectName(QStringLiteral("lvwUnreadable"));
    lvwUnreadable_.setAccessibleName(QStringLiteral("Unreadable folders"));
    cmdCopy_.setObjectName(QStringLiteral("cmdCopy"));
    cmdCopy_.setText(QStringLiteral("&Copy List"));
    cmdCopy_.setToolTip(QStringLiteral("Copy the whole list to the clipboard (Ctrl+C)"));
    cmdClose_.setObjectName(QStringLiteral("cmdClose"));
    cmdClose_.setText(QStringLiteral("Close"));
    buttons_.addButton(&cmdCopy_, QDialogButtonBox::ActionRole);
    buttons_.addButton(&cmdClose_, QDialogButtonBox::RejectRole);
    layout_.addWidget(&lblUnreadable_);
    layout_.addWidget(&lvwUnreadable_, 1);
    layout_.addWidget(&buttons_);
    for (QPushButton* button : {&cmdCopy_, &cmdClose_}) {
        button->setAutoDefault(false); // neither looks as if Enter in the list pressed it
    }
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    resize((QSize(52, 28) * fontMetrics().height()).boundedTo(screen()->availableSize() * 0.9));
    lvwUnreadable_.setFocus();
}

void frmUnreadable::fill(const FigureGaps& gaps, bool withLoadedRows) {
    ListModel& rows = lvwUnreadable_.rows();
    const int selected = lvwUnreadable_.selectedRow();
    const std::string selectedKey(selected < 0 ? std::string_view() : rows.row(selected).key());
    const int scrolled = lvwUnreadable_.verticalScrollBar()->value();

    Groups groups = groupsOf(gaps);
    const Unreadable unreadable{groups[folderGroup].size(), groups[fileGroup].size()};
    const std::size_t others = groups[volumeGroup].size();
    rows.clear();
    for (std::vector<ListRow>& group : groups) {
        rows.append(std::move(group));
    }
    if (const ListSort sort = lvwUnreadable_.sort(); sort.sorted) {
        modLvw::lvsort(lvwUnreadable_, sort.key + 1, sort.order, false);
    }
    lblUnreadable_.setText(headLine(unreadable, others, withLoadedRows));
    cmdCopy_.setEnabled(rows.rowCount() > 0);
    select(selectedKey, selected);
    lvwUnreadable_.verticalScrollBar()->setValue(scrolled);
}

// Selects the row with that key; without one, the row at that place or near it.
void frmUnreadable::select(const std::string& key, int otherwise) {
    const ListModel& rows = lvwUnreadable_.rows();
    if (rows.rowCount() == 0) {
        return;
    }
    const int found = key.empty() ? -1 : rows.find(key);
    const int row = found < 0 ? std::clamp(otherwise, 0, rows.rowCount() - 1) : found;
    lvwUnreadable_.setCurrentIndex(rows.index(row, 0));
}

// The whole list, as the lists of the main window do.
void frmUnreadable::copyList() {
    const ListModel& rows = lvwUnreadable_.rows();
    if (rows.rowCount() == 0) {
        return;
    }
    QString text;
    for (const ListColumn& column : rows.columns()) {
        text += (text.isEmpty() ? QString() : QStringLiteral("\t")) + QString::fromUtf8(column.header);
    }
    for (int row = 0; row < rows.rowCount(); ++row) {
        for (int column = 0; column < rows.columnCount(); ++column) {
            text += (column == 0 ? QStringLiteral("\r\n") : QStringLiteral("\t")) +
                    copiedCell(rows.text(row, column));
        }
    }
    QGuiApplication::clipboard()->setText(text);
}

// Without a default button, Enter presses the one that has the focus.
void frmUnreadable::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QDialog::keyPressEvent(event);
    } else if (auto* const button = qobject_cast<QPushButton*>(focusWidget()); button != nullptr) {
        button->click();
    }
}
