#include "views/fileGroups.h"

#include <algorithm>

#include "platform/locale.h"

namespace {

bool isBefore(const FileGroups::Key& left, const FileGroups::Key& right) {
    if (left.extension != right.extension) {
        return left.extension < right.extension;
    }
    return left.name && right.name ? platform::compareNames(*left.name, *right.name) < 0
                                   : left.name < right.name;
}

} // namespace

std::size_t FileGroups::Hash::operator()(const KeyView& key) const {
    constexpr std::size_t odd = 31;
    return std::hash<std::optional<std::string_view>>()(key.extension) * odd +
           (key.name ? platform::NameHash()(*key.name) : 0);
}

bool FileGroups::Equal::operator()(const KeyView& left, const KeyView& right) const {
    return left.extension == right.extension &&
           (left.name && right.name ? platform::sameName(*left.name, *right.name) : left.name == right.name);
}

void FileGroups::add(const KeyView& key, double size, bool counts) {
    auto found = totals_.find(key);
    if (found == totals_.end()) {
        found =
            totals_
                .emplace(Key{std::optional<std::string>(key.extension), std::optional<std::string>(key.name)},
                         Total())
                .first;
    }
    found->second.size += size;
    found->second.files += counts ? 1 : 0;
}

void FileGroups::forEach(const std::function<void(const Key& key, const Total& total)>& take) const {
    std::vector<const decltype(totals_)::value_type*> sorted;
    sorted.reserve(totals_.size());
    for (const auto& total : totals_) {
        sorted.push_back(&total);
    }
    std::sort(sorted.begin(), sorted.end(),
              [](const auto* left, const auto* right) { return isBefore(left->first, right->first); });
    for (const auto* total : sorted) {
        take(total->first, total->second);
    }
}
