#include "window/tabs/filterBar.h"

#include <QKeyEvent>

#include "base/numberFormat.h"
#include "widgets/helpTopic.h"
#include "widgets/listView.h"

namespace {

constexpr int millisecondsAfterTyping = 150;

} // namespace

FilterBar::FilterBar(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("filterBar"));
    label_.setText(QStringLiteral("Fil&ter:"));
    label_.setBuddy(&txtFilter_);
    txtFilter_.setObjectName(QStringLiteral("txtFilter"));
    txtFilter_.setAccessibleName(QStringLiteral("Filter of the list"));
    txtFilter_.setToolTip(
        QStringLiteral("Show only the rows with this text in a name, folder or owner, whatever its case "
                       "(Ctrl+F; Esc ends it)"));
    txtFilter_.setPlaceholderText(QStringLiteral("text in the rows to show"));
    txtFilter_.installEventFilter(this);
    lblFilter_.setObjectName(QStringLiteral("lblFilter"));
    cmdCloseFilter_.setObjectName(QStringLiteral("cmdCloseFilter"));
    cmdCloseFilter_.setText(QStringLiteral("\u00d7"));
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.4);
    cmdCloseFilter_.setFont(large);
    cmdCloseFilter_.setAutoRaise(true);
    cmdCloseFilter_.setAccessibleName(QStringLiteral("Close filter"));
    cmdCloseFilter_.setToolTip(QStringLiteral("Show all rows (Esc in the box)"));
    cmdCloseFilter_.setFocusPolicy(Qt::TabFocus);
    const int margin = fontMetrics().height() / 4;
    layout_.setContentsMargins(margin, margin, margin, margin);
    layout_.addWidget(&label_);
    layout_.addWidget(&txtFilter_, 1);
    layout_.addWidget(&lblFilter_);
    layout_.addWidget(&cmdCloseFilter_);
    modQt::setHelpTopic(*this, "find.html");
    tmrFilter_.setParent(this);
    tmrFilter_.setObjectName(QStringLiteral("tmrFilter"));
    tmrFilter_.setSingleShot(true);
    tmrFilter_.setInterval(millisecondsAfterTyping);
    connect(&txtFilter_, &QLineEdit::textChanged, &tmrFilter_, qOverload<>(&QTimer::start));
    connect(&tmrFilter_, &QTimer::timeout, this, &FilterBar::apply);
    connect(&cmdCloseFilter_, &QToolButton::clicked, this, &FilterBar::close);
    hide();
}

void FilterBar::setList(ListView* list) {
    if (list == list_) {
        return;
    }
    if (list_ != nullptr) {
        list_->rows().disconnect(this);
        list_->setFilter({});
    }
    list_ = list;
    setVisible(isOpen_ && list_ != nullptr);
    if (list_ != nullptr) {
        for (const auto change : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved}) {
            connect(&list_->rows(), change, this, &FilterBar::showCount);
        }
        connect(&list_->rows(), &QAbstractItemModel::modelReset, this, &FilterBar::showCount);
    }
    apply();
}

void FilterBar::open() {
    if (list_ == nullptr) {
        return;
    }
    isOpen_ = true;
    show();
    apply();
    txtFilter_.setFocus(Qt::ShortcutFocusReason);
    txtFilter_.selectAll();
}

void FilterBar::close() {
    const bool hadFocus = isAncestorOf(window()->focusWidget());
    txtFilter_.clear();
    isOpen_ = false;
    hide();
    apply();
    if (hadFocus && list_ != nullptr) {
        list_->setFocus();
    }
}

void FilterBar::apply() {
    tmrFilter_.stop();
    if (list_ != nullptr) {
        list_->setFilter(txtFilter_.text().toStdString());
    }
    showCount();
}

void FilterBar::showCount() {
    const bool isNarrowed = list_ != nullptr && !list_->rows().filter().empty();
    lblFilter_.setText(isNarrowed
                           ? QString::fromStdString(modFormat::countText(list_->rows().rowCount()) + " of " +
                                                    modFormat::countText(list_->rows().allRowCount()))
                           : QString());
}

// Escape is this box's own while it has the focus, also where it otherwise would cancel a scan. Enter and
// Down go to the rows.
bool FilterBar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress) {
        return QWidget::eventFilter(watched, event);
    }
    const auto& key = *static_cast<const QKeyEvent*>(event);
    const bool isEscape = key.key() == Qt::Key_Escape && key.modifiers() == Qt::NoModifier;
    if (event->type() == QEvent::ShortcutOverride) {
        if (isEscape) {
            event->accept();
        }
        return isEscape;
    }
    if (isEscape) {
        close();
    } else if ((key.key() == Qt::Key_Return || key.key() == Qt::Key_Down) && list_ != nullptr &&
               key.modifiers() == Qt::NoModifier) {
        apply();
        list_->setFocus();
        if (list_->selectedRow() < 0 && list_->rows().rowCount() > 0) {
            list_->selectRow(0);
        }
    } else {
        return QWidget::eventFilter(watched, event);
    }
    return true;
}
