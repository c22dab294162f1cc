#include "widgets/chartHeading.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "views/chartHeading.h"

ChartHeading::ChartHeading(const ChartFrame& frame, const ChartState& state, std::size_t shown) {
    if (shown == 0 || frame.heading.isNull()) {
        return;
    }
    const QFontMetricsF metrics(frame.markFont);
    const auto widthOf = [&metrics](const QString& text) {
        return std::ceil(metrics.horizontalAdvance(text));
    };
    const double room = frame.heading.width();
    figures = QStringLiteral(" \u00b7 ") +
              QString::fromStdString(chartHeadingFigures(state.entries, shown, state.values));
    if (!state.date.isEmpty()) {
        figures += QStringLiteral(" \u00b7 ") + state.date;
    }
    figures = metrics.elidedText(figures, Qt::ElideRight, room);
    const QString part = state.part.isEmpty() ? QString() : QStringLiteral(" \u203a ") + state.part;
    const double folderRoom = std::max(room - widthOf(part) - widthOf(figures), 0.0);
    name = metrics.elidedText(state.folder, Qt::ElideMiddle, folderRoom) + part;
    const double left = std::round(frame.heading.center().x() - (widthOf(name) + widthOf(figures)) / 2);
    nameArea = QRectF(left, frame.heading.top(), widthOf(name), frame.heading.height());
    figuresArea = QRectF(nameArea.right(), frame.heading.top(), widthOf(figures), frame.heading.height());
}
