#include "db/modDatabase.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "base/applicationFolder.h"
#include "base/modGlobal.h"
#include "db/ownDatabase.h"
#include "platform/locale.h"
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

// A device or a pipe cannot be replaced, and must not be overwritten.
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

struct Candidate {
    bool isOthers = false;                    // an existing file is not one of the program's
    std::unique_ptr<platform::FileLock> lock; // also null if another program uses the file
};

// Looked at twice: the second look would disturb a program that uses the file, so it needs the lock first;
// and the lock, a file beside this one, must not be created beside a file that is not the program's.
Candidate examined(const std::string& path, const std::string& templatePath) {
    if (platform::isSameFile(path, templatePath) || !modDatabase::looksLikeOwnDatabase(path)) {
        return {true, nullptr};
    }
    const std::string lockFile = path + ".lock";
    const bool wasLocked = platform::somethingExists(lockFile);
    auto lock = tryLock(path);
    if (lock && !modDatabase::isOwnDatabase(path)) {
        lock.reset();
        if (!wasLocked) {
            platform::deleteFile(lockFile);
        }
        return {true, nullptr};
    }
    return {false, std::move(lock)};
}

struct Request {
    std::string templatePath;
    std::string_view keep;
    clsUserInterface& userInterface;
};

// Nothing if an existing file is not one of the program's.
std::optional<WorkingDatabase> tryPrepare(const std::string& wanted, const Request& request) {
    requireReplaceable(wanted);
    bool inUse = false; // else it is the file to keep
    for (int number = 1; number <= mostProgramsAtOnce; ++number) {
        const std::string path = numberedPath(wanted, number);
        if (!request.keep.empty() && platform::isSameFile(path, request.keep)) {
            continue;
        }
        Candidate candidate = examined(path, request.templatePath);
        if (candidate.isOthers && number == 1) {
            return std::nullopt;
        }
        if (candidate.lock) {
            WorkingDatabase working(std::move(candidate.lock), path, request.templatePath);
            if (number > 1) {
                working.removeAtEnd();
            }
            if (inUse) {
                request.userInterface.message("Another program is using the working database " +
                                              platform::displayPath(wanted) + ". This one uses " +
                                              platform::displayPath(path) + ", which is deleted on exit.");
            }
            working.startAnew();
            return working;
        }
        inUse = inUse || !candidate.isOthers;
    }
    throw RuntimeError(databaseError::inUse,
                       "The working database is already in use: " + platform::displayPath(wanted));
}

} // namespace

WorkingDatabase modDatabase::prepareDatabase(std::string_view applicationFolder,
                                             std::string_view databasePath, clsUserInterface& userInterface,
                                             std::string_view keep) {
    if (databasePath.empty()) {
        throw RuntimeError::about(errorNumber::pathFileAccess, "the setting databasePath is empty");
    }
    const std::string wanted = platform::resolveLinks(databasePath);
    const std::string standard =
        platform::resolveLinks(modGlobal::addBackslash(applicationFolder) + "main.dat");
    const Request request{findDataFile(applicationFolder, templateName), keep, userInterface};
    auto working = tryPrepare(wanted, request);
    if (!working && !platform::sameName(wanted, standard)) {
        userInterface.message("The setting databasePath names " + platform::displayPath(wanted) +
                              ", which is not a database of this program, so it is left alone. " +
                              platform::displayPath(standard) + " is used instead.");
        working = tryPrepare(standard, request);
    }
    if (!working) {
        throw RuntimeError::about(
            errorNumber::fileAlreadyExists,
            platform::displayPath(standard) +
                " is not a database of this program, so it is left alone. Move it away, "
                "or name another file with the setting databasePath");
    }
    return std::move(*working);
}
