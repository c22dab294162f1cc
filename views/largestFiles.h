#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// Keeps the largest of the files that it is given; of equal ones those that were recorded first.
class LargestFiles {
public:
    struct Entry {
        double size = 0;
        std::int64_t row = 0; // its idx
        std::string modified;
    };

    explicit LargestFiles(std::size_t most) : most_(most) {}

    // False for a file that is smaller than all that are kept; the others are to be added.
    [[nodiscard]] bool accepts(double size) const {
        return entries_.size() < most_ || size >= entries_.front().size;
    }
    void add(Entry entry);

    // To be called when all have been added.
    [[nodiscard]] const std::vector<Entry>& largestFirst();

private:
    std::size_t most_;
    std::vector<Entry> entries_; // a heap with the smallest one on top, until they are sorted
    bool sorted_ = false;
};
