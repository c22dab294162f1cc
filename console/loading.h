#pragma once

#include <string>

#include "console/consoleInterface.h"
#include "console/consoleOptions.h"
#include "db/workingDatabase.h"

// Loads a scan from a file or from a server (--load).
class Loading {
public:
    Loading(const ConsoleOptions& options, ConsoleInterface& userInterface)
        : options_(options), userInterface_(userInterface) {}

    // Throws as modExport::loadDatabase does, and ServerError.
    void load(WorkingDatabase& working);

    // What was loaded: where it is from, and when it was scanned.
    [[nodiscard]] std::string title(const WorkingDatabase& working) const;

private:
    void loadFromServer(WorkingDatabase& working);

    const ConsoleOptions& options_;
    ConsoleInterface& userInterface_;
    std::string title_; // of a server's scan
};
