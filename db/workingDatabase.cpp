#include "db/workingDatabase.h"

#include <utility>

#include "base/errorTrap.h"
#include "db/ownDatabase.h"
#include "platform/openFiles.h"

namespace {

template <class Part>
Part& opened(const std::unique_ptr<Part>& part) {
    if (!part) {
        throw RuntimeError(databaseError::objectClosed, "The database is closed");
    }
    return *part;
}

// Overwritten, never synced: a crash only costs scratch data.
void copyTemplate(const std::string& templatePath, const std::string& path) {
    const std::string content = platform::readFile(templatePath);
    platform::FileSink file(path);
    file.write(content);
    file.close();
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
    holdsLoadedRows_ = false;
    lacksSizesOnDisk_ = false;
    // At the very first start there is no file to delete; this is logged, but nobody needs to see it.
    modGlobal::trapped(
        "modDatabase", "prepareDatabase", [&] { platform::deleteFile(path_); }, modGlobal::Logging::quiet);
    modGlobal::trapped(
        "modDatabase", "prepareDatabase", [&] { modDatabase::removeEngineFiles(path_); },
        modGlobal::Logging::quiet);
    // If the copy fails, opening the file shows it; the reason then stands before that message.
    std::string copyFailure;
    try {
        copyTemplate(templatePath_, path_);
    } catch (const RuntimeError& error) {
        copyFailure = std::string(error.what()) + " ";
    }
    try {
        reopen();
        database().Execute("delete * from details");
    } catch (const RuntimeError& error) {
        close();
        const FileRemoval rest(path_); // the next start would take it for someone else's file
        throw RuntimeError(error.number(), copyFailure + error.what());
    }
}

// A killed program may leave the file, which then is overwritten.
std::unique_ptr<WorkingDatabase::Successor> WorkingDatabase::prepareSuccessor() const {
    const std::size_t nameStart = path_.find_last_of('\\') + 1;
    const std::string path =
        path_.substr(0, nameStart) + platform::replacementName(path_.substr(nameStart), 1);
    return std::unique_ptr<Successor>(new Successor(path, templatePath_));
}

WorkingDatabase::Successor::Successor(const std::string& path, const std::string& templatePath)
    : path_(path), removal_(path) {
    copyTemplate(templatePath, path);
    database_ = DBEngine::OpenDatabase(path);
    database_->Execute("delete * from details");
}

void WorkingDatabase::replaceBy(std::unique_ptr<Successor> successor) {
    successor->database_.reset();
    close();
    try {
        platform::moveFile(successor->path_, path_);
    } catch (const RuntimeError&) {
        reopen();
        throw;
    }
    holdsLoadedRows_ = true;
    reopen();
    // An item of which nothing is known has 0 there.
    lacksSizesOnDisk_ =
        database_->OpenRecordset("select idx from details where sizeOnDisk is not null")->EndOfFile() &&
        !database_->OpenRecordset("select idx from details")->EndOfFile();
    applyOnDisk();
}

void WorkingDatabase::setOnDisk(bool onDisk) noexcept {
    onDisk_ = onDisk;
    applyOnDisk();
}

void WorkingDatabase::applyOnDisk() const noexcept {
    if (database_) {
        database_->setCountsSizeOnDisk(onDisk_ && !lacksSizesOnDisk_);
    }
}

void WorkingDatabase::close() noexcept {
    details_.reset();
    database_.reset();
}

void WorkingDatabase::reopen() {
    database_ = DBEngine::OpenDatabase(path_);
    database_->setHoldsLoadedRows(holdsLoadedRows_);
    applyOnDisk();
    details_ = std::make_unique<DetailsTable>(*database_);
}
