#pragma once

#include <string>
#include <string_view>

#include "platform/clock.h"

class clsUserInterface;

// The target file of an export.
namespace modExport {

// The file name proposed at that time, with this extension: "03-14-2004-21-05-17.html".
[[nodiscard]] std::string defaultFileName(std::string_view extension, const platform::LocalTime& time);

// True if nothing is overwritten, or if the user agrees to it.
[[nodiscard]] bool confirmOverwrite(clsUserInterface& userInterface, std::string_view path);

} // namespace modExport
