#include "views/folderFigures.h"

#include <unordered_map>
#include <utility>

#include "db/values.h"
#include "platform/text.h"
#include "scan/clsFile.h"

namespace {

// Groups of one name share a row of the list, which holds what the last of them said, deliberately.
std::vector<modFigures::FileGroup> groups(Database& database, const std::string& query,
                                          std::string_view nameColumn) {
    std::vector<modFigures::FileGroup> result;
    const auto rows = database.OpenRecordset(query);
    const Field& name = rows->Fields(nameColumn);
    const Field& size = rows->Fields("TotalSize");
    const Field& count = rows->Fields("totalcount");
    std::unordered_map<std::string, std::size_t> indexes;
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        const auto [known, isNew] = indexes.try_emplace(std::string(name.text()), result.size());
        if (isNew) {
            result.emplace_back();
        }
        result[known->second] = {known->first, size.number(), std::string(count.text())};
    }
    return result;
}

} // namespace

std::vector<ChartEntry> modFigures::chartEntries(Database& database, std::string_view key) {
    std::vector<ChartEntry> entries;
    const auto files = database.OpenRecordset("select sum(details.size) as total from details "
                                              " where isFolder=0 and parentfolder=" +
                                              modGlobal::quoted(key));
    if (!files->EndOfFile() && !files->Fields("Total").isNull()) {
        entries.push_back({std::string(modFigures::filesLabel), files->Fields("Total").number()});
    }
    const auto folders = database.OpenRecordset(
        "select distinct drive,fullPath,size from details where parentFolder =" + modGlobal::quoted(key) +
        " and isFolder=1");
    const Field& drive = folders->Fields("drive");
    const Field& path = folders->Fields("fullPath");
    const Field& size = folders->Fields("size");
    clsFile folder;
    for (; !folders->EndOfFile(); folders->MoveNext()) {
        folder.setFullPath(std::string(drive.text()).append(path.text()));
        entries.push_back({std::string(folder.lastFolder()), size.number()});
    }
    if (!entries.empty()) {
        modQuickSort::quickSortUDT(entries, 0, static_cast<std::ptrdiff_t>(entries.size()) - 1);
    }
    return entries;
}

std::vector<modFigures::FileGroup> modFigures::fileTypes(Database& database, std::string_view key) {
    return groups(database,
                  "SELECT details.extension, details.description, Sum(details.size) AS totalSize, "
                  "Count(details.extension) AS totalCount "
                  "From details "
                  "WHERE Left([drive] & [fullPath]," +
                      std::to_string(platform::characterCount(key)) + ")=" + modGlobal::quoted(key) +
                      " AND isFolder=0 "
                      "GROUP BY details.extension, details.description;",
                  "extension");
}

std::vector<modFigures::FileGroup> modFigures::owners(Database& database, std::string_view key) {
    return groups(
        database,
        "SELECT details.owner, Sum(details.size) AS totalSize, Count(details.extension) AS totalCount "
        "From details "
        "WHERE (details.drive & details.fullPath) Like " +
            modGlobal::quoted(std::string(key) + "*") +
            " AND isFolder=0 "
            "GROUP BY details.owner;",
        "owner");
}

std::string modFigures::itemsText(Database& database) {
    const auto rows = database.OpenRecordset("select count(*) as total from details");
    return (rows->EndOfFile() ? "0" : std::string(rows->Fields("Total").text())) + " items.";
}
