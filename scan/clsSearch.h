#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/clsFile.h"
#include "base/clsSettings.h"
#include "db/folderRows.h"
#include "db/modDatabase.h"
#include "db/scanRecords.h"
#include "platform/runtimeError.h"
#include "scan/dateTexts.h"
#include "scan/figureGaps.h"
#include "scan/foldersAbove.h"
#include "scan/hardLinks.h"
#include "scan/rowPath.h"

// What a row of table `details` holds behind the columns that each row has.
struct FurtherDetails {
    std::string_view stamp = {};
    double sizeOnDisk = 0;                         // of a file
    const modFolderRows::Totals* totals = nullptr; // of a folder
};

// Gives the scan access to table `details`, and holds the flags of the running scan. One object lives as long
// as the program.
//
// Paths are internal paths; a folder's ends in "\", a file's does not. Whatever is scanned, refreshed and
// cancelled, in any order, every path has one row, and every folder's size is the sum of the items directly
// in it. A stamp means that everything below the folder has been scanned.
class clsSearch {
public:
    // Neither is owned.
    clsSearch(WorkingDatabase& database, const clsSettings& settings)
        : database_(database), settings_(settings) {}

    bool CancelScan = false; // set by the Cancel Scan command, checked wherever the scan yields
    bool processing = false; // True while a scan runs
    std::string rootPath;    // the folder where the running scan started
    std::string nextNode;    // key of the tree node to handle after the running scan; empty for none
    double filesSeen = 0;    // the number of files that the running scan has seen
    FigureGaps gaps;         // by all scans whose rows are there

    // Appends one row. The size is in bytes, dates are in the form mm/dd/yyyy hh:nn:ss AMPM; an empty text is
    // stored as NULL. If the row cannot be stored, nothing is reported and the scan goes on; the result tells
    // whether it was stored.
    bool updateDetail(std::string_view path, std::string_view description, double size,
                      std::string_view dateAccessed, std::string_view dateModified, std::string_view owner,
                      const FurtherDetails& further = {});

    // What a file that is recorded next counts on the disk, in bytes: 0 for a further name of one that is
    // recorded. Throws if the database cannot be read.
    [[nodiscard]] double countedOnDisk(std::string_view path, const platform::EntryFacts& facts);

    // Odd on purpose: another way to append a row, as one statement with fewer columns, which nothing uses.
    // It throws its errors: with a quote in a value, the engine refuses the statement.
    void updateDetailSQLMETHOD(std::string_view path, std::string_view description, double size,
                               std::string_view dateAccessed, std::string_view dateModified,
                               std::string_view owner);

    // The completion stamp in the folder's row; empty if there is no stamp or no row.
    [[nodiscard]] std::string getLastScanStopTimeByLocationKey(std::string_view path);

    // Deletes the rows of the folder and of its direct children. Odd on purpose: deeper rows stay.
    void resetScanCompleteTime(std::string_view path);

    // Deletes the folder's own row and everything below it.
    void resetWholeFolder(std::string_view path);
    // After each of these two, the sizes of the folders above are correct again, and those folders have no
    // stamp until this one has. A running scan is cancelled, because what it knows about the rows is no
    // longer true.

    // Deletes the rows of an entry that no longer exists: a file's own, or a folder's with everything below
    // it. The sizes of the folders above are correct again, and their stamps stay.
    void removeEntry(std::string_view path);

    // Deletes all rows.
    void resetAll();

    // Call it after all rows have been replaced by others.
    void rowsReplaced() noexcept;

    // The total size of the rows whose parent is the folder; 0 if there are none.
    [[nodiscard]] double folderSum(std::string_view path) const;

    // --- one scan ----------------------------------------------------------------------------------------
    // A scan is one transaction. One that begins with an empty table is a bulk load: there are no indexes
    // until makeIndexes is called, or another scan or a reset needs them.
    void beginScan(std::string_view path);
    // Writes the row of the running scan in table `scans`, unless the scan has found its folder complete.
    void recordScan(const modScans::Scan& scan);
    void endScan();
    // Without effect if there are indexes. Without them all figures can be read, but each takes a pass over
    // the table. If it throws after a scan, the rows are gone (see abandonScan).
    void makeIndexes();
    // Call it after one of the first two, or storing, has failed: without a journal, nothing in the file is
    // reliable, so it is replaced by an empty one. Throws if even this fails.
    void abandonScan();

    // What the last scan has recorded so far: rows, the sizes of files, and what all takes on the disk.
    struct Progress {
        std::int64_t files = 0;
        std::int64_t folders = 0;
        double size = 0;
        double sizeOnDisk = 0;
    };
    [[nodiscard]] const Progress& progress() const noexcept { return progress_; }
    // True from the beginning of a scan that began with an empty table until there are indexes. Its progress
    // is all that the table holds.
    [[nodiscard]] bool isBulkLoad() const noexcept { return bulkLoad_; }

    // What was recorded for the folder with which the scan begins, and for the subfolders of a folder.
    [[nodiscard]] modFolderRows::RecordedFolder recordedFolder(std::string_view path);
    [[nodiscard]] modFolderRows::RecordedFolders recordedSubfolders(std::string_view path);

    // Makes room for the rows of a folder that is recorded again: removes its own row, those of the files
    // directly in it, and those of the named subfolders, which no longer exist, with everything below them.
    void replaceFolder(std::string_view path, const modFolderRows::RecordedFolder& recorded,
                       const std::vector<std::string>& goneSubfolders);

    // The folder with which the scan begins may have been a file when the folder above it was scanned.
    void removeFileCalled(std::string_view path);

    // The folder with which the scan begins shall not be counted: nothing of it stays.
    void leaveOutStart(std::string_view path);

    // What is known of a folder when its contents have been recorded.
    struct LeftFolder {
        modFolderRows::Totals items; // those in it that the scan has recorded or found
        double ownSizeOnDisk = 0;
        bool isNew = true; // nothing was recorded for the folder before
        std::string_view dateAccessed;
        std::string_view dateModified;
        std::string_view owner;
    };
    // Appends a folder's own row (a drive's root has none), with a stamp unless the scan was cancelled. If
    // the items are not all that are recorded, the totals are summed up from the rows. Returns the totals, or
    // nothing if no row was stored.
    std::optional<modFolderRows::Totals> recordFolder(std::string_view path, const LeftFolder& left);

    // The reason why the database accepts no more rows: a full disk, a lost file. Nothing while there is no
    // such problem.
    [[nodiscard]] const std::optional<RuntimeError>& storageFailure() const noexcept {
        return storageFailure_;
    }

private:
    void numberRow(DetailsTable& row);
    [[nodiscard]] std::string_view storedExtension();
    template <class Body>
    void storing(Body body);
    void beginReset(std::string_view folder);
    void endReset(std::string_view folder, bool isComplete);
    void beginChange();
    void noteLastNumber();

    WorkingDatabase& database_;
    const clsSettings& settings_;
    clsFile file_;
    RowPath rowPath_;
    std::string extension_;
    std::string stamp_; // of the last recorded folder; empty if the scan was cancelled
    DateTexts currentDate_;

    std::int64_t firstNumber_ = 0; // that the running scan gives
    FoldersAbove above_;
    HardLinks links_;
    Progress progress_;
    std::string scanned_; // the folder of the running scan; empty if there is none
    bool bulkLoad_ = false;
    bool changed_ = false;
    bool recorded_ = false;       // the running scan has recorded the folder with which it began
    bool disturbed_ = false;      // by a reset
    std::int64_t lastNumber_ = 0; // the highest number ever given to a row; none is given twice
    bool lastIsThere_ = false;    // in the running scan: it is the highest in the table, too
    std::vector<std::string> takenIndexes_;
    std::optional<RuntimeError> storageFailure_;
};
