#include "widgets/chartAccessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>
#include <map>
#include <memory>

#include "widgets/chartLabel.h"
#include "widgets/folderChart.h"
#include "widgets/historyChart.h"
#include "widgets/treemap.h"

namespace {

template <class Control>
QString nameOf(Control& chart, int index) {
    return chartLabel(chart.shownEntry(index));
}
template <class Control>
QString valueOf(Control& chart, int index) {
    return chart.valueText(chart.shownEntry(index).size);
}
QString nameOf(HistoryChart& chart, int index) {
    return chart.nameOf(index);
}
QString valueOf(HistoryChart& chart, int index) {
    return chart.valueOf(index);
}

// One bar, slice, tile or point, known by its rank: what stands there may change.
template <class Control>
class Item final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    Item(Control* chart, int rank) : chart_(chart), rank_(rank) {}

    [[nodiscard]] bool isValid() const override { return !chart_.isNull() && rank_ < chart_->selectable(); }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return chart_ ? QAccessible::queryAccessibleInterface(chart_) : nullptr;
    }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::ListItem; }

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        if (!isValid()) {
            return {};
        }
        switch (kind) {
        case QAccessible::Name:
            return nameOf(*chart_, index());
        case QAccessible::Value:
            return valueOf(*chart_, index());
        default:
            return {};
        }
    }
    void setText(QAccessible::Text, const QString&) override {}

    // On the screen; null if it is not in view.
    [[nodiscard]] QRect rect() const override {
        const QRectF area = isValid() && chart_->isVisible() ? chart_->markOf(index()) : QRectF();
        return area.isNull() ? QRect() : area.toAlignedRect().translated(chart_->mapToGlobal(QPoint(0, 0)));
    }

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        state.focusable = true;
        state.selectable = true;
        state.selected = chart_->selected() == index();
        state.focused = state.selected && chart_->hasFocus();
        state.offscreen = rect().isNull();
        state.invisible = !chart_->isVisible();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    [[nodiscard]] QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString& name) override {
        if (!isValid()) {
            return;
        }
        chart_->setFocus();
        chart_->selectRank(rank_);
        if (name == pressAction()) {
            chart_->activateSelected();
        }
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

    [[nodiscard]] int rank() const { return rank_; }

private:
    [[nodiscard]] int index() const { return chart_->indexAt(rank_); }

    QPointer<Control> chart_;
    int rank_;
};

template <class Control>
class Chart final : public QAccessibleWidget {
public:
    explicit Chart(Control* chart) : QAccessibleWidget(chart, QAccessible::List), chart_(chart) {}
    ~Chart() override {
        for (const auto& [rank, id] : items_) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }
    Chart(const Chart&) = delete;
    Chart& operator=(const Chart&) = delete;

    [[nodiscard]] int childCount() const override { return isValid() ? chart_->selectable() : 0; }
    [[nodiscard]] QAccessibleInterface* child(int rank) const override {
        if (rank < 0 || rank >= childCount()) {
            return nullptr;
        }
        const auto known = items_.find(rank);
        if (known != items_.end()) {
            return QAccessible::accessibleInterface(known->second);
        }
        QAccessibleInterface* const item = std::make_unique<Item<Control>>(chart_, rank).release();
        items_[rank] = QAccessible::registerAccessibleInterface(item); // which owns it
        return item;
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* const item = dynamic_cast<const Item<Control>*>(child);
        return item == nullptr ? -1 : item->rank();
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        const int index = chart_->entryAt(chart_->mapFromGlobal(QPointF(x, y)));
        return index == -1 ? nullptr : child(chart_->rankOf(index));
    }
    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        return chart_->hasFocus() && chart_->selected() != -1 ? child(chart_->rankOf(chart_->selected()))
                                                              : nullptr;
    }

private:
    Control* chart_; // lives longer
    mutable std::map<int, QAccessible::Id> items_;
};

// Null if the object is none of these controls. Qt deletes what it gets.
template <class Control>
QAccessibleInterface* interfaceOfAny(QObject* object) {
    auto* const chart = qobject_cast<Control*>(object);
    return chart == nullptr ? nullptr : std::make_unique<Chart<Control>>(chart).release();
}

QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
    QAccessibleInterface* chart = interfaceOfAny<FolderChart>(object);
    chart = chart == nullptr ? interfaceOfAny<Treemap>(object) : chart;
    return chart == nullptr ? interfaceOfAny<HistoryChart>(object) : chart;
}

void tell(QAccessible::Event kind, QWidget& chart, int child) {
    if (QAccessible::isActive()) {
        QAccessibleEvent event(&chart, kind);
        event.setChild(child);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace

void modChartAccessible::install() {
    static const bool installed = [] {
        QAccessible::installFactory(interfaceOf);
        return true;
    }();
    static_cast<void>(installed);
}

void modChartAccessible::tellReplaced(QWidget& chart) {
    tell(QAccessible::ObjectReorder, chart, -1);
}

void modChartAccessible::tellSelected(FolderChart& chart) {
    tell(QAccessible::Focus, chart, chart.rankOf(chart.selected()));
}

void modChartAccessible::tellSelected(HistoryChart& chart) {
    tell(QAccessible::Focus, chart, chart.selected());
}

void modChartAccessible::tellSelected(Treemap& treemap) {
    tell(QAccessible::Focus, treemap, treemap.selected());
}
