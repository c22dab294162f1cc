#include "base/clsFile.h"

#include "base/modGlobal.h"
#include "platform/runtimeError.h"
#include "platform/text.h"

namespace {

constexpr std::size_t mostCharacters = 32767;
constexpr std::string_view noExtension = "(no extension)";

// A position counted from 1; 0 means not found. Positions are those of bytes, which does not affect the
// results because both separators are single bytes.
std::size_t lastPosition(std::string_view text, char c) {
    return text.rfind(c) + 1;
}
std::size_t position(std::string_view text, char c, std::size_t start) {
    return start > text.size() ? 0 : text.find(c, start - 1) + 1;
}

// The text without its last character, which may have several bytes.
std::string_view withoutLastCharacter(std::string_view text) {
    if (text.empty()) {
        throw RuntimeError(errorNumber::invalidCall);
    }
    return platform::firstCharacters(text, platform::characterCount(text) - 1);
}

} // namespace

std::string_view clsFile::checked() const {
    if (fullPath_.size() > mostCharacters && platform::characterCount(fullPath_) > mostCharacters) {
        throw RuntimeError::about(errorNumber::overflow, "the path is longer than 32767 characters");
    }
    return fullPath_;
}

std::string_view clsFile::FileName() const {
    const std::string_view path = checked();
    const std::size_t slash = lastPosition(path, '\\');
    return slash < 1 ? std::string_view() : path.substr(slash);
}

std::string_view clsFile::lastFolder(std::string_view path) const {
    std::string_view text = path.empty() ? checked() : path;
    if (text.ends_with('\\')) {
        text.remove_suffix(1);
    }
    const std::size_t slash = lastPosition(text, '\\');
    return slash < 1 ? std::string_view() : text.substr(slash);
}

std::string_view clsFile::folder() const {
    const std::string_view path = checked();
    return path.substr(0, lastPosition(path, '\\'));
}

std::string_view clsFile::fileExtension() const {
    const std::string_view path = checked();
    return extensionOf(path.substr(lastPosition(path, '\\')));
}

std::string_view clsFile::extensionOf(std::string_view name) {
    const std::size_t dot = lastPosition(name, '.');
    return dot < 1 ? noExtension : name.substr(dot);
}

std::string_view clsFile::fileNameWithoutExtension() const {
    const std::string_view path = checked();
    const std::size_t slash = lastPosition(path, '\\');
    const std::size_t dot = lastPosition(path, '.');
    if (dot < slash) {
        return path.substr(slash);
    }
    if (dot == 0) {
        throw RuntimeError(errorNumber::invalidCall);
    }
    return path.substr(slash, dot - slash - 1);
}

std::string_view clsFile::parentFolder() const {
    const std::string_view path = checked();
    const std::string_view name = lastFolder();
    if (path.ends_with('\\')) {
        return path.substr(0, path.size() - name.size() - 1);
    }
    const std::string_view rest = path.substr(0, path.size() - name.size());
    if (rest.ends_with('\\')) {
        return rest;
    }
    parent_ = modGlobal::addBackslash(withoutLastCharacter(rest)); // a name without a folder
    return parent_;
}

std::size_t clsFile::driveEnd() const {
    const std::string_view path = checked();
    if (!path.starts_with("\\\\")) {
        return position(path, '\\', 1);
    }
    const std::size_t server = position(path, '\\', 3);
    const std::size_t share = server > 0 ? position(path, '\\', server + 1) : 0;
    return share > 0 ? share : server;
}

std::string_view clsFile::fullPathNoDrive() const {
    const std::size_t end = driveEnd();
    return end > 0 ? std::string_view(fullPath_).substr(end) : std::string_view();
}

std::string_view clsFile::drive() const {
    return std::string_view(fullPath_).substr(0, driveEnd());
}
