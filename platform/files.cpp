#include "platform/files.h"

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "platform/locale.h"
#include "platform/openFiles.h"

namespace platform {

namespace {

// Calls `take` for each block of the file's content.
template <class Take>
void readBlocks(InputFile& file, Take take) {
    std::vector<char> block(blockSize);
    while (const std::size_t count = file.read(block)) {
        take(std::string_view(block.data(), count));
    }
}

} // namespace

void copyFile(std::string_view from, std::string_view to) {
    const std::unique_ptr<InputFile> source = openRegular(from);
    Replacement target(to);
    readBlocks(*source, [&](std::string_view block) { target.write(block); });
    target.commit();
}

void copyFile(std::string_view from, Sink& to) {
    const std::unique_ptr<InputFile> source = openRegular(from);
    readBlocks(*source, [&](std::string_view block) { to.write(block); });
}

std::string readFile(std::string_view path, std::uint64_t limit) {
    const std::unique_ptr<InputFile> file = openRegular(path);
    std::string content;
    readBlocks(*file, [&](std::string_view block) {
        if (content.size() + block.size() > limit) {
            throw fileError(errorNumber::overflow, path, NotDone::read);
        }
        content.append(block);
    });
    return content;
}

std::string readStart(std::string_view path, std::size_t count) {
    const std::unique_ptr<InputFile> file = openRegular(path);
    std::string start(count, '\0');
    std::size_t length = 0;
    while (const std::size_t more = file->read(std::span(start).subspan(length))) {
        length += more;
    }
    start.resize(length);
    return start;
}

void replaceFile(std::string_view path, std::string_view content, NewFile newFile) {
    Replacement target(path, newFile);
    target.write(content);
    target.commit();
}

BufferedSink::BufferedSink(std::unique_ptr<OutputFile> file) : file_(std::move(file)) {
    buffer_.reserve(blockSize);
}

BufferedSink::~BufferedSink() = default;

void BufferedSink::write(std::string_view text) {
    if (buffer_.size() + text.size() > blockSize) {
        flush();
        if (text.size() >= blockSize) {
            file_->write(text);
            return;
        }
    }
    buffer_.append(text);
}

void BufferedSink::flush() {
    try {
        file_->write(buffer_);
    } catch (...) {
        buffer_.clear(); // keeps a destructor from writing it again
        throw;
    }
    buffer_.clear();
}

void BufferedSink::finish() {
    flush();
    file_->finish();
}

FileSink::FileSink(std::string_view path) : BufferedSink(openEmptied(path)) {}

FileSink::~FileSink() {
    try {
        flush();
    } catch (...) { // the writer has already failed and reported why
    }
}

Replacement::Replacement(std::string_view path, NewFile newFile)
    : BufferedSink(openReplacement(path, newFile)) {}

std::string replacementName(std::string_view targetName, int number) {
    constexpr std::uint64_t offset = 0xCBF29CE484222325; // FNV-1a's
    constexpr std::uint64_t prime = 0x100000001B3;
    std::uint64_t hash = offset;
    for (const char c : namesIgnoreCase() ? lowerCase(targetName) : std::string(targetName)) {
        hash = (hash ^ static_cast<unsigned char>(c)) * prime;
    }
    std::string digits;
    for (int shift = 60; shift >= 0; shift -= 4) {
        digits += "0123456789abcdef"[hash >> shift & 0xF];
    }
    return ".spannory-" + digits + "-" + std::to_string(number) + ".tmp";
}

RuntimeError noRoomBeside(std::string_view path) {
    return fileError(errorNumber::permissionDenied, "Permission is denied to make a file in its folder", path,
                     NotDone::written);
}

RuntimeError linkInsteadOfFile(std::string_view path, NotDone notDone) {
    return fileError(errorNumber::pathFileAccess, "It is a link", path, notDone);
}

RuntimeError strangersFile(std::string_view path, NotDone notDone) {
    return fileError(errorNumber::pathFileAccess, "It is another user's", path, notDone);
}

RuntimeError noRegularFile(std::string_view path, bool isFolder, NotDone notDone) {
    return fileError(errorNumber::pathFileAccess, isFolder ? "It is a folder" : "It is no ordinary file",
                     path, notDone);
}

} // namespace platform
