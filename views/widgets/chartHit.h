#pragma once

#include <QRectF>

// What of the chart lies at a point.
struct ChartHit {
    enum class Part { nothing, value, label }; // `value`: a bar, a slice or a mark

    Part part = Part::nothing;
    int index = -1;       // of the entry; -1 for the slice of all the rest
    double megabytes = 0; // what it stands for
    QRectF area;          // around it

    friend bool operator==(const ChartHit&, const ChartHit&) = default;
};
