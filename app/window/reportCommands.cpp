#include "app/window/reportCommands.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "export/reportExport.h"
#include "platform/clock.h"
#include "platform/runtimeError.h"

namespace {

using modExport::ReportFormat;

constexpr std::array<std::pair<std::string_view, ReportFormat>, 4> formats{{
    {"EXPORTHTML", ReportFormat::html},
    {"EXPORTTEXT", ReportFormat::text},
    {"EXPORTXML", ReportFormat::xml},
    {"EXPORTEXCEL", ReportFormat::excel},
}};

ReportFormat formatOf(std::string_view key) {
    const auto* const found = std::find_if(formats.begin(), formats.end(),
                                           [key](const auto& format) { return format.first == key; });
    if (found == formats.end()) {
        throw RuntimeError(errorNumber::invalidCall);
    }
    return found->second;
}

} // namespace

void ReportCommands::exportReport(std::string_view key) {
    const ReportFormat format = formatOf(key);
    askForOptions(format);
    if (options_.cancelExport) {
        return;
    }
    const std::string file = fileFor(format);
    if (file.empty()) {
        return;
    }
    const modExport::ReportContext context{with_.database.database(), with_.userInterface, with_.settings,
                                           options_};
    modExport::exportReportFile(format, context, file); // which tells what becomes of it
}

// XML always shows folders and has no options. Deliberately it does not reset what Cancel has left behind:
// after a box that was left by it, XML exports do nothing until a later box is closed with OK.
void ReportCommands::askForOptions(ReportFormat format) {
    if (format == ReportFormat::xml) {
        constexpr std::int32_t foldersOnly = 2;
        options_.detail = foldersOnly;
        return;
    }
    options_.exportType = false;
    with_.dialogs.exportOptions(options_);
}

// A workbook goes to the spreadsheet program, which lets the person save it wherever he likes.
std::string ReportCommands::fileFor(ReportFormat format) const {
    if (format == ReportFormat::excel) {
        return modExport::temporaryWorkbookName(platform::localTime(platform::now()));
    }
    return choice_.toWrite(modExport::saveDialogFilter(format), modExport::fileExtension(format));
}
