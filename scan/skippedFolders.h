#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

// The folders whose contents are missing in the figures, and why. Paths are internal paths with a trailing
// "\".
class SkippedFolders {
public:
    enum class Kind { unreadable, otherVolume };
    struct Skipped {
        Kind kind = Kind::unreadable;
        std::string reason; // for people: "Permission denied"
    };

    void add(std::string_view path, Kind kind, std::string_view reason);

    // Call these when the folder is read again, when its rows and those directly in it are removed, and when
    // all rows below it are removed, too.
    void forget(std::string_view path);
    void forgetWithSubfolders(std::string_view path);
    void forgetWhole(std::string_view path);
    void clear() noexcept { folders_.clear(); }

    // Null if the folder was not skipped.
    [[nodiscard]] const Skipped* find(std::string_view path) const;

    // The number of unreadable folders that are the given one or lie below it.
    [[nodiscard]] std::size_t unreadableIn(std::string_view path) const;

    // All of them, by path.
    [[nodiscard]] const std::map<std::string, Skipped, std::less<>>& all() const noexcept { return folders_; }

private:
    std::map<std::string, Skipped, std::less<>> folders_;
};

// "12 folders could not be read."
[[nodiscard]] std::string unreadableText(std::size_t count);
