#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// One path, and every name derived from it by plain arithmetic on "\" and ".". Never touches the file system.
// Only "\" separates; the text is kept exactly as given.
//
// Results are views that stay valid until the path is set again. A property throws RuntimeError 6 for a path
// of more than 32,767 characters, and 5 where its arithmetic asks for a negative length; neither is caught
// here, on purpose.
class clsFile {
public:
    clsFile() = default;
    explicit clsFile(std::string_view path) : fullPath_(path) {}

    [[nodiscard]] const std::string& fullPath() const noexcept { return fullPath_; }
    void setFullPath(std::string_view path) { fullPath_.assign(path); }

    // After the last "\"; deliberately empty for a bare name.
    [[nodiscard]] std::string_view FileName() const;
    // The last component, of the given path or, when that is empty, of fullPath; one trailing "\" is dropped.
    [[nodiscard]] std::string_view lastFolder(std::string_view path = {}) const;
    // Up to and with the last "\".
    [[nodiscard]] std::string_view folder() const;
    // After the last dot of the last component, or "(no extension)". Deliberately empty for "file.".
    [[nodiscard]] std::string_view fileExtension() const;
    // The last component without its extension. Throws 5 for a path with neither "\" nor ".".
    [[nodiscard]] std::string_view fileNameWithoutExtension() const;
    // The folder above the last component, ending in "\" (but `C:\` gives `C:`). Throws 5 for the empty path.
    [[nodiscard]] std::string_view parentFolder() const;
    // Behind the drive part.
    [[nodiscard]] std::string_view fullPathNoDrive() const;
    // `C:\` or `\\server\share\`; empty when the path has no "\".
    [[nodiscard]] std::string_view drive() const;

private:
    [[nodiscard]] std::string_view checked() const;
    [[nodiscard]] std::size_t driveEnd() const;

    std::string fullPath_;
    mutable std::string parent_; // of a path whose parent is no part of it
};
