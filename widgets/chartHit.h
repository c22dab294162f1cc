#pragma once

#include <QRectF>

// The part of the chart at a point.
struct ChartHit {
    enum class Part {
        nothing,
        value, // a bar, a slice or a mark
        label,
        heading // the line below the title, if it leads back to the whole pie
    };

    Part part = Part::nothing;
    int index = -1;       // of the entry; ChartSlice::rest for the slice of the rest, -1 for none
    double megabytes = 0; // the size that it shows
    QRectF area;          // the area of that part

    friend bool operator==(const ChartHit&, const ChartHit&) = default;
};
