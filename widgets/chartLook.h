#pragma once

#include <QColor>
#include <QString>
#include <array>

// The chart's look: colours, and lengths in pixels of an ordinary window (scaled by ChartFrame::length).
// Painters take the colours from ChartColours.
namespace chartLook {

inline constexpr QRgb silver = qRgb(192, 192, 192);
inline constexpr QRgb accent = qRgb(37, 103, 169);

// Panel: from silver at the top left to white.
inline constexpr QRgb panelStart = silver;
inline constexpr QRgb panelEnd = qRgb(255, 255, 255);
inline constexpr QRgb panelBorder = accent;

// Walls.
inline constexpr QRgb backWallStart = qRgb(255, 255, 255);
inline constexpr QRgb backWallEnd = qRgb(116, 154, 182);
inline constexpr QRgb sideWallStart = silver;
inline constexpr QRgb sideWallEnd = qRgb(223, 223, 223);
inline constexpr QRgb wallEdge = qRgb(128, 134, 142);
inline constexpr QRgb gridLine = qRgba(70, 90, 112, 80);
inline constexpr QRgb zeroLine = qRgba(40, 56, 76, 170);

// Margins and 3D depth, as shares of the panel and of the plot's shorter side.
inline constexpr double leftMargin = 0.05;
inline constexpr double rightMargin = 0.05;
inline constexpr double bottomMargin = 0.05;
inline constexpr double topMargin = 0;
inline constexpr double depth = 0.05;

// Texts.
inline constexpr QRgb titleText = qRgb(0, 0, 128); // navy
inline constexpr QRgb labelText = qRgb(24, 28, 34);
inline constexpr QRgb selectedText = qRgb(255, 255, 255); // on the highlight colour
inline constexpr QRgb quietText = qRgb(72, 80, 92);
inline constexpr double titleSize = 1.4;        // relative to ordinary text
inline constexpr double leastWithHeading = 200; // height of a panel with a line below its title
inline constexpr double labelLength = 100;
inline constexpr double leastLabelShare = 0.3; // of the panel's width, if that is small
inline constexpr double mostLabelShare = 1.0 / 3;
inline constexpr double gap = 6; // between a text and what it describes

// Bars: colours from left to right, on top and at the end. A bar is as thick as a tenth of the category axis,
// or, if there are many, as this share of its slot.
inline constexpr double barThickness = 0.10;
inline constexpr double barShareOfSlot = 0.6;
inline constexpr double barDepth = 0.6; // of the walls' depth
inline constexpr QRgb barStart = qRgb(248, 248, 250);
inline constexpr QRgb barEnd = qRgb(160, 161, 166);
inline constexpr QRgb barEdge = qRgb(92, 96, 104);
inline constexpr QRgb thinStart = barEnd; // bars without edges
inline constexpr QRgb thinEnd = barEdge;
inline constexpr QRgb highlightStart = qRgb(232, 241, 251);
inline constexpr QRgb highlightEnd = qRgb(112, 160, 208);

// Marks.
inline constexpr double calloutLength = 20;
inline constexpr double markPadding = 4;
inline constexpr double mostMarkShare = 0.85; // of the plot's width, including their lines
inline constexpr QRgb markFill = qRgb(255, 255, 255);
inline constexpr QRgb markEdge = qRgb(112, 122, 136);

// Slices, in order of size, and the rest.
inline constexpr std::array<QRgb, 15> slices{
    qRgb(63, 116, 181), qRgb(232, 166, 62),  qRgb(60, 157, 147), qRgb(201, 96, 82),   qRgb(126, 104, 176),
    qRgb(140, 174, 76), qRgb(204, 126, 162), qRgb(92, 178, 208), qRgb(158, 116, 82),  qRgb(47, 80, 130),
    qRgb(194, 178, 66), qRgb(82, 148, 94),   qRgb(154, 84, 130), qRgb(228, 142, 108), qRgb(112, 134, 152)};
inline constexpr QRgb restSlice = qRgb(184, 188, 194);
inline constexpr double pieTilt = 0.82; // height of the pie relative to its width

} // namespace chartLook
