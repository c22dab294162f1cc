#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "base/excludes.h"

// Which entries of a walk shall not be counted. May be used by several threads at once.
class ExcludedEntries {
public:
    // `start` is the internal path of the folder with which the walk begins.
    ExcludedEntries(std::shared_ptr<const Excludes> excludes, std::string_view start);

    // An entry by the internal path of its folder, with a trailing "\", and its internal name.
    [[nodiscard]] bool contain(std::string_view folder, std::string_view name) const;
    // The same for a whole path, with or without a trailing "\".
    [[nodiscard]] bool contain(std::string_view path) const { return contain(path, {}); }

private:
    std::shared_ptr<const Excludes> excludes_;
    modExcludes::Drive drive_;
};
