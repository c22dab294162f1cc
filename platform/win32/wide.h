#pragma once

#include <string>
#include <string_view>

// Between the program's UTF-8 and the system's UTF-16. Names on disk need not be valid UTF-16: a surrogate
// that stands alone becomes the three bytes that UTF-8 would give it (WTF-8), and comes back as it was.
namespace platform {

void appendNarrow(std::string& result, std::wstring_view text);
[[nodiscard]] std::string narrow(std::wstring_view text);

// Bytes that are neither become U+FFFD.
[[nodiscard]] std::wstring wide(std::string_view text);

// The wide form of an internal path, absolute, for calls that are to take paths of any length: with `\\?\`
// before it, and no trailing "\" except a root's. With this prefix the system takes names as they stand, such
// as those that end in a dot.
[[nodiscard]] std::wstring widePath(std::string_view internalPath);

} // namespace platform
