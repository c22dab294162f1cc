#pragma once

#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

#include "db/dao.h"
#include "platform/locale.h"

// Updates the rows of the folders above a folder that is scanned again: their sizes, and their stamps,
// because a folder may only have a stamp while everything below it has been scanned.
class FoldersAbove {
public:
    // Call it before rows of the folder (an internal path with a trailing "\") change, while the sizes of the
    // folders above are those of what is in them.
    void prepare(Database& database, std::string_view folder);

    // Call it after rows of the folder have changed; `isComplete`: it was scanned to its end.
    void follow(Database& database, std::string_view folder, bool isComplete);

    // The folder itself is scanned again, so its earlier stamp is void.
    void scannedAnew(std::string_view folder) {
        if (!held_.empty() || !ownSizes_.empty()) {
            const std::string key(folder);
            held_.erase(key);
            ownSizes_.erase(key);
        }
    }

    // Call it after all rows have been replaced by others.
    void forget() noexcept;

private:
    void holdStamp(Database& database, const std::string& folder, const std::string& stamp);
    void giveBackStamp(Database& database, const std::string& folder);

    // Incomplete folders below others that were complete; the stamps of those are kept until everything below
    // them is complete.
    std::set<std::string> unfinished_;
    std::unordered_map<std::string, std::string, platform::NameHash, platform::NameEqual> held_;
    // What folders take on the disk beside the items in them.
    std::unordered_map<std::string, double, platform::NameHash, platform::NameEqual> ownSizes_;
};
