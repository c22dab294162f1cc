#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "db/dao.h"
#include "platform/clock.h"

class clsExport;
class clsSettings;
class clsUserInterface;

namespace platform {
class Sink;
}

// What every report writer shares: the rows, the title, and the course of an export around the writing.
namespace modExport {

// Where a report's rows come from and who is told of its progress. Nothing is owned.
struct ReportContext {
    Database& database;
    clsUserInterface& userInterface;
    const clsSettings& settings;
    const clsExport& options;
};

// Names a file that was written in the status bar.
void showSaved(clsUserInterface& userInterface, std::string_view fileName);

// "Spannory - Detail Report (03/14/04 09:05 PM) ": the trailing blank is deliberate. Any detail other than 1
// is titled a summary.
[[nodiscard]] std::string reportTitle(std::int32_t detail, const platform::LocalTime& time);

// The rows of a report, visited one after the other. Showing progress begins with begin() and ends with the
// object. Database errors pass through.
class ReportRows {
public:
    ReportRows(const ReportContext& context, std::string_view query);
    ~ReportRows();
    ReportRows(const ReportRows&) = delete;
    ReportRows& operator=(const ReportRows&) = delete;

    [[nodiscard]] const std::string& title() const noexcept { return title_; }
    [[nodiscard]] std::int64_t count() const noexcept { return count_; }
    [[nodiscard]] bool withOwner() const; // the setting, as it is at this moment

    void begin();
    [[nodiscard]] bool atEnd() const { return records_->EndOfFile(); }
    void next();

    // --- the current row, appended to a text the writer reuses -----------------------------------------
    void appendPath(std::string& result);            // displayed form of drive and path
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
};

// How one kind of report is exported.
struct ReportCourse {
    std::string_view procedure; // the name its errors are logged under, in module modGlobal
    // Asks, before anything is written, whether so many rows are wanted; null when any number is.
    bool (*accepts)(clsUserInterface& userInterface, std::int64_t count) = nullptr;
    bool asksBeforeOpening = true; // when the report is large
};

// Runs the query, hands its rows to `write`, and opens the finished file. False, after telling the person
// why, when there are no rows, they are not accepted, or an error was trapped and logged.
[[nodiscard]] bool exportReport(const ReportContext& context, const ReportCourse& course,
                                std::string_view query, std::string_view fileName,
                                const std::function<void(ReportRows&)>& write);

// Streams a report into a new file in place of an existing one. After an error what was written stays.
void writeStreamed(std::string_view fileName, const std::function<void(platform::Sink&)>& write);

} // namespace modExport
