#pragma once

#include <QFont>
#include <QRectF>

#include "widgets/chartState.h"

// The part of the chart that stays while it is scrolled: fonts, title and the room for bars or slices.
// Text sizes are in pixels, so that a picture looks the same on every device.
struct ChartFrame {
    // `rectangle` is that of the whole chart.
    ChartFrame(const QRectF& rectangle, const ChartState& state);

    QRectF panel;     // the whole chart
    double scale = 1; // of texts and lengths: 1 in an ordinary window, larger in a very large one
    QFont titleFont;
    QFont labelFont;
    QFont markFont;
    double labelWidth = 0;  // of the bars' labels
    double labelHeight = 0; // of a line of labelFont
    double markHeight = 0;  // of a mark's box
    QRectF title;
    QRectF heading;       // the line below the title; null if there is none
    QRectF plot;          // the area of the bars: the plane in front of the walls
    QPointF depth;        // from the plot to the back wall
    QRectF pieRoom;       // the room for slices and their labels
    bool hasRoom = false; // false if only the panel fits

    [[nodiscard]] QRectF backWall() const { return plot.translated(depth); }
    [[nodiscard]] double length(double pixels) const { return pixels * scale; }
    // The same for a panel of another size with the same origin: texts, margins and depth stay.
    [[nodiscard]] ChartFrame resized(const QSizeF& size) const;
    // The height needed by a bar with readable labels.
    [[nodiscard]] double leastSlot() const { return markHeight + 1; }
    // The number of bars with readable labels that fit into the plot.
    [[nodiscard]] int barRoom() const;

private:
    [[nodiscard]] double labelWidthFor(const ChartState& state) const;
    void findRoom();
};
