#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

// What could not be read.
struct Unreadable {
    std::size_t folders = 0;
    std::size_t files = 0;

    [[nodiscard]] bool isAny() const noexcept { return folders + files > 0; }
};

// What makes figures differ from the truth: folders whose contents and files whose sizes are missing in them,
// each with the reason, and files whose sizes are wrapped. Paths of folders are internal paths with a
// trailing
// "\".
class FigureGaps {
public:
    enum class Kind { unreadable, otherVolume };
    struct Skipped {
        Kind kind = Kind::unreadable;
        std::string reason; // for people: "Permission denied"
    };
    struct File {
        std::string name; // internal form
        std::string reason;
    };
    template <class Value>
    using ByFolder = std::map<std::string, Value, std::less<>>;

    void add(std::string_view path, Kind kind, std::string_view reason);

    // A file directly in the folder was recorded with its name alone.
    void addFile(std::string_view path, std::string_view name, std::string_view reason);

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

    // The unreadable folders that are the given one or lie below it, and the unreadable files in it, at any
    // depth.
    [[nodiscard]] Unreadable unreadableIn(std::string_view path) const;

    // The number of files with wrapped sizes in the folder, at any depth.
    [[nodiscard]] std::int64_t wrappedIn(std::string_view path) const;

    // All folders that were skipped, and all unreadable files by the folder they are in.
    [[nodiscard]] const ByFolder<Skipped>& folders() const noexcept { return folders_; }
    [[nodiscard]] const ByFolder<std::vector<File>>& files() const noexcept { return files_; }

private:
    ByFolder<Skipped> folders_;
    ByFolder<std::vector<File>> files_;
    ByFolder<std::int64_t> wrapped_; // by the folder they are in
};

// "12 folders and 1 file could not be read." Without those of which there are none.
[[nodiscard]] std::string unreadableText(const Unreadable& unreadable);
