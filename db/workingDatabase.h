#pragma once

#include <memory>
#include <string>
#include <utility>

#include "db/dao.h"
#include "db/detailsTable.h"
#include "platform/files.h"

// Deletes a file in its destructor.
class FileRemoval {
public:
    explicit FileRemoval(std::string path) : path_(std::move(path)) {}
    ~FileRemoval();
    FileRemoval(const FileRemoval&) = delete;
    FileRemoval& operator=(const FileRemoval&) = delete;

private:
    std::string path_;
};

// The working database: one scratch file that only this program uses, replaced by the empty template at every
// start. Obtained from modDatabase::prepareDatabase.
class WorkingDatabase {
public:
    // Not open.
    WorkingDatabase() = default;

    // The file at `path`, which is already locked, and the template to copy; not open yet.
    WorkingDatabase(std::unique_ptr<platform::FileLock> lock, std::string path, std::string templatePath);

    // The file is deleted with the object.
    void removeAtEnd();

    [[nodiscard]] bool holdsLoadedRows() const noexcept { return holdsLoadedRows_; } // see Database
    // Whether figures shall count what items take on the disk, instead of their sizes. Loaded rows may lack
    // that; then sizes count.
    void setOnDisk(bool onDisk) noexcept;
    [[nodiscard]] bool lacksSizesOnDisk() const noexcept { return lacksSizesOnDisk_; }
    // Call it when rows may have got what loaded ones lacked. Throws if the file cannot be read.
    void lookForSizesOnDisk();
    [[nodiscard]] bool isOpen() const noexcept { return database_ != nullptr; }

    // Both throw 3420 if the file is not open.
    [[nodiscard]] Database& database() const;
    [[nodiscard]] DetailsTable& details() const; // the only way to append rows

    // The internal path.
    [[nodiscard]] const std::string& path() const noexcept { return path_; }

    // Deletes the file, replaces it with a copy of the template and opens it. Throws if this fails; the
    // database is then closed.
    void startAnew();

    // An empty database beside the working one, to be filled and to take its place (replaceBy), or to be
    // deleted with the object.
    class Successor {
    public:
        [[nodiscard]] Database& database() const { return *database_; }

        // Closes the file, so that it can be copied, and returns its internal path.
        const std::string& finish() {
            database_.reset();
            return path_;
        }

    private:
        friend class WorkingDatabase;
        Successor(const std::string& path, const std::string& templatePath);

        std::string path_;
        FileRemoval removal_; // a moved file is no longer there to be deleted
        std::unique_ptr<Database> database_;
    };
    [[nodiscard]] std::unique_ptr<Successor> prepareSuccessor() const;

    // Another such database for each call, which lives beside the working one for as long as it is needed.
    [[nodiscard]] std::unique_ptr<Successor> prepareCompanion();

    // The database then holds loaded rows until it is started anew. If this fails, it is as before.
    void replaceBy(std::unique_ptr<Successor> successor);

    // Close the file so that it can be copied, and open it again.
    void close() noexcept;
    void reopen();

private:
    void applyOnDisk() const noexcept;
    [[nodiscard]] std::unique_ptr<Successor> prepareBeside(int number) const;
    [[nodiscard]] std::string pathBeside(int number) const;
    void removeWhatWasLeftBeside() const;

    // In this order, so that the file is closed, then deleted, then unlocked.
    std::unique_ptr<platform::FileLock> lock_;
    std::unique_ptr<FileRemoval> removal_;
    std::string path_;
    std::string templatePath_;
    std::unique_ptr<Database> database_;
    std::unique_ptr<DetailsTable> details_;
    bool holdsLoadedRows_ = false;
    bool onDisk_ = false;
    bool lacksSizesOnDisk_ = false;
    int companions_ = 0; // so far
};
