#include "platform/owners.h"

#include <string>
#include <unordered_map>

#include "platform/win32/accounts.h"
#include "platform/win32/wide.h"

namespace platform {

struct OwnerNames::Implementation {
    AccountReader reader;
    std::unordered_map<std::uint32_t, std::string> names;
};

OwnerNames::OwnerNames() : implementation_(std::make_unique<Implementation>()) {}
OwnerNames::~OwnerNames() = default;

std::string_view OwnerNames::ownerOf(std::string_view internalPath, const EntryFacts& facts) {
    const std::uint32_t account = facts.owner != accountNotAsked
                                      ? facts.owner
                                      : implementation_->reader.accountOf(widePath(internalPath));
    const auto [entry, isNew] = implementation_->names.try_emplace(account);
    if (isNew) {
        entry->second = accountName(account);
    }
    return entry->second;
}

} // namespace platform
