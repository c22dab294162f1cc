#include "db/workingDatabase.h"

#include <utility>

#include "app/errorLog.h"

namespace {

template <class Part>
Part& opened(const std::unique_ptr<Part>& part) {
    if (!part) {
        throw RuntimeError(databaseError::objectClosed, "The database is closed");
    }
    return *part;
}

} // namespace

FileRemoval::~FileRemoval() {
    try {
        platform::deleteFile(path_);
    } catch (...) { // it is gone already, or stays
    }
}

WorkingDatabase::WorkingDatabase(std::unique_ptr<platform::FileLock> lock, std::string path,
                                 std::string templatePath)
    : lock_(std::move(lock)), path_(std::move(path)), templatePath_(std::move(templatePath)) {}

void WorkingDatabase::removeAtEnd() {
    removal_ = std::make_unique<FileRemoval>(path_);
}

Database& WorkingDatabase::database() const {
    return opened(database_);
}

DetailsTable& WorkingDatabase::details() const {
    return opened(details_);
}

void WorkingDatabase::startAnew() {
    close();
    // On a first start there is none to delete, which the log may know but nobody needs to be told.
    modGlobal::trapped(
        "modDatabase", "prepareDatabase", [&] { platform::deleteFile(path_); }, modGlobal::Logging::quiet);
    // A copy that fails shows when the file is opened; the reason is then told with it.
    std::string copyFailure;
    try {
        const std::string content = platform::readFile(templatePath_);
        platform::FileSink file(path_); // in place, and never synced: whatever a crash leaves is made anew
        file.write(content);
        file.close();
    } catch (const RuntimeError& error) {
        copyFailure = std::string(" (") + error.what() + ")";
    }
    try {
        reopen();
        database().Execute("delete * from details");
    } catch (const RuntimeError& error) {
        close();
        throw RuntimeError(error.number(), error.what() + copyFailure);
    }
}

void WorkingDatabase::close() noexcept {
    details_.reset();
    database_.reset();
}

void WorkingDatabase::reopen() {
    database_ = DBEngine::OpenDatabase(path_);
    details_ = std::make_unique<DetailsTable>(*database_);
}
