#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/clsRegSettings.h"
#include "console/consoleInterface.h"
#include "console/consoleOptions.h"
#include "console/outputs.h"
#include "export/folderHistory.h"

// A run that tells what saved scans hold of one folder (--history). It scans and loads nothing, and so needs
// no working database.
class HistoryRun {
public:
    explicit HistoryRun(ConsoleOptions options);

    // As ConsoleRun::run.
    [[nodiscard]] int run();

private:
    bool start();
    void findFiles();
    void checkOutputs();
    void show(const modExport::FolderHistory& history);
    void write(const modExport::FolderHistory& history);
    void fail(std::string_view subject, std::string_view reason);

    ConsoleOptions options_;
    ConsoleInterface userInterface_;
    clsRegSettings store_;
    std::string applicationFolder_;
    std::vector<std::string> files_; // internal paths
    std::vector<Output> outputs_;
    bool printsNothing_ = false;
    bool failed_ = false;
};
