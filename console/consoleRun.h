#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/clsRegSettings.h"
#include "base/clsSettings.h"
#include "console/collecting.h"
#include "console/consoleComparison.h"
#include "console/consoleInterface.h"
#include "console/consoleOptions.h"
#include "console/keeping.h"
#include "console/loading.h"
#include "console/outputs.h"
#include "db/modDatabase.h"
#include "export/reportFormats.h"
#include "scan/clsSearch.h"
#include "scan/modProcessFiles.h"

// One run of the console program, from the options to the exit status.
class ConsoleRun {
public:
    explicit ConsoleRun(ConsoleOptions options);

    // The exit status: 0 done, 1 something could not be done (each with a message), 130 cancelled.
    [[nodiscard]] int run();

private:
    bool start();
    void takeExcludes();
    void scanPaths();
    void scanPath(clsSearch& search, const std::string& typed);
    void makeIndexes(clsSearch& search);
    [[nodiscard]] std::string findFolder(const std::string& typed);
    bool loadSaved();
    bool openComparison();
    void compareFolder(std::string_view key, const std::string& typed, std::string_view finished);
    void showLoaded();
    void tellWhatIsMissing(const clsSearch& search, std::string_view path,
                           const modProcessFiles::ScanResult& result);
    void showFolder(std::string_view key, const std::string& typed, std::string_view finished);
    [[nodiscard]] std::string figuresOf(std::string_view key) const;
    void checkOutputs();
    void writeOutputs();
    void keepScans();
    void collectScans();
    [[nodiscard]] bool collectFile();
    void collect(const Collecting::Rows& rows, const std::vector<std::string>& keys);
    bool mayWrite(const Output& output);
    void writeReport(modExport::ReportFormat format, const std::string& file);
    void writeOverview(const std::string& file);
    void writeFound(modExport::ReportFormat format, const std::string& file);
    void writeDatabase(const std::string& file);
    void print(const std::string& text);
    void fail(std::string_view subject, std::string_view reason);

    ConsoleOptions options_;
    ConsoleInterface userInterface_;
    Loading loading_{options_, userInterface_};
    Keeping keeping_{options_, userInterface_};
    Collecting collecting_{options_, userInterface_};
    clsRegSettings store_;
    clsSettings settings_;
    std::string applicationFolder_;
    WorkingDatabase working_;
    std::unique_ptr<ConsoleComparison> comparison_; // null unless there is something to compare with
    std::vector<Output> outputs_;
    bool failed_ = false;
    bool cancelled_ = false;
    bool lost_ = false;              // the database could not store the scan
    bool scanned_ = false;           // at least one path
    std::vector<std::string> shown_; // the keys of the paths whose figures are known
    FigureGaps gaps_;                // in them
    bool outputLost_ = false;
    bool outputTaken_ = false; // by a report
};
