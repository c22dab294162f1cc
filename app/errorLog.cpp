#include "app/errorLog.h"

#include <new>

#include "app/clsRegSettings.h"
#include "app/clsUserInterface.h"
#include "app/modGlobal.h"
#include "app/pictures.h"
#include "platform/clock.h"
#include "platform/files.h"

namespace modGlobal {

namespace {

struct Surroundings {
    std::string applicationFolder;
    clsRegSettings* settings = nullptr;
    clsUserInterface* userInterface = nullptr;
};

Surroundings surroundings;

std::string logFile(std::string_view section, std::string_view key, const std::string& defaultPath) {
    const clsRegSettings* settings = surroundings.settings;
    return settings ? settings->GetSetting(section, key, defaultPath, stpIni) : defaultPath;
}

// Two rules for two files, deliberately: the first is only appended to, the second, used when the first does
// not exist, is made anew for each entry. By default both are the same file.
void writeEntry(std::string_view entry) {
    const std::string& folder = surroundings.applicationFolder;
    try {
        platform::appendToFile(
            logFile("application_settings", "errorLogFile", addBackslash(folder) + "errorLog.txt"), entry);
    } catch (const RuntimeError& error) {
        if (error.number() != errorNumber::fileNotFound) {
            throw;
        }
        platform::FileSink sink(logFile("startup", "errorLogTextFile", folder + "\\errorLog.txt"));
        sink.write(entry);
        sink.close();
    }
}

} // namespace

void setErrorLogSurroundings(std::string applicationFolder, clsRegSettings* settings,
                             clsUserInterface* userInterface) {
    // Without its trailing "\", which a drive's root alone keeps: the second default depends on it.
    const bool isRoot = applicationFolder.find('\\') + 1 == applicationFolder.size();
    if (applicationFolder.ends_with('\\') && !isRoot) {
        applicationFolder.pop_back();
    }
    surroundings = {std::move(applicationFolder), settings, userInterface};
}

void logError(int errorNumber, std::string_view errorDescription, std::string_view moduleName,
              std::string_view procedureName, bool quiet) noexcept {
    try {
        std::string entry = std::to_string(errorNumber);
        if (!quiet && surroundings.userInterface != nullptr) {
            std::string message = entry;
            message.append(" ").append(errorDescription).append("\r\n[");
            message.append(moduleName).append(".").append(procedureName).append("]");
            surroundings.userInterface->message(message);
        }
        if (surroundings.applicationFolder.empty()) {
            return;
        }
        for (const std::string_view field : {errorDescription, moduleName, procedureName}) {
            entry.append("\t").append(field);
        }
        const platform::LocalTime time = platform::localTime(platform::now());
        entry.append("\t").append(modFormat::formatDate(time, modFormat::storedDatePicture)).append("\r\n");
        writeEntry(entry);
    } catch (...) {
        // The entry is lost: logging an error never causes another.
    }
}

void logCurrentException(std::string_view moduleName, std::string_view procedureName, bool quiet) noexcept {
    try {
        throw;
    } catch (const RuntimeError& error) {
        logError(error.number(), error.what(), moduleName, procedureName, quiet);
    } catch (const std::bad_alloc&) {
        logError(errorNumber::outOfMemory, "Out of memory", moduleName, procedureName, quiet);
    } catch (const std::exception& error) {
        logError(errorNumber::invalidCall, error.what(), moduleName, procedureName, quiet);
    } catch (...) {
        logError(errorNumber::invalidCall, "Unknown exception", moduleName, procedureName, quiet);
    }
}

} // namespace modGlobal
