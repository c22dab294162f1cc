#include "widgets/columnChoice.h"

#include <QHeaderView>
#include <QMenu>
#include <QStringList>
#include <algorithm>
#include <utility>

namespace {

QString headerOf(const ListColumn& column) {
    return QString::fromUtf8(column.header);
}

} // namespace

ColumnChoice::ColumnChoice(ListView& list, std::span<const ListColumn> further)
    : list_(list), further_(further), fixed_(list.rows().columns().size()) {
    list_.header()->setContextMenuPolicy(Qt::CustomContextMenu);
    list_.header()->setToolTip(QStringLiteral("Click to sort, right-click to choose columns"));
    connect(list_.header(), &QWidget::customContextMenuRequested, this,
            [this](const QPoint& place) { showMenu(list_.header()->mapToGlobal(place)); });
}

void ColumnChoice::setShown(std::vector<std::size_t> shown) {
    if (shown == shown_) {
        return;
    }
    Q_EMIT aboutToChange();
    shown_ = std::move(shown);
    if (sort_ && !std::binary_search(shown_.begin(), shown_.end(), sort_->further)) {
        sort_.reset();
    }
    std::vector<ListColumn> columns;
    for (const std::size_t column : shown_) {
        columns.push_back(further_[column]);
    }
    list_.setFurtherColumns(fixed_, columns);
    Q_EMIT changed();
}

void ColumnChoice::noteSort() {
    const ListSort& sort = list_.sort();
    const auto column = static_cast<std::size_t>(sort.key);
    sort_ = column < fixed_ ? std::nullopt : std::optional(Sort{shown_.at(column - fixed_), sort.order});
}

int ColumnChoice::placeOf(std::size_t further) const {
    const auto at = std::lower_bound(shown_.begin(), shown_.end(), further);
    return static_cast<int>(fixed_) + static_cast<int>(at - shown_.begin()) + 1;
}

void ColumnChoice::showMenu(const QPoint& place) {
    QMenu menu(&list_);
    menu.setObjectName(QStringLiteral("columnMenu"));
    for (std::size_t i = 0; i < further_.size(); ++i) {
        QAction* const action = menu.addAction(headerOf(further_[i]));
        action->setCheckable(true);
        action->setChecked(std::binary_search(shown_.begin(), shown_.end(), i));
        action->setData(QVariant::fromValue(i));
    }
    if (const QAction* const chosen = menu.exec(place)) {
        std::vector<std::size_t> shown = shown_;
        const auto column = chosen->data().value<std::size_t>();
        const auto at = std::lower_bound(shown.begin(), shown.end(), column);
        chosen->isChecked() ? void(shown.insert(at, column)) : void(shown.erase(at));
        setShown(std::move(shown));
    }
}

void ColumnChoice::restore(const QSettings& state) {
    const QStringList headers = state.value(list_.objectName() + QStringLiteral("Columns")).toStringList();
    std::vector<std::size_t> shown;
    for (std::size_t i = 0; i < further_.size(); ++i) {
        if (headers.contains(headerOf(further_[i]))) {
            shown.push_back(i);
        }
    }
    setShown(std::move(shown));
    const QStringList sort = state.value(list_.objectName() + QStringLiteral("SortedBy")).toStringList();
    for (const std::size_t column : shown_) {
        if (sort.size() == 2 && sort[0] == headerOf(further_[column])) {
            sort_ = Sort{column, sort[1] == QStringLiteral("0") ? 0 : 1};
        }
    }
}

void ColumnChoice::save(QSettings& state) const {
    QStringList headers;
    for (const std::size_t column : shown_) {
        headers << headerOf(further_[column]);
    }
    state.setValue(list_.objectName() + QStringLiteral("Columns"), headers);
    state.setValue(list_.objectName() + QStringLiteral("SortedBy"),
                   sort_ ? QStringList{headerOf(further_[sort_->further]), QString::number(sort_->order)}
                         : QStringList());
}
