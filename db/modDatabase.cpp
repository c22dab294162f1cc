#include "db/modDatabase.h"

#include <string>
#include <utility>

#include "app/applicationFolder.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"

namespace {

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

// A file that cannot be made anew must not be written over: a device, a pipe.
void requireReplaceable(const std::string& path) {
    if (platform::somethingExists(path) && !platform::fileExists(path)) {
        throw RuntimeError::about(errorNumber::pathFileAccess, platform::displayPath(path));
    }
}

std::unique_ptr<platform::FileLock> tryLock(const std::string& path) {
    try {
        return platform::FileLock::tryAcquire(path + ".lock");
    } catch (const RuntimeError& error) {
        throw RuntimeError::about(error.number(), platform::displayPath(path));
    }
}

} // namespace

WorkingDatabase modDatabase::prepareDatabase(std::string_view applicationFolder,
                                             std::string_view databasePath, clsUserInterface& userInterface,
                                             std::string_view keep) {
    if (databasePath.empty()) {
        throw RuntimeError::about(errorNumber::pathFileAccess, "the setting databasePath is empty");
    }
    const std::string wanted = platform::resolveLinks(databasePath);
    requireReplaceable(wanted);
    for (int number = 1; number <= mostProgramsAtOnce; ++number) {
        const std::string path = numberedPath(wanted, number);
        if (!keep.empty() && platform::isSameFile(path, keep)) {
            continue;
        }
        if (auto lock = tryLock(path)) {
            WorkingDatabase working(std::move(lock), path, findDataFile(applicationFolder, templateName));
            if (number > 1) {
                working.removeAtEnd();
                userInterface.message("The database " + platform::displayPath(wanted) +
                                      " is in use; until it ends this program works in " +
                                      platform::displayPath(path) + ".");
            }
            working.startAnew();
            return working;
        }
    }
    throw RuntimeError(databaseError::inUse,
                       "Could not use the database; it is already in use: " + platform::displayPath(wanted));
}
