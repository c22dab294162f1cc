#include "collect/schema.h"

#include <array>
#include <utility>

namespace {

struct Column {
    std::string_view name;
    std::string_view type;
    bool repeats = false; // few different values
};

constexpr std::string_view text = "String";
constexpr std::string_view whole = "Int64";
constexpr std::string_view flag = "UInt8";
constexpr std::string_view moment = "DateTime('UTC')";

// What is the same in many rows, one after the other, comes first: compressed, it takes next to nothing.
constexpr std::array<Column, 21> detailsTable{
    {{"host", text, true},     {"scan", text, true},      {"attempt", "UInt64"},
     {"started", moment},      {"drive", text, true},     {"parentFolder", text},
     {"fileName", text},       {"extension", text, true}, {"description", text, true},
     {"owner", text, true},    {"isFolder", flag},        {"odd", text},
     {"fileCount", whole},     {"folderCount", whole},    {"scanCompleteTime", moment},
     {"dateInserted", moment}, {"dateAccessed", moment},  {"dateModified", moment},
     {"size", whole},          {"sizeOnDisk", whole},     {"idx", whole}}};

constexpr std::array<Column, 24> scansTable{{{"host", text},
                                             {"scan", text},
                                             {"attempt", "UInt64"},
                                             {"system", text},
                                             {"programVersion", text},
                                             {"drive", text},
                                             {"path", text},
                                             {"separator", text},
                                             {"started", moment},
                                             {"finished", moment},
                                             {"exact", flag},
                                             {"withOwners", flag},
                                             {"onDisk", flag},
                                             {"foldersOnly", flag},
                                             {"excludes", text},
                                             {"unreadableFolders", whole},
                                             {"unreadableFiles", whole},
                                             {"rows", "UInt64"},
                                             {"size", whole},
                                             {"sizeOnDisk", whole},
                                             {"fileCount", whole},
                                             {"folderCount", whole},
                                             {"sent", moment},
                                             {"records", text}}};

template <class Columns>
std::string namesOf(const Columns& columns) {
    std::string result;
    for (const Column& column : columns) {
        result.append(result.empty() ? "" : ", ").append(column.name);
    }
    return result;
}

template <class Columns>
std::string typed(const Columns& columns, bool hasLowCardinality) {
    std::string result;
    for (const Column& column : columns) {
        const bool isShort = column.repeats && hasLowCardinality;
        result.append(result.empty() ? "" : ", ").append(column.name).append(" ");
        result.append(isShort ? "LowCardinality(" : "").append(column.type).append(isShort ? ")" : "");
    }
    return result;
}

class Definitions {
public:
    explicit Definitions(const modSchema::Wanted& wanted) : wanted_(wanted) {
        add("CREATE DATABASE IF NOT EXISTS " + wanted.database);
    }

    void table(std::string_view name, const std::string& columns, std::string_view order) {
        const std::string local = wanted_.cluster.empty() ? std::string(name) : std::string(name) + "_local";
        const std::string start = "CREATE TABLE IF NOT EXISTS ";
        add(start + named(local) + " (" + columns +
            ") ENGINE = MergeTree PARTITION BY toYYYYMM(started) ORDER BY (" + std::string(order) + ")");
        if (!wanted_.cluster.empty()) {
            add(start + named(name) + " (" + columns + ") ENGINE = Distributed(" +
                modSchema::literal(wanted_.cluster) + ", " + modSchema::literal(wanted_.database) + ", " +
                modSchema::literal(local) + ", cityHash64(host))");
        }
    }

    void view(std::string_view name, const std::string& select) {
        add("CREATE VIEW IF NOT EXISTS " + named(name) + " AS " + select);
    }

    [[nodiscard]] std::string named(std::string_view table) const {
        return modSchema::qualified(wanted_.database, table);
    }

    // The condition on rows of `details` that they belong to a scan in the view.
    [[nodiscard]] std::string ofScansIn(std::string_view view) const {
        return "(host, scan, attempt) GLOBAL IN (SELECT host, scan, attempt FROM " + named(view) + ")";
    }

    // What the files have in common that have the same value in the column.
    [[nodiscard]] std::string filesBy(const std::string& column) const {
        return "SELECT host, " + column +
               ", files, bytes AS size, bytesOnDisk AS sizeOnDisk FROM (SELECT host, " + column +
               ", count() AS files, sum(size) AS bytes, sum(sizeOnDisk) AS bytesOnDisk FROM " +
               named("details") + " WHERE isFolder = 0 AND " + ofScansIn("outermost") + " GROUP BY host, " +
               column + ")";
    }

    [[nodiscard]] std::vector<std::string> take() { return std::move(all_); }

private:
    void add(std::string statement) { all_.push_back(std::move(statement)); }

    const modSchema::Wanted& wanted_;
    std::vector<std::string> all_;
};

} // namespace

std::string modSchema::literal(std::string_view bytes) {
    std::string result = "'";
    for (const char c : bytes) {
        if (c == '\'' || c == '\\') {
            result.push_back('\\');
            result.push_back(c);
        } else if (c == '\0') {
            result.append("\\0");
        } else {
            result.push_back(c);
        }
    }
    return result.append("'");
}

std::string modSchema::qualified(std::string_view database, std::string_view table) {
    return std::string(database).append(".").append(table);
}

std::string_view modSchema::detailsColumns() {
    static const std::string names = namesOf(detailsTable);
    return names;
}

std::string_view modSchema::scansColumns() {
    static const std::string names = namesOf(scansTable);
    return names;
}

std::vector<std::string> modSchema::definitions(const Wanted& wanted) {
    Definitions all(wanted);
    all.table("details",
              typed(detailsTable, wanted.hasLowCardinality) +
                  ", fullPath String ALIAS concat(parentFolder, fileName)",
              "host, scan, parentFolder, fileName");
    all.table("scans", typed(scansTable, false), "host, scan");
    const std::string scans(scansColumns());
    all.view("counted", "SELECT " + scans + " FROM " + all.named("scans") +
                            " ORDER BY host, scan, attempt LIMIT 1 BY host, scan");
    all.view("newest", "SELECT " + scans + " FROM " + all.named("counted") +
                           " ORDER BY host, path, finished DESC, started DESC, scan LIMIT 1 BY host, path");
    all.view("outermost",
             "SELECT host, tupleElement(each, 1) AS scan, tupleElement(each, 2) AS attempt, "
             "tupleElement(each, 3) AS path FROM (SELECT host, groupArray((scan, attempt, path)) AS every, "
             "groupArray(path) AS paths FROM " +
                 all.named("newest") +
                 " GROUP BY host) ARRAY JOIN every AS each, paths AS own "
                 "WHERE NOT arrayExists(other -> other != own AND substring(own, 1, length(other)) = other, "
                 "paths)");
    all.view("latest", "SELECT " + std::string(detailsColumns()) + ", fullPath FROM " + all.named("details") +
                           " WHERE " + all.ofScansIn("newest"));
    all.view("owners", all.filesBy("owner"));
    all.view("types", all.filesBy("extension"));
    all.view("growth",
             "SELECT host, path, finished, toDate(finished) AS day, scan, size, sizeOnDisk, fileCount, "
             "folderCount FROM " +
                 all.named("counted") + " ORDER BY host, path, finished");
    all.view("schemaVersion", "SELECT toInt32(" + std::to_string(version) + ") AS version");
    return all.take();
}

std::string modSchema::hasVersion(std::string_view database) {
    return "SELECT count() FROM system.tables WHERE database = " + literal(database) +
           " AND name = 'schemaVersion'";
}

std::string modSchema::askVersion(std::string_view database) {
    return "SELECT version FROM " + qualified(database, "schemaVersion");
}

std::string modSchema::isOnOneServer(std::string_view database) {
    return "SELECT count() FROM system.tables WHERE database = " + literal(database) +
           " AND name = 'details' AND engine != 'Distributed'";
}
