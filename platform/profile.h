#pragma once

#include <string>
#include <string_view>

// Profile files (INI files): by the system's calls, or as those of Windows read and write them. They are
// UTF-8 on every system, with or without a byte order mark, or UTF-16LE with it.
//
// Section and key names are compared ignoring case, blanks around names and values do not count, the first
// section of a name and the first key in it are the ones meant. Every call opens, reads and closes the file
// anew. Nothing here raises an error: what cannot be read gives the default, what cannot be written is lost.
namespace platform {

// A value read from the file is cut to this many characters. The default never is.
inline constexpr std::size_t longestProfileValue = 254;

// The key's value without one pair of quotes around it. `defaultText` when there is no such file, section or
// key, or when the key's line has no "=".
[[nodiscard]] std::string readProfileValue(std::string_view section, std::string_view key,
                                           std::string_view defaultText, std::string_view filePath);

// Writes one value; file and section are made when missing, all other sections, keys and comments stay. Files
// that are larger than 1 MB or no text are left alone, and so is the old content when the new one cannot be
// stored whole. The writing routines return whether the file now holds what was asked for.
bool writeProfileValue(std::string_view section, std::string_view key, std::string_view value,
                       std::string_view filePath) noexcept;

bool deleteProfileKey(std::string_view section, std::string_view key, std::string_view filePath) noexcept;

// Removes the section's header and every line up to the next header.
bool deleteProfileSection(std::string_view section, std::string_view filePath) noexcept;

} // namespace platform
