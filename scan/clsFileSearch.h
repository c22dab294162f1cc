#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/clsUserInterface.h"

// Lists the direct subfolders of a folder, for the folder tree. Can be used repeatedly.
class clsFileSearch {
public:
    // The user interface handles pending events once per listing; it is not owned.
    explicit clsFileSearch(clsUserInterface& userInterface) : userInterface_(userInterface) { initialize(); }

    // After getFolders: the subfolders' full paths in the system's order.
    [[nodiscard]] const std::vector<std::string>& subfolders() const noexcept { return subfolders_; }

    // The same, joined by "|"; can be read and written.
    [[nodiscard]] std::string folders() const;
    void setFolders(std::string_view folders);

    // Odd on purpose: nothing uses it.
    [[nodiscard]] const std::string& owner() const noexcept { return owner_; }
    void setOwner(std::string_view owner) { owner_ = owner; }

    // The folder to list. A "\" is appended unless the text ends in one. Odd on purpose: also to an empty
    // text.
    void setStartstr(std::string_view folder);

    // Stops a listing at its next entry, or before it starts.
    [[nodiscard]] bool Cancel() const noexcept { return cancel_; }
    void setCancel(bool cancel) noexcept { cancel_ = cancel; }

    // Clears the start folder.
    void initialize() { startFolder_.clear(); }

    // Lists the start folder. An unreadable folder has no subfolders, and this is not reported. Throws 6 if
    // this object has found more than 2,147,483,647 folders.
    void getFolders();

    // The text before the first NUL.
    [[nodiscard]] static std::string_view TrimNull(std::string_view text);

private:
    clsUserInterface& userInterface_;
    std::string startFolder_;
    std::vector<std::string> subfolders_;
    std::string owner_;
    std::int32_t folderCount_ = 0;
    bool cancel_ = false;
};
