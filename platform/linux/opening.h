#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/linux/descriptor.h"
#include "platform/openFiles.h"

// Shared by the files here that open files. `path` is the name used in errors.
namespace platform {

// The system's form of any path; throws 53 if it is not a valid path.
[[nodiscard]] std::string nativeOf(std::string_view path, NotDone notDone = NotDone::opened);

// Opens or creates a file; 76 if its folder is missing.
[[nodiscard]] Descriptor openOrThrow(std::string_view path, const std::string& native, int flags);

// Opens a file of the program's own, or creates it (if O_CREAT is among the flags) for the user alone. A link
// is refused, unless it leads to a stream of the process, and so is a stranger's file.
[[nodiscard]] Descriptor openOwn(std::string_view path, int flags);

// Opens a file for reading; one that a stranger has made, or a stranger's link leads to, is refused.
[[nodiscard]] Descriptor openOwnForReading(std::string_view path);

// The same as an InputFile. Throws 75 if it is not a regular file.
[[nodiscard]] std::unique_ptr<InputFile> openOwnRegular(std::string_view path);

// An existing file or device written in place, opened with one more flag. A pipe without a reader is an
// error; it does not block.
[[nodiscard]] std::unique_ptr<OutputFile> openInPlace(std::string_view path, const std::string& native,
                                                      int flag);

// The process's standard output, as it stands.
[[nodiscard]] std::unique_ptr<OutputFile> openStandardOutput();

// Writes the whole text.
void writeAll(int descriptor, std::string_view text, std::string_view path);

// A file that the user may not write to is not replaced or deleted either, even if its folder allows it.
void requireWritable(std::string_view path, const std::string& native, NotDone notDone);

} // namespace platform
