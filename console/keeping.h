#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "console/consoleInterface.h"
#include "console/consoleOptions.h"
#include "db/modDatabase.h"

// Keeps the scans of a run (--keep). Each failure is a message. Nothing is owned.
class Keeping {
public:
    Keeping(const ConsoleOptions& options, ConsoleInterface& userInterface)
        : options_(options), userInterface_(userInterface) {}

    // Before the scan: false if no file can be written to the folder.
    bool check();

    // A file is still to be written.
    [[nodiscard]] bool isWanted() const { return !options_.keepFolder.empty() && !isGivenUp_; }

    // Why nothing is kept.
    void refuse(std::string_view reason);

    // Writes each scanned folder (a key) to a file of its own, and removes old ones. False if something could
    // not be done. Appends a line for each file written.
    bool keep(WorkingDatabase& working, const std::vector<std::string>& keys, std::string& lines);

private:
    bool keepOne(WorkingDatabase& working, std::string_view key, std::string& lines);

    const ConsoleOptions& options_;
    ConsoleInterface& userInterface_;
    bool isGivenUp_ = false;
};
