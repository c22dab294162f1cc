#include "views/widgets/systemIcons.h"

QString modSystemIcons::getIcon(std::string_view, ImageList&, SizeFlag) {
    return {};
}
