#include "db/modDatabase.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "base/applicationFolder.h"
#include "base/modGlobal.h"
#include "db/ownDatabase.h"
#include "platform/fileError.h"
#include "platform/locale.h"
#include "platform/ownership.h"
#include "platform/paths.h"

namespace {

using modDatabase::FileKind;

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
    if (platform::somethingExists(path) && !platform::isLink(path) && !platform::fileExists(path)) {
        throw platform::fileError(errorNumber::pathFileAccess, "It is no ordinary file", path,
                                  platform::NotDone::opened);
    }
}

std::unique_ptr<platform::FileLock> tryLock(const std::string& path) {
    const std::string lockFile = path + ".lock";
    try {
        return platform::FileLock::tryAcquire(lockFile);
    } catch (const RuntimeError& error) {
        if (platform::isLink(lockFile)) {
            throw;
        }
        throw platform::fileError(error.number(), path, platform::NotDone::opened);
    }
}

// What was found at a place for the working database.
struct Candidate {
    std::string_view notOurs;                 // what an existing file is, if it is to be left alone
    std::unique_ptr<platform::FileLock> lock; // also null if another program uses the file
};

// Looked at twice: the second look would disturb a program that uses the file, so it needs the lock first;
// and the lock, a file beside this one, must not be created beside a file that is not the program's.
Candidate examined(const std::string& path, const std::string& templatePath) {
    constexpr std::string_view notADatabase = "not a database of this program";
    if (platform::isSameFile(path, templatePath)) {
        return {notADatabase, nullptr};
    }
    switch (modDatabase::kindOf(path)) {
    case FileKind::replaceable:
        return {{}, tryLock(path)};
    case FileKind::savedScan:
        return {"a saved scan", nullptr};
    case FileKind::link:
        return {"a link", nullptr};
    case FileKind::others:
        return {notADatabase, nullptr};
    case FileKind::unmarked:
        break;
    }
    const bool wasLocked = platform::somethingExists(path + ".lock");
    auto lock = tryLock(path);
    if (lock && !modDatabase::hasOwnTable(path)) {
        if (!wasLocked) {
            lock->removeAtEnd();
        }
        return {notADatabase, nullptr};
    }
    return {{}, std::move(lock)};
}

struct Request {
    std::string templatePath;
    const std::vector<std::string>& keep;
    clsUserInterface& userInterface;
};

// The database, or what the existing file is, if it is to be left alone.
struct Prepared {
    std::optional<WorkingDatabase> working;
    std::string_view notOurs;
};

Prepared tryPrepare(const std::string& wanted, const Request& request) {
    requireReplaceable(wanted);
    bool inUse = false; // else it is the file to keep
    for (int number = 1; number <= mostProgramsAtOnce; ++number) {
        const std::string path = numberedPath(wanted, number);
        if (std::any_of(request.keep.begin(), request.keep.end(),
                        [&](const std::string& file) { return platform::isSameFile(path, file); })) {
            continue;
        }
        Candidate candidate = examined(path, request.templatePath);
        if (!candidate.notOurs.empty() && number == 1) {
            return {std::nullopt, candidate.notOurs};
        }
        if (candidate.lock) {
            if (number > 1) {
                candidate.lock->removeAtEnd();
            }
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
            return {std::move(working), {}};
        }
        inUse = inUse || candidate.notOurs.empty();
    }
    throw platform::fileError(databaseError::inUse, "The working database is already in use", wanted,
                              platform::NotDone::opened);
}

} // namespace

WorkingDatabase modDatabase::prepareDatabase(std::string_view applicationFolder,
                                             std::string_view databasePath, clsUserInterface& userInterface,
                                             const std::vector<std::string>& keep) {
    if (databasePath.empty()) {
        throw RuntimeError(errorNumber::pathFileAccess,
                           "The setting databasePath is empty: no working database was opened.");
    }
    const std::string standard =
        platform::resolveFolderLinks(modGlobal::addBackslash(applicationFolder) + "main.dat");
    std::string wanted = platform::resolveFolderLinks(databasePath);
    if (!platform::sameName(wanted, standard) && platform::isOwnLink(wanted)) {
        wanted = platform::resolveLinks(wanted); // the user has named it, made it and owns what it leads to
    }
    const Request request{findDataFile(applicationFolder, templateName), keep, userInterface};
    Prepared prepared = tryPrepare(wanted, request);
    if (!prepared.working && !platform::sameName(wanted, standard)) {
        userInterface.message("The setting databasePath names " + platform::displayPath(wanted) +
                              ", which is " + std::string(prepared.notOurs) + ", so it is left alone. " +
                              platform::displayPath(standard) + " is used instead.");
        prepared = tryPrepare(standard, request);
    }
    if (!prepared.working) {
        throw RuntimeError(errorNumber::fileAlreadyExists,
                           platform::displayPath(standard) + " is " + std::string(prepared.notOurs) +
                               ", so it is left alone. Move it away, "
                               "or name another file with the setting databasePath.");
    }
    return std::move(*prepared.working);
}
