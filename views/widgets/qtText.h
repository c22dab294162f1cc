#pragma once

#include <QString>
#include <string_view>

// Texts and paths as Qt takes them. (QString::fromUtf8 takes the program's own texts as they are.)
namespace modQt {

// The system's form of an internal path, for Qt's file classes.
[[nodiscard]] QString nativePath(std::string_view internalPath);

} // namespace modQt
