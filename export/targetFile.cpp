#include "export/targetFile.h"

#include "base/clsUserInterface.h"
#include "base/dateFormat.h"
#include "export/reportFormats.h"
#include "platform/environment.h"
#include "platform/files.h"

namespace modExport {

namespace {

constexpr std::string_view fileNamePicture = "mm-dd-yyyy-hh-nn-ss";

} // namespace

std::string defaultFileName(std::string_view extension, const platform::LocalTime& time) {
    std::string name = modFormat::formatDate(time, fileNamePicture);
    return name.append(extension);
}

std::string temporaryWorkbookName(const platform::LocalTime& time) {
    const std::string stem =
        platform::temporaryFolder() + "Spannory-" + modFormat::formatDate(time, fileNamePicture);
    const std::string_view extension = fileExtension(ReportFormat::excel);
    std::string name = stem;
    name.append(extension);
    for (int number = 2; platform::somethingExists(name); ++number) {
        name.assign(stem).append("-").append(std::to_string(number)).append(extension);
    }
    return name;
}

bool confirmOverwrite(clsUserInterface& userInterface, std::string_view path) {
    return !platform::fileExists(path) || platform::isStream(path) ||
           userInterface.ask(Question::overwriteFile, "Overwrite existing file?");
}

} // namespace modExport
