#pragma once

#include <QColor>
#include <QString>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "views/treemapTree.h"

// The colours of a treemap's files, by their extensions. A type that had a colour before keeps it as long as
// it is among the largest, so that a map may grow, or become that of another folder, without changing its
// colours.
class TreemapColours {
public:
    struct Entry {
        std::uint32_t type = TreemapTree::mixed;
        QString name;
        QRgb colour = 0;
    };

    // The largest types first.
    [[nodiscard]] std::vector<Entry> assign(const TreemapTree& tree);

private:
    std::map<std::string, std::size_t> places_; // in the palette, by extension
};
