#pragma once

#include <QIcon>
#include <QImage>
#include <array>

class QPainter;

// The program's mark: the bars of a chart standing in a folder, which has a gauge on its front.
struct ApplicationMark {
    std::array<double, 3> bars{0.375, 0.75, 1.0}; // heights, 0 to 1
    double gaugeFrom = 0.0;                       // the filled part of the gauge, 0 to 1;
    double gaugeTo = 0.62;                        // anything beyond is not visible
    bool moving = false;                          // bars grow smoothly, not in whole pixels
};

// Paints the mark into a square at the origin, `side` pixels wide, with its edges on whole pixels. Needs
// neither a display nor an application object.
void paintApplicationMark(QPainter& painter, int side, const ApplicationMark& mark = {});

// The mark on a transparent background.
[[nodiscard]] QImage applicationImage(int side);

// The icon of the program's windows, in all the sizes that desktops use.
[[nodiscard]] QIcon applicationIcon();
