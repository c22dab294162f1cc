#include "scan/excludedEntries.h"

#include <utility>

#include "platform/paths.h"

ExcludedEntries::ExcludedEntries(std::shared_ptr<const Excludes> excludes, std::string_view start)
    : excludes_(std::move(excludes)), drive_(modExcludes::driveOf(start)) {}

bool ExcludedEntries::contain(std::string_view folder, std::string_view name) const {
    thread_local std::string path; // for its memory
    path.clear();
    modExcludes::appendNativePath(path, folder, drive_);
    if (!name.empty()) {
        if (path.back() != platform::displaySeparator) {
            path += platform::displaySeparator;
        }
        platform::appendNativeName(path, name);
    }
    return excludes_->take(path);
}
