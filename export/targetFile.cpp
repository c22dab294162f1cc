#include "export/targetFile.h"

#include "base/clsUserInterface.h"
#include "base/dateFormat.h"
#include "base/formatSize.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"

namespace modExport {

namespace {

constexpr std::string_view fileNamePicture = "mm-dd-yyyy-hh-nn-ss";

// "/srv/report.html (03/14/2004 09:05:07 PM, 1.5 Kb)".
std::string describedFile(std::string_view path) {
    const platform::EntryFacts facts =
        platform::entryFacts(platform::toInternal(platform::resolveLinks(path)));
    return platform::displayPath(platform::toInternal(path)) + " (" +
           modFormat::formatDate(platform::localTime(facts.modified), modFormat::storedDatePicture) + ", " +
           modLvw::formatSize(static_cast<double>(facts.size)) + ")";
}

} // namespace

std::string defaultFileName(std::string_view extension, const platform::LocalTime& time) {
    std::string name = modFormat::formatDate(time, fileNamePicture);
    return name.append(extension);
}

bool confirmOverwrite(clsUserInterface& userInterface, std::string_view path) {
    return !platform::fileExists(path) || platform::isStream(path) ||
           userInterface.confirm(Question::overwriteFile, "Overwrite existing file?", describedFile(path));
}

} // namespace modExport
