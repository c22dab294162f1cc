#include "scan/clsFileSearch.h"

#include <limits>

#include "platform/folders.h"
#include "platform/runtimeError.h"

void clsFileSearch::setStartstr(std::string_view folder) {
    startFolder_ = folder;
    if (!startFolder_.ends_with('\\')) {
        startFolder_ += '\\';
    }
}

void clsFileSearch::getFolders() {
    folders_.clear();
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
        if (!folders_.empty()) {
            folders_ += '|';
        }
        folders_.append(startFolder_).append(entry.name);
    }
}

std::string_view clsFileSearch::TrimNull(std::string_view text) {
    return text.substr(0, text.find('\0'));
}
