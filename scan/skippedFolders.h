#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

// What makes figures differ from the truth: the folders whose contents are missing in them, and why, and the
// files whose sizes are wrapped. Paths are internal paths with a trailing "\".
class SkippedFolders {
public:
    enum class Kind { unreadable, otherVolume };
    struct Skipped {
        Kind kind = Kind::unreadable;
        std::string reason; // for people: "Permission denied"
    };

    void add(std::string_view path, Kind kind, std::string_view reason);

    // A file directly in the folder was recorded with the low 32 bits of its size.
    void addWrapped(std::string_view path);

    // Call these when the folder is read again, when its rows and those directly in it are removed, and when
    // all rows below it are removed, too.
    void forget(std::string_view path);
    void forgetWithSubfolders(std::string_view path);
    void forgetWhole(std::string_view path);
    void clear() noexcept;

    // Null if the folder was not skipped.
    [[nodiscard]] const Skipped* find(std::string_view path) const;

    // The number of unreadable folders that are the given one or lie below it.
    [[nodiscard]] std::size_t unreadableIn(std::string_view path) const;

    // The number of files with wrapped sizes in the folder, at any depth.
    [[nodiscard]] std::int64_t wrappedIn(std::string_view path) const;

    // All folders that were skipped, by path.
    [[nodiscard]] const std::map<std::string, Skipped, std::less<>>& all() const noexcept { return folders_; }

private:
    std::map<std::string, Skipped, std::less<>> folders_;
    std::map<std::string, std::int64_t, std::less<>> wrapped_; // by the folder they are in
};

// "12 folders could not be read."
[[nodiscard]] std::string unreadableText(std::size_t count);
