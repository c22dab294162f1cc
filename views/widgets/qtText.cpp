#include "views/widgets/qtText.h"

#include "platform/paths.h"

QString modQt::nativePath(std::string_view internalPath) {
    return QString::fromStdString(platform::toNative(internalPath));
}
