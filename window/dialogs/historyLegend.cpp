#include "window/dialogs/historyLegend.h"

#include <QEvent>
#include <QScrollBar>

#include "widgets/qtText.h"

HistoryLegend::HistoryLegend(HistoryChart& chart, QWidget* parent) : QScrollArea(parent), chart_(chart) {
    setObjectName(QStringLiteral("lgdHistory"));
    setAccessibleName(QStringLiteral("Lines"));
    setWidget(&room_);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    layout_.setContentsMargins(0, 0, 0, 0);
    layout_.addStretch(1);
}

void HistoryLegend::fill(const QStringList& paths) {
    boxes_.clear();
    const int room = sizeHint().width() - verticalScrollBar()->sizeHint().width() -
                     4 * fontMetrics().height(); // for the box and the sample
    for (std::size_t line = 0; line < chart_.chart().lines().size(); ++line) {
        const QString name = modQt::shownText(chart_.chart().lines()[line].name);
        QString text = fontMetrics().elidedText(name, Qt::ElideMiddle, room);
        auto& box = *boxes_.emplace_back(
            std::make_unique<QCheckBox>(text.replace(u'&', QStringLiteral("&&")), &room_));
        box.setObjectName(QStringLiteral("chkLine%1").arg(line));
        box.setAccessibleName(name);
        box.setToolTip(modQt::tip(paths.value(static_cast<qsizetype>(line))));
        box.setIconSize(QSize(2, 1) * fontMetrics().height());
        box.setChecked(chart_.chart().lines()[line].isShown);
        connect(&box, &QCheckBox::toggled, &chart_,
                [this, line](bool isOn) { chart_.setLineShown(line, isOn); });
        layout_.insertWidget(static_cast<int>(line), &box);
        box.show();
    }
    paintSamples();
}

void HistoryLegend::paintSamples() {
    for (std::size_t line = 0; line < boxes_.size(); ++line) {
        boxes_[line]->setIcon(chart_.sampleOf(line));
    }
}

void HistoryLegend::changeEvent(QEvent* event) {
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        QMetaObject::invokeMethod(
            this, [this] { paintSamples(); }, Qt::QueuedConnection); // after the chart
    }
}

QSize HistoryLegend::sizeHint() const {
    return QSize(15, 10) * fontMetrics().height();
}

QSize HistoryLegend::minimumSizeHint() const {
    return QSize(15, 3) * fontMetrics().height();
}
