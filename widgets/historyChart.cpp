#include "widgets/historyChart.h"

#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <array>
#include <utility>

#include "base/dateFormat.h"
#include "base/formatSize.h"
#include "widgets/chartAccessible.h"
#include "widgets/historyPainter.h"
#include "widgets/qtText.h"

using modTimeChart::Direction;

HistoryChart::HistoryChart(QWidget* parent) : QWidget(parent), colours_(ChartColours::of(palette())) {
    modChartAccessible::install();
    setObjectName(QStringLiteral("hst"));
    setAccessibleName(QStringLiteral("Sizes over time"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void HistoryChart::setChart(Chart chart, std::function<QString(const Place&)> tipOf) {
    chart_ = std::move(chart);
    tipOf_ = std::move(tipOf);
    selected_.reset();
    hovered_.reset();
    pressed_.reset();
    fitAxis();
    modChartAccessible::tellReplaced(*this);
    update();
}

void HistoryChart::setLineShown(std::size_t line, bool isShown) {
    chart_.setShown(line, isShown);
    if (selected_ && !chart_.isShown(*selected_)) {
        selected_.reset();
    }
    hovered_.reset();
    fitAxis();
    modChartAccessible::tellReplaced(*this);
    update();
}

// The axis of sizes ends at a label.
void HistoryChart::fitAxis() {
    chart_.fit(modHistoryPainter::mostSizes(plot(), QFontMetricsF(font())));
}

void HistoryChart::select(const std::optional<Place>& place) {
    if (place != selected_) {
        selected_ = place;
        update();
        if (selected_) {
            modChartAccessible::tellSelected(*this);
        }
    }
}

void HistoryChart::selectByHand(const std::optional<Place>& place) {
    if (place != selected_) {
        select(place);
        Q_EMIT pointSelected();
    }
}

QPixmap HistoryChart::sampleOf(std::size_t line) const {
    const QSizeF size(fontMetrics().height() * 2.0, fontMetrics().height());
    QPixmap sample((size * devicePixelRatioF()).toSize());
    sample.setDevicePixelRatio(devicePixelRatioF());
    sample.fill(Qt::transparent);
    QPainter painter(&sample);
    modHistoryPainter::paintSample(painter, {QPointF(), size}, chart_.lines().at(line), colours_);
    return sample;
}

QRectF HistoryChart::plot() const {
    return modHistoryPainter::plotOf(rect(), QFontMetricsF(font()));
}

// --- For assistive technology ---------------------------------------------------------------------------

QString HistoryChart::nameOf(int index) const {
    const Place place = chart_.placeOf(static_cast<std::size_t>(index));
    const std::string date =
        modFormat::formatDate(platform::localTime(chart_.at(place).moment), modFormat::storedDatePicture);
    return modQt::shownText(chart_.lines().at(place.line).name) + QStringLiteral(", ") +
           QString::fromStdString(date);
}

QString HistoryChart::valueOf(int index) const {
    const modTimeChart::Point& point = chart_.at(chart_.placeOf(static_cast<std::size_t>(index)));
    const QString text =
        point.isThere ? QString::fromStdString(modLvw::formatSize(point.size)) : QStringLiteral("not there");
    return point.isComplete || !point.isThere ? text : text + QStringLiteral(", cancelled");
}

int HistoryChart::entryAt(QPointF place) const {
    const auto found = placeAt(place);
    return found ? static_cast<int>(chart_.numberOf(*found)) : -1;
}

int HistoryChart::selected() const {
    return selected_ && chart_.isShown(*selected_) ? static_cast<int>(chart_.numberOf(*selected_)) : -1;
}

void HistoryChart::selectRank(int index) {
    selectByHand(chart_.placeOf(static_cast<std::size_t>(index)));
}

void HistoryChart::activateSelected() {
    if (selected_ && chart_.isShown(*selected_)) {
        Q_EMIT pointActivated();
    }
}

QRectF HistoryChart::markOf(int index) const {
    constexpr double side = 9;
    const QPointF middle =
        modHistoryPainter::pointIn(plot(), chart_, chart_.placeOf(static_cast<std::size_t>(index)));
    return {middle - QPointF(side / 2, side / 2), QSizeF(side, side)};
}

// --- Events ---------------------------------------------------------------------------------------------

QSize HistoryChart::sizeHint() const {
    return QSize(40, 18) * fontMetrics().height();
}

QSize HistoryChart::minimumSizeHint() const {
    return QSize(20, 8) * fontMetrics().height();
}

std::optional<modTimeChart::Place> HistoryChart::placeAt(QPointF point) const {
    const QRectF area = plot();
    if (area.width() < 1 || area.height() < 1) {
        return {};
    }
    const modTimeChart::Position position{(point.x() - area.left()) / area.width(),
                                          (area.bottom() - point.y()) / area.height()};
    return chart_.nearest(position, area.width(), area.height(), fontMetrics().height());
}

bool HistoryChart::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) { // it is shown as soon as the pointer is there
        return true;
    }
    return QWidget::event(event);
}

void HistoryChart::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    fitAxis();
    modHistoryPainter::paint(
        painter, {chart_, colours_, QFontMetricsF(font()), QRectF(rect()), selected_, hovered_, hasFocus()});
    painter.setPen(QColor::fromRgb(hasFocus() ? colours_.accentText : colours_.markEdge));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void HistoryChart::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        colours_ = ChartColours::of(palette());
        update();
    }
    QWidget::changeEvent(event);
}

void HistoryChart::showTip(const Place& place) {
    const QPointF middle = modHistoryPainter::pointIn(plot(), chart_, place);
    QToolTip::showText(mapToGlobal(middle.toPoint()) + QPoint(fontMetrics().height() / 2, 0),
                       modQt::tip(tipOf_ ? tipOf_(place) : QString()), this);
}

void HistoryChart::hover(const std::optional<Place>& place) {
    if (place == hovered_) {
        return;
    }
    hovered_ = place;
    setCursor(place ? Qt::PointingHandCursor : Qt::ArrowCursor);
    if (place) {
        showTip(*place);
    } else {
        QToolTip::hideText();
    }
    update();
}

void HistoryChart::mouseMoveEvent(QMouseEvent* event) {
    hover(placeAt(event->position()));
}

void HistoryChart::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        pressed_ = placeAt(event->position());
    }
}

void HistoryChart::mouseReleaseEvent(QMouseEvent* event) {
    const auto pressed = std::exchange(pressed_, std::nullopt);
    if (event->button() == Qt::LeftButton && pressed && placeAt(event->position()) == pressed) {
        selectByHand(pressed);
        activateSelected();
    }
}

void HistoryChart::leaveEvent(QEvent* event) {
    hover({});
    QWidget::leaveEvent(event);
}

void HistoryChart::keyPressEvent(QKeyEvent* event) {
    constexpr std::array<std::pair<int, Direction>, 6> keys{{{Qt::Key_Left, Direction::earlier},
                                                             {Qt::Key_Right, Direction::later},
                                                             {Qt::Key_Up, Direction::larger},
                                                             {Qt::Key_Down, Direction::smaller},
                                                             {Qt::Key_Home, Direction::first},
                                                             {Qt::Key_End, Direction::last}}};
    for (const auto& [key, direction] : keys) {
        if (event->key() == key && (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
            selectByHand(chart_.moved(selected_, direction));
            if (selected_) {
                showTip(*selected_);
            }
            return;
        }
    }
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if ((isEnter || event->key() == Qt::Key_Space) && selected() != -1) {
        activateSelected();
        return;
    }
    QWidget::keyPressEvent(event);
}

void HistoryChart::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    update();
    if (selected_) {
        modChartAccessible::tellSelected(*this);
    }
}

void HistoryChart::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    QToolTip::hideText();
    update();
}
