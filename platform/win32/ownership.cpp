#include "platform/ownership.h"

#include <windows.h>

#include <cstddef>
#include <vector>

#include "platform/files.h"
#include "platform/folders.h"
#include "platform/owners.h"
#include "platform/paths.h"
#include "platform/systemError.h"
#include "platform/win32/fileInformation.h"
#include "platform/win32/handle.h"
#include "platform/win32/opening.h"

namespace platform {

namespace {

// A security identifier, or what else the system tells in a block of memory.
using Bytes = std::vector<std::byte>;

PSID identifier(Bytes& bytes) {
    return bytes.empty() ? nullptr : static_cast<PSID>(bytes.data());
}

// The token's own user; empty if unknown.
Bytes thisUser() {
    HANDLE opened = nullptr;
    if (::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &opened) == 0) {
        return {};
    }
    const Handle token(opened);
    DWORD size = 0;
    ::GetTokenInformation(token.get(), TokenUser, nullptr, 0, &size);
    Bytes information(size);
    if (size == 0 || ::GetTokenInformation(token.get(), TokenUser, information.data(), size, &size) == 0) {
        return {};
    }
    const PSID user = reinterpret_cast<const TOKEN_USER*>(information.data())->User.Sid; // NOLINT
    const auto* const start = static_cast<const std::byte*>(user);
    return {start, start + ::GetLengthSid(user)};
}

// The security descriptor of a file with its owner; empty if unknown. A link's own is not told.
Bytes descriptorOf(const std::wstring& path) {
    DWORD size = 0;
    ::GetFileSecurityW(path.c_str(), OWNER_SECURITY_INFORMATION, nullptr, 0, &size);
    Bytes descriptor(size);
    const bool known = size > 0 && ::GetFileSecurityW(path.c_str(), OWNER_SECURITY_INFORMATION,
                                                      descriptor.data(), size, &size) != 0;
    return known ? descriptor : Bytes();
}

PSID ownerIn(Bytes& descriptor) {
    PSID owner = nullptr;
    BOOL isDefault = FALSE;
    const bool known =
        !descriptor.empty() && ::GetSecurityDescriptorOwner(descriptor.data(), &owner, &isDefault) != 0;
    return known ? owner : nullptr;
}

bool isOwnedByThisUser(const std::wstring& path) {
    Bytes descriptor = descriptorOf(path);
    Bytes user = thisUser();
    PSID owner = ownerIn(descriptor);
    return owner != nullptr && identifier(user) != nullptr && ::EqualSid(owner, identifier(user)) != 0;
}

} // namespace

// Only those may make links whom an administrator lets.
bool isOwnLink(std::string_view path) noexcept {
    try {
        return isLink(wideOf(path)) && fileExists(path) && isOwnedByThisUser(wideOf(resolveLinks(path)));
    } catch (...) { // not a valid path
        return false;
    }
}

// Who may write to a folder is not asked: by default, new folders on a drive let all users write.
std::string whyForeign(std::string_view path) {
    const std::wstring wide = wideOf(path);
    Bytes descriptor = descriptorOf(wide);
    PSID owner = ownerIn(descriptor);
    if (owner == nullptr || isOwnedByThisUser(wide)) {
        return {};
    }
    // "S-1-5-32-544", "S-1-5-18", and the services of the system, "S-1-5-80-...".
    constexpr DWORD services = 80;
    const bool isSystems = ::IsWellKnownSid(owner, WinBuiltinAdministratorsSid) != 0 ||
                           ::IsWellKnownSid(owner, WinLocalSystemSid) != 0 ||
                           *::GetSidSubAuthority(owner, 0) == services;
    return isSystems ? std::string()
                     : "it belongs to " + std::string(OwnerNames().ownerOf(toInternal(path), EntryFacts()));
}

bool isStrangersFile(std::string_view path) noexcept {
    try {
        return !whyForeign(path).empty();
    } catch (...) { // not a valid path
        return false;
    }
}

bool makeOwnFolder(std::string_view path) {
    const std::wstring wide = wideOf(path);
    if (::CreateDirectoryW(wide.c_str(), nullptr) != 0) {
        return true;
    }
    const DWORD cause = ::GetLastError();
    if (cause != ERROR_ALREADY_EXISTS) {
        throw systemError(cause, path, NotDone::created);
    }
    return false;
}

// The folder for temporary files is the user's own here.
bool isOwnFolder(std::string_view path) noexcept {
    try {
        const std::wstring wide = wideOf(path);
        return isFolder(wide) && !isLink(wide);
    } catch (...) {
        return false;
    }
}

void removeOwnFolder(std::string_view path) noexcept {
    try {
        FolderListing listing;
        static_cast<void>(FolderReader().readNames(std::string(path), listing));
        for (std::size_t i = 0; i < listing.size(); ++i) {
            ::DeleteFileW(wideOf(std::string(path).append(listing[i].name)).c_str());
        }
        ::RemoveDirectoryW(wideOf(path).c_str());
    } catch (...) { // what is left is removed another time
    }
}

} // namespace platform
