#include "export/reportExport.h"

#include <string>

#include "export/clsExport.h"
#include "export/excelReport.h"
#include "export/htmlReport.h"
#include "export/textReport.h"
#include "export/xmlReport.h"

bool modExport::exportReportFile(ReportFormat format, const ReportContext& context,
                                 std::string_view fileName) {
    const std::string query = reportQuery(format, context.options.detail);
    switch (format) {
    case ReportFormat::html:
        return modGlobal::exportHTMLSizeReport(context, query, fileName);
    case ReportFormat::text:
        return modGlobal::exportTextSizeReport(context, query, fileName, ",", "\"");
    case ReportFormat::xml:
        return modGlobal::exportXMLSizeReport(context, query, fileName);
    case ReportFormat::excel:
        return modGlobal::exportXLSSizeReport(context, query, fileName);
    }
    return false;
}
