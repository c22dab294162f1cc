#pragma once

#include <QColor>
#include <QPalette>

#include "widgets/chartLook.h"

// The chart's colours. Those of chartLook belong to a light palette, and to pictures for documents; a dark
// palette has counterparts mixed from its own colours.
struct ChartColours {
    // Of a palette whose window text is lighter than its window: dark ones; of others: the usual ones.
    [[nodiscard]] static ChartColours of(const QPalette& palette);

    bool dark = false;

    QRgb panelStart = chartLook::panelStart;
    QRgb panelEnd = chartLook::panelEnd;
    QRgb panelBorder = chartLook::panelBorder;

    QRgb backWallStart = chartLook::backWallStart;
    QRgb backWallEnd = chartLook::backWallEnd;
    QRgb sideWallStart = chartLook::sideWallStart;
    QRgb sideWallEnd = chartLook::sideWallEnd;
    QRgb wallEdge = chartLook::wallEdge;
    QRgb gridLine = chartLook::gridLine;
    QRgb zeroLine = chartLook::zeroLine;

    QRgb titleText = chartLook::titleText;
    QRgb labelText = chartLook::labelText;
    QRgb quietText = chartLook::quietText;
    QRgb accentText = chartLook::accent; // and lines
    QRgb selectedFill = chartLook::accent;
    QRgb selectedText = chartLook::selectedText;
    QRgb hoveredFill = chartLook::highlightStart;

    QRgb barStart = chartLook::barStart;
    QRgb barEnd = chartLook::barEnd;
    QRgb barEdge = chartLook::barEdge;
    QRgb thinStart = chartLook::thinStart;
    QRgb thinEnd = chartLook::thinEnd;
    QRgb highlightStart = chartLook::highlightStart;
    QRgb highlightEnd = chartLook::highlightEnd;
    QRgb markFill = chartLook::markFill;
    QRgb markEdge = chartLook::markEdge;

    QRgb restSlice = chartLook::restSlice;
    QRgb sliceEdge = chartLook::panelEnd;

    // Of a slice's line to its label.
    [[nodiscard]] QColor lineOf(const QColor& slice) const;

    bool operator==(const ChartColours&) const = default;
};
