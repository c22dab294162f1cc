#include "platform/owners.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <vector>

namespace platform {

namespace {

constexpr std::string_view unknownOwner = "unknown";

std::string hostName() {
    std::array<char, HOST_NAME_MAX + 1> name{};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

// The account's name with the host as its domain, as a stand-alone machine has it.
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

std::string_view OwnerNames::ownerOf(std::string_view /*internalPath*/, const EntryFacts& facts) {
    if (!facts.known) {
        return unknownOwner;
    }
    if (lastName_ == nullptr || lastOwner_ != facts.owner) {
        const auto [entry, isNew] = names_.try_emplace(facts.owner);
        if (isNew) {
            entry->second = nameOf(facts.owner);
        }
        lastOwner_ = facts.owner;
        lastName_ = &entry->second;
    }
    return *lastName_;
}

} // namespace platform
