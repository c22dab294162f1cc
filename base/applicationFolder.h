#pragma once

#include <string>
#include <string_view>

// The folder of settings.ini, main.dat and errorLog.txt, as an internal path ending in "\", created if
// missing: the given folder, otherwise the one named by the environment variable SPANNORY_HOME, otherwise the
// executable's own folder if it is writable and contains the template (portable use), otherwise the user's
// data folder. Throws RuntimeError if it cannot be created, and 70 if it, or settings.ini in it, belongs to
// another user or may be written by everybody (platform::whyForeign); of the executable's own folder, this
// only means that the next place is taken.
[[nodiscard]] std::string findApplicationFolder(std::string_view given);

// The internal path of a file supplied with the program (001.dat, 2.avi): the one in the application folder
// (given with or without its trailing "\"), otherwise the one beside the program, otherwise the installed
// one. If there is none, the path that it would have in the application folder.
[[nodiscard]] std::string findDataFile(std::string_view applicationFolder, std::string_view name);
