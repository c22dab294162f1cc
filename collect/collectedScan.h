#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "collect/httpClient.h"
#include "db/workingDatabase.h"
#include "platform/clock.h"

class clsUserInterface;

// Brings a scan back from a server.
namespace modCollected {

// Which one.
struct Wanted {
    std::string host;
    std::string scan; // its id; empty for the newest
    std::string path; // of a folder in it, as it is called there (folderPath); empty if only one was scanned
};

// What the server has.
struct Found {
    std::string host;
    std::string scan;
    std::uint64_t attempt = 0;
    std::string path; // of the folder with which it began
    char separator = '/';
    platform::Seconds finished = 0;
    std::uint64_t rows = 0;
    double size = 0; // of the folder, and the number of files in it
    double files = 0;
    std::string records; // modRowForm::decodedScans
};

// All that the server has, but at most so many: by host and path, the newest first; without `records`.
[[nodiscard]] std::vector<Found> list(HttpClient& server, std::size_t most);

// Throws ServerError; `refused` if there is none, or none is meant more than others.
[[nodiscard]] Found find(HttpClient& server, const Wanted& wanted);

// Its rows, in a database beside the working one. Throws ServerError, and 3049 for rows that are none. Events
// are handled meanwhile, while another thread talks to the server: what the client asks whether to go on must
// bear that.
using Fetched = std::unique_ptr<WorkingDatabase::Successor>;
[[nodiscard]] Fetched fetch(WorkingDatabase& working, HttpClient& server, const Found& found,
                            clsUserInterface& userInterface);

// Replaces the rows of the working database by these, and appends its tree nodes, as if they had been loaded
// from a file: what a server sends is trusted no more than that. Throws as modExport::loadDatabase does; the
// working database is then as before.
void load(WorkingDatabase& working, const Fetched& fetched, clsUserInterface& userInterface);

// "Scan of nas1 on https://backup:8443 (11/22/2026 09:05:00 AM)"
[[nodiscard]] std::string titleOf(const Found& found, const HttpClient& server);

} // namespace modCollected
