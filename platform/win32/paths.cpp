#include "platform/paths.h"

#include <windows.h>

#include <algorithm>

#include "platform/fileError.h"
#include "platform/text.h"
#include "platform/win32/wide.h"

namespace platform {

constinit const std::string_view lineEnd = "\r\n";
constinit const char displaySeparator = '\\';

namespace {

constexpr std::size_t longestPlainPath = 247; // some calls need the prefix for longer ones

// Characters that no name contains on Windows unless another system wrote it. They are mapped to others, as
// that system itself does if it can.
constexpr char32_t movedCharacters = 0xF000;

constexpr bool isForbidden(char c) {
    return static_cast<unsigned char>(c) < 0x20 ||
           std::string_view("\\/\"|*?<>").find(c) != std::string_view::npos;
}

constexpr bool isLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

constexpr bool startsWithDrive(std::string_view path) {
    return path.size() >= 3 && isLetter(path[0]) && path[1] == ':' && path[2] == '\\';
}

std::string withUpperDrive(std::string path) {
    if (startsWithDrive(path)) {
        path[0] = static_cast<char>(path[0] & ~0x20);
    }
    return path;
}

// Adds the root to a share `\\server\share` that is the whole path. A device `\\.\NUL` is not a share.
std::string withShareRoot(const std::string& path) {
    const bool isNetwork = path.starts_with("\\\\") && !path.starts_with("\\\\.\\");
    const std::size_t server = isNetwork ? path.find('\\', 2) : std::string::npos;
    const bool endsWithShare =
        server != std::string::npos && path.find('\\', server + 1) == std::string::npos;
    return endsWithShare && !path.ends_with('\\') ? path + "\\" : path;
}

// An absolute path without "." or ".." to resolve. It is kept as it is, so that names which the system itself
// would change (those ending in a dot) work.
bool isInternal(std::string_view path) {
    if (!startsWithDrive(path) && !path.starts_with("\\\\")) {
        return false;
    }
    for (std::string_view rest = path; !rest.empty();) {
        const std::size_t end = std::min(rest.find('\\'), rest.size());
        const std::string_view name = rest.substr(0, end);
        if (name == "." || name == "..") {
            return false;
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return path.find("\\\\", 2) == std::string_view::npos && path.find('/') == std::string_view::npos;
}

// Names contain no quotes, but a pasted path has two around it. A single quote at the end comes from "C:\some
// folder\" on a command line, where the backslash escapes it.
std::string withoutQuotes(std::string_view typed) {
    const bool opens = typed.starts_with('"');
    typed.remove_prefix(opens ? 1 : 0);
    const bool closes = typed.ends_with('"');
    typed.remove_suffix(closes ? 1 : 0);
    return std::string(typed) + (closes && !opens ? "\\" : "");
}

std::string absolute(std::string_view typed) {
    const std::wstring text = wide(typed);
    const DWORD needed = ::GetFullPathNameW(text.c_str(), 0, nullptr, nullptr);
    std::wstring full(needed, L'\0');
    const DWORD length = needed == 0 ? 0 : ::GetFullPathNameW(text.c_str(), needed, full.data(), nullptr);
    if (length == 0 || length >= needed) {
        throw fileError(errorNumber::pathNotFound, typed, NotDone::opened);
    }
    return narrow({full.data(), length});
}

} // namespace

void appendInternalName(std::string& result, std::string_view nativeName) {
    for (const char c : nativeName) {
        if (isForbidden(c)) {
            appendCodePoint(result, movedCharacters + static_cast<unsigned char>(c));
        } else {
            result.push_back(c);
        }
    }
}

std::string internalName(std::string_view nativeName) {
    std::string result;
    appendInternalName(result, nativeName);
    return result;
}

void appendNativeName(std::string& result, std::string_view internalName) {
    result.append(internalName);
}

std::string toInternal(std::string_view typedPath) {
    constexpr std::string_view longPrefix = "\\\\?\\";
    constexpr std::string_view longSharePrefix = "\\\\?\\UNC\\";
    std::string path = withoutQuotes(typedPath);
    if (path.starts_with(longSharePrefix)) {
        path.replace(0, longSharePrefix.size(), "\\\\");
    } else if (path.starts_with(longPrefix)) {
        path.erase(0, longPrefix.size());
    }
    if (path.empty()) {
        return {};
    }
    return withShareRoot(withUpperDrive(isInternal(path) ? path : absolute(path)));
}

std::string toNative(std::string_view internalPath) {
    const std::wstring path = widePath(internalPath);
    const bool isLong = path.size() > longestPlainPath;
    std::string_view plain = internalPath;
    if (plain.ends_with('\\') && !plain.ends_with(":\\")) {
        plain.remove_suffix(1);
    }
    return isLong ? narrow(path) : std::string(plain);
}

void appendDisplayPath(std::string& result, std::string_view internalPath) {
    result.append(internalPath);
}

std::string displayPath(std::string_view internalPath) {
    return std::string(internalPath);
}

std::string displayName(std::string_view internalName) {
    return std::string(internalName);
}

} // namespace platform
