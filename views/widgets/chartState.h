#pragma once

#include <QFont>
#include <QString>
#include <span>

#include "views/quickSort.h"

enum class ChartStyle { bar, pie };

// What a picture of the chart shows. A view: the entries belong to whoever paints.
struct ChartState {
    std::span<const ChartEntry> entries; // ascending by size
    ChartStyle style = ChartStyle::bar;
    bool entire = false; // all bars at once, wherever the chart is scrolled to
    int position = 0;    // how many of the largest bars are scrolled past (views/chartPaging.h)
    int hovered = -1;    // the entry under the pointer, -1 for none
    int selected = -1;   // the entry with the keyboard's highlight, -1 for none
    QFont font;          // of an ordinary text; the chart's own are made from it
    QString hint;        // shown in place of bars or slices when there are none
};
