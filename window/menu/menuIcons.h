#pragma once

#include <QIcon>

class ImageList;

// The window's own pictures: one set, drawn on demand in the palette's colours and for the exact size in
// pixels.
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
    up,
    home,
    search
};

// The place of a picture affects its look under the pointer: a menu paints its highlight behind the picture.
enum class Place { menu, toolbar };

[[nodiscard]] QIcon icon(Picture picture, Place place);

// Adds the menus' pictures to the image list, each with its index as decimal text as the key.
void addMenuImages(ImageList& imlMenu);

} // namespace modMenuIcons
