#include "db/folderRows.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "base/clsFile.h"
#include "db/jetLike.h"
#include "db/values.h"
#include "platform/text.h"

namespace {

// Written as in the index of folders (schema.sql); otherwise the index would not be used.
constexpr const char* ofFolder = " and isFolder+0=1";

using modGlobal::quoted;

// The first text after all texts that begin with the folder's path: "]" follows "\", even when case is
// ignored.
std::string behind(std::string_view folder) {
    std::string bound(folder);
    bound.back() = ']';
    return bound;
}

// The first parent folder between the two paths, exclusive; empty if there is none.
std::string firstParentBetween(Database& database, std::string_view from, std::string_view to) {
    const auto rows = database.OpenRecordset("select min(parentFolder) from details where parentFolder>" +
                                             quoted(from) + " and parentFolder<" + quoted(to));
    return std::string(rows->Fields(0).text());
}

bool hasRows(Database& database, const std::string& condition) {
    return !database.OpenRecordset("select idx from details where " + condition)->EndOfFile();
}

std::int64_t countOf(Database& database, const std::string& condition) {
    const auto rows = database.OpenRecordset("select count(*) as total from details" + condition);
    return static_cast<std::int64_t>(rows->Fields(0).number());
}

const std::string recordedColumns = "size,sizeOnDisk,fileCount,folderCount,scanCompleteTime";

// Loaded counts may be of any size.
std::int64_t wholeNumber(const Field& field) {
    constexpr double most = 0x1p53;
    return static_cast<std::int64_t>(std::clamp(field.number(), -most, most));
}

// From the row of a query for these columns first.
modFolderRows::RecordedFolder recordedIn(Recordset& row) {
    const modFolderRows::Totals totals{row.Fields(0).number(), row.Fields(1).number(),
                                       wholeNumber(row.Fields(2)), wholeNumber(row.Fields(3)),
                                       !row.Fields(1).isNull() && !row.Fields(2).isNull() &&
                                           !row.Fields(3).isNull()};
    return {true, false, totals, std::string(row.Fields(4).text())};
}

// In plain digits, the form of numbers in statements.
std::string digitsOf(double number) {
    std::array<char, std::numeric_limits<double>::max_exponent10 + 32> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed);
    return {digits.data(), end.ptr};
}

} // namespace

std::string modFolderRows::itself(std::string_view folder) {
    const clsFile file(folder);
    const std::string_view parent = file.parentFolder();
    // A loaded name that is no path has a parent folder longer than itself.
    const std::string_view name = folder.substr(std::min(parent.size(), folder.size()));
    return "parentFolder=" + quoted(parent) + " and fileName=" + quoted(name) + ofFolder;
}

std::string modFolderRows::directlyIn(std::string_view folder) {
    return "parentFolder=" + quoted(folder);
}

std::string modFolderRows::fileIn(std::string_view folder, std::string_view name) {
    return directlyIn(folder) + " and isFolder=0 and fileName=" + quoted(name);
}

std::string modFolderRows::atOrBelow(std::string_view column, std::string_view folder) {
    const std::string name(column);
    return name + ">=" + quoted(folder) + " and " + name + "<" + quoted(behind(folder));
}

std::string modFolderRows::anywhereIn(std::string_view folder) {
    return atOrBelow("parentFolder", folder);
}

std::string modFolderRows::foldersAnywhereIn(std::string_view folder) {
    return anywhereIn(folder) + ofFolder;
}

// The signs keep the engine from the index.
std::string modFolderRows::anywhereInOfTable(std::string_view folder) {
    return atOrBelow("+parentFolder", folder);
}

bool modFolderRows::holdsAll(Database& database, std::string_view folder, const std::string& further) {
    const std::string before = "parentFolder<" + quoted(folder);
    const std::string after = "parentFolder>=" + quoted(behind(folder));
    const std::string apart = "parentFolder is null";
    if (!database.hasIndexes()) {
        return !hasRows(database, "(" + before + " or " + after + " or " + apart + ")" + further);
    }
    return !hasRows(database, before + further) && !hasRows(database, after + further) &&
           !hasRows(database, apart + further);
}

std::string modFolderRows::filesAnywhereIn(Database& database, std::string_view folder, Form form) {
    constexpr double costOfIndex =
        3; // of a row found by the index, in rows of the table read one after the other
    constexpr const char* file = " and isFolder=0";
    if (holdsAll(database, folder, " and not (" + itself(folder) + ")")) {
        return "isFolder=0";
    }
    const auto last =
        database.OpenRecordset("select max(idx) from details"); // at least as many as there are rows
    const auto found = static_cast<double>(countOf(database, " where " + anywhereIn(folder)));
    if (found * costOfIndex < last->Fields(0).number()) {
        return anywhereIn(folder) + file;
    }
    return (form == Form::range ? anywhereInOfTable(folder)
                                : "parentFolder Like " + quoted(jetLiteral(folder) + "*")) +
           file;
}

modFolderRows::RecordedFolder modFolderRows::find(Database& database, std::string_view folder) {
    RecordedFolder found;
    const auto own =
        database.OpenRecordset("select " + recordedColumns + " from details where " + itself(folder));
    if (!own->EndOfFile()) {
        found = recordedIn(*own);
    }
    found.hasContent =
        !database.OpenRecordset("select idx from details where " + anywhereIn(folder))->EndOfFile();
    return found;
}

modFolderRows::RecordedFolders modFolderRows::subfolders(Database& database, std::string_view folder) {
    RecordedFolders result;
    const auto rows = database.OpenRecordset("select " + recordedColumns + ",fileName from details where " +
                                             directlyIn(folder) + ofFolder);
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        std::string_view name = rows->Fields("fileName").text();
        name.remove_suffix(name.ends_with('\\') ? 1 : 0);
        result[std::string(name)] = recordedIn(*rows);
    }
    // Goes from one subfolder to the next, skipping everything below it. The subfolder's name starts after as
    // many characters as the folder's path has: when case is ignored, the stored path may have another length
    // in bytes.
    const std::size_t characters = platform::characterCount(folder);
    const std::string end = behind(folder);
    std::string from(folder);
    for (;;) {
        const std::string parent = firstParentBetween(database, from, end);
        if (parent.empty()) {
            return result;
        }
        const std::size_t start = platform::firstCharacters(parent, characters).size();
        const std::size_t stop = std::min(parent.find('\\', start), parent.size());
        result[parent.substr(start, stop - start)].hasContent = true;
        from = parent.substr(0, stop) + ']';
    }
}

// Without a condition, the database need not compare paths.
modFolderRows::ItemCounts modFolderRows::count(Database& database, std::string_view folder) {
    const std::int64_t items =
        countOf(database, holdsAll(database, folder) ? "" : " where " + anywhereIn(folder));
    const std::int64_t folders = countOf(database, " where " + foldersAnywhereIn(folder));
    return {items - folders, folders};
}

double modFolderRows::sum(Database& database, std::string_view folder) {
    const auto rows = database.OpenRecordset(
        "SELECT Sum(details.size) AS SumOfsize From details WHERE (((details.parentFolder)=" +
        quoted(folder) + "));");
    return rows->EndOfFile() ? 0 : rows->Fields("sumofsize").number();
}

double modFolderRows::countedSize(Database& database, std::string_view folder,
                                  const RecordedFolder& recorded) {
    const Totals counted = recorded.hasOwnRow ? recorded.totals : totals(database, folder);
    return database.countsSizeOnDisk() ? counted.sizeOnDisk : counted.size;
}

// Numbers are added up as real ones, because loaded ones may be of any size.
std::optional<modFolderRows::ItemCounts> modFolderRows::storedCounts(Database& database,
                                                                     std::string_view folder) {
    const auto rows = database.OpenRecordset(
        "select sum(fileCount+0.0) as files,sum(folderCount+0.0) as folders,count(*) as items,"
        "sum((isFolder=1)+0.0) as subfolders,count(fileCount) as withFiles,count(folderCount) as withFolders "
        "from details where " +
        directlyIn(folder));
    const auto whole = [&](const char* column) { return wholeNumber(rows->Fields(column)); };
    const std::int64_t subfolders = whole("subfolders");
    if (whole("withFiles") < subfolders || whole("withFolders") < subfolders) {
        return {};
    }
    return ItemCounts{whole("files") + whole("items") - subfolders, whole("folders") + subfolders};
}

modFolderRows::Totals modFolderRows::totals(Database& database, std::string_view folder) {
    const auto onDisk = database.OpenRecordset(
        "select sum(sizeOnDisk+0.0) as total,count(*)-count(sizeOnDisk) as unknown from details where " +
        directlyIn(folder));
    const std::optional<ItemCounts> counts = storedCounts(database, folder);
    const ItemCounts known = counts.value_or(ItemCounts());
    return {sum(database, folder), onDisk->Fields(0).number(), known.files, known.folders,
            counts && onDisk->Fields(1).number() == 0};
}

void modFolderRows::Totals::addFile(double fileSize, double fileSizeOnDisk) noexcept {
    size += fileSize;
    sizeOnDisk += fileSizeOnDisk;
    ++files;
}

void modFolderRows::Totals::addFolder(const Totals& folder) noexcept {
    size += folder.size;
    sizeOnDisk += folder.sizeOnDisk;
    files += folder.files;
    folders += folder.folders + 1;
    isKnown = isKnown && folder.isKnown;
}

void modFolderRows::remove(Database& database, const std::string& condition) {
    database.Execute("delete * from details where " + condition);
}

void modFolderRows::removeWhole(Database& database, std::string_view folder) {
    remove(database, itself(folder));
    // The whole table is deleted at once, whatever its size.
    database.Execute(holdsAll(database, folder) ? "delete * from details"
                                                : "delete * from details where " + anywhereIn(folder));
}

void modFolderRows::setTotals(Database& database, std::string_view folder, const Totals& totals) {
    const auto known = [&](const std::string& text) { return totals.isKnown ? text : "null"; };
    database.Execute("update details set size=" + digitsOf(totals.size) +
                     ",sizeOnDisk=" + known(digitsOf(totals.sizeOnDisk)) +
                     ",fileCount=" + known(std::to_string(totals.files)) +
                     ",folderCount=" + known(std::to_string(totals.folders)) + " where " + itself(folder));
}

bool modFolderRows::addSizeOnDisk(Database& database, std::string_view folder, double bytes) {
    return database.Execute("update details set sizeOnDisk=sizeOnDisk+" + digitsOf(bytes) + " where " +
                            itself(folder)) > 0;
}

void modFolderRows::setSizeOnDisk(Database& database, std::int64_t row, double bytes) {
    database.Execute("update details set sizeOnDisk=" + digitsOf(bytes) +
                     " where idx=" + std::to_string(row));
}

void modFolderRows::setStamp(Database& database, std::string_view folder, std::string_view stamp) {
    database.Execute("update details set scanCompleteTime=" + modGlobal::quotedOrNull(stamp) + " where " +
                     itself(folder));
}
