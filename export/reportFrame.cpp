#include "export/reportFrame.h"

#include "base/clsSettings.h"
#include "base/clsUserInterface.h"
#include "base/dateFormat.h"
#include "base/errorTrap.h"
#include "base/formatSize.h"
#include "base/runInBackground.h"
#include "export/clsExport.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace modExport {

namespace {

constexpr std::int64_t largeReport = 10000; // more rows than this

// The status bar shows where the report is, or that no application can open it.
void openReport(const ReportContext& context, std::string_view fileName, bool asks) {
    clsUserInterface& userInterface = context.userInterface;
    modExport::showSaved(userInterface, fileName, context.onlyFolder);
    if (!asks ||
        userInterface.ask(Question::openLargeReport,
                          "The file was saved successfully, but it may take a while to open.  Do you "
                          "want to open the file?")) {
        userInterface.openFile(fileName);
    }
}

} // namespace

void showSaved(clsUserInterface& userInterface, std::string_view fileName, std::string_view onlyFolder) {
    std::string text = "Saved " + platform::displayPath(platform::toInternal(fileName));
    if (!onlyFolder.empty()) {
        text.append(" (only ").append(platform::displayPath(onlyFolder)).append(")");
    }
    userInterface.status(StatusPanel::folder, text);
}

std::string reportTitle(std::int32_t detail, const platform::LocalTime& time) {
    std::string title(detail == 1 ? "Spannory - Detail Report (" : "Spannory - Summary Report (");
    modFormat::appendFormattedDate(title, time, modFormat::reportDatePicture);
    return title.append(") ");
}

ReportRows::ReportRows(const ReportContext& context, std::string_view query)
    : context_(context), records_(context.database.OpenRecordset(query)),
      title_(reportTitle(context.options.detail, platform::localTime(platform::now()))),
      drive_(records_->Fields("drive")), fullPath_(records_->Fields("fullPath")),
      size_(records_->Fields("size")), dateAccessed_(records_->Fields("dateAccessed")),
      dateModified_(records_->Fields("dateModified")), owner_(records_->Fields("owner")),
      isFolder_(records_->Fields("isFolder")), parentFolder_(records_->Fields("parentFolder")),
      fileName_(records_->Fields("fileName")) {
    count_ = atEnd() ? 0 : records_->RecordCount();
}

ReportRows::~ReportRows() {
    if (showsProgress_) {
        context_.userInterface.progressHide();
    }
}

bool ReportRows::withOwner() const {
    return context_.settings.getOwnerInfo();
}

bool ReportRows::exact() const {
    return context_.settings.exact();
}

std::vector<std::string> ReportRows::scannedFolders(std::size_t most) const {
    if (!context_.onlyFolder.empty()) {
        return {std::string(context_.onlyFolder)};
    }
    return context_.scannedFolders == nullptr ? std::vector<std::string>()
                                              : context_.scannedFolders(context_.database, most);
}

void ReportRows::begin() {
    showsProgress_ = true;
    context_.userInterface.progressStart(count_);
}

void ReportRows::next() {
    context_.userInterface.progressStep();
    records_->MoveNext();
}

void ReportRows::appendPath(std::string& result) {
    const bool isWhole = !parentFolder_.isNull() && !fileName_.isNull();
    path_.assign((isWhole ? parentFolder_ : drive_).text()).append((isWhole ? fileName_ : fullPath_).text());
    platform::appendDisplayPath(result, path_);
}

void ReportRows::appendShownSize(std::string& result) const {
    if (hasSize()) {
        modLvw::appendSize(result, size());
    }
}

bool exportReport(const ReportContext& context, const ReportCourse& course, std::string_view query,
                  std::string_view fileName, const std::function<void(ReportRows&, platform::Sink&)>& write) {
    return modGlobal::trapped("modGlobal", course.procedure, [&] {
        clsUserInterface& userInterface = context.userInterface;
        bool large = false;
        {
            const BusyPointer busy(userInterface);
            const LongWork answering(context.database, [&] { userInterface.yieldToEvents(); });
            ReportRows rows(context, query);
            if (rows.atEnd()) {
                userInterface.message("No data to export.");
                return false;
            }
            if (course.accepts != nullptr && !course.accepts(userInterface, rows.count())) {
                return false;
            }
            large = rows.count() > largeReport;
            platform::Replacement file(fileName);
            rows.begin();
            write(rows, file);
            runInBackground(userInterface, [&] { file.commit(); }); // it may wait for the disk
        }
        openReport(context, fileName, large && course.asksBeforeOpening);
        return true;
    });
}

} // namespace modExport
