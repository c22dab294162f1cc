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

// The whole path is parentFolder plus fileName; fullpath is cut. Behind it comes the column that counts as
// size.
constexpr std::string_view selectPath = "SELECT [drive],[fullpath], ";
constexpr std::string_view selectRest = ", dateAccessed, dateModified, owner,isfolder,parentFolder,fileName ";

bool exportCommaSeparated(const ReportContext& context, std::string_view query, std::string_view fileName) {
    return modGlobal::exportTextSizeReport(context, query, fileName, ",", "\"");
}

struct Row {
    std::string_view extension;
    std::string_view description;
    std::string_view selectAllPaths;
    std::string_view selectFolderPaths;
    bool largestFirst; // else by parent folder
    bool summaryOnly;
    bool (*write)(const ReportContext& context, std::string_view query, std::string_view fileName);
};

// In the order of ReportFormat.
constexpr std::array<Row, 4> formats{{
    {".html", "HTML Files", selectPath, selectPath, true, false, modGlobal::exportHTMLSizeReport},
    {".csv", "Text Files", selectPath, selectPath, true, false, exportCommaSeparated},
    {".xml", "XML Files", selectPath, selectPath, false, true, modGlobal::exportXMLSizeReport},
    // Odd on purpose: a blank before the comma in the query for all rows.
    {".xlsx", "Excel Files", "SELECT [drive] , [fullpath], ", "SELECT [drive], [fullpath], ", true, false,
     modGlobal::exportXLSSizeReport},
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

std::string reportQuery(ReportFormat format, std::int32_t detail, std::string_view onlyFolder, bool onDisk) {
    const Row& row = rowOf(format);
    const bool foldersOnly = detail == clsExport::summary;
    std::string query(foldersOnly ? row.selectFolderPaths : row.selectAllPaths);
    query.append(onDisk ? "sizeOnDisk as size" : "size").append(selectRest).append("From details ");
    if (foldersOnly) {
        query.append(" where isFolder=1 ");
    }
    if (!onlyFolder.empty()) {
        query.append(foldersOnly ? "and ((" : "where ((").append(modFolderRows::itself(onlyFolder));
        query.append(") or (").append(modFolderRows::anywhereIn(onlyFolder)).append(")) ");
    }
    const std::string_view largest =
        onDisk ? "ORDER BY details.sizeOnDisk DESC;" : "ORDER BY details.size DESC;";
    return query.append(row.largestFirst ? largest : "ORDER BY parentFolder;");
}

bool exportReportFile(ReportFormat format, const ReportContext& context, std::string_view fileName) {
    const clsExport& options = context.options;
    ReportContext limited = context;
    limited.onlyFolder = options.onlyFolder && !isSummaryOnly(format) ? options.folder : std::string_view();
    return rowOf(format).write(
        limited, reportQuery(format, options.detail, limited.onlyFolder, context.database.countsSizeOnDisk()),
        fileName);
}

} // namespace modExport
