#include "db/modDatabase.h"

#include "app/errorLog.h"
#include "app/modGlobal.h"
#include "platform/environment.h"
#include "platform/paths.h"

namespace {

constexpr std::string_view moduleName = "modDatabase";
constexpr std::string_view templateName = "001.dat";
constexpr int mostProgramsAtOnce = 100;

// `main.dat` for 1, `main-2.dat` for 2, and so on.
std::string numberedPath(std::string_view path, int number) {
    std::string result(path);
    if (number > 1) {
        const std::size_t nameStart = result.find_last_of("\\/") + 1;
        const std::size_t dot = result.find_last_of('.');
        result.insert(dot == std::string::npos || dot < nameStart ? result.size() : dot,
                      "-" + std::to_string(number));
    }
    return result;
}

// The application folder's own template, else the installed one.
std::string templatePath(std::string_view applicationFolder) {
    for (const std::string& folder :
         {std::string(applicationFolder), platform::executableFolder(), platform::shareFolder()}) {
        std::string path = modGlobal::addBackslash(folder) + std::string(templateName);
        if (platform::fileExists(path)) {
            return path;
        }
    }
    return modGlobal::addBackslash(applicationFolder) + std::string(templateName);
}

// Finds a path that no other program works in, and locks it.
std::string lockWorkingPath(std::string_view wanted, std::string_view keep,
                            std::unique_ptr<platform::FileLock>& lock) {
    for (int number = 1; number <= mostProgramsAtOnce; ++number) {
        std::string path = platform::toInternal(numberedPath(wanted, number));
        if (!keep.empty() && platform::isSameFile(path, keep)) {
            continue;
        }
        try {
            lock = platform::FileLock::tryAcquire(path + ".lock");
        } catch (const RuntimeError& error) {
            throw RuntimeError::about(error.number(), platform::displayPath(path));
        }
        if (lock) {
            return path;
        }
    }
    throw RuntimeError(databaseError::inUse, "Could not use the database; it is already in use: " +
                                                 platform::displayPath(platform::toInternal(wanted)));
}

} // namespace

void WorkingDatabase::close() {
    closedPath_ = path();
    details.reset();
    database.reset();
}

void WorkingDatabase::reopen() {
    database = DBEngine::OpenDatabase(closedPath_);
    details = std::make_unique<DetailsTable>(*database);
}

WorkingDatabase modDatabase::prepareDatabase(std::string_view applicationFolder,
                                             std::string_view databasePath, clsUserInterface& userInterface,
                                             std::string_view keep) {
    WorkingDatabase working;
    const std::string path = lockWorkingPath(databasePath, keep, working.lock);
    if (path != platform::toInternal(databasePath)) {
        userInterface.message("The database " + platform::displayPath(platform::toInternal(databasePath)) +
                              " is in use; this program works in " + platform::displayPath(path) + ".");
    }
    // On a first start there is none to delete, which the log may know but nobody needs to be told.
    modGlobal::trapped(
        moduleName, "prepareDatabase", [&] { platform::deleteFile(path); }, modGlobal::Logging::quiet);
    // A copy that fails shows when the file is opened; the reason is then told with it.
    std::string copyFailure;
    try {
        platform::copyFile(templatePath(applicationFolder), path);
    } catch (const RuntimeError& error) {
        copyFailure = error.what();
    }
    try {
        working.database = DBEngine::OpenDatabase(path);
    } catch (const RuntimeError& error) {
        throw copyFailure.empty()
            ? error
            : RuntimeError(error.number(), std::string(error.what()) + " (" + copyFailure + ")");
    }
    working.database->Execute("delete * from details");
    working.details = std::make_unique<DetailsTable>(*working.database);
    return working;
}
