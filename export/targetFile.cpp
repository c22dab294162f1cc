#include "export/targetFile.h"

#include "base/clsUserInterface.h"
#include "base/dateFormat.h"
#include "platform/files.h"

namespace modExport {

namespace {

constexpr std::string_view fileNamePicture = "mm-dd-yyyy-hh-nn-ss";

} // namespace

std::string defaultFileName(std::string_view extension, const platform::LocalTime& time) {
    std::string name = modFormat::formatDate(time, fileNamePicture);
    return name.append(extension);
}

bool confirmOverwrite(clsUserInterface& userInterface, std::string_view path) {
    return !platform::fileExists(path) || platform::isStream(path) ||
           userInterface.ask(Question::overwriteFile, "Overwrite existing file?");
}

} // namespace modExport
