#include "export/keptScans.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>
#include <optional>
#include <tuple>
#include <utility>

#include "base/dateFormat.h"
#include "base/modGlobal.h"
#include "db/ownDatabase.h"
#include "platform/clock.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/locale.h"
#include "platform/paths.h"
#include "scan/scanFile.h"

namespace modExport {

namespace {

constexpr std::string_view extension = ".mdb";
constexpr std::string_view timeForm = "00000000T000000Z"; // 0 for any digit

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// What can be read of it, in letters that every system takes.
std::string slug(std::string_view text, std::size_t most) {
    std::string result;
    for (const char c : text) {
        const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || isDigit(c);
        if (isLetter) {
            result += c;
        } else if (!result.empty() && !result.ends_with('-')) {
            result += '-';
        }
    }
    result.resize(std::min(result.size(), most));
    while (result.ends_with('-')) {
        result.pop_back();
    }
    return result;
}

// The same on every machine and in every version (FNV-1a), in hexadecimal digits.
std::string hashOf(std::string_view text) {
    constexpr std::uint64_t start = 0xcbf29ce484222325;
    constexpr std::uint64_t factor = 0x100000001b3;
    constexpr std::size_t digits = 12;
    std::uint64_t hash = start;
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * factor;
    }
    std::array<char, 16> text16{};
    const auto end = std::to_chars(text16.data(), text16.data() + text16.size(), hash, 16);
    std::string result(text16.data(), end.ptr);
    result.insert(0, text16.size() - result.size(), '0');
    return result.substr(0, digits);
}

// "2026-11-22 03:15:00" without what separates the numbers.
std::string timeText(platform::Seconds moment) {
    std::string text = modFormat::utcText(moment);
    std::erase_if(text, [](char c) { return c == '-' || c == ':'; });
    std::replace(text.begin(), text.end(), ' ', 'T');
    return text + "Z";
}

std::string pathIn(const std::string& folder, std::string_view name) {
    return std::string(folder).append(name);
}

// A name that nobody has, held until the file is there.
struct FreeName {
    std::string path;
    std::unique_ptr<platform::FileLock> lock;
};

FreeName freeName(const std::string& folder, const std::string& start) {
    for (int number = 1;; ++number) {
        std::string path = pathIn(folder, start + (number == 1 ? "" : "-" + std::to_string(number)));
        path += extension;
        if (platform::somethingExists(path)) {
            continue;
        }
        auto lock = platform::FileLock::tryAcquire(path + ".lock");
        if (lock == nullptr) {
            continue;
        }
        lock->removeAtEnd();
        if (!platform::somethingExists(path)) {
            return {std::move(path), std::move(lock)};
        }
    }
}

// By moment; in the same second, the number behind the time is the longer the later.
struct Kept {
    platform::Seconds moment = 0;
    std::size_t length = 0;
    std::string path;

    bool operator<(const Kept& other) const {
        return std::tie(moment, length, path) < std::tie(other.moment, other.length, other.path);
    }
};

// Of the scan of the folder by this machine that the file says it is; nothing if it says otherwise.
std::optional<platform::Seconds> momentOf(const std::string& path, std::string_view host,
                                          std::string_view key) {
    const ScanFile file(path);
    const modScans::Scan* const scan = modScans::ofFolder(file.scans(), key);
    const bool isSame = scan != nullptr && platform::sameName(scan->path, key) && scan->host == host;
    return isSame ? std::optional(file.finished(key)) : std::nullopt;
}

} // namespace

std::string keptPrefix(std::string_view host, std::string_view key) {
    constexpr std::size_t longestHost = 30;
    constexpr std::size_t longestFolder = 60;
    std::string path(key);
    if (platform::namesIgnoreCase()) {
        path = platform::lowerCase(path);
    }
    std::string name = slug(host, longestHost);
    name.insert(0, name.empty() ? "host" : "");
    const std::string folder = slug(platform::displayPath(key), longestFolder);
    name.append("-").append(folder.empty() ? "root" : folder);
    return name + "-" + hashOf(std::string(host).append(1, '\0').append(path)) + "-";
}

bool isKeptName(std::string_view name, std::string_view prefix) {
    if (!name.starts_with(prefix) || !name.ends_with(extension)) {
        return false;
    }
    name.remove_prefix(prefix.size());
    if (name.size() < timeForm.size() + extension.size()) {
        return false;
    }
    name.remove_suffix(extension.size());
    const bool hasTime = std::equal(timeForm.begin(), timeForm.end(), name.begin(),
                                    [](char form, char c) { return form == '0' ? isDigit(c) : form == c; });
    name.remove_prefix(timeForm.size());
    const bool hasNumber =
        name.size() > 1 && name.front() == '-' && std::all_of(name.begin() + 1, name.end(), isDigit);
    return hasTime && (name.empty() || hasNumber);
}

KeptScans::KeptScans(std::string_view folder)
    : folder_(modGlobal::addBackslash(platform::toInternal(folder))) {}

void KeptScans::checkFolder() const {
    platform::makeFolders(folder_);
    const FreeName name = freeName(folder_, "check");
    const platform::Replacement attempt(name.path);
}

std::string KeptScans::keep(WorkingDatabase& working, const SavedPart& part, bool isAll,
                            clsUserInterface& userInterface) const {
    platform::makeFolders(folder_);
    const FreeName name =
        freeName(folder_, keptPrefix(platform::hostName(), part.folder) + timeText(platform::now()));
    const auto failure = isAll && !part.foldersOnly ? copyDatabase(working, name.path, userInterface)
                                                    : copyPart(working, part, name.path, userInterface);
    if (failure) {
        throw *failure;
    }
    return name.path;
}

std::vector<std::string> KeptScans::removeOld(std::string_view key, std::size_t last) const {
    const std::string host = platform::hostName();
    const std::string prefix = keptPrefix(host, key);
    std::vector<Kept> kept;
    std::vector<std::string> unread;
    platform::FolderReader reader;
    platform::FolderListing entries;
    if (!reader.read(folder_, entries, true)) {
        return {reader.failure()};
    }
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const std::string path = pathIn(folder_, entries[i].name);
        if (!isKeptName(entries[i].name, prefix) || platform::isLink(path) ||
            modDatabase::kindOf(path) != modDatabase::FileKind::savedScan) {
            continue;
        }
        try {
            if (const auto moment = momentOf(path, host, key)) {
                kept.push_back({*moment, path.size(), path});
            }
        } catch (const RuntimeError& error) {
            unread.emplace_back(error.what());
        }
    }
    std::sort(kept.begin(), kept.end());
    const std::size_t surplus = kept.size() - std::min(kept.size(), last);
    for (std::size_t i = 0; i < surplus; ++i) {
        platform::deleteFile(kept[i].path);
    }
    return unread;
}

} // namespace modExport
