#include "export/reportFormats.h"

#include <array>
#include <cstddef>

#include "db/folderRows.h"
#include "export/clsExport.h"
#include "export/excelReport.h"
#include "export/htmlReport.h"
#include "export/textReport.h"
#include "export/xmlReport.h"

namespace modExport {

namespace {

// The whole path is parentFolder plus fileName; fullpath is cut.
constexpr std::string_view selectRows =
    "SELECT [drive],[fullpath], size, dateAccessed, dateModified, owner,isfolder,parentFolder,fileName ";
constexpr std::string_view largestFirst = "ORDER BY details.size DESC;";
constexpr std::string_view byParentFolder = "ORDER BY parentFolder;";

bool exportCommaSeparated(const ReportContext& context, std::string_view query, std::string_view fileName) {
    return modGlobal::exportTextSizeReport(context, query, fileName, ",", "\"");
}

struct Row {
    std::string_view extension;
    std::string_view description;
    std::string_view selectAll;
    std::string_view selectFolders;
    std::string_view order;
    bool summaryOnly;
    bool (*write)(const ReportContext& context, std::string_view query, std::string_view fileName);
};

// In the order of ReportFormat.
constexpr std::array<Row, 4> formats{{
    {".html", "HTML Files", selectRows, selectRows, largestFirst, false, modGlobal::exportHTMLSizeReport},
    {".csv", "Text Files", selectRows, selectRows, largestFirst, false, exportCommaSeparated},
    {".xml", "XML Files", selectRows, selectRows, byParentFolder, true, modGlobal::exportXMLSizeReport},
    // Odd on purpose: a blank before the comma in the query for all rows.
    {".xlsx", "Excel Files",
     "SELECT [drive] , [fullpath], size, dateAccessed, dateModified, owner,isfolder,parentFolder,fileName ",
     "SELECT [drive], [fullpath], size, dateAccessed, dateModified, owner,isfolder,parentFolder,fileName ",
     largestFirst, false, modGlobal::exportXLSSizeReport},
}};

const Row& rowOf(ReportFormat format) {
    return formats[static_cast<std::size_t>(format)];
}

} // namespace

std::string_view fileExtension(ReportFormat format) {
    return rowOf(format).extension;
}

std::string saveDialogFilter(ReportFormat format) {
    const Row& row = rowOf(format);
    const std::string pattern = "*" + std::string(row.extension);
    return std::string(row.description) + " (" + pattern + ")|" + pattern + "|All Files (*.*)|*.*";
}

bool isSummaryOnly(ReportFormat format) {
    return rowOf(format).summaryOnly;
}

std::string reportQuery(ReportFormat format, std::int32_t detail, std::string_view onlyFolder) {
    const Row& row = rowOf(format);
    const bool foldersOnly = detail == clsExport::summary;
    std::string query(foldersOnly ? row.selectFolders : row.selectAll);
    query.append("From details ");
    if (foldersOnly) {
        query.append(" where isFolder=1 ");
    }
    if (!onlyFolder.empty()) {
        query.append(foldersOnly ? "and ((" : "where ((").append(modFolderRows::itself(onlyFolder));
        query.append(") or (").append(modFolderRows::anywhereIn(onlyFolder)).append(")) ");
    }
    query.append(row.order);
    return query;
}

bool exportReportFile(ReportFormat format, const ReportContext& context, std::string_view fileName) {
    const clsExport& options = context.options;
    ReportContext limited = context;
    limited.onlyFolder = options.onlyFolder && !isSummaryOnly(format) ? options.folder : std::string_view();
    return rowOf(format).write(limited, reportQuery(format, options.detail, limited.onlyFolder), fileName);
}

} // namespace modExport
