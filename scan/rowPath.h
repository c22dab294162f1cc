#pragma once

#include <string>
#include <string_view>

#include "base/clsFile.h"

// The columns of a row that come from its path. What the items of one folder share is derived once, as they
// mostly come one after the other; it also stays in its place as long as it is the same, or as long.
class RowPath {
public:
    // An internal path; a folder's ends in "\". It must live as long as the views. Throws as clsFile does.
    void set(std::string_view path);

    [[nodiscard]] bool isFolder() const noexcept { return isFolder_; }
    // Empty for a name without a folder, which has no drive.
    [[nodiscard]] std::string_view withoutDrive() const noexcept {
        return drive_.empty() ? std::string_view() : path_.substr(drive_.size());
    }
    [[nodiscard]] std::string_view drive() const noexcept { return drive_; }
    // The folder above; `folder` differs from it for a name without a folder.
    [[nodiscard]] std::string_view parent() const noexcept { return parent_; }
    [[nodiscard]] std::string_view folder() const noexcept { return folder_; }
    // A folder's ends in "\".
    [[nodiscard]] std::string_view fileName() const noexcept { return fileName_; }
    [[nodiscard]] std::string_view extension() const noexcept { return extension_; }

private:
    void deriveAll();

    std::string_view path_;
    bool isFolder_ = false;
    std::string_view drive_;
    std::string_view folder_;
    std::string_view fileName_;
    std::string_view extension_;
    std::string parent_;
    bool isShared_ = false; // parent_, drive_ and folder_ are those of every item in the folder
    clsFile file_;
};
