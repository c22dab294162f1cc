#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/folders.h"

namespace platform {

// Names of owning accounts in the form domain, "\", account; "unknown" for whatever cannot be told. A name is
// looked up once per account and object, so an object should live for one scan.
class OwnerNames {
public:
    // The owner of the entry at `internalPath`, whose facts are at hand. Valid while the object lives.
    [[nodiscard]] std::string_view ownerOf(std::string_view internalPath, const EntryFacts& facts);

private:
    std::unordered_map<std::uint32_t, std::string> names_;
    std::uint32_t lastOwner_ = 0;
    const std::string* lastName_ = nullptr;
};

} // namespace platform
