#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

// Files, by internal path (platform/paths.h) or by any path that a user may type. Unless stated otherwise, a
// failure throws RuntimeError with the number of its cause (53 file not found, 61 disk full, 70 permission
// denied, 76 path not found, …) and a description that says what was not done to which file.
namespace platform {

// True if there is a regular file (links are followed): something that can be overwritten.
[[nodiscard]] bool fileExists(std::string_view path) noexcept;

// The file's size in bytes; 0 if there is no such file.
[[nodiscard]] std::uint64_t fileSize(std::string_view path) noexcept;

// True if anything exists there, even a link that leads nowhere.
[[nodiscard]] bool somethingExists(std::string_view path) noexcept;

// True for the name of a stream that the process was given (/dev/stdout, /dev/fd/3); writing to it does not
// replace a file.
[[nodiscard]] bool isStream(std::string_view path) noexcept;

// True if the file exists and the user may write to it.
[[nodiscard]] bool fileIsWritable(std::string_view path) noexcept;

// The internal path of the file that a path leads to, with links followed. If the file does not exist yet,
// the links of its folder are followed.
[[nodiscard]] std::string resolveLinks(std::string_view path);

// The same, but a link at the end of the path stands for itself.
[[nodiscard]] std::string resolveFolderLinks(std::string_view path);

// True if the path ends in a link, wherever it leads.
[[nodiscard]] bool isLink(std::string_view path) noexcept;

// True if both paths lead to the same existing file.
[[nodiscard]] bool isSameFile(std::string_view left, std::string_view right) noexcept;

// Throws 53 if there is no such file, and 75 if it is not a regular file (a link, a device).
void deleteFile(std::string_view path);

// Renames a file, which replaces the one at the other path, if any. Both are on one volume.
void moveFile(std::string_view from, std::string_view to);

class Sink;

// Copies the bytes of one file over another, which is replaced as Replacement does.
void copyFile(std::string_view from, std::string_view to);

// Writes the bytes of a file to the sink.
void copyFile(std::string_view from, Sink& to);

// The whole content. Throws 75 if this is not a regular file, and 6 if it has more than `limit` bytes.
[[nodiscard]] std::string readFile(std::string_view path, std::uint64_t limit = 64ULL << 20);

// The first bytes of the file, or all if it has fewer. Throws 75 if it is not a regular file.
[[nodiscard]] std::string readStart(std::string_view path, std::size_t count);

// Who may read a file that did not exist before. An existing file keeps its permissions.
enum class NewFile {
    shared, // whoever may read the user's other new files
    own,    // the user alone
};

// Replaces the file's content as Replacement does.
void replaceFile(std::string_view path, std::string_view content, NewFile newFile = NewFile::shared);

// Appends the text to a file of the program's own in one write. Throws 53 if the file does not exist, and 75
// if it is a link.
void appendToFile(std::string_view path, std::string_view text);

// Creates the folder and any missing folders above it, for the user alone.
void makeFolders(std::string_view path);

class OutputFile;

// The target of a report.
class Sink {
public:
    virtual ~Sink() = default;
    virtual void write(std::string_view text) = 0;
};

class TextSink final : public Sink {
public:
    void write(std::string_view text) override { text_.append(text); }
    [[nodiscard]] const std::string& text() const noexcept { return text_; }

private:
    std::string text_;
};

// Collects everything written to a file in a buffer.
class BufferedSink : public Sink {
public:
    ~BufferedSink() override;
    BufferedSink(const BufferedSink&) = delete;
    BufferedSink& operator=(const BufferedSink&) = delete;

    void write(std::string_view text) final;

protected:
    explicit BufferedSink(std::unique_ptr<OutputFile> file);
    void flush();
    void finish();

private:
    std::unique_ptr<OutputFile> file_;
    std::string buffer_;
};

// A file of the program's own: emptied, or created for the user alone. A link in its place, which may lead to
// any file of the user, is refused (75). Without close(), it keeps what has been written so far.
class FileSink final : public BufferedSink {
public:
    explicit FileSink(std::string_view path);
    ~FileSink() override;
    FileSink(const FileSink&) = delete;
    FileSink& operator=(const FileSink&) = delete;

    // Writes the buffer and closes the file; the last moment at which a full disk is noticed.
    void close() { finish(); }
};

// The path with which Replacement writes to the standard output of the process. (A file of that name is
// "./-".)
inline constexpr std::string_view standardOutput = "-";

// A file that replaces the one at the path, if any, when it is complete: at any moment, either the complete
// old content or the complete new one exists. It is written beside its target and takes over its permissions
// and, if possible, its owner; links are followed to their file. Without commit(), nothing changes. A killed
// program may leave one file `.spannory-….tmp` in the folder, which the next replacement of the same target
// removes. Several programs may replace a file at the same time; the last one wins.
//
// A device, a pipe or a stream of the process (/dev/stdout) cannot be replaced and is written directly. A
// target that is not writable, or a folder in which no file can be created, is refused (70).
class Replacement final : public BufferedSink {
public:
    explicit Replacement(std::string_view path, NewFile newFile = NewFile::shared);

    // Flushed to the disk before this returns.
    void commit() { finish(); }
};

// A lock between programs, held while the object lives. The system releases it if the process dies.
class FileLock {
public:
    // Tries to lock the file at `path` (created if missing, for the user alone). Null if another program
    // holds the lock. Throws 75 if it is a link.
    [[nodiscard]] static std::unique_ptr<FileLock> tryAcquire(std::string_view path);

    // Deletes the file with the object.
    void removeAtEnd() noexcept { remove_ = true; }

    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

private:
    FileLock(std::intptr_t handle, std::string_view path) : handle_(handle), path_(path) {}

    std::intptr_t handle_;
    std::string path_;
    bool remove_ = false;
};

} // namespace platform
