#pragma once

#include <QIcon>
#include <QImage>
#include <array>

class QPainter;

// The program's mark: bars of a chart that stand in a folder, which has a gauge on its front.
struct ApplicationMark {
    std::array<double, 3> bars{0.375, 0.75, 1.0}; // heights, 0 to 1
    double gaugeFrom = 0.0;                       // the gauge is filled from here to there, 0 to 1; what lies
    double gaugeTo = 0.62;                        // outside is not seen
    bool moving = false;                          // bars grow smoothly instead of by whole pixels
};

// Paints the mark into a square from the origin, `side` pixels wide; its edges are on whole pixels. Needs
// neither a display nor an application object.
void paintApplicationMark(QPainter& painter, int side, const ApplicationMark& mark = {});

// The mark on nothing.
[[nodiscard]] QImage applicationImage(int side);

// The icon of the program's windows, in all sizes that desktops ask for.
[[nodiscard]] QIcon applicationIcon();
