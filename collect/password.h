#pragma once

#include <string>
#include <string_view>

// The password for a server: the first line of the file, a path as typed or, if that is empty, the
// environment's SPANNORY_COLLECT_PASSWORD; empty if there is neither. Throws RuntimeError 70 for a file that
// every user may read or change, and like platform::readFile.
[[nodiscard]] std::string collectPassword(std::string_view file);
