#pragma once

#include <memory>
#include <string>

#include "platform/clock.h"
#include "platform/files.h"

namespace modExport {

// A folder in the system's temporary folder, of workbooks that are opened at once or still being made. It is
// made with the first of them, for the user alone, and removed with all of them at the end. The folder of a
// program that was killed is removed by the next one.
class WorkbookFolder {
public:
    WorkbookFolder();
    ~WorkbookFolder();
    WorkbookFolder(const WorkbookFolder&) = delete;
    WorkbookFolder& operator=(const WorkbookFolder&) = delete;

    // The internal path for a new workbook: "Spannory-03-14-2004-21-05-17.xlsx", or with "-2" and so on after
    // the time if that file exists. Throws RuntimeError if the folder cannot be made.
    [[nodiscard]] std::string newWorkbook(const platform::LocalTime& time);

    // The folder's internal path, ending in "\"; it is made if it is not there yet.
    [[nodiscard]] const std::string& path();

private:
    void make();

    std::string path_; // with its "\"; empty until the folder is made
    std::unique_ptr<platform::FileLock> lock_;
};

} // namespace modExport
