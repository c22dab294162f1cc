#pragma once

#include <QRectF>
#include <QString>
#include <cstddef>

#include "widgets/chartFrame.h"
#include "widgets/chartState.h"

// The line below the chart's title: the folder's path (and its part), and beside it what is shown of it. They
// are placed apart, so that a name written from right to left does not move the figures.
struct ChartHeading {
    // `shown` is the number of entries with a bar or slice of their own in view.
    ChartHeading(const ChartFrame& frame, const ChartState& state, std::size_t shown);

    QString name; // shortened in the middle to fit
    QString figures;
    QRectF nameArea; // null if there is no line
    QRectF figuresArea;
};
