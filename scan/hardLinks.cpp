#include "scan/hardLinks.h"

std::int64_t HardLinks::sizeOnDisk(std::string_view path, const platform::EntryFacts& facts, std::int64_t row,
                                   const std::function<bool(std::int64_t row)>& isThere) {
    if (facts.number == 0) {
        return facts.sizeOnDisk;
    }
    const auto [counted, isNew] = counted_.try_emplace({facts.volume, facts.number}, row);
    if (!isNew && isThere(counted->second) && platform::hasFurtherNames(path)) {
        return 0;
    }
    counted->second = row;
    return facts.sizeOnDisk;
}
