#include "scan/clsFileSearch.h"

#include <algorithm>
#include <limits>

#include "platform/folders.h"
#include "platform/runtimeError.h"

void clsFileSearch::setStartstr(std::string_view folder) {
    startFolder_ = folder;
    if (!startFolder_.ends_with('\\')) {
        startFolder_ += '\\';
    }
}

std::string clsFileSearch::folders() const {
    std::string joined;
    for (const std::string& folder : subfolders_) {
        joined.append(joined.empty() ? "" : "|").append(folder);
    }
    return joined;
}

void clsFileSearch::setFolders(std::string_view folders) {
    subfolders_.clear();
    while (!folders.empty()) {
        const std::string_view folder = folders.substr(0, folders.find('|'));
        subfolders_.emplace_back(folder);
        folders.remove_prefix(std::min(folder.size() + 1, folders.size()));
    }
}

void clsFileSearch::getFolders() {
    subfolders_.clear();
    if (cancel_) {
        return;
    }
    userInterface_.yieldToEvents();
    platform::FolderReader reader;
    platform::FolderListing listing;
    if (!reader.readNames(startFolder_, listing)) {
        return;
    }
    for (std::size_t i = 0; i < listing.size() && !cancel_; ++i) {
        const platform::FolderEntry entry = listing[i];
        if (!entry.isFolder) {
            continue;
        }
        if (folderCount_ == std::numeric_limits<std::int32_t>::max()) {
            throw RuntimeError(errorNumber::overflow);
        }
        ++folderCount_;
        subfolders_.emplace_back(startFolder_).append(entry.name);
    }
}

std::string_view clsFileSearch::TrimNull(std::string_view text) {
    return text.substr(0, text.find('\0'));
}
