#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <unordered_map>

#include "platform/folders.h"

// The files with several names (hard links) that have been recorded, each with the row of the name that
// counts on the disk. The other names of the file count 0 there as long as that row exists.
class HardLinks {
public:
    // What the name takes on the disk, in bytes. `row` is the number that it will be recorded by; `isThere`
    // tells whether there is a row with a number. `path` is an internal path.
    [[nodiscard]] std::int64_t sizeOnDisk(std::string_view path, const platform::EntryFacts& facts,
                                          std::int64_t row,
                                          const std::function<bool(std::int64_t row)>& isThere);

    // Call it after all rows have been replaced by others.
    void forget() noexcept { counted_.clear(); }

private:
    struct File {
        std::uint64_t volume;
        std::uint64_t number;
        [[nodiscard]] bool operator==(const File&) const = default;
    };
    struct Hash {
        [[nodiscard]] std::size_t operator()(const File& file) const noexcept {
            return std::hash<std::uint64_t>()(file.number ^ (file.volume << 40U));
        }
    };
    std::unordered_map<File, std::int64_t, Hash> counted_;
};
