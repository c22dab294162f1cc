#pragma once

#include <memory>
#include <string>
#include <utility>

#include "db/dao.h"
#include "db/detailsTable.h"
#include "platform/files.h"

// Removes a file when it goes.
class FileRemoval {
public:
    explicit FileRemoval(std::string path) : path_(std::move(path)) {}
    ~FileRemoval();
    FileRemoval(const FileRemoval&) = delete;
    FileRemoval& operator=(const FileRemoval&) = delete;

private:
    std::string path_;
};

// The working database: scratch storage, one file that only this program works in, made anew from the empty
// template at every start. Obtained from modDatabase::prepareDatabase.
class WorkingDatabase {
public:
    // Not open.
    WorkingDatabase() = default;

    // The file at `path`, whose lock is held, and the template that it is made from; not open yet.
    WorkingDatabase(std::unique_ptr<platform::FileLock> lock, std::string path, std::string templatePath);

    // The file goes with the object.
    void removeAtEnd();

    [[nodiscard]] bool isOpen() const noexcept { return database_ != nullptr; }

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
    // Declared in this order: the file is closed, then removed, then let go.
    std::unique_ptr<platform::FileLock> lock_;
    std::unique_ptr<FileRemoval> removal_;
    std::string path_;
    std::string templatePath_;
    std::unique_ptr<Database> database_;
    std::unique_ptr<DetailsTable> details_;
};
