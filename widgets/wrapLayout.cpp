#include "widgets/wrapLayout.h"

#include <QStyle>
#include <QWidget>
#include <algorithm>

WrapLayout::WrapLayout(QWidget* parent) : QLayout(parent) {}

WrapLayout::~WrapLayout() = default;

void WrapLayout::addItem(QLayoutItem* item) {
    items_.emplace_back(item);
}

int WrapLayout::count() const {
    return static_cast<int>(items_.size());
}

QLayoutItem* WrapLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* WrapLayout::takeAt(int index) {
    if (itemAt(index) == nullptr) {
        return nullptr;
    }
    QLayoutItem* const taken = items_[static_cast<std::size_t>(index)].release();
    items_.erase(items_.begin() + index);
    return taken;
}

int WrapLayout::heightForWidth(int width) const {
    return layOut(QRect(0, 0, width, 0), false);
}

QSize WrapLayout::sizeHint() const {
    return minimumSize();
}

QSize WrapLayout::minimumSize() const {
    QSize size;
    for (const auto& item : items_) {
        if (item->isEmpty()) { // hidden
            continue;
        }
        size = size.expandedTo(item->minimumSize());
    }
    return size.grownBy(contentsMargins());
}

void WrapLayout::setGeometry(const QRect& place) {
    QLayout::setGeometry(place);
    layOut(place, true);
}

int WrapLayout::layOut(const QRect& room, bool places) const {
    const QRect inner = room.marginsRemoved(contentsMargins());
    const QWidget* const widget = parentWidget();
    const bool isRightToLeft = widget != nullptr && widget->isRightToLeft();
    const int gap = std::max(spacing(), 0);
    int x = 0;
    int y = 0;
    int lineHeight = 0;
    for (const auto& item : items_) {
        if (item->isEmpty()) {
            continue;
        }
        const QSize size = item->sizeHint().boundedTo(
            {std::max(inner.width(), item->minimumSize().width()), QWIDGETSIZE_MAX});
        if (x > 0 && x + size.width() > inner.width()) {
            x = 0;
            y += lineHeight + gap;
            lineHeight = 0;
        }
        if (places) {
            const int left = isRightToLeft ? inner.right() + 1 - x - size.width() : inner.left() + x;
            item->setGeometry({{left, inner.top() + y}, size});
        }
        x += size.width() + 2 * gap;
        lineHeight = std::max(lineHeight, size.height());
    }
    return y + lineHeight + room.height() - inner.height();
}
