#pragma once

#include <memory>
#include <string_view>

#include "platform/folders.h"

namespace platform {

// Names of owning accounts in the form domain, "\", account; "unknown" if the name cannot be found out. Each
// account is looked up once per object, so use one object for a whole scan.
class OwnerNames {
public:
    OwnerNames();
    ~OwnerNames();
    OwnerNames(const OwnerNames&) = delete;
    OwnerNames& operator=(const OwnerNames&) = delete;

    // The owner of the entry at `internalPath`, whose facts are already known. Valid while the object lives.
    [[nodiscard]] std::string_view ownerOf(std::string_view internalPath, const EntryFacts& facts);

private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace platform
