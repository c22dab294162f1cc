#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// One path, and all the names derived from it by plain arithmetic on "\" and ".". Never accesses the file
// system. Only "\" is a separator; the text is kept exactly as given.
//
// Results are views that stay valid until the path is set again. A property throws RuntimeError 6 for a path
// of more than 32,767 characters. Odd on purpose: it throws 5 if its arithmetic would give a negative length.
class clsFile {
public:
    clsFile() = default;
    explicit clsFile(std::string_view path) : fullPath_(path) {}

    [[nodiscard]] const std::string& fullPath() const noexcept { return fullPath_; }
    void setFullPath(std::string_view path) { fullPath_.assign(path); }

    // The text after the last "\". Odd on purpose: empty for a name without a folder.
    [[nodiscard]] std::string_view FileName() const;
    // The last component of the given path, or of fullPath if that is empty; one trailing "\" is dropped.
    [[nodiscard]] std::string_view lastFolder(std::string_view path = {}) const;
    // The text up to and including the last "\".
    [[nodiscard]] std::string_view folder() const;
    // The text after the last dot of the last component, or "(no extension)". Odd on purpose: empty for
    // "file.".
    [[nodiscard]] std::string_view fileExtension() const;
    // The same of a last component alone.
    [[nodiscard]] static std::string_view extensionOf(std::string_view name);
    // The last component without its extension. Throws 5 for a path that has neither "\" nor ".".
    [[nodiscard]] std::string_view fileNameWithoutExtension() const;
    // The folder above the last component, ending in "\". Odd on purpose: `C:\` gives `C:`. Throws 5 for the
    // empty path.
    [[nodiscard]] std::string_view parentFolder() const;
    // The text after the drive part.
    [[nodiscard]] std::string_view fullPathNoDrive() const;
    // `C:\` or `\\server\share\`; empty if the path has no "\".
    [[nodiscard]] std::string_view drive() const;

private:
    [[nodiscard]] std::string_view checked() const;
    [[nodiscard]] std::size_t driveEnd() const;

    std::string fullPath_;
    mutable std::string parent_; // of a path that does not contain its parent
};
