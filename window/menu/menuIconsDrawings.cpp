#include "window/menu/menuIconsDrawings.h"

namespace modMenuIcons {

namespace {

// Every picture has its outline in the text colour and its main detail in the accent colour.
using enum Ink;

void exportData(Canvas& c) {
    c.line(outline, {{1.5, 9.5}, {1.5, 13.5}, {13.5, 13.5}, {13.5, 9.5}});
    c.line(accent, {{7.5, 9.5}, {7.5, 1.5}});
    c.line(accent, {{4.5, 4.5}, {7.5, 1.5}, {10.5, 4.5}});
}

void sheet(Canvas& c) {
    c.line(outline, {{9.5, 1.5},
                     {2.5, 1.5},
                     {2.5, 14.5},
                     {12.5, 14.5},
                     {12.5, 4.5},
                     {9.5, 1.5},
                     {9.5, 4.5},
                     {12.5, 4.5}});
}

void xmlFile(Canvas& c) {
    sheet(c);
    c.line(accent, {{6.5, 7.5}, {4.5, 9.5}, {6.5, 11.5}});
    c.line(accent, {{8.5, 7.5}, {10.5, 9.5}, {8.5, 11.5}});
}

void htmlFile(Canvas& c) {
    sheet(c);
    c.ellipse(accent, {4.5, 6.5, 10.5, 12.5});
    c.line(accent, {{4.5, 9.5}, {10.5, 9.5}});
    c.line(accent, {{7.5, 6.5}, {7.5, 12.5}});
}

void textFile(Canvas& c) {
    sheet(c);
    c.line(accent, {{5.5, 7.5}, {9.5, 7.5}});
    c.line(accent, {{5.5, 9.5}, {9.5, 9.5}});
    c.line(accent, {{5.5, 11.5}, {8.5, 11.5}});
}

void excelFile(Canvas& c) {
    sheet(c);
    c.fillRectangle(tint, {4.5, 6.5, 10.5, 12.5}, 0);
    c.rectangle(accent, {4.5, 6.5, 10.5, 12.5}, 0);
    c.line(accent, {{4.5, 9.5}, {10.5, 9.5}});
    c.line(accent, {{7.5, 6.5}, {7.5, 12.5}});
}

void cancel(Canvas& c) {
    c.ellipse(outline, {1.5, 1.5, 13.5, 13.5});
    c.line(accent, {{5.5, 5.5}, {9.5, 9.5}});
    c.line(accent, {{9.5, 5.5}, {5.5, 9.5}});
}

void pieChart(Canvas& c) {
    c.slice(outline, {1.5, 2.5, 13.5, 14.5}, 90, 270);
    c.fillSlice(tint, {4.5, 1.5, 14.5, 11.5}, 0, 90);
    c.slice(accent, {4.5, 1.5, 14.5, 11.5}, 0, 90);
}

void database(Canvas& c) {
    c.fillEllipse(tint, {2.5, 1.5, 12.5, 5.5});
    c.ellipse(outline, {2.5, 1.5, 12.5, 5.5});
    c.line(outline, {{2.5, 3.5}, {2.5, 12.5}});
    c.line(outline, {{12.5, 3.5}, {12.5, 12.5}});
    c.arc(outline, {2.5, 10.5, 12.5, 14.5}, 180, 180);
    c.arc(accent, {2.5, 6.5, 12.5, 10.5}, 180, 180);
}

void refresh(Canvas& c) {
    c.arc(outline, {2.5, 2.5, 12.5, 12.5}, 40, 290);
    c.line(accent, {{13.5, 1.5}, {13.5, 5.5}, {9.5, 5.5}});
}

void barChart(Canvas& c) {
    c.rectangle(outline, {1.5, 1.5, 6.5, 4.5}, 0);
    c.rectangle(outline, {1.5, 6.5, 10.5, 9.5}, 0);
    c.fillRectangle(tint, {1.5, 11.5, 14.5, 14.5}, 0);
    c.rectangle(accent, {1.5, 11.5, 14.5, 14.5}, 0);
    c.line(outline, {{1.5, 1.5}, {1.5, 14.5}});
}

void owners(Canvas& c) {
    c.arc(accent, {8.5, 2.5, 12.5, 7.5}, -110, 220);
    c.arc(accent, {6.5, 9.5, 14.5, 17.5}, 0, 70);
    c.ellipse(outline, {3.5, 2.5, 8.5, 7.5});
    c.arc(outline, {1.5, 9.5, 10.5, 17.5}, 0, 180);
    c.line(outline, {{1.5, 13.5}, {10.5, 13.5}});
}

void help(Canvas& c) {
    c.rectangle(outline, {2.5, 1.5, 12.5, 14.5}, 1);
    c.line(outline, {{2.5, 12.5}, {12.5, 12.5}});
    c.arc(accent, {5.5, 3.5, 9.5, 7.5}, 180, -270);
    c.line(accent, {{7.5, 7.5}, {7.5, 8.5}});
    c.dot(accent, {7.5, 10.5});
}

void about(Canvas& c) {
    c.ellipse(outline, {1.5, 1.5, 13.5, 13.5});
    c.dot(accent, {7.5, 4.5});
    c.line(accent, {{7.5, 7.5}, {7.5, 10.5}});
}

void back(Canvas& c) {
    c.line(accent, {{2.5, 7.5}, {12.5, 7.5}});
    c.line(accent, {{6.5, 3.5}, {2.5, 7.5}, {6.5, 11.5}});
}

void forward(Canvas& c) {
    c.line(accent, {{2.5, 7.5}, {12.5, 7.5}});
    c.line(accent, {{8.5, 3.5}, {12.5, 7.5}, {8.5, 11.5}});
}

void up(Canvas& c) {
    c.line(accent, {{7.5, 2.5}, {7.5, 12.5}});
    c.line(accent, {{3.5, 6.5}, {7.5, 2.5}, {11.5, 6.5}});
}

void home(Canvas& c) {
    c.line(outline, {{1.5, 7.5}, {7.5, 1.5}, {13.5, 7.5}});
    c.line(outline, {{3.5, 6.5}, {3.5, 13.5}, {11.5, 13.5}, {11.5, 6.5}});
    c.line(accent, {{6.5, 13.5}, {6.5, 9.5}, {8.5, 9.5}, {8.5, 13.5}});
}

void search(Canvas& c) {
    c.ellipse(outline, {2.5, 2.5, 10.5, 10.5});
    c.line(accent, {{9.5, 9.5}, {13.5, 13.5}});
}

} // namespace

void draw(Picture picture, Canvas& canvas) {
    switch (picture) {
    case Picture::exportData:
        return exportData(canvas);
    case Picture::xmlFile:
        return xmlFile(canvas);
    case Picture::htmlFile:
        return htmlFile(canvas);
    case Picture::textFile:
        return textFile(canvas);
    case Picture::excelFile:
        return excelFile(canvas);
    case Picture::cancel:
        return cancel(canvas);
    case Picture::pieChart:
        return pieChart(canvas);
    case Picture::database:
        return database(canvas);
    case Picture::refresh:
        return refresh(canvas);
    case Picture::barChart:
        return barChart(canvas);
    case Picture::owners:
        return owners(canvas);
    case Picture::help:
        return help(canvas);
    case Picture::about:
        return about(canvas);
    case Picture::back:
        return back(canvas);
    case Picture::forward:
        return forward(canvas);
    case Picture::up:
        return up(canvas);
    case Picture::home:
        return home(canvas);
    case Picture::search:
        return search(canvas);
    }
}

void drawCheckMark(Canvas& c) {
    c.lineApart(accent, {{8.5, 11.5}, {10.5, 13.5}, {14.5, 9.5}});
}

} // namespace modMenuIcons
