#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "collect/httpClient.h"
#include "db/dao.h"
#include "db/scanRecords.h"

// Sends scans of the working database, or of a saved scan as it lies (ScanFile), to a server.
namespace modCollect {

// One folder of the database, to be sent as a scan of its own.
struct ScanToSend {
    std::string key;                   // the folder's
    std::vector<modScans::Scan> scans; // that its rows come from
    modScans::Scan covering;           // of these, the one that has come to the folder
    bool foldersOnly = false;          // leave out the files
    std::int64_t mostRows = 0;         // that the database's file has room for; 0 if it is trusted
};

// What is to be sent of the folder, in a database with these scans. Throws RuntimeError 5 that says why it is
// not sent: nobody knows which machine it is of, or its scan was cancelled.
[[nodiscard]] ScanToSend scanOf(const std::vector<modScans::Scan>& scans, std::string_view key,
                                bool foldersOnly);

// False for a database of an earlier version, which must be loaded to have all columns.
[[nodiscard]] bool hasColumns(Database& database);

// The folders that the scans began with, but for those that lie in another one.
[[nodiscard]] std::vector<std::string> scannedKeys(const std::vector<modScans::Scan>& scans);

// The id: the same whenever and from wherever the scan is sent.
[[nodiscard]] std::string idOf(const ScanToSend& scan);

enum class Outcome { sent, wasThere };

// Called now and then with the number of rows that have been sent.
using Progress = std::function<void(std::int64_t rows)>;

// Tries once. The scan counts, as a whole, when this returns; if it throws, it does not, or (when the last
// answer was lost) it does as a whole. What was sent before that is invisible. Takes memory for some rows.
[[nodiscard]] Outcome send(HttpClient& client, Database& database, const ScanToSend& scan,
                           const Progress& progress);

} // namespace modCollect
