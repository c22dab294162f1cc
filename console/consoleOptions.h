#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "views/findConditions.h"

// The content of the command line.
struct ConsoleOptions {
    std::vector<std::string> paths; // as typed
    std::string htmlFile;
    std::string textFile;
    std::string xmlFile;
    std::string excelFile;
    std::string overviewFile;
    std::string databaseFile;
    std::string loadFile;
    std::string compareFile;          // the saved scan to compare with
    std::string compareFolder;        // the folder there, if it is another one
    std::vector<std::string> history; // files and folders; then nothing is scanned
    std::string keepFolder;
    std::optional<std::int64_t> keepLast;
    std::string collectUrl;      // of the server to send scans to
    std::string collectSetupUrl; // of the one to make tables on; then nothing is scanned
    std::string collectCluster;
    std::string collectPasswordFile;
    std::int64_t collectPatience = 60; // seconds
    std::string collectedUrl;          // of the server to ask; then nothing is scanned
    std::string host;                  // whose scans are asked for or loaded
    std::string scan;                  // the id of the one to load
    std::int64_t days = 30;            // that growth is told of
    std::string applicationFolder;
    std::vector<std::string> excludes;     // patterns
    std::vector<std::string> excludeFiles; // files with one pattern a line
    std::optional<bool> owners;            // overrides the setting
    std::optional<std::int16_t> readers;   // likewise
    bool summary = false;
    bool fullSizes = false;
    bool exact = false;
    std::optional<bool> onDisk; // overrides the setting
    bool unreadable = false;
    bool keepsSame = false; // of a comparison, print and write what has not changed too
    bool force = false;
    bool quiet = false;
    std::int64_t top = 20;                   // rows per printed table, 0 for all
    std::optional<modFind::Conditions> find; // what alone is printed and written, as a table
};

// Parses the command line. Help, version and errors are printed at once; the result then has the exit status:
// 0, or 2 for wrong usage.
struct ParsedCommandLine {
    ConsoleOptions options;
    std::optional<int> exitStatus;
};
[[nodiscard]] ParsedCommandLine parseCommandLine(int argumentCount, const char* const* arguments);
