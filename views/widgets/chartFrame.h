#pragma once

#include <QFont>
#include <QRectF>

// What of the chart does not depend on its entries: fonts, title and the room for bars or slices. Sizes of
// text are in pixels, so that a picture comes out the same on every device.
struct ChartFrame {
    // The rectangle is that of the whole chart, the font that of an ordinary text.
    ChartFrame(const QRectF& rectangle, const QFont& font);

    QRectF panel;     // the whole chart
    double scale = 1; // of texts and lengths: 1 in an ordinary window, more in a very large one
    QFont titleFont;
    QFont labelFont;
    QFont markFont;
    double labelWidth = 0;  // of the bars' labels
    double labelHeight = 0; // of a line of labelFont
    double markHeight = 0;  // of a mark's box
    QRectF title;
    QRectF plot;          // where bars stand: the plane in front of the walls
    QPointF depth;        // from there to the back wall
    QRectF pieRoom;       // for slices and their labels
    bool hasRoom = false; // false when the panel is too small for more than itself

    [[nodiscard]] QRectF backWall() const { return plot.translated(depth); }
    [[nodiscard]] double length(double pixels) const { return pixels * scale; }
    // The same for a panel of another size, which begins where this one does: texts, margins and depth stay.
    [[nodiscard]] ChartFrame resized(const QSizeF& size) const;
    // The height that a bar with readable labels needs.
    [[nodiscard]] double leastSlot() const { return markHeight + 1; }
    // For how many bars with readable labels the plot is tall enough.
    [[nodiscard]] int barRoom() const;

private:
    void findRoom();
};
