#include "export/exportQueries.h"

#include <array>
#include <cstddef>

#include "app/clsUserInterface.h"
#include "app/pictures.h"
#include "platform/environment.h"
#include "platform/files.h"

namespace modExport {

namespace {

struct FormatFacts {
    std::string_view extension;
    std::string_view description;
    std::string_view selectAll;
    std::string_view selectFolders;
    std::string_view order;
};

constexpr std::string_view selectRows =
    "SELECT [drive],[fullpath], size, dateAccessed, dateModified, owner,isfolder ";
constexpr std::string_view selectRowsWithParent =
    "SELECT [drive],[fullpath], size, dateAccessed, dateModified, owner,isfolder,parentFolder ";
constexpr std::string_view largestFirst = "ORDER BY details.size DESC;";
constexpr std::string_view fileNamePicture = "mm-dd-yyyy-hh-nn-ss";
constexpr std::string_view byParentFolder = "ORDER BY parentFolder;";

// In the order of ReportFormat.
constexpr std::array<FormatFacts, 4> formats{{
    {".html", "HTML Files", selectRows, selectRows, largestFirst},
    {".csv", "Text Files", selectRows, selectRows, largestFirst},
    {".xml", "XML Files", selectRowsWithParent, selectRowsWithParent, byParentFolder},
    // Deliberate: a blank before the comma when all rows are asked for.
    {".xlsx", "Excel Files", "SELECT [drive] , [fullpath], size, dateAccessed, dateModified, owner,isfolder ",
     "SELECT [drive], [fullpath], size, dateAccessed, dateModified, owner,isfolder ", largestFirst},
}};

const FormatFacts& factsOf(ReportFormat format) {
    return formats[static_cast<std::size_t>(format)];
}

} // namespace

std::string reportQuery(ReportFormat format, std::int32_t detail) {
    const FormatFacts& facts = factsOf(format);
    const bool foldersOnly = detail == 2;
    std::string query(foldersOnly ? facts.selectFolders : facts.selectAll);
    query.append("From details ");
    if (foldersOnly) {
        query.append(" where isFolder=1 ");
    }
    query.append(facts.order);
    return query;
}

std::string_view fileExtension(ReportFormat format) {
    return factsOf(format).extension;
}

std::string defaultFileName(std::string_view extension, const platform::LocalTime& time) {
    std::string name = modFormat::formatDate(time, fileNamePicture);
    return name.append(extension);
}

std::string temporaryWorkbookName(const platform::LocalTime& time) {
    const std::string stem =
        platform::temporaryFolder() + "Spannory-" + modFormat::formatDate(time, fileNamePicture);
    const std::string extension(fileExtension(ReportFormat::excel));
    std::string name = stem + extension;
    for (int number = 2; platform::somethingExists(name); ++number) {
        name.assign(stem).append("-").append(std::to_string(number)).append(extension);
    }
    return name;
}

std::string saveDialogFilter(ReportFormat format) {
    const FormatFacts& facts = factsOf(format);
    const std::string pattern = "*" + std::string(facts.extension);
    return std::string(facts.description) + " (" + pattern + ")|" + pattern + "|All Files (*.*)|*.*";
}

bool confirmOverwrite(clsUserInterface& userInterface, std::string_view path) {
    return !platform::fileExists(path) ||
           userInterface.ask(Question::overwriteFile, "Overwrite existing file?");
}

} // namespace modExport
