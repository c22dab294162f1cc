#pragma once

#include <string_view>

#include "platform/runtimeError.h"

// Errors that say what happened to which file, in words.
namespace platform {

// What did not come about.
enum class NotDone { read, written, created, deleted, opened, loaded };

// "The disk is full: /srv/report.html was not written.", for 61. `path` is internal or as typed, and is
// shown.
[[nodiscard]] RuntimeError fileError(int number, std::string_view path, NotDone notDone);

// The same with a cause that the number does not tell: a sentence without its full stop.
[[nodiscard]] RuntimeError fileError(int number, std::string_view cause, std::string_view path,
                                     NotDone notDone);

} // namespace platform
