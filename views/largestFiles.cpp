#include "views/largestFiles.h"

#include <algorithm>
#include <utility>

namespace {

bool goesBefore(const LargestFiles::Entry& left, const LargestFiles::Entry& right) {
    return left.size != right.size ? left.size > right.size : left.row < right.row;
}

} // namespace

void LargestFiles::add(Entry entry) {
    if (most_ == 0 || (entries_.size() == most_ && !goesBefore(entry, entries_.front()))) {
        return;
    }
    if (entries_.size() == most_) {
        std::pop_heap(entries_.begin(), entries_.end(), goesBefore);
        entries_.pop_back();
    }
    entries_.push_back(std::move(entry));
    std::push_heap(entries_.begin(), entries_.end(), goesBefore);
}

const std::vector<LargestFiles::Entry>& LargestFiles::largestFirst() {
    if (!std::exchange(sorted_, true)) {
        std::sort(entries_.begin(), entries_.end(), goesBefore);
    }
    return entries_;
}
