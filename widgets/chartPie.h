#pragma once

#include <QColor>
#include <QPainterPath>
#include <QString>
#include <vector>

#include "widgets/chartFrame.h"
#include "widgets/chartHit.h"
#include "widgets/chartState.h"

// One slice, with its label beside the pie.
struct ChartPieSlice {
    int index = -1; // of the entry; ChartSlice::rest for the rest
    double megabytes = 0;
    double from = 0; // in turns, clockwise from the top
    double to = 0;
    QColor colour;
    QString name; // shortened to fit
    QString value;
    QRectF label;      // null if there is no room
    QPointF labelFrom; // its line: from the slice's edge through the elbow to the label
    QPointF elbow;
    QPointF labelTo;

    [[nodiscard]] bool isWhole() const { return to - from > 0.9999; }
    // The turn at which the label's line begins, which also decides the label's side.
    [[nodiscard]] double middle() const { return isWhole() ? 0.25 : (from + to) / 2; }
    [[nodiscard]] bool isRight() const { return middle() < 0.5; }
};

// The places of the slices, clockwise from the top; the largest comes first if that leaves room for all
// labels.
struct ChartPie {
    ChartPie(const ChartFrame& frame, const ChartState& state);

    std::vector<ChartPieSlice> slices;
    QRectF top;            // the ellipse of the pie's upper side
    double depth = 0;      // from the upper side to the lower side
    bool twoLines = false; // of a label: the name is above the value, not beside it

    // The slice's part of the upper side, and the visible part of its outer side (empty at the back).
    [[nodiscard]] QPainterPath topOf(const ChartPieSlice& slice) const;
    [[nodiscard]] QPainterPath sideOf(const ChartPieSlice& slice) const;
    // The point on the edge of the upper side, or at this distance outside it.
    [[nodiscard]] QPointF onEdge(double turn, double distance = 0) const;
    [[nodiscard]] ChartHit hit(QPointF point) const;
    // The place for the tip of an entry; null if it has no slice.
    [[nodiscard]] QRectF markOf(int index) const;

private:
    double writeLabels(const ChartFrame& frame);
    void placePie(const ChartFrame& frame, double labelWidth);
    void placeLabels(const ChartFrame& frame, double width, bool right);
};
