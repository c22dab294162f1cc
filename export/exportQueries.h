#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/clock.h"

class clsUserInterface;

// What an export needs to know before its writer runs.
namespace modExport {

enum class ReportFormat { html, text, xml, excel };

// The statement whose rows the report shows; `detail` as in clsExport.
[[nodiscard]] std::string reportQuery(ReportFormat format, std::int32_t detail);

// With its dot.
[[nodiscard]] std::string_view fileExtension(ReportFormat format);

// The file name proposed at that moment, given its extension: "03-14-2004-21-05-17.html".
[[nodiscard]] std::string defaultFileName(std::string_view extension, const platform::LocalTime& time);

// The internal path of a workbook to be opened at once, which is kept in the system's temporary folder:
// "Spannory-03-14-2004-21-05-17.xlsx", or with "-2" and so on behind the time where that is taken.
[[nodiscard]] std::string temporaryWorkbookName(const platform::LocalTime& time);

// Descriptions and patterns in turn, separated by "|".
[[nodiscard]] std::string saveDialogFilter(ReportFormat format);

// True when there is no such file, or the person agrees to lose it.
[[nodiscard]] bool confirmOverwrite(clsUserInterface& userInterface, std::string_view path);

} // namespace modExport
