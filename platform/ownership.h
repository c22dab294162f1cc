#pragma once

#include <string>
#include <string_view>

// What belongs to the user who runs the program, and to nobody else. Paths are internal paths or any that a
// user may type.
namespace platform {

// True for a link that the user has made to a file of their own.
[[nodiscard]] bool isOwnLink(std::string_view path) noexcept;

// Why the file or folder (links are followed) is not to be relied on: another ordinary user owns it or a
// link to it, or
// everybody may change it. Empty if it can be, or if there is no such file.
[[nodiscard]] std::string whyForeign(std::string_view path);

// True if another ordinary user has made the file or link of this name.
[[nodiscard]] bool isStrangersFile(std::string_view path) noexcept;

// --- folders of the user's own, with files but no folders in them; internal paths ending in "\" ----------

// Creates a folder that nobody else may enter. False if there is something of that name already. Throws
// RuntimeError if it cannot be created.
[[nodiscard]] bool makeOwnFolder(std::string_view path);

// True if it is a folder, not a link to one, that only the user may enter.
[[nodiscard]] bool isOwnFolder(std::string_view path) noexcept;

// Deletes the files in it and then the folder, as far as this is possible.
void removeOwnFolder(std::string_view path) noexcept;

} // namespace platform
