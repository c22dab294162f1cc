#pragma once

#include <memory>
#include <string>

#include "db/dao.h"
#include "db/detailsTable.h"
#include "platform/files.h"

// The working database: scratch storage, one file that only this program works in, made anew from the empty
// template at every start. Obtained from modDatabase::prepareDatabase.
class WorkingDatabase {
public:
    // Not open.
    WorkingDatabase() = default;

    // The file at `path`, whose lock is held, and the template that it is made from; not open yet.
    WorkingDatabase(std::unique_ptr<platform::FileLock> lock, std::string path, std::string templatePath);

    // Both throw 3420 when the file is not open.
    [[nodiscard]] Database& database() const;
    [[nodiscard]] DetailsTable& details() const; // the one place that rows are appended through

    // The internal path.
    [[nodiscard]] const std::string& path() const noexcept { return path_; }

    // Deletes the file, copies the template in its place and opens it. Throws when that cannot be done; the
    // database is closed then.
    void startAnew();

    // Closes the file so that it can be copied, and opens it again.
    void close() noexcept;
    void reopen();

private:
    std::unique_ptr<platform::FileLock> lock_; // declared first: the file is closed before it is let go
    std::string path_;
    std::string templatePath_;
    std::unique_ptr<Database> database_;
    std::unique_ptr<DetailsTable> details_;
};
