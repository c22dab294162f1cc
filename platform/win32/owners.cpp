#include "platform/owners.h"

#include <windows.h>

#include <string>
#include <unordered_map>
#include <vector>

#include "platform/win32/wide.h"

namespace platform {

namespace {

constexpr std::string_view unknownOwner = "unknown";

std::string nameOf(PSID account) {
    DWORD nameLength = 0;
    DWORD domainLength = 0;
    SID_NAME_USE use{};
    if (::LookupAccountSidW(nullptr, account, nullptr, &nameLength, nullptr, &domainLength, &use) == 0 &&
        ::GetLastError() != ERROR_INSUFFICIENT_BUFFER) {
        return std::string(unknownOwner);
    }
    std::wstring name(nameLength, L'\0');
    std::wstring domain(domainLength, L'\0');
    if (::LookupAccountSidW(nullptr, account, name.data(), &nameLength, domain.data(), &domainLength, &use) ==
        0) {
        return std::string(unknownOwner);
    }
    name.resize(nameLength); // now without the final NUL
    domain.resize(domainLength);
    return narrow(domain) + "\\" + narrow(name);
}

} // namespace

struct OwnerNames::Implementation {
    std::unordered_map<std::string, std::string> names; // by the bytes of the account's identifier
    std::vector<unsigned char> descriptor = std::vector<unsigned char>(1024);

    // Null if not available. Valid until the next call.
    PSID ownerSid(const std::wstring& path) {
        DWORD needed = 0;
        const auto read = [&] {
            return ::GetFileSecurityW(path.c_str(), OWNER_SECURITY_INFORMATION, descriptor.data(),
                                      static_cast<DWORD>(descriptor.size()), &needed) != 0;
        };
        bool done = read();
        if (!done && ::GetLastError() == ERROR_INSUFFICIENT_BUFFER) {
            descriptor.resize(needed);
            done = read();
        }
        PSID account = nullptr;
        BOOL isDefault = FALSE;
        if (!done || ::GetSecurityDescriptorOwner(descriptor.data(), &account, &isDefault) == 0) {
            return nullptr;
        }
        return account;
    }
};

OwnerNames::OwnerNames() : implementation_(std::make_unique<Implementation>()) {}
OwnerNames::~OwnerNames() = default;

std::string_view OwnerNames::ownerOf(std::string_view internalPath, const EntryFacts& /*facts*/) {
    PSID account = implementation_->ownerSid(widePath(internalPath));
    if (account == nullptr) {
        return unknownOwner;
    }
    const auto* bytes = static_cast<const char*>(account);
    const auto [entry, isNew] =
        implementation_->names.try_emplace(std::string(bytes, bytes + ::GetLengthSid(account)));
    if (isNew) {
        entry->second = nameOf(account);
    }
    return entry->second;
}

} // namespace platform
