#include "collect/scanSender.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <random>

#include "collect/diskPaths.h"
#include "collect/rowBinary.h"
#include "collect/rowForm.h"
#include "collect/schema.h"
#include "collect/server.h"
#include "db/folderRows.h"
#include "platform/clock.h"
#include "platform/fileError.h"
#include "platform/runtimeError.h"

namespace {

using modCollect::ScanToSend;
using modRowBinary::append;
using modRowBinary::appendText;

constexpr std::size_t bytesEach = 1U << 18; // that are handed to the client at a time

// How many rows the server stores at a time. It needs memory for them, and each time makes files.
constexpr const char* rowsPerPart = "131072";

std::uint32_t serverMoment(const std::optional<platform::Seconds>& moment) {
    constexpr platform::Seconds latest = 0xFFFFFFFF;
    return moment && *moment > 0 && *moment <= latest ? static_cast<std::uint32_t>(*moment) : 0;
}

std::uint64_t randomNumber() {
    std::random_device random;
    constexpr unsigned bits = 32;
    return (static_cast<std::uint64_t>(random()) << bits) | random();
}

std::string conditionOf(Database& database, const ScanToSend& scan) {
    std::string condition = scan.foldersOnly ? "isFolder=1" : "";
    if (!modFolderRows::holdsAll(database, scan.key)) {
        condition.append(condition.empty() ? "" : " and ").append("((");
        condition.append(modFolderRows::itself(scan.key)).append(") or (");
        condition.append(modFolderRows::anywhereInOfTable(scan.key)).append("))");
    }
    return condition.empty() ? "" : " where " + condition;
}

// What the folder has in all, as one of its rows goes by after the other.
class Figures {
public:
    Figures(Recordset& rows, std::string key)
        : key_(std::move(key)), parent_(rows.Fields("parentFolder")), name_(rows.Fields("fileName")),
          isFolder_(rows.Fields("isFolder")), fileCount_(rows.Fields("fileCount")),
          folderCount_(rows.Fields("folderCount")), size_(rows.Fields("size")),
          sizeOnDisk_(rows.Fields("sizeOnDisk")) {}

    void add() {
        const std::string_view parent = parent_.text();
        if (parent == key_) {
            const bool isFolder = isFolder_.number() == 1;
            items_.add(*this, isFolder ? fileCount_.number() : 1, isFolder ? folderCount_.number() + 1 : 0);
        } else if (parent.size() < key_.size() && key_.starts_with(parent) &&
                   std::string_view(key_).substr(parent.size()) == name_.text()) {
            itself_ = {};
            itself_.add(*this, fileCount_.number(), folderCount_.number());
            hasItself_ = true;
        }
    }

    void appendTo(std::string& result) const {
        const Sums& sums = hasItself_ ? itself_ : items_;
        for (const double each : {sums.size, sums.sizeOnDisk, sums.files, sums.folders}) {
            constexpr double most = 0x1p62;
            const bool isSound = each > -most && each < most; // of a file that was loaded
            append(result, isSound ? static_cast<std::int64_t>(std::llround(each)) : 0);
        }
    }

private:
    struct Sums {
        double size = 0;
        double sizeOnDisk = 0;
        double files = 0;
        double folders = 0;

        void add(const Figures& row, double moreFiles, double moreFolders) {
            size += row.size_.number();
            sizeOnDisk += row.sizeOnDisk_.number();
            files += moreFiles;
            folders += moreFolders;
        }
    };

    std::string key_;
    const Field& parent_;
    const Field& name_;
    const Field& isFolder_;
    const Field& fileCount_;
    const Field& folderCount_;
    const Field& size_;
    const Field& sizeOnDisk_;
    Sums items_; // directly in it
    Sums itself_;
    bool hasItself_ = false;
};

// One attempt to send a scan.
class Sending {
public:
    Sending(HttpClient& client, Database& database, const ScanToSend& scan)
        : client_(client), database_(database), scan_(scan),
          separator_(modDiskPaths::separatorOf(scan.key, scan.covering.system)),
          attempt_{.host = scan.covering.host,
                   .scan = modCollect::idOf(scan),
                   .number = randomNumber(),
                   .started = serverMoment(scan.covering.started)} {}

    [[nodiscard]] bool isThere() {
        return modServer::askNumber(client_, "SELECT count() FROM " + table("scans") +
                                                 " WHERE host = " + modSchema::literal(attempt_.host) +
                                                 " AND scan = " + modSchema::literal(attempt_.scan)) != 0;
    }

    void sendRows(const modCollect::Progress& progress) {
        const auto rows = database_.OpenRecordset("select " + modRowForm::columnList() + " from details" +
                                                  conditionOf(database_, scan_));
        modRowForm::Encoder encoder(*rows, attempt_, separator_);
        Figures figures(*rows, scan_.key);
        std::string drive;
        insert("details", modSchema::detailsColumns(), [&](std::string& bytes) {
            for (; bytes.size() < bytesEach && !rows->EndOfFile(); rows->MoveNext(), ++count_) {
                if (count_ == 0) {
                    drive = rows->Fields("drive").text();
                }
                if (scan_.mostRows != 0 && count_ == scan_.mostRows) { // its pages may lead in a circle
                    throw platform::fileError(databaseError::damaged,
                                              "The database is damaged; it claims more than can fit in it",
                                              database_.Name(), platform::NotDone::read);
                }
                encoder.append(bytes);
                figures.add();
            }
            progress(count_);
            return !rows->EndOfFile();
        });
        modDiskPaths::appendPath(drive_, drive, separator_);
        figures.appendTo(figures_);
    }

    // What was sent may have been cut off on the way.
    void requireArrived() {
        const std::int64_t arrived =
            modServer::askNumber(client_, "SELECT count() FROM " + table("details") +
                                              " WHERE host = " + modSchema::literal(attempt_.host) +
                                              " AND scan = " + modSchema::literal(attempt_.scan) +
                                              " AND attempt = " + std::to_string(attempt_.number));
        if (arrived != count_) {
            throw ServerError(ServerError::Kind::unreachable, errorNumber::inputOutput,
                              client_.url().shown() + " has stored " + std::to_string(arrived) + " rows of " +
                                  std::to_string(count_));
        }
    }

    void sendScan() {
        const modScans::Scan& scan = scan_.covering;
        std::string row;
        appendText(row, attempt_.host);
        appendText(row, attempt_.scan);
        append(row, attempt_.number);
        appendText(row, scan.system);
        appendText(row, scan.programVersion);
        appendText(row, drive_);
        std::string path;
        modDiskPaths::appendPath(path, scan_.key, separator_);
        appendText(row, path);
        appendText(row, {&separator_, 1});
        append(row, attempt_.started);
        append(row, serverMoment(modScans::lastFinished(scan_.scans)));
        for (const bool flag : {scan.exact, scan.withOwners, scan.onDisk, scan_.foldersOnly}) {
            append(row, static_cast<std::uint8_t>(flag ? 1 : 0));
        }
        appendText(row, scan.excludes);
        append(row, scan.unreadableFolders);
        append(row, scan.unreadableFiles);
        append(row, static_cast<std::uint64_t>(count_));
        row.append(figures_);
        append(row, serverMoment(platform::now()));
        appendText(row, modRowForm::encodedScans(scan_.scans));
        insert("scans", modSchema::scansColumns(), [&](std::string& bytes) {
            bytes.append(row);
            return false;
        });
    }

private:
    [[nodiscard]] std::string table(std::string_view name) const {
        return modSchema::qualified(client_.url().database, name);
    }

    void insert(std::string_view name, std::string_view columns, const HttpClient::Source& source) {
        client_.send("INSERT INTO " + table(name) + " (" + std::string(columns) + ") FORMAT RowBinary",
                     source,
                     {{"insert_distributed_sync", "1"},
                      {"max_insert_block_size", rowsPerPart},
                      {"min_insert_block_size_rows", rowsPerPart}});
    }

    HttpClient& client_;
    Database& database_;
    const ScanToSend& scan_;
    char separator_;
    modRowForm::Attempt attempt_;
    std::int64_t count_ = 0;
    std::string drive_;
    std::string figures_;
};

// Two numbers that hardly any two texts share.
class Fingerprint {
public:
    void add(std::string_view text) {
        constexpr std::uint64_t factor = 0x100000001B3;
        constexpr std::uint64_t otherFactor = 0x9E3779B97F4A7C15;
        for (const char c : text) {
            first_ = (first_ ^ static_cast<unsigned char>(c)) * factor;
            second_ = std::rotl(second_ + static_cast<unsigned char>(c), turn) * otherFactor;
        }
        first_ = (first_ ^ end) * factor; // so that no two texts join to the same
        second_ = std::rotl(second_ + end, turn) * otherFactor;
    }

    [[nodiscard]] std::string text() const { return digits(first_) + digits(second_); }

private:
    static std::string digits(std::uint64_t number) {
        constexpr std::size_t most = 16;
        constexpr int base = 16;
        std::string result(most, '0');
        std::string found(most, '0');
        const auto length = static_cast<std::size_t>(
            std::to_chars(found.data(), found.data() + most, number, base).ptr - found.data());
        return result.replace(most - length, length, found, 0, length);
    }

    static constexpr int turn = 23;
    static constexpr unsigned end = 0x100;
    std::uint64_t first_ = 0xCBF29CE484222325;
    std::uint64_t second_ = 0x2545F4914F6CDD1D;
};

[[noreturn]] void refuse(const std::string& reason) {
    throw RuntimeError(errorNumber::invalidCall, "not collected, because " + reason);
}

} // namespace

ScanToSend modCollect::scanOf(const std::vector<modScans::Scan>& scans, std::string_view key,
                              bool foldersOnly) {
    const modScans::Scan* const covering = modScans::ofFolder(scans, key);
    if (covering == nullptr || covering->host.empty()) {
        refuse("it does not say which machine it is of");
    }
    ScanToSend result{std::string(key), modScans::within(scans, key), *covering, foldersOnly};
    if (std::any_of(result.scans.begin(), result.scans.end(),
                    [](const modScans::Scan& scan) { return scan.cancelled; })) {
        refuse("its scan was cancelled");
    }
    return result;
}

bool modCollect::hasColumns(Database& database) {
    const auto none = database.OpenRecordset("select * from details where idx is null");
    return std::all_of(modRowForm::columns.begin(), modRowForm::columns.end(),
                       [&](std::string_view column) { return none->find(column) != nullptr; });
}

std::vector<std::string> modCollect::scannedKeys(const std::vector<modScans::Scan>& scans) {
    std::vector<std::string> keys;
    for (const modScans::Scan& scan : scans) {
        const bool liesInOther = std::any_of(scans.begin(), scans.end(), [&](const modScans::Scan& other) {
            return other.path.size() < scan.path.size() && modScans::isAtOrBelow(scan.path, other.path);
        });
        if (!liesInOther && !scan.path.empty() &&
            std::find(keys.begin(), keys.end(), scan.path) == keys.end()) {
            keys.push_back(scan.path);
        }
    }
    return keys;
}

// A scan of an earlier version has no number of its own.
std::string modCollect::idOf(const ScanToSend& scan) {
    std::vector<std::string> texts;
    for (const modScans::Scan& each : scan.scans) {
        std::string text = each.uniqueId;
        if (text.empty()) {
            text = each.host + "\n" + each.path + "\n" + std::to_string(each.started.value_or(0)) + "\n" +
                   std::to_string(each.finished.value_or(0)) + "\n" + each.excludes;
        }
        texts.push_back(std::move(text));
    }
    std::sort(texts.begin(), texts.end()); // a part that was kept has them in another order
    Fingerprint fingerprint;
    fingerprint.add(scan.key);
    for (const std::string& text : texts) {
        fingerprint.add(text);
    }
    return fingerprint.text();
}

modCollect::Outcome modCollect::send(HttpClient& client, Database& database, const ScanToSend& scan,
                                     const Progress& progress) {
    modServer::requireSchema(client);
    Sending sending(client, database, scan);
    if (sending.isThere()) {
        return Outcome::wasThere;
    }
    sending.sendRows(progress);
    sending.requireArrived();
    sending.sendScan();
    return Outcome::sent;
}
