#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/systemError.h"

namespace platform {

std::string whyUnknown(const EntryFacts& facts) {
    return systemMessage(facts.error);
}

FolderEntry FolderListing::operator[](std::size_t index) const {
    const Item& item = items_[index];
    return {static_cast<const EntryFacts&>(item),
            std::string_view(names_).substr(item.nameStart, item.nameLength)};
}

void FolderListing::append(const EntryFacts& facts, std::string_view nativeName) {
    Item item;
    static_cast<EntryFacts&>(item) = facts;
    item.nameStart = names_.size();
    appendInternalName(names_, nativeName);
    item.nameLength = names_.size() - item.nameStart;
    items_.push_back(item);
}

void FolderListing::clear() noexcept {
    constexpr std::size_t worthKeeping = 1 << 20;
    if (names_.capacity() > worthKeeping) {
        std::string().swap(names_);
        std::vector<Item>().swap(items_);
    }
    names_.clear();
    items_.clear();
}

} // namespace platform
