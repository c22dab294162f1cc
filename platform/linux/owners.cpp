#include "platform/owners.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/environment.h"

namespace platform {

namespace {

constexpr std::string_view unknownOwner = "unknown";

// The account's name, with the host name as its domain, as on a stand-alone machine.
std::string nameOf(std::uint32_t owner) {
    std::vector<char> buffer(1024);
    passwd account{};
    passwd* found = nullptr;
    int result = 0;
    while ((result = ::getpwuid_r(owner, &account, buffer.data(), buffer.size(), &found)) == ERANGE) {
        buffer.resize(buffer.size() * 2);
    }
    if (result != 0 || found == nullptr) {
        return std::string(unknownOwner);
    }
    return hostName() + "\\" + account.pw_name;
}

} // namespace

struct OwnerNames::Implementation {
    std::unordered_map<std::uint32_t, std::string> names;
    std::uint32_t lastOwner = 0;
    const std::string* lastName = nullptr;
};

OwnerNames::OwnerNames() : implementation_(std::make_unique<Implementation>()) {}
OwnerNames::~OwnerNames() = default;

std::string_view OwnerNames::ownerOf(std::string_view /*internalPath*/, const EntryFacts& facts) {
    if (!facts.known) {
        return unknownOwner;
    }
    Implementation& self = *implementation_;
    if (self.lastName == nullptr || self.lastOwner != facts.owner) {
        const auto [entry, isNew] = self.names.try_emplace(facts.owner);
        if (isNew) {
            entry->second = nameOf(facts.owner);
        }
        self.lastOwner = facts.owner;
        self.lastName = &entry->second;
    }
    return *self.lastName;
}

} // namespace platform
