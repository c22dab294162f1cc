#include "db/workingDatabase.h"

#include <utility>

#include "base/errorTrap.h"
#include "db/ownDatabase.h"

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
    } catch (...) { // it is already deleted, or cannot be
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
    // At the very first start there is no file to delete; this is logged, but nobody needs to see it.
    modGlobal::trapped(
        "modDatabase", "prepareDatabase", [&] { platform::deleteFile(path_); }, modGlobal::Logging::quiet);
    modGlobal::trapped(
        "modDatabase", "prepareDatabase", [&] { modDatabase::removeEngineFiles(path_); },
        modGlobal::Logging::quiet);
    // If the copy fails, opening the file shows it; the reason is then added to that message.
    std::string copyFailure;
    try {
        const std::string content = platform::readFile(templatePath_);
        platform::FileSink file(path_); // overwritten, never synced: a crash only costs scratch data
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
        const FileRemoval rest(path_); // the next start would take it for someone else's file
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
