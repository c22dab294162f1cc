#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "app/clsUserInterface.h"

// Lists the immediate subfolders of a folder, for the folder tree. May be used again and again.
class clsFileSearch {
public:
    // The user interface handles pending events once per listing; it is not owned.
    explicit clsFileSearch(clsUserInterface& userInterface) : userInterface_(userInterface) { initialize(); }

    // After getFolders: the subfolders' full paths joined by "|" in the system's order.
    [[nodiscard]] const std::string& folders() const noexcept { return folders_; }
    void setFolders(std::string_view folders) { folders_ = folders; }

    // Of no use to the program.
    [[nodiscard]] const std::string& owner() const noexcept { return owner_; }
    void setOwner(std::string_view owner) { owner_ = owner; }

    // The folder to list. A "\" is appended unless the text ends in one; deliberately also to the empty text.
    void setStartstr(std::string_view folder);

    // Stops a listing at its next entry, or before it begins.
    [[nodiscard]] bool Cancel() const noexcept { return cancel_; }
    void setCancel(bool cancel) noexcept { cancel_ = cancel; }

    // Makes the start folder empty.
    void initialize() { startFolder_.clear(); }

    // Lists the start folder. One that cannot be read has no subfolders; nothing is reported. Throws 6 when
    // more than 2,147,483,647 folders were found by this object.
    void getFolders();

    // The text before the first NUL.
    [[nodiscard]] static std::string_view TrimNull(std::string_view text);

private:
    clsUserInterface& userInterface_;
    std::string startFolder_;
    std::string folders_;
    std::string owner_;
    std::int32_t folderCount_ = 0;
    bool cancel_ = false;
};
