#include "platform/win32/accounts.h"

#include <windows.h>

#include <mutex>
#include <string_view>
#include <unordered_map>

#include "platform/win32/wide.h"

namespace platform {

namespace {

constexpr std::string_view unknownOwner = "unknown";

// Never destroyed, as a thread that was left behind may still use it at the very end.
struct Accounts {
    std::mutex mutex;
    std::unordered_map<std::string, std::uint32_t> numbers; // by the bytes of the account's identifier
    std::vector<const std::string*> identifiers;            // by number, from the one behind unknownAccount

    static Accounts& all() {
        static auto* const accounts = new Accounts; // NOLINT(cppcoreguidelines-owning-memory)
        return *accounts;
    }
};

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

std::uint32_t AccountReader::accountOf(const std::wstring& path) {
    DWORD needed = 0;
    const auto read = [&] {
        return ::GetFileSecurityW(path.c_str(), OWNER_SECURITY_INFORMATION, descriptor_.data(),
                                  static_cast<DWORD>(descriptor_.size()), &needed) != 0;
    };
    bool done = read();
    if (!done && ::GetLastError() == ERROR_INSUFFICIENT_BUFFER) {
        descriptor_.resize(needed);
        done = read();
    }
    PSID account = nullptr;
    BOOL isDefault = FALSE;
    if (!done || ::GetSecurityDescriptorOwner(descriptor_.data(), &account, &isDefault) == 0 ||
        account == nullptr) {
        return unknownAccount;
    }
    const auto* bytes = static_cast<const char*>(account);
    Accounts& accounts = Accounts::all();
    const std::lock_guard guard(accounts.mutex);
    const auto [entry, isNew] =
        accounts.numbers.try_emplace(std::string(bytes, bytes + ::GetLengthSid(account)));
    if (isNew) {
        accounts.identifiers.push_back(&entry->first);
        entry->second = unknownAccount + static_cast<std::uint32_t>(accounts.identifiers.size());
    }
    return entry->second;
}

std::string accountName(std::uint32_t account) {
    std::string identifier;
    {
        Accounts& accounts = Accounts::all();
        const std::lock_guard guard(accounts.mutex);
        if (account <= unknownAccount || account - unknownAccount > accounts.identifiers.size()) {
            return std::string(unknownOwner);
        }
        identifier = *accounts.identifiers[account - unknownAccount - 1];
    }
    return nameOf(identifier.data());
}

} // namespace platform
