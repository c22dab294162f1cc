#pragma once

#include <string>
#include <string_view>

// The border between the program's paths and the system's.
//
// Inside the program every path is an *internal path*: UTF-8, a drive part ending in "\", then names
// separated by "\"; folders end in "\". A drive is a mounted volume: `C:\`, `/\`, `/home\`,
// `\\server\share\`. Only this header's routines convert, and the conversion is one-to-one both ways.
namespace platform {

// --- one name -------------------------------------------------------------------------------------------

// Appends the internal form of one file name as the system gave it. On Linux each of \ " | * ? < > and the
// control characters becomes U+F000 + its code, and each byte that is not valid UTF-8, or that would decode
// into U+EF00..U+F0FF or into U+FFFE and U+FFFF, becomes U+EF00 + the byte.
void appendInternalName(std::string& result, std::string_view nativeName);
[[nodiscard]] std::string internalName(std::string_view nativeName);

// Appends the system's form of one internal name (or of several joined by "\", which then become the
// system's separator).
void appendNativeName(std::string& result, std::string_view internalName);

// --- whole paths ----------------------------------------------------------------------------------------

// The internal path of what a user typed: a native path, absolute or relative, on Linux "~" or "~/x", or an
// internal path. "." and ".." are resolved, ".." as the system does it behind a link. No trailing "\" unless
// the text had a trailing separator or names a drive's root. An empty text gives an empty path. Throws
// RuntimeError 76 for a relative path when the current folder is gone.
[[nodiscard]] std::string toInternal(std::string_view typedPath);

// The system's form of an internal path, without a trailing separator (unless it is the root itself).
// On Linux a network share that is not mounted gives an empty text.
[[nodiscard]] std::string toNative(std::string_view internalPath);

// The text shown to people and written in reports: on Linux `/usr/lib/x.so` (drive and separators in native
// form, mapped characters left mapped, `//server/share/x` for a network share), on Windows the path itself.
void appendDisplayPath(std::string& result, std::string_view internalPath);
[[nodiscard]] std::string displayPath(std::string_view internalPath);

// What ends a line of a text file on this system.
extern constinit const std::string_view lineEnd;

} // namespace platform
