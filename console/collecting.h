#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "collect/httpClient.h"
#include "collect/scanSender.h"
#include "console/consoleInterface.h"
#include "console/consoleOptions.h"
#include "db/dao.h"
#include "db/scanRecords.h"

// Sends the scans of a run to a server (--collect). Each failure is a message. Nothing is owned.
class Collecting {
public:
    Collecting(const ConsoleOptions& options, ConsoleInterface& userInterface)
        : options_(options), userInterface_(userInterface) {}

    // Before the scan: false if the password cannot be read. The server may be down until the scan is done.
    bool check();

    // A scan is still to be sent.
    [[nodiscard]] bool isWanted() const { return !options_.collectUrl.empty() && !isGivenUp_; }

    // Why nothing is sent.
    void refuse(std::string_view reason);

    // The rows of a database, and what is known of them.
    struct Rows {
        Database& database;
        std::vector<modScans::Scan> scans;
        std::int64_t most = 0; // see ScanToSend
    };
    // Sends each of the folders (keys) as a scan. Appends a line for each.
    enum class Result { done, failed, cancelled };
    Result send(const Rows& rows, const std::vector<std::string>& keys, std::string& lines);

private:
    Result sendOne(const Rows& rows, const std::string& key, std::string& lines);
    void sendPatiently(Database& database, const modCollect::ScanToSend& scan, std::string& lines);

    const ConsoleOptions& options_;
    ConsoleInterface& userInterface_;
    std::string password_;
    std::unique_ptr<HttpClient> client_;
    bool isGivenUp_ = false;
};

// Makes the tables on a server (--collect-setup), and returns the exit status.
[[nodiscard]] int setUpServer(const ConsoleOptions& options);
