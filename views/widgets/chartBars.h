#pragma once

#include <QString>
#include <vector>

#include "views/chartAxis.h"
#include "views/widgets/chartFrame.h"
#include "views/widgets/chartHit.h"
#include "views/widgets/chartState.h"

// One bar in view, with its label on the left and its mark at the end.
struct ChartBar {
    int index = 0; // of the entry, or of the largest of those that the bar stands for
    double megabytes = 0;
    QString label; // as far as there is room for it
    QString value;
    QRectF labelArea;
    QRectF front; // of the bar's box
    QRectF mark;
    QPointF markFrom; // where the mark's line begins
    QPointF markTo;

    // Whether it has a label and a mark; every bar has them where there is room.
    [[nodiscard]] bool hasTexts() const { return !mark.isNull(); }
};

// Where the bars in view stand, smallest first (at the bottom). The axis is that of the bars in view, so that
// those scrolled to can be told apart however small they are. When all bars of a large folder are in view,
// only some have texts, and where there are more of them than pixels, a bar stands for several entries.
struct ChartBars {
    ChartBars(const ChartFrame& frame, const ChartState& state);

    std::vector<ChartBar> bars;
    ChartAxis axis;
    bool boxes = true; // false when bars are too thin for edges and sides
    QPointF depth;     // of a bar's box
    double zero = 0;   // x of the value 0 on the front plane
    double pixelsPerMegabyte = 0;

    [[nodiscard]] double x(double megabytes) const { return zero + megabytes * pixelsPerMegabyte; }
    [[nodiscard]] ChartHit hit(QPointF point) const;
    // Where the tip of an entry belongs; null when it is not in view.
    [[nodiscard]] QRectF markOf(int index) const;

private:
    double writeTexts(const ChartFrame& frame, const ChartState& state);
    void setRange(const ChartFrame& frame, double markWidth);
    void place(const ChartFrame& frame);
    void placeMark(const ChartFrame& frame, std::size_t index);

    double slot_ = 0; // the height that a bar has, with the gap above it
};
