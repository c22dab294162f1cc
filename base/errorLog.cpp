#include "base/errorLog.h"

#include <new>
#include <utility>

#include "base/clsUserInterface.h"
#include "base/dateFormat.h"
#include "platform/clock.h"
#include "platform/files.h"

namespace modGlobal {

namespace {

struct Dependencies {
    clsUserInterface* userInterface = nullptr;
    std::function<ErrorLogFiles()> files;
};

Dependencies dependencies;

void writeEntry(std::string_view entry) {
    const ErrorLogFiles files = dependencies.files();
    try {
        platform::appendToFile(files.appended, entry);
    } catch (const RuntimeError& error) {
        if (error.number() != errorNumber::fileNotFound) {
            throw;
        }
        platform::FileSink sink(files.madeAnew);
        sink.write(entry);
        sink.close();
    }
}

} // namespace

void setErrorLog(clsUserInterface* userInterface, std::function<ErrorLogFiles()> files) {
    dependencies = {userInterface, std::move(files)};
}

void logError(int errorNumber, std::string_view errorDescription, std::string_view moduleName,
              std::string_view procedureName, bool quiet) noexcept {
    try {
        std::string entry = std::to_string(errorNumber);
        if (!quiet && dependencies.userInterface != nullptr) {
            std::string message = entry;
            message.append(" ").append(errorDescription).append("\r\n[");
            message.append(moduleName).append(".").append(procedureName).append("]");
            dependencies.userInterface->message(message);
        }
        if (!dependencies.files) {
            return;
        }
        for (const std::string_view field : {errorDescription, moduleName, procedureName}) {
            entry.append("\t").append(field);
        }
        const platform::LocalTime time = platform::localTime(platform::now());
        entry.append("\t").append(modFormat::formatDate(time, modFormat::storedDatePicture)).append("\r\n");
        writeEntry(entry);
    } catch (...) {
        // The entry is lost: logging an error never causes another one.
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
