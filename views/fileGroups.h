#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// Files added up by two columns of their rows: the groups are those of GROUP BY, for which the database would
// sort all rows. NULL is nullopt, and a group of its own.
class FileGroups {
public:
    struct Key {
        std::optional<std::string> extension; // told apart by case
        std::optional<std::string> name;      // of an owner or a type; compared as names of files are
    };
    struct KeyView {
        std::optional<std::string_view> extension;
        std::optional<std::string_view> name;

        KeyView(std::optional<std::string_view> ofExtension, std::optional<std::string_view> ofName)
            : extension(ofExtension), name(ofName) {}
        KeyView(const Key& key) : extension(key.extension), name(key.name) {} // NOLINT: for searching
    };
    struct Total {
        double size = 0;
        std::int64_t files = 0;
    };

    // `counts`: whether the file is one more, or only adds its size.
    void add(const KeyView& key, double size, bool counts);

    // Calls `take` for each group, ascending by extension and then by name; NULL comes first.
    void forEach(const std::function<void(const Key& key, const Total& total)>& take) const;

private:
    struct Hash {
        using is_transparent = void;
        [[nodiscard]] std::size_t operator()(const KeyView& key) const;
    };
    struct Equal {
        using is_transparent = void;
        [[nodiscard]] bool operator()(const KeyView& left, const KeyView& right) const;
    };

    std::unordered_map<Key, Total, Hash, Equal> totals_;
};
