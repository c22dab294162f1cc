#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/linux/descriptor.h"
#include "platform/openFiles.h"

// Shared by the files here that open files. `path` is the name used in errors.
namespace platform {

// The system's form of any path; throws 53 if it is not a valid path.
[[nodiscard]] std::string nativeOf(std::string_view path);

// Opens or creates a file; 76 if its folder is missing.
[[nodiscard]] Descriptor openOrThrow(std::string_view path, const std::string& native, int flags);

// Opens a file of the program's own, or creates it (if O_CREAT is among the flags) for the user alone. A link
// is refused, unless it leads to a stream of the process.
[[nodiscard]] Descriptor openOwn(std::string_view path, int flags);

// A file written in place: emptied (O_TRUNC) or appended to (O_APPEND). A pipe without a reader is an error;
// it does not block.
[[nodiscard]] std::unique_ptr<OutputFile> openInPlace(std::string_view path, const std::string& native,
                                                      int flag);

// The process's standard output, as it stands.
[[nodiscard]] std::unique_ptr<OutputFile> openStandardOutput();

// Writes the whole text.
void writeAll(int descriptor, std::string_view text, std::string_view path);

// A file that the user may not write to is not replaced or deleted either, even if its folder allows it.
void requireWritable(std::string_view path, const std::string& native);

} // namespace platform
