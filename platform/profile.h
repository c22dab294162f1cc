#pragma once

#include <string>
#include <string_view>
#include <vector>

// Profile files (INI files), read and written by the calls of Windows or in the same way. They are UTF-8 on
// every system, with or without a byte order mark, or UTF-16LE with one.
//
// Section and key names ignore case; blanks around names and values are ignored. If a section or key occurs
// twice, the first one is used. Every call opens, reads and closes the file. Nothing here raises an error: if
// the file cannot be read, the default is returned; if it cannot be written, the value is lost.
namespace platform {

// Values read from a file are cut to this many characters; the default never is.
inline constexpr std::size_t longestProfileValue = 254;

// The key's value without one pair of quotes around it. Returns `defaultText` if there is no such file,
// section or key, or if the key's line has no "=".
[[nodiscard]] std::string readProfileValue(std::string_view section, std::string_view key,
                                           std::string_view defaultText, std::string_view filePath);

// True if the value in the file is longer than that, so that readProfileValue returns only part of it.
[[nodiscard]] bool profileValueIsCut(std::string_view section, std::string_view key,
                                     std::string_view filePath);

// The names of the section's keys that have a value, in their order. None if there is no such file or
// section.
[[nodiscard]] std::vector<std::string> profileKeys(std::string_view section, std::string_view filePath);

// Writes one value. A missing file or section is created; all other sections, keys and comments stay. Files
// that are not text or larger than 1 MB are left alone, and the old content stays if the new one cannot be
// stored in full. The writing functions return whether the file now holds what was requested.
bool writeProfileValue(std::string_view section, std::string_view key, std::string_view value,
                       std::string_view filePath) noexcept;

bool deleteProfileKey(std::string_view section, std::string_view key, std::string_view filePath) noexcept;

// Removes the section's header and all lines up to the next header.
bool deleteProfileSection(std::string_view section, std::string_view filePath) noexcept;

} // namespace platform
