#pragma once

#include <QFont>
#include <QString>
#include <span>

#include "views/chartAxis.h"
#include "views/quickSort.h"
#include "widgets/chartColours.h"

enum class ChartStyle { bar, pie };

// Everything that a picture of the chart shows. It refers to entries owned by the painter's caller.
struct ChartState {
    std::span<const ChartEntry> entries; // ascending by size; changes: by their amount
    ChartValues values = ChartValues::sizes;
    ChartStyle style = ChartStyle::bar;
    bool entire = false; // all bars at once, regardless of scrolling
    int position = 0;    // the number of the largest bars scrolled past (views/chartPaging.h)
    int hovered = -1;    // the entry under the pointer, ChartSlice::rest for the rest, -1 for none
    int selected = -1;   // the same with the keyboard's highlight
    QFont font;          // of ordinary text; the chart's fonts are derived from it
    ChartColours colours;
    QString hint;   // shown if there are no bars or slices
    QString folder; // shown below the title; empty for no such line
    QString date;   // at the end of that line; may be empty
    QString part;   // of the folder, if the entries are only that: "Other (52)"
};
