#pragma once

#include <string>
#include <string_view>

// The folder that holds settings.ini, main.dat and errorLog.txt, as an internal path ending in "\", made when
// it is missing: the given one, else the environment's SPANNORY_HOME, else the executable's own folder where
// that can be written to and holds the template (portable use), else the user's data folder.
// Throws RuntimeError when it cannot be made.
[[nodiscard]] std::string findApplicationFolder(std::string_view given);
