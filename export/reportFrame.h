#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "db/dao.h"
#include "platform/clock.h"

class clsExport;
class clsSettings;
class clsUserInterface;

namespace platform {
class Sink;
}

// The common part of all report writers: the rows, the title, and the steps of an export before and after the
// writing.
namespace modExport {

// The source of a report's rows, and the user interface for its progress. Nothing is owned.
struct ReportContext {
    Database& database;
    clsUserInterface& userInterface;
    const clsSettings& settings;
    const clsExport& options;
    // Returns the folders that the rows cover, at most this many; exact reports name them. May be null.
    std::vector<std::string> (*scannedFolders)(Database& database, std::size_t most) = nullptr;
    std::string_view onlyFolder = {}; // the key of the one that the rows cover; empty for all
};

// Shows the name of the written file in the status bar, and which folder alone it covers, if any (a key).
void showSaved(clsUserInterface& userInterface, std::string_view fileName, std::string_view onlyFolder = {});

// "Spannory - Detail Report (03/14/04 09:05 PM) ". Odd on purpose: the trailing blank, and the title of a
// summary for any detail other than 1.
[[nodiscard]] std::string reportTitle(std::int32_t detail, const platform::LocalTime& time);

// The rows of a report, read one after the other. Progress is shown from begin() until the object is
// destroyed. Database errors are passed on.
class ReportRows {
public:
    ReportRows(const ReportContext& context, std::string_view query);
    ~ReportRows();
    ReportRows(const ReportRows&) = delete;
    ReportRows& operator=(const ReportRows&) = delete;

    [[nodiscard]] const std::string& title() const noexcept { return title_; }
    [[nodiscard]] std::int64_t count() const noexcept { return count_; }
    [[nodiscard]] bool withOwner() const; // the current value of the setting
    [[nodiscard]] bool exact() const;     // likewise
    [[nodiscard]] bool areLoaded() const { return context_.database.holdsLoadedRows(); }
    [[nodiscard]] std::vector<std::string> scannedFolders(std::size_t most) const; // empty if unknown

    void begin();
    [[nodiscard]] bool atEnd() const { return records_->EndOfFile(); }
    void next();

    // --- the current row, appended to a text the writer reuses -----------------------------------------
    void appendPath(std::string& result);            // the whole path as it is on the disk
    void appendShownSize(std::string& result) const; // "1.5 Kb"
    [[nodiscard]] std::string_view storedSize() const { return size_.text(); } // plain digits
    [[nodiscard]] bool hasSize() const { return !size_.isNull(); }
    [[nodiscard]] double size() const { return size_.number(); }
    [[nodiscard]] std::string_view dateAccessed() const { return dateAccessed_.text(); }
    [[nodiscard]] std::string_view dateModified() const { return dateModified_.text(); }
    [[nodiscard]] std::string_view owner() const { return owner_.text(); }
    [[nodiscard]] std::string_view type() const { return isFolder_.text() == "1" ? "Folder" : "File"; }
    [[nodiscard]] Field& field(std::string_view name) { return records_->Fields(name); }

private:
    ReportContext context_;
    std::unique_ptr<Recordset> records_;
    std::string title_;
    std::string path_;
    std::int64_t count_ = 0;
    bool showsProgress_ = false;
    Field& drive_;
    Field& fullPath_;
    Field& size_;
    Field& dateAccessed_;
    Field& dateModified_;
    Field& owner_;
    Field& isFolder_;
    Field& parentFolder_;
    Field& fileName_;
};

// How one kind of report is exported.
struct ReportCourse {
    std::string_view procedure; // the procedure name for its errors in the log, in module modGlobal
    // Asks, before anything is written, whether to write this many rows; null if any number is fine.
    bool (*accepts)(clsUserInterface& userInterface, std::int64_t count) = nullptr;
    bool asksBeforeOpening = true; // if the report is large
};

// Runs the query, lets `write` write its rows to the file, which is replaced as a whole
// (platform::Replacement), and opens it. False, after a message, if there are no rows, if they are not
// accepted, or if an error was logged; the file is then unchanged.
[[nodiscard]] bool exportReport(const ReportContext& context, const ReportCourse& course,
                                std::string_view query, std::string_view fileName,
                                const std::function<void(ReportRows&, platform::Sink&)>& write);

} // namespace modExport
