#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "console/consoleInterface.h"
#include "console/consoleOptions.h"
#include "db/earlierScan.h"
#include "export/reportFormats.h"

// What a run compares with a saved scan: each folder that it scans or shows.
class ConsoleComparison {
public:
    // Reads the saved scan that the options name. Throws as EarlierScan does. Nothing is owned.
    ConsoleComparison(const ConsoleOptions& options, WorkingDatabase& working,
                      ConsoleInterface& userInterface);

    // Ctrl-C was pressed; nothing else is to be called then.
    [[nodiscard]] bool isCancelled() const noexcept { return cancelled_; }

    [[nodiscard]] bool hasCompared() const noexcept { return !compared_.empty(); }

    // Compares a folder, given by its key, and returns what is printed about it; nothing if this was
    // cancelled. `typed` is what was typed for it; may be empty. Throws RuntimeError 76 if the saved scan
    // does not have it.
    [[nodiscard]] std::optional<std::string> compare(std::string_view key, std::string_view typed);

    // Writes what differs in all folders compared so far. Problems are shown.
    void write(modExport::ReportFormat format, const std::string& file);

private:
    [[nodiscard]] std::string folderBefore(std::string_view key, std::string_view typed) const;
    [[nodiscard]] std::string caption() const;
    void tellWhatDiffers(const std::string& key, const std::string& before, bool oneLacksFiles);

    const ConsoleOptions& options_;
    WorkingDatabase& working_;
    ConsoleInterface& userInterface_;
    std::string savedScan_; // its name and date
    std::unique_ptr<EarlierScan> earlier_;
    std::vector<std::string> compared_; // displayed paths
    std::vector<std::string> remarks_;  // what is to be known about the figures
    bool cancelled_ = false;
};
