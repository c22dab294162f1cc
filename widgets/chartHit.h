#pragma once

#include <QRectF>

// The part of the chart at a point.
struct ChartHit {
    enum class Part { nothing, value, label }; // `value`: a bar, a slice or a mark

    Part part = Part::nothing;
    int index = -1;       // of the entry; -1 for the slice of the rest
    double megabytes = 0; // the size that it shows
    QRectF area;          // the area of that part

    friend bool operator==(const ChartHit&, const ChartHit&) = default;
};
