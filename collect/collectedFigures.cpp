#include "collect/collectedFigures.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <utility>

#include "collect/schema.h"
#include "collect/tabSeparated.h"

namespace modCollected {

namespace {

constexpr platform::Seconds secondsPerDay = 86400;

using Fields = TabSeparated::Row;

double numberIn(const std::string& field) {
    return static_cast<double>(wholeNumber<std::int64_t>(field));
}

// The statements, for one question.
class Statements {
public:
    Statements(const std::string& database, const Question& question)
        : database_(database), question_(question) {}

    // Of each machine and path the last scans, newest first; or the one that growth is told since: the last
    // one before that moment, or the first of all.
    [[nodiscard]] std::string newestScans(int scans) const {
        return scansBy("finished DESC, started DESC, scan", scans);
    }
    [[nodiscard]] std::string scansBefore(platform::Seconds moment) const {
        const std::string finished = "toInt64(toUnixTimestamp(finished))";
        const std::string isLater = finished + " > " + std::to_string(moment);
        return scansBy(isLater + ", if(" + isLater + ", " + finished + ", -" + finished + "), scan", 1);
    }
    // Those of which rows are counted.
    [[nodiscard]] std::string outermost() const {
        return "SELECT host, scan, attempt FROM " + named("outermost") + " WHERE " + concerned();
    }

    [[nodiscard]] std::string figuresOf(const std::string& scans) const {
        return "SELECT host, scan, path, toUnixTimestamp(finished), foldersOnly, " + size() +
               ", fileCount, folderCount FROM (" + scans + ")";
    }
    // The same figures of the folder, in each of the scans.
    [[nodiscard]] std::string figuresOfFolder(const std::string& scans) const {
        const std::string_view path = question_.path;
        const std::string_view separator = path.substr(path.size() - 1);
        const std::string_view whole = path.substr(0, path.size() - 1);
        const std::size_t name = whole.find_last_of(separator) + 1;
        return "SELECT host, scan, " + size() + ", fileCount, folderCount FROM " + named("details") +
               " WHERE isFolder = 1 AND parentFolder = " + modSchema::literal(whole.substr(0, name)) +
               " AND fileName = " + modSchema::literal(whole.substr(name)) + " AND " + in(scans);
    }

    // What files have in common, with their bytes and number.
    [[nodiscard]] std::string filesBy(const std::string& column) const {
        return "SELECT " + column + ", sum(" + size() + ") AS bytes, count() FROM " + named("details") +
               " WHERE isFolder = 0 AND " + below() + in(outermost()) + " GROUP BY " + column +
               " ORDER BY bytes DESC, " + column + limit();
    }

    // But for those with which scans began: they are listed with the machines.
    [[nodiscard]] std::string folders() const {
        return "SELECT host, fullPath, " + size() + ", fileCount, folderCount FROM " + named("details") +
               " WHERE isFolder = 1 AND " + below() + in(outermost()) + " AND " + beganNoScan() +
               " ORDER BY " + size() + " DESC, host, fullPath" + limit();
    }

    [[nodiscard]] std::string grownFolders(platform::Seconds moment) const {
        const std::string newest = in(outermost());
        const std::string before =
            in("SELECT host, scan, attempt FROM (" + scansBefore(moment) +
               ") WHERE (host, path) GLOBAL IN (SELECT host, path FROM " + named("outermost") + ")");
        return "SELECT host, fullPath, sumIf(" + size() + ", " + newest + ") AS bytes, sumIf(" + size() +
               ", " + before + ") AS bytesBefore, sumIf(fileCount, " + newest + "), sumIf(folderCount, " +
               newest + ") FROM " + named("details") + " WHERE isFolder = 1 AND " + below() + "(" + newest +
               " OR " + before + ") AND " + beganNoScan() +
               " GROUP BY host, fullPath HAVING bytes != bytesBefore ORDER BY abs(bytes - bytesBefore) DESC, "
               "host, fullPath" +
               limit();
    }

private:
    [[nodiscard]] std::string named(std::string_view table) const {
        return modSchema::qualified(database_, table);
    }
    [[nodiscard]] std::string size() const { return question_.onDisk ? "sizeOnDisk" : "size"; }
    [[nodiscard]] std::string limit() const {
        return " LIMIT " + std::to_string(question_.top == 0 ? mostRows : question_.top + 1);
    }

    // The condition on scans that the question is about them: of the host, and at, below or above the path.
    [[nodiscard]] std::string concerned() const {
        std::string condition = "1 = 1";
        if (!question_.host.empty()) {
            condition.append(" AND host = ").append(modSchema::literal(question_.host));
        }
        if (!question_.path.empty()) {
            const std::string path = modSchema::literal(question_.path);
            condition.append(" AND (substring(path, 1, length(").append(path).append(")) = ").append(path);
            condition.append(" OR substring(").append(path).append(", 1, length(path)) = path)");
        }
        return condition;
    }
    // The condition on rows that they lie in the folder; the end of it belongs before others.
    [[nodiscard]] std::string below() const {
        std::string condition;
        if (!question_.host.empty()) {
            condition.append("host = ").append(modSchema::literal(question_.host)).append(" AND ");
        }
        if (!question_.path.empty()) {
            condition.append("startsWith(parentFolder, ").append(modSchema::literal(question_.path));
            condition.append(") AND ");
        }
        return condition;
    }
    [[nodiscard]] std::string beganNoScan() const {
        return "(host, fullPath) GLOBAL NOT IN (SELECT host, substring(path, 1, length(path) - 1) FROM " +
               named("outermost") + ")";
    }
    [[nodiscard]] static std::string in(const std::string& scans) {
        return "(host, scan, attempt) GLOBAL IN (SELECT host, scan, attempt FROM (" + scans + "))";
    }
    [[nodiscard]] std::string scansBy(const std::string& order, int scans) const {
        return "SELECT * FROM " + named("counted") + " WHERE " + concerned() + " ORDER BY host, path, " +
               order + " LIMIT " + std::to_string(scans) + " BY host, path";
    }

    const std::string& database_;
    const Question& question_;
};

// One scan, or what it tells of a folder.
struct Scan {
    std::string scan; // its id
    Row row;
};

class Asking {
public:
    Asking(HttpClient& server, const Question& question, platform::Seconds now)
        : server_(server), question_(question), statements_(server.url().database, question),
          since_(now - question.days * secondsPerDay) {}

    [[nodiscard]] Figures run() {
        askForMachines();
        askForGrowth();
        askFor(Table::owners, statements_.filesBy("owner"), 3, &groupIn);
        askFor(Table::types, statements_.filesBy("extension"), 3, &groupIn);
        askFor(Table::folders, statements_.folders(), 5, &folderIn);
        askFor(Table::grownFolders, statements_.grownFolders(since_), 6, &grownIn);
        return std::move(figures_);
    }

private:
    static Row groupIn(Fields& fields) {
        Row row;
        row.name = std::move(fields[0]);
        row.size = numberIn(fields[1]);
        row.files = numberIn(fields[2]);
        return row;
    }
    static Row folderIn(Fields& fields) {
        Row row;
        row.host = std::move(fields[0]);
        row.name = std::move(fields[1]);
        row.size = numberIn(fields[2]);
        row.files = numberIn(fields[3]);
        row.folders = numberIn(fields[4]);
        return row;
    }
    static Row grownIn(Fields& fields) {
        const double before = numberIn(fields[3]);
        fields.erase(fields.begin() + 3);
        Row row = folderIn(fields);
        row.before = before;
        return row;
    }

    [[nodiscard]] std::vector<Row>& rows(Table table) {
        return figures_.rows.at(static_cast<std::size_t>(table));
    }

    void read(const std::string& statement, std::size_t fields,
              const std::function<void(Fields& fields)>& take) {
        // The server holds an answer back until it is whole, and so can still say that it has failed.
        static const HttpClient::Parameters parameters{{"wait_end_of_query", "1"},
                                                       {"max_bytes_before_external_group_by", "1000000000"},
                                                       {"max_bytes_before_external_sort", "1000000000"}};
        TabSeparated answer(fields, mostRows, take);
        server_.ask(
            statement, [&](std::string_view piece) { answer.add(piece); }, parameters);
        answer.finish();
    }

    void askFor(Table table, const std::string& statement, std::size_t fields, Row (*rowIn)(Fields& fields)) {
        read(statement, fields, [&](Fields& found) { rows(table).push_back(rowIn(found)); });
    }

    // By host and path, in the order of the statement.
    [[nodiscard]] std::vector<Scan> scansOf(const std::string& statement) {
        std::vector<Scan> scans;
        read(statements_.figuresOf(statement), 8, [&](Fields& fields) {
            Scan scan;
            scan.scan = std::move(fields[1]);
            const std::string path = std::move(fields[2]);
            const auto finished = wholeNumber<platform::Seconds>(fields[3]);
            const bool isFoldersOnly = wholeNumber<int>(fields[4]) != 0;
            fields = {std::move(fields[0]), path, fields[5], fields[6], fields[7]};
            scan.row = folderIn(fields);
            scan.row.began = path;
            scan.row.isFoldersOnly = isFoldersOnly;
            scan.row.scanned = finished;
            scans.push_back(std::move(scan));
        });
        lookIntoScans(scans, statement);
        return scans;
    }

    // Where the folder lies within a scan, it takes the place of the scan's.
    void lookIntoScans(std::vector<Scan>& scans, const std::string& statement) {
        const auto isAbove = [&](const Scan& scan) { return scan.row.began.size() < question_.path.size(); };
        if (std::none_of(scans.begin(), scans.end(), isAbove)) {
            return;
        }
        std::map<std::pair<std::string, std::string>, Row> found;
        read(statements_.figuresOfFolder(statement), 5, [&](Fields& fields) {
            auto key = std::pair(fields[0], fields[1]);
            fields[1] = question_.path;
            found.emplace(std::move(key), folderIn(fields));
        });
        for (Scan& scan : scans) {
            if (!isAbove(scan)) {
                continue;
            }
            Row& row = scan.row;
            row.name = question_.path;
            const auto place = found.find({row.host, scan.scan});
            row.isGone = place == found.end();
            row.size = row.isGone ? 0 : place->second.size;
            row.files = row.isGone ? 0 : place->second.files;
            row.folders = row.isGone ? 0 : place->second.folders;
        }
    }

    void askForMachines() {
        std::set<std::pair<std::string, std::string>> outermost;
        read("SELECT host, scan FROM (" + statements_.outermost() + ")", 2,
             [&](Fields& fields) { outermost.emplace(std::move(fields[0]), std::move(fields[1])); });
        for (Scan& scan : scansOf(statements_.newestScans(2))) {
            std::vector<Row>& machines = rows(Table::machines);
            const bool isSecond = !machines.empty() && machines.back().host == scan.row.host &&
                                  machines.back().began == scan.row.began;
            if (isSecond) {
                machines.back().before = scan.row.isGone ? std::nullopt : scan.row.size;
                machines.back().since = scan.row.scanned;
            } else {
                scan.row.isInOther = !outermost.contains({scan.row.host, scan.scan});
                machines.push_back(std::move(scan.row));
            }
        }
        std::erase_if(rows(Table::machines), [](const Row& row) { return row.isGone && !row.before; });
    }

    void askForGrowth() {
        std::map<std::pair<std::string, std::string>, Row> before;
        for (Scan& scan : scansOf(statements_.scansBefore(since_))) {
            if (!scan.row.isGone) {
                before.emplace(std::pair(scan.row.host, scan.row.began), std::move(scan.row));
            }
        }
        std::vector<Row>& grown = rows(Table::growth);
        for (const Row& machine : rows(Table::machines)) {
            const auto place = before.find({machine.host, machine.began});
            if (place != before.end() && place->second.scanned != machine.scanned) {
                grown.push_back(machine);
                grown.back().before = place->second.size;
                grown.back().since = place->second.scanned;
            }
        }
        std::stable_sort(grown.begin(), grown.end(), [](const Row& left, const Row& right) {
            return left.change().value_or(0) > right.change().value_or(0);
        });
    }

    HttpClient& server_;
    const Question& question_;
    Statements statements_;
    platform::Seconds since_;
    Figures figures_;
};

bool isDriveLetter(std::string_view path) {
    constexpr std::string_view form = "C:\\";
    const bool isLetter =
        !path.empty() && ((path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z'));
    return isLetter && path.size() >= form.size() && path[1] == ':' && path[2] == '\\';
}

} // namespace

std::string folderPath(std::string_view typed) {
    const bool isWindows = typed.starts_with("\\\\") || isDriveLetter(typed);
    if (!isWindows && !typed.starts_with('/')) {
        throw RuntimeError(errorNumber::invalidCall,
                           "A path on other machines must be whole: /srv, C:\\data or \\\\server\\share");
    }
    const char separator = isWindows ? '\\' : '/';
    std::string path(typed);
    if (isDriveLetter(path)) {
        path.front() = path.front() >= 'a' ? static_cast<char>(path.front() - 'a' + 'A') : path.front();
    }
    if (!path.ends_with(separator)) {
        path.push_back(separator);
    }
    return path;
}

std::string remarkOf(const Row& row) {
    std::string text;
    const auto add = [&](bool applies, std::string_view remark) {
        if (applies) {
            text.append(text.empty() ? "" : ", ").append(remark);
        }
    };
    add(row.isGone, "gone");
    add(row.isFoldersOnly, "folders only");
    add(row.isInOther, "in another scan");
    return text;
}

std::string_view captionOf(Table table) {
    constexpr std::array<std::string_view, tables> captions{
        "Machines", "Owners", "File Types", "Largest Folders", "Growth", "Folders That Changed Most"};
    return captions.at(static_cast<std::size_t>(table));
}

Figures ask(HttpClient& server, const Question& question, platform::Seconds now) {
    return Asking(server, question, now).run();
}

} // namespace modCollected
