#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "db/dao.h"
#include "platform/folders.h"

// The files with several names (hard links) that have been recorded. One name of each counts on the disk, the
// others count 0 there, whatever is scanned and removed. Errors of the database are thrown.
class HardLinks {
public:
    // A scan begins that gives its rows this number and higher ones.
    void beginScan(std::int64_t firstRow) noexcept { firstRow_ = firstRow; }

    // What the name counts on the disk, in bytes. `path` is an internal path, `row` the number of its row,
    // which is stored next.
    [[nodiscard]] std::int64_t record(Database& database, std::string_view path,
                                      const platform::EntryFacts& facts, std::int64_t row);

    // Call it when rows may have gone, and the totals of folders are right: where the name that counts is
    // among them, another one counts from now on, in its own row and in the folders above.
    void settle(Database& database);

    // Call it after all rows have been replaced by others.
    void forget() noexcept;

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
    struct Counted {
        std::int64_t row;
        std::int64_t bytes;
    };
    struct Further {
        File file;
        std::int64_t row;
    };

    [[nodiscard]] bool countsElsewhere(Database& database, std::int64_t row, std::string_view path) const;

    std::int64_t firstRow_ = 0;
    std::unordered_map<File, Counted, Hash> counted_;
    std::vector<Further> further_;
};
