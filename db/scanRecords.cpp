#include "db/scanRecords.h"

#include <algorithm>
#include <deque>
#include <limits>
#include <random>

#include "base/dateFormat.h"
#include "db/folderRows.h"
#include "platform/fileError.h"
#include "platform/files.h"
#include "platform/locale.h"
#include "platform/runtimeError.h"
#include "platform/text.h"

namespace {

using modScans::Scan;

constexpr std::size_t longestName = 255; // in characters, as are the others
constexpr std::size_t longestPath = 32767;
constexpr std::size_t longestExcludes = 65536;

// One row being read; a file may lack columns, and hold anything.
class Reader {
public:
    explicit Reader(Recordset& rows) : rows_(rows) {}

    [[nodiscard]] std::string text(std::string_view name, std::size_t most = longestName) const {
        const Field* const field = rows_.find(name);
        return field == nullptr ? std::string() : std::string(platform::firstCharacters(field->text(), most));
    }
    [[nodiscard]] double number(std::string_view name) const {
        const Field* const field = rows_.find(name);
        return field == nullptr ? 0 : field->number();
    }
    [[nodiscard]] bool flag(std::string_view name) const { return number(name) == 1; }
    [[nodiscard]] std::int64_t count(std::string_view name) const {
        constexpr double most = 1e15;
        const double value = number(name);
        return value > 0 && value < most ? static_cast<std::int64_t>(value) : 0;
    }

private:
    Recordset& rows_;
};

Scan scanOf(const Reader& row) {
    return {.host = row.text("host"),
            .system = row.text("system"),
            .path = row.text("path", longestPath),
            .started = modFormat::parseUtc(row.text("started")),
            .finished = modFormat::parseUtc(row.text("finished")),
            .cancelled = row.flag("cancelled"),
            .exact = row.flag("exact"),
            .withOwners = row.flag("withOwners"),
            .onDisk = row.flag("onDisk"),
            .excludes = row.text("excludes", longestExcludes),
            .unreadableFolders = row.count("unreadableFolders"),
            .unreadableFiles = row.count("unreadableFiles"),
            .programVersion = row.text("programVersion"),
            .uniqueId = row.text("uniqueId")};
}

// A text is counted with its length, any other value as one.
std::uint64_t bytesOf(Recordset& row) {
    std::uint64_t bytes = 1;
    for (int i = 0; i < row.FieldCount(); ++i) {
        bytes += std::max<std::uint64_t>(row.Fields(i).text().size(), 1);
    }
    return bytes;
}

// Throws 3049 if there is more than so many bytes.
std::vector<Scan> read(Recordset& rows, std::uint64_t mostBytes, const std::string& file) {
    std::deque<Scan> last;
    std::uint64_t bytes = 0;
    const Reader row(rows);
    for (; !rows.EndOfFile(); rows.MoveNext()) {
        bytes += bytesOf(rows);
        if (bytes > mostBytes) {
            throw platform::fileError(databaseError::damaged,
                                      "The database is damaged; it claims more than can fit in it", file,
                                      platform::NotDone::loaded);
        }
        last.push_back(scanOf(row));
        if (last.size() > modScans::mostRead) {
            last.pop_front();
        }
    }
    return {std::make_move_iterator(last.begin()), std::make_move_iterator(last.end())};
}

// Whether the folder has a row of its own that is not newer. A loaded path may be none.
bool isOlder(Database& database, std::string_view folder, std::int64_t lastRow) {
    try {
        const auto own =
            database.OpenRecordset("select idx from details where " + modFolderRows::itself(folder));
        return !own->EndOfFile() && own->Fields(0).number() <= static_cast<double>(lastRow);
    } catch (const RuntimeError&) {
        return false;
    }
}

// The numbers of the scans whose folders were recorded anew.
std::vector<std::string> replacedScans(Database& database, std::string_view folder, std::int64_t lastRow) {
    std::vector<std::string> result;
    const auto rows = database.OpenRecordset("select scanId, path from scans where " +
                                             modFolderRows::atOrBelow("path", folder));
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        const std::string path(rows->Fields(1).text());
        if (platform::sameName(path, folder) || !isOlder(database, path, lastRow)) {
            result.emplace_back(rows->Fields(0).text());
        }
    }
    return result;
}

void setText(Recordset& row, std::string_view name, const std::string& text) {
    if (!text.empty()) {
        row.Fields(name).set(text);
    }
}

void setMoment(Recordset& row, std::string_view name, const std::optional<platform::Seconds>& moment) {
    if (moment) {
        row.Fields(name).set(modFormat::utcText(*moment));
    }
}

} // namespace

std::vector<Scan> modScans::all(Database& database) {
    return read(*database.OpenRecordset("select * from scans order by scanId"),
                std::numeric_limits<std::uint64_t>::max(), database.Name());
}

std::vector<Scan> modScans::stored(Database& file) {
    try {
        constexpr std::uint64_t bytesPerByte = 2; // as of the rows (db/copyRows.h)
        const std::uint64_t size = platform::fileSize(file.Name()) + platform::fileSize(file.Name() + "-wal");
        return read(*file.OpenStored("scans"), bytesPerByte * size, file.Name());
    } catch (const RuntimeError& error) {
        if (error.number() != databaseError::noSuchTable) {
            throw;
        }
        return {};
    }
}

bool modScans::isAtOrBelow(std::string_view path, std::string_view folder) {
    return path.size() >= folder.size() && platform::sameName(path.substr(0, folder.size()), folder);
}

const Scan* modScans::ofFolder(const std::vector<Scan>& scans, std::string_view key) {
    const Scan* deepest = nullptr;
    for (const Scan& scan : scans) {
        const bool covers = !scan.path.empty() && isAtOrBelow(key, scan.path);
        if (covers && (deepest == nullptr || scan.path.size() >= deepest->path.size())) {
            deepest = &scan;
        }
    }
    return deepest;
}

std::vector<Scan> modScans::within(const std::vector<Scan>& scans, std::string_view key) {
    const Scan* const covering = ofFolder(scans, key);
    std::vector<Scan> result;
    for (const Scan& scan : scans) {
        if (&scan == covering || isAtOrBelow(scan.path, key)) {
            result.push_back(scan);
        }
    }
    return result;
}

std::string modScans::differences(const std::vector<Scan>& before, const std::vector<Scan>& now) {
    std::string result;
    const auto add = [&](bool applies, std::string_view reason) {
        if (applies) {
            result.append(result.empty() ? "" : ", ").append(reason);
        }
    };
    const auto wasCancelled = [](const Scan& scan) { return scan.cancelled; };
    add(std::any_of(before.begin(), before.end(), wasCancelled), "the saved scan was cancelled");
    add(std::any_of(now.begin(), now.end(), wasCancelled), "the later scan was cancelled");
    const auto differ = [&](auto fact) {
        return std::any_of(before.begin(), before.end(), [&](const Scan& one) {
            return std::any_of(now.begin(), now.end(),
                               [&](const Scan& other) { return one.*fact != other.*fact; });
        });
    };
    add(differ(&Scan::exact), "not all of their sizes are exact");
    add(differ(&Scan::excludes), "they left out different items");
    return result;
}

std::optional<platform::Seconds> modScans::lastFinished(const std::vector<Scan>& scans) {
    std::optional<platform::Seconds> last;
    for (const Scan& scan : scans) {
        last = std::max(last, scan.finished); // nothing is before any moment
    }
    return last;
}

std::string modScans::newUniqueId() {
    constexpr std::size_t length = 32;
    constexpr unsigned base = 16;
    std::random_device random;
    std::string id;
    while (id.size() < length) {
        id.push_back("0123456789abcdef"[random() % base]);
    }
    return id;
}

void modScans::append(Database& database, const Scan& scan) {
    const auto row = database.OpenRecordset("scans");
    row->AddNew();
    setText(*row, "host", scan.host);
    setText(*row, "system", scan.system);
    setText(*row, "path", scan.path);
    setMoment(*row, "started", scan.started);
    setMoment(*row, "finished", scan.finished);
    row->Fields("cancelled").setInteger(scan.cancelled ? 1 : 0);
    row->Fields("exact").setInteger(scan.exact ? 1 : 0);
    row->Fields("withOwners").setInteger(scan.withOwners ? 1 : 0);
    row->Fields("onDisk").setInteger(scan.onDisk ? 1 : 0);
    setText(*row, "excludes", scan.excludes);
    row->Fields("unreadableFolders").setInteger(scan.unreadableFolders);
    row->Fields("unreadableFiles").setInteger(scan.unreadableFiles);
    setText(*row, "programVersion", scan.programVersion);
    setText(*row, "uniqueId", scan.uniqueId);
    row->Update();
}

void modScans::record(Database& database, const Scan& scan, std::int64_t lastRowBefore) {
    for (const std::string& number : replacedScans(database, scan.path, lastRowBefore)) {
        database.Execute("delete * from scans where scanId=" + number);
    }
    append(database, scan);
}

void modScans::forget(Database& database, std::string_view folder) {
    database.Execute("delete * from scans where " + modFolderRows::atOrBelow("path", folder));
}

void modScans::forgetAll(Database& database) {
    database.Execute("delete * from scans");
}
