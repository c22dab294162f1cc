#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

// Files, by internal path (platform/paths.h) or any text that a user may type for one.
// Unless said otherwise a failure throws RuntimeError with the number of its cause (53 file not found, 61
// disk full, 70 permission denied, 76 path not found, …) and the displayed path in its description.
namespace platform {

// True when a regular file is there (links are followed): something that can be overwritten.
[[nodiscard]] bool fileExists(std::string_view path) noexcept;

// The file's size in bytes; 0 when there is none.
[[nodiscard]] std::uint64_t fileSize(std::string_view path) noexcept;

// True when anything at all is there, be it a link that leads nowhere.
[[nodiscard]] bool somethingExists(std::string_view path) noexcept;

// True when the user may write to the file that is there.
[[nodiscard]] bool fileIsWritable(std::string_view path) noexcept;

// The internal path of the file that a path leads to, links followed; of one that does not exist yet, in the
// folder that its own leads to.
[[nodiscard]] std::string resolveLinks(std::string_view path);

// True when both paths lead to one existing file.
[[nodiscard]] bool isSameFile(std::string_view left, std::string_view right) noexcept;

// Throws 53 when there is none, 75 for what is no regular file (a link, a device).
void deleteFile(std::string_view path);

// Copies the bytes of one file over another, which is replaced once the copy is complete.
void copyFile(std::string_view from, std::string_view to);

// The whole content. Refuses (75) what is no regular file, and more than `limit` bytes (6).
[[nodiscard]] std::string readFile(std::string_view path, std::uint64_t limit = 64ULL << 20);

// Replaces the file's content by way of a temporary file beside it and a rename, so that at any moment
// either the old or the new content is there whole.
void replaceFile(std::string_view path, std::string_view content);

// Appends the text in one write. Throws 53 when the file does not exist.
void appendToFile(std::string_view path, std::string_view text);

// Makes the folder and those above it where they are missing.
void makeFolders(std::string_view path);

// What a report is written to.
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

// A file emptied or made anew, written through a buffer. Without close() what was written so far stays.
class FileSink final : public Sink {
public:
    explicit FileSink(std::string_view path);
    ~FileSink() override;
    FileSink(const FileSink&) = delete;
    FileSink& operator=(const FileSink&) = delete;

    void write(std::string_view text) override;

    // Writes what is buffered and closes; the last moment at which a full disk is noticed.
    void close();

private:
    void flush();

    std::string path_;
    std::string buffer_;
    std::intptr_t handle_ = -1;
};

// A lock between programs: held while the object lives, released by the system when the process dies.
class FileLock {
public:
    // Tries to hold the lock file at `path` (made when missing). Null when another program holds it.
    [[nodiscard]] static std::unique_ptr<FileLock> tryAcquire(std::string_view path);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

private:
    explicit FileLock(std::intptr_t handle) : handle_(handle) {}

    std::intptr_t handle_;
};

} // namespace platform
