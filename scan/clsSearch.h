#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/clsSettings.h"
#include "db/modDatabase.h"
#include "platform/runtimeError.h"
#include "scan/clsFile.h"
#include "scan/dateTexts.h"

// The scan's gateway to table `details`, and the flags of the running scan. One lives as long as the program.
//
// Paths are internal paths; a folder's ends in "\", a file's does not.
class clsSearch {
public:
    // Neither is owned.
    clsSearch(WorkingDatabase& database, const clsSettings& settings)
        : database_(database), settings_(settings) {}

    bool CancelScan = false; // set by the Cancel Scan command, polled once per folder
    bool processing = false; // while a scan runs
    std::string rootPath;    // where the running scan started
    std::string nextNode;    // key of the tree node to handle when the running scan ends; empty for none
    double filesSeen = 0;    // by the running scan

    // Appends one row. Size in bytes, dates as mm/dd/yyyy hh:nn:ss AMPM; an empty text is stored as NULL.
    // A row that cannot be stored is not reported, and the scan goes on; the result tells.
    bool updateDetail(std::string_view path, std::string_view description, double size,
                      std::string_view dateAccessed, std::string_view dateModified, std::string_view owner);

    // Another way to append a row, as one statement and with fewer columns; nothing uses it. Its errors are
    // thrown: a quote in a value makes a statement that the engine refuses.
    void updateDetailSQLMETHOD(std::string_view path, std::string_view description, double size,
                               std::string_view dateAccessed, std::string_view dateModified,
                               std::string_view owner);

    // The folder row's completion stamp; empty when it has none or there is no row.
    [[nodiscard]] std::string getLastScanStopTimeByLocationKey(std::string_view path);

    // Deletes the folder's own row and those of its direct children; deliberately nothing deeper down.
    void resetScanCompleteTime(std::string_view path);

    // The total size of the rows whose parent is the folder; 0 when there are none.
    [[nodiscard]] double folderSum(std::string_view path) const;

    // Appends a folder's own row (a drive's root has none) and, unless the scan is cancelled, stamps the
    // folder as completely scanned. True when a row was stored.
    bool recordFolder(std::string_view path, double size, std::string_view dateAccessed,
                      std::string_view dateModified, std::string_view owner);

    // --- one scan ----------------------------------------------------------------------------------------
    // A scan is one transaction. One that begins with an empty table is a bulk load: nothing of what it
    // records can have been there before, so nothing needs looking up, stamps go in with their rows, and the
    // indexes are made when all is there.
    void beginScan();
    void endScan();
    // After either has failed, or storing has: nothing in the file can be relied on any more, for it has no
    // journal, so it is made anew and empty. Throws when not even that can be done.
    void abandonScan();
    [[nodiscard]] bool isBulkLoad() const noexcept { return bulkLoad_; }

    // Why the database takes no more rows: a full disk, a lost file. Nothing as long as all is well.
    [[nodiscard]] const std::optional<RuntimeError>& storageFailure() const noexcept {
        return storageFailure_;
    }

private:
    bool appendRow(std::string_view path, std::string_view description, double size,
                   std::string_view dateAccessed, std::string_view dateModified, std::string_view owner,
                   std::string_view stamp);
    void leaveBulkLoad();
    void stampFolder(std::string_view path, std::string_view stamp);
    [[nodiscard]] std::string locationCondition(std::string_view path);

    WorkingDatabase& database_;
    const clsSettings& settings_;
    clsFile file_;
    std::string extension_;
    std::string stamp_;
    DateTexts currentDate_;

    bool bulkLoad_ = false;
    std::vector<std::string> takenIndexes_;
    std::vector<std::pair<std::string, std::string>> lateStamps_; // folder, stamp
    std::optional<RuntimeError> storageFailure_;
};
