#pragma once

#include <string>
#include <string_view>

// Converts between the program's UTF-8 and the system's UTF-16. Names on disk need not be valid UTF-16: an
// unpaired surrogate becomes the three bytes that UTF-8 would give it (WTF-8), and is converted back
// unchanged.
namespace platform {

void appendNarrow(std::string& result, std::wstring_view text);
[[nodiscard]] std::string narrow(std::wstring_view text);

// Bytes that are neither UTF-8 nor WTF-8 become U+FFFD.
[[nodiscard]] std::wstring wide(std::string_view text);

// The wide, absolute form of an internal path, for calls that must accept paths of any length: with the
// prefix `\\?\` and no trailing "\" except for a root. With this prefix, the system accepts names exactly as
// written, such as those that end in a dot.
[[nodiscard]] std::wstring widePath(std::string_view internalPath);

} // namespace platform
