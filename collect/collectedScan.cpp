#include "collect/collectedScan.h"

#include <array>
#include <memory>
#include <utility>
#include <vector>

#include "base/clsUserInterface.h"
#include "base/dateFormat.h"
#include "base/runInBackground.h"
#include "collect/rowForm.h"
#include "collect/schema.h"
#include "collect/tabSeparated.h"
#include "db/scanRecords.h"
#include "export/databaseFile.h"
#include "platform/paths.h"

namespace modCollected {

namespace {

constexpr std::size_t mostListed = 10;
constexpr std::uint64_t mostRows = 10'000'000'000; // of a scan

[[noreturn]] void refuse(const HttpClient& server, const std::string& reason) {
    throw ServerError(ServerError::Kind::refused, errorNumber::fileNotFound,
                      server.url().shown() + " has " + reason);
}

[[noreturn]] void refuseRows(const HttpClient& server) {
    throw ServerError(ServerError::Kind::strange, errorNumber::inputOutput,
                      server.url().shown() + " sends other rows than those of the scan");
}

std::string selectFrom(const HttpClient& server, const std::string& records) {
    return "SELECT host, scan, attempt, path, separator, toUnixTimestamp(finished), rows, size, fileCount, " +
           records + " FROM " + modSchema::qualified(server.url().database, "counted");
}

std::string statementFor(const HttpClient& server, const Wanted& wanted) {
    const auto equals = [](std::string_view column, std::string_view value) {
        return std::string(column).append(" = ").append(modSchema::literal(value));
    };
    std::string statement = selectFrom(server, "records") + " WHERE " + equals("host", wanted.host);
    if (!wanted.scan.empty()) {
        statement += " AND " + equals("scan", wanted.scan);
    }
    if (!wanted.path.empty()) {
        statement += " AND substring(" + modSchema::literal(wanted.path) + ", 1, length(path)) = path";
    }
    // Of each folder the newest, and of the folders the innermost first.
    return statement + " ORDER BY length(path) DESC, path, finished DESC, scan LIMIT 1 BY path LIMIT " +
           std::to_string(mostListed + 1);
}

std::vector<Found> ask(HttpClient& server, const std::string& statement, std::size_t most) {
    constexpr std::size_t columns = 10;
    std::vector<Found> all;
    TabSeparated answer(columns, most, [&](TabSeparated::Row& row) {
        Found found;
        found.host = std::move(row[0]);
        found.scan = std::move(row[1]);
        found.attempt = wholeNumber<std::uint64_t>(row[2]);
        found.path = std::move(row[3]);
        found.separator = row[4] == "\\" ? '\\' : '/';
        found.finished = wholeNumber<platform::Seconds>(row[5]);
        found.rows = wholeNumber<std::uint64_t>(row[6]);
        if (found.rows > mostRows) {
            refuseRows(server);
        }
        found.size = static_cast<double>(wholeNumber<std::int64_t>(row[7]));
        found.files = static_cast<double>(wholeNumber<std::int64_t>(row[8]));
        found.records = std::move(row[9]);
        all.push_back(std::move(found));
    });
    server.ask(statement, [&](std::string_view piece) { answer.add(piece); }, {{"wait_end_of_query", "1"}});
    answer.finish();
    return all;
}

// Rows as they arrive, in a database.
class Filling {
public:
    Filling(Database& target, const Found& found, const HttpClient& server)
        : decoder_(found.separator), rows_(target.OpenRecordset("details")), expected_(found.rows),
          server_(server) {
        for (std::size_t column = 0; column < fields_.size(); ++column) {
            fields_.at(column) = &rows_->Fields(modRowForm::columns.at(column));
        }
    }

    void add(std::string_view piece) {
        bytes_.append(piece);
        std::string_view rest = bytes_;
        while (decoder_.take(rest, row_)) {
            append();
        }
        bytes_.erase(0, bytes_.size() - rest.size());
    }

    void finish() const {
        if (!bytes_.empty() || count_ != expected_) {
            refuseRows(server_);
        }
    }

private:
    void append() {
        if (++count_ > expected_) {
            refuseRows(server_);
        }
        rows_->AddNew();
        for (std::size_t column = 0; column < fields_.size(); ++column) {
            fields_.at(column)->set(row_.at(column));
        }
        rows_->Update();
    }

    modRowForm::Decoder decoder_;
    std::unique_ptr<Recordset> rows_;
    std::array<Field*, modRowForm::columns.size()> fields_{};
    modRowForm::Row row_;
    std::string bytes_;
    std::uint64_t count_ = 0;
    std::uint64_t expected_;
    const HttpClient& server_;
};

void fill(Database& target, HttpClient& server, const Found& found) {
    const std::string statement =
        "SELECT " + modRowForm::serverColumnList() + " FROM " +
        modSchema::qualified(server.url().database, "details") +
        " WHERE host = " + modSchema::literal(found.host) + " AND scan = " + modSchema::literal(found.scan) +
        " AND attempt = " + std::to_string(found.attempt) + " ORDER BY idx FORMAT RowBinary";
    target.BeginTrans();
    const std::vector<std::string> indexes = target.TakeIndexes("details");
    {
        Filling filling(target, found, server);
        server.ask(statement, [&](std::string_view piece) { filling.add(piece); },
                   {{"max_bytes_before_external_sort", "1000000000"}});
        filling.finish();
    }
    for (const modScans::Scan& scan : modRowForm::decodedScans(found.records)) {
        modScans::append(target, scan);
    }
    target.RestoreIndexes(indexes);
    target.CommitTrans();
}

} // namespace

std::vector<Found> list(HttpClient& server, std::size_t most) {
    return ask(server,
               selectFrom(server, "''") + " ORDER BY host, path, finished DESC, scan LIMIT " +
                   std::to_string(most),
               most);
}

Found find(HttpClient& server, const Wanted& wanted) {
    std::vector<Found> all = ask(server, statementFor(server, wanted), mostListed + 1);
    if (all.empty()) {
        refuse(server, "no such scan of " + oneSafeLine(wanted.host));
    }
    if (wanted.path.empty() && wanted.scan.empty() && all.size() > 1) {
        std::string paths;
        for (std::size_t i = 0; i < std::min(all.size(), mostListed); ++i) {
            paths += (i == 0 ? "" : ", ") + oneSafeLine(all[i].path);
        }
        refuse(server, "scans of several folders of " + oneSafeLine(wanted.host) +
                           "; name one of them: " + paths + (all.size() > mostListed ? ", ..." : ""));
    }
    return std::move(all.front());
}

Fetched fetch(WorkingDatabase& working, HttpClient& server, const Found& found,
              clsUserInterface& userInterface) {
    Fetched fetched = working.prepareCompanion();
    const ShownProgress progress(userInterface, 0);
    try {
        runInBackground(userInterface, [&] { fill(fetched->database(), server, found); });
    } catch (const ServerError&) {
        throw;
    } catch (const RuntimeError& error) {
        const bool isOfRows = error.number() == databaseError::damaged ||
                              error.number() == databaseError::duplicateKey ||
                              error.number() == databaseError::engine; // a text for a number
        if (!isOfRows) {
            throw;
        }
        refuseRows(server);
    }
    return fetched;
}

void load(WorkingDatabase& working, const Fetched& fetched, clsUserInterface& userInterface) {
    try {
        modExport::loadDatabase(working, platform::displayPath(fetched->finish()), userInterface);
    } catch (const RuntimeError& error) {
        if (error.number() != databaseError::damaged) {
            throw;
        }
        throw RuntimeError(databaseError::damaged,
                           "What the server has sent cannot be the rows of a scan. It was not loaded.");
    }
}

std::string titleOf(const Found& found, const HttpClient& server) {
    return "Scan of " + oneSafeLine(found.host) + " on " + server.url().shown() + " (" +
           modFormat::formatDate(platform::localTime(found.finished), modFormat::storedDatePicture) + ")";
}

} // namespace modCollected
