#pragma once

#include <string>
#include <string_view>

// Profile files (INI files), read and written as Windows does, though not by its own calls: those take a file
// without a mark for text of the machine's code page, and here it is UTF-8 on every system.
//
// Section and key names are compared ignoring case, blanks around names and values do not count, the first
// section of a name and the first key in it are the ones meant. Every call opens, reads and closes the file
// anew. Nothing here raises an error: what cannot be read gives the default, what cannot be written is lost.
namespace platform {

// A value read from the file is cut to this many characters. The default never is.
inline constexpr std::size_t longestProfileValue = 254;

// The key's value without one pair of quotes around it. `defaultText` when there is no such file, section or
// key, when the key's line has no "=", or when the file is no INI text or larger than 1 MB.
[[nodiscard]] std::string readProfileValue(std::string_view section, std::string_view key,
                                           std::string_view defaultText, std::string_view filePath);

// Writes one value; file and section are made when missing. All other lines, the encoding and the line ends
// of the file stay as they are. Names and values that no INI line can hold (line breaks, "=" in a key, …) are
// not written. The writing routines return whether the file now holds what was asked for.
bool writeProfileValue(std::string_view section, std::string_view key, std::string_view value,
                       std::string_view filePath) noexcept;

bool deleteProfileKey(std::string_view section, std::string_view key, std::string_view filePath) noexcept;

// Removes the section's header and every line up to the next header.
bool deleteProfileSection(std::string_view section, std::string_view filePath) noexcept;

} // namespace platform
