#pragma once

#include <string_view>
#include <type_traits>
#include <utility>

#include "base/errorLog.h"

// Every error ends here: this runs the body of each routine that the program calls by itself or for the user.
namespace modGlobal {

enum class Logging { shown, quiet };

// Runs a routine's body; if it throws, logs the error under the routine's names and returns the default
// result.
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
