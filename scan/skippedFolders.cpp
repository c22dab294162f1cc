#include "scan/skippedFolders.h"

#include <algorithm>
#include <iterator>

void SkippedFolders::add(std::string_view path, Kind kind, std::string_view reason) {
    folders_.insert_or_assign(std::string(path), Skipped{kind, std::string(reason)});
}

void SkippedFolders::forget(std::string_view path) {
    if (const auto found = folders_.find(path); found != folders_.end()) {
        folders_.erase(found);
    }
}

void SkippedFolders::forgetWithSubfolders(std::string_view path) {
    for (auto folder = folders_.lower_bound(path);
         folder != folders_.end() && folder->first.starts_with(path);) {
        const std::size_t nameEnd = std::min(folder->first.find('\\', path.size()), folder->first.size() - 1);
        folder = nameEnd + 1 == folder->first.size() ? folders_.erase(folder) : std::next(folder);
    }
}

void SkippedFolders::forgetWhole(std::string_view path) {
    const auto first = folders_.lower_bound(path);
    auto last = first;
    while (last != folders_.end() && last->first.starts_with(path)) {
        ++last;
    }
    folders_.erase(first, last);
}

const SkippedFolders::Skipped* SkippedFolders::find(std::string_view path) const {
    const auto found = folders_.find(path);
    return found == folders_.end() ? nullptr : &found->second;
}

std::size_t SkippedFolders::unreadableIn(std::string_view path) const {
    std::size_t count = 0;
    for (auto folder = folders_.lower_bound(path);
         folder != folders_.end() && folder->first.starts_with(path); ++folder) {
        count += folder->second.kind == Kind::unreadable ? 1 : 0;
    }
    return count;
}

std::string unreadableText(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " folder" : " folders") + " could not be read.";
}
