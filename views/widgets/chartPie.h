#pragma once

#include <QColor>
#include <QPainterPath>
#include <QString>
#include <vector>

#include "views/widgets/chartFrame.h"
#include "views/widgets/chartHit.h"
#include "views/widgets/chartState.h"

// One slice, with its label beside the pie.
struct ChartPieSlice {
    int index = -1; // of the entry; -1 for all the rest
    double megabytes = 0;
    double from = 0; // turns clockwise from the top
    double to = 0;
    QColor colour;
    QString name; // as far as there is room for it
    QString value;
    QRectF label;      // null when there is no room for one
    QPointF labelFrom; // its line: from the slice's edge over the elbow to the label
    QPointF elbow;
    QPointF labelTo;

    [[nodiscard]] bool isWhole() const { return to - from > 0.9999; }
    // The turn at which its label's line begins, and on which side of the pie that is.
    [[nodiscard]] double middle() const { return isWhole() ? 0.25 : (from + to) / 2; }
    [[nodiscard]] bool isRight() const { return middle() < 0.5; }
};

// Where the slices lie, clockwise from the top; the largest comes first where that leaves room for all
// labels.
struct ChartPie {
    ChartPie(const ChartFrame& frame, const ChartState& state);

    std::vector<ChartPieSlice> slices;
    QRectF top;            // the ellipse of the pie's upper side
    double depth = 0;      // from there down to the lower side
    bool twoLines = false; // of a label: the name above the value, not beside it

    // The slice's part of the upper side, and what is seen of its outer side (empty at the back).
    [[nodiscard]] QPainterPath topOf(const ChartPieSlice& slice) const;
    [[nodiscard]] QPainterPath sideOf(const ChartPieSlice& slice) const;
    // The point on the edge of the upper side, or so far outside it.
    [[nodiscard]] QPointF onEdge(double turn, double distance = 0) const;
    [[nodiscard]] ChartHit hit(QPointF point) const;
    // Where the tip of an entry belongs; null when it has no slice.
    [[nodiscard]] QRectF markOf(int index) const;

private:
    double writeLabels(const ChartFrame& frame);
    void placePie(const ChartFrame& frame, double labelWidth);
    void placeLabels(const ChartFrame& frame, double width, bool right);
};
