#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "platform/fileError.h"

// Open files: the system's part of files.cpp, implemented by linux/ and win32/. For platform/ only. Failures
// throw the same errors as files.h.
namespace platform {

// The block size for reading and writing files.
inline constexpr std::size_t blockSize = std::size_t{256} << 10;

enum class NewFile; // files.h

// A file that is written from start to end. If it is not finished, it is closed as it is.
class OutputFile {
public:
    OutputFile() = default;
    virtual ~OutputFile() = default;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    virtual void write(std::string_view text) = 0;

    // Closes the file; the last moment at which a full disk is noticed. Nothing can be written afterwards.
    virtual void finish() = 0;
};

// A file that is read from start to end.
class InputFile {
public:
    InputFile() = default;
    virtual ~InputFile() = default;
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    // Fills as much of the block as the system returns; 0 at the end.
    [[nodiscard]] virtual std::size_t read(std::span<char> block) = 0;
};

// The file of a platform::FileSink. A pipe without a reader is an error; it does not block.
[[nodiscard]] std::unique_ptr<OutputFile> openEmptied(std::string_view path);

// The file that platform::Replacement writes: when finished, it is flushed to the disk and put in place;
// otherwise it is deleted.
[[nodiscard]] std::unique_ptr<OutputFile> openReplacement(std::string_view path, NewFile newFile);

// Throws 75 if this is not a regular file.
[[nodiscard]] std::unique_ptr<InputFile> openRegular(std::string_view path);

// --- what the systems' replacements share ---------------------------------------------------------------

// The number of programs that can replace a file at the same time.
inline constexpr int mostReplacements = 16;

// The possible names, from 1, of the temporary file for a target with that name. Short, because the target's
// name may already have the maximum length.
[[nodiscard]] std::string replacementName(std::string_view targetName, int number);

// The target is writable, but no file can be created beside it.
[[nodiscard]] RuntimeError noRoomBeside(std::string_view path);

// A link where the program's own file should be.
[[nodiscard]] RuntimeError linkInsteadOfFile(std::string_view path, NotDone notDone);

// Another user's file, pipe or link where the user's should be.
[[nodiscard]] RuntimeError strangersFile(std::string_view path, NotDone notDone);

// A folder, a device or a pipe where a file should be.
[[nodiscard]] RuntimeError noRegularFile(std::string_view path, bool isFolder, NotDone notDone);

} // namespace platform
