#pragma once

#include <string>
#include <string_view>

// The border between the program's paths and the system's.
//
// Inside the program, every path is an *internal path*: UTF-8, a drive part ending in "\", then names
// separated by "\"; a folder ends in "\". A drive is a mounted volume: `C:\`, `/\`, `/home\`,
// `\\server\share\`. Only the functions of this header convert paths; the conversion is one-to-one in both
// directions.
namespace platform {

// --- one name -------------------------------------------------------------------------------------------

// Appends the internal form of one file name as given by the system. On Linux, each of \ " | * ? < > and each
// control character becomes U+F000 + its code; each byte that is not valid UTF-8, or that would decode to
// U+EF00..U+F0FF or to U+FFFE or U+FFFF, becomes U+EF00 + the byte.
void appendInternalName(std::string& result, std::string_view nativeName);
[[nodiscard]] std::string internalName(std::string_view nativeName);

// Appends the system's form of one internal name (or of several joined by "\", which becomes the system's
// separator).
void appendNativeName(std::string& result, std::string_view internalName);

// --- whole paths ----------------------------------------------------------------------------------------

// The internal path of what a user typed: a native path, absolute or relative; on Linux also "~" or "~/x"; or
// an internal path. "." and ".." are resolved; after a link, ".." works as the system does it. There is no
// trailing "\" unless the text has a trailing separator or names a drive's root. An empty text gives an empty
// path. Throws RuntimeError 76 for a relative path if the current folder no longer exists.
[[nodiscard]] std::string toInternal(std::string_view typedPath);

// The system's form of an internal path, without a trailing separator (except for a root). On Linux, empty
// for a network share that is not mounted.
[[nodiscard]] std::string toNative(std::string_view internalPath);

// --- what people are shown ------------------------------------------------------------------------------

// The path as it is on the disk, byte for byte: on Linux `/usr/lib/Who?` (`//server/share/x` for a network
// share), on Windows the path itself. It may contain line breaks, other control characters, quotes, and
// invalid UTF-8; whoever writes it somewhere must make it safe for that place.
void appendDisplayPath(std::string& result, std::string_view internalPath);
[[nodiscard]] std::string displayPath(std::string_view internalPath);

// The same for one name, or for part of a name such as its extension.
[[nodiscard]] std::string displayName(std::string_view internalName);

// The separator in displayed paths.
extern constinit const char displaySeparator;

// The line end of text files on this system.
extern constinit const std::string_view lineEnd;

} // namespace platform
