#pragma once

#include <exception>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "platform/runtimeError.h"

class clsRegSettings;
class clsUserInterface;

// The error log: the one process-wide service. Every routine that traps its errors hands them here.
namespace modGlobal {

// Names the folder (an internal path, with or without trailing "\") that the log's default file lies in, the
// settings that may name other files, and who shows messages. None is owned; null unsets. Before the first
// call nothing is shown or written.
void setErrorLogSurroundings(std::string applicationFolder, clsRegSettings* settings,
                             clsUserInterface* userInterface);

// Shows the error in a message unless quiet, then appends one line to the log file. Never fails: an entry
// that cannot be written is lost.
void logError(int errorNumber, std::string_view errorDescription, std::string_view moduleName,
              std::string_view procedureName, bool quiet) noexcept;

// Logs the exception in flight: a RuntimeError by its number, any other with number 5.
void logCurrentException(std::string_view moduleName, std::string_view procedureName, bool quiet) noexcept;

enum class Logging { shown, quiet };

// Runs a routine's body; an error is logged under the routine's names and the default result returned.
template <class Body>
auto trapped(std::string_view moduleName, std::string_view procedureName, Body&& body,
             Logging logging = Logging::shown) -> std::invoke_result_t<Body> {
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        logCurrentException(moduleName, procedureName, logging == Logging::quiet);
    }
    if constexpr (!std::is_void_v<std::invoke_result_t<Body>>) {
        return {};
    }
}

} // namespace modGlobal
