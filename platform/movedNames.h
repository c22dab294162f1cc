#pragma once

#include <string>
#include <string_view>

// How names of Linux, which may hold any byte, are written in internal paths (platform/paths.h). It is the
// same on every system, because scans are read on others than the one that made them.
namespace platform {

// A character that a path cannot hold becomes U+F000 + its code, and an invalid byte U+EF00 + the byte. If a
// name already contains such a character, its bytes are converted too, so no two names become the same.
inline constexpr char32_t movedCharacters = 0xF000;
inline constexpr char32_t movedBytes = 0xEF00;

constexpr bool isMovedByte(char32_t c) {
    return c >= movedBytes && c <= movedBytes + 0xFF;
}
constexpr bool isMovedCharacter(char32_t c) {
    return c >= movedCharacters && c <= movedCharacters + 0xFF;
}

// Whether the name is written as it is: it has only printable ASCII characters that a path can hold.
[[nodiscard]] bool isUnmovedName(std::string_view name) noexcept;

void appendMovedName(std::string& result, std::string_view nativeName);

// Maps back what the mapping has mapped, and nothing else: names from another system, which a loaded database
// may contain, may have other characters of the two ranges. Each "\" becomes the separator.
void appendUnmovedName(std::string& result, std::string_view text, char separator);

} // namespace platform
