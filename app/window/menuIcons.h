#pragma once

#include <QIcon>

class ImageList;

// The window's own pictures: one set, drawn when asked for, in the palette's colours and to the pixels of the
// size at hand.
namespace modMenuIcons {

enum class Picture {
    exportData,
    xmlFile,
    htmlFile,
    textFile,
    excelFile,
    cancel,
    pieChart,
    database,
    refresh,
    barChart,
    owners,
    help,
    about,
    back,
    forward,
    home,
    search
};

// Where a picture is shown decides what it looks like under the pointer: a menu lays its highlight behind it.
enum class Place { menu, toolbar };

[[nodiscard]] QIcon icon(Picture picture, Place place);

// Adds the menus' pictures to the image list, each under its index as decimal text.
void addMenuImages(ImageList& imlMenu);

} // namespace modMenuIcons
