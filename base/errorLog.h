#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/runtimeError.h"

class clsUserInterface;

// The error log, the only service of the whole process. Every routine that traps its errors
// (base/errorTrap.h) passes them here.
namespace modGlobal {

// The files for entries. Odd on purpose: two rules for two files. Entries are only appended to the first; the
// second, used if the first does not exist, is created anew for each entry. Usually both are the same file.
struct ErrorLogFiles {
    std::string appended;
    std::string madeAnew;
};

// Sets who shows messages (not owned), and a function that is asked for the files at each entry. Without the
// first, nothing is shown; without the second, nothing is written. Neither is set at the start.
void setErrorLog(clsUserInterface* userInterface = nullptr, std::function<ErrorLogFiles()> files = {});

// Shows the error in a message unless quiet, then appends a line to the log file. Never fails: if the entry
// cannot be written, it is lost.
void logError(int errorNumber, std::string_view errorDescription, std::string_view moduleName,
              std::string_view procedureName, bool quiet) noexcept;

// Logs the current exception: a RuntimeError with its number, any other with number 5.
void logCurrentException(std::string_view moduleName, std::string_view procedureName, bool quiet) noexcept;

} // namespace modGlobal
