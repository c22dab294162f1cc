#pragma once

#include <string>
#include <string_view>

// The folder that holds settings.ini, main.dat and errorLog.txt, as an internal path ending in "\", made when
// it is missing: the given one, else the environment's SPANNORY_HOME, else the executable's own folder where
// that can be written to and holds the template (portable use), else the user's data folder.
// Throws RuntimeError when it cannot be made.
[[nodiscard]] std::string findApplicationFolder(std::string_view given);

// The internal path of a file that comes with the program (001.dat, 2.avi): the one in the application folder
// (with or without its trailing "\"), else the one beside the program, else the installed one. Where there is
// none, the path that it would have in the application folder.
[[nodiscard]] std::string findDataFile(std::string_view applicationFolder, std::string_view name);
