#include "scan/figureGaps.h"

#include <algorithm>
#include <iterator>

namespace {

template <class Map>
void forgetWithSubfoldersIn(Map& map, std::string_view path) {
    for (auto folder = map.lower_bound(path); folder != map.end() && folder->first.starts_with(path);) {
        const std::size_t nameEnd = std::min(folder->first.find('\\', path.size()), folder->first.size() - 1);
        folder = nameEnd + 1 == folder->first.size() ? map.erase(folder) : std::next(folder);
    }
}

// Behind all that lie in the folder.
template <class Map>
auto endOf(Map& map, std::string_view path) {
    auto last = map.lower_bound(path);
    while (last != map.end() && last->first.starts_with(path)) {
        ++last;
    }
    return last;
}

template <class Map>
void forgetIn(Map& map, std::string_view path) {
    if (const auto found = map.find(path); found != map.end()) {
        map.erase(found);
    }
}

// "1 folder", "12 folders"; empty for none.
std::string counted(std::size_t count, const char* one, const char* many) {
    return count == 0 ? std::string() : std::to_string(count) + (count == 1 ? one : many);
}

template <class Map, class Count>
auto total(const Map& map, std::string_view path, Count count) {
    decltype(count(map.begin()->second)) sum = 0;
    const auto end = endOf(map, path);
    for (auto folder = map.lower_bound(path); folder != end; ++folder) {
        sum += count(folder->second);
    }
    return sum;
}

} // namespace

void FigureGaps::add(std::string_view path, Kind kind, std::string_view reason) {
    folders_.insert_or_assign(std::string(path), Skipped{kind, std::string(reason)});
}

void FigureGaps::addFile(std::string_view path, std::string_view name, std::string_view reason) {
    const auto found = files_.find(path);
    (found == files_.end() ? files_[std::string(path)] : found->second)
        .push_back({std::string(name), std::string(reason)});
}

void FigureGaps::addWrapped(std::string_view path) {
    const auto found = wrapped_.find(path);
    ++(found == wrapped_.end() ? wrapped_[std::string(path)] : found->second);
}

void FigureGaps::forget(std::string_view path) {
    forgetIn(folders_, path);
    forgetIn(files_, path);
    forgetIn(wrapped_, path);
}

void FigureGaps::forgetWithSubfolders(std::string_view path) {
    forgetWithSubfoldersIn(folders_, path);
    forgetIn(files_, path); // those of its subfolders keep their rows
    forgetIn(wrapped_, path);
}

void FigureGaps::forgetWhole(std::string_view path) {
    folders_.erase(folders_.lower_bound(path), endOf(folders_, path));
    files_.erase(files_.lower_bound(path), endOf(files_, path));
    wrapped_.erase(wrapped_.lower_bound(path), endOf(wrapped_, path));
}

void FigureGaps::clear() noexcept {
    folders_.clear();
    files_.clear();
    wrapped_.clear();
}

const FigureGaps::Skipped* FigureGaps::find(std::string_view path) const {
    const auto found = folders_.find(path);
    return found == folders_.end() ? nullptr : &found->second;
}

Unreadable FigureGaps::unreadableIn(std::string_view path) const {
    return {
        total(folders_, path,
              [](const Skipped& folder) -> std::size_t { return folder.kind == Kind::unreadable ? 1 : 0; }),
        total(files_, path, [](const std::vector<File>& files) { return files.size(); })};
}

std::int64_t FigureGaps::wrappedIn(std::string_view path) const {
    return total(wrapped_, path, [](std::int64_t files) { return files; });
}

std::string unreadableText(const Unreadable& unreadable) {
    const std::string folders = counted(unreadable.folders, " folder", " folders");
    const std::string files = counted(unreadable.files, " file", " files");
    return folders + (folders.empty() || files.empty() ? "" : " and ") + files + " could not be read.";
}
