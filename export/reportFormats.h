#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace modExport {

struct ReportContext;

// The kinds of reports; everything about one kind is in one row of a table.
enum class ReportFormat { html, text, xml, excel };

// Including its dot.
[[nodiscard]] std::string_view fileExtension(ReportFormat format);

// Descriptions and patterns alternately, separated by "|".
[[nodiscard]] std::string saveDialogFilter(ReportFormat format);

// True if there are no options: the report always shows folders.
[[nodiscard]] bool isSummaryOnly(ReportFormat format);

// The statement that returns the report's rows; for `detail`, see clsExport. `onlyFolder` is the key of the
// folder to which they are limited, with its own row; empty for all rows. `onDisk`: what items take on the
// disk counts as their size.
[[nodiscard]] std::string reportQuery(ReportFormat format, std::int32_t detail,
                                      std::string_view onlyFolder = {}, bool onDisk = false);

// Exports a report: passes the rows that the options select to the format's writer. True if it was written;
// any problem has been shown or logged. A format without options covers everything.
bool exportReportFile(ReportFormat format, const ReportContext& context, std::string_view fileName);

} // namespace modExport
