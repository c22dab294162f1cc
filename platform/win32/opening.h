#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/openFiles.h"
#include "platform/win32/handle.h"

// Shared by the files here that open files. `path` is the name used in errors.
namespace platform {

inline constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// The system's form of any path; throws 53 if it is not a valid path.
[[nodiscard]] std::wstring wideOf(std::string_view path, NotDone notDone = NotDone::opened);

[[nodiscard]] bool isFolder(const std::wstring& path);

// The error code of a call that was given a path. The system refuses a folder in place of a file with the
// same error as a file that may not be opened; this tells them apart.
[[nodiscard]] RuntimeError errorOf(DWORD cause, const std::wstring& wide, std::string_view path,
                                   NotDone notDone);

// The last error of a call that was given a path.
[[nodiscard]] RuntimeError lastError(const std::wstring& wide, std::string_view path, NotDone notDone);

[[nodiscard]] Handle openOrThrow(std::string_view path, const std::wstring& wide, DWORD access, DWORD share,
                                 DWORD creation);

// Opens a file of the program's own. A link is refused.
[[nodiscard]] Handle openOwn(std::string_view path, DWORD access, DWORD share, DWORD creation);

// The process's standard output, as it stands.
[[nodiscard]] std::unique_ptr<OutputFile> openStandardOutput();

// Writes the whole text.
void writeAll(HANDLE file, std::string_view text, std::string_view path);

// The path with links followed; nothing if it cannot be found out.
[[nodiscard]] std::optional<std::wstring> finalPath(const std::wstring& path);

// A file that the user may not write to is not replaced or deleted either.
void requireWritable(std::string_view path, const std::wstring& wide, NotDone notDone);

} // namespace platform
