#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/errorLogFiles.h"
#include "console/consoleInterface.h"
#include "console/consoleOptions.h"
#include "export/reportFormats.h"

// A file that a run is to write.
struct Output {
    std::string file;                              // as typed, or platform::standardOutput
    std::optional<modExport::ReportFormat> format; // nothing for an overview page or a saved scan
    bool isOverview = false;
    bool agreed = false; // the user lets an existing file be overwritten
};

// The outputs in the order in which they are written.
[[nodiscard]] std::vector<Output> outputsOf(const ConsoleOptions& options);

// A file of the program's own, which no output may replace.
struct OwnFile {
    std::string path;
    std::string_view what; // "the error log"
};

// Those in the application folder, but for the working database, and the error log.
[[nodiscard]] std::vector<OwnFile> programsFiles(const std::string& applicationFolder,
                                                 const modGlobal::ErrorLogFiles& log);

// Looks at the outputs before a scan begins, asks before overwriting, and takes out those that cannot or may
// not be written, each with a message. False if any was taken out.
bool keepWritable(std::vector<Output>& outputs, const std::vector<OwnFile>& ownFiles,
                  ConsoleInterface& userInterface);
