#include "platform/secretFile.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "platform/win32/opening.h"

namespace platform {

namespace {

bool isEveryone(PSID identifier) {
    constexpr std::array<WELL_KNOWN_SID_TYPE, 3> everyone{WinWorldSid, WinAuthenticatedUserSid,
                                                          WinBuiltinUsersSid};
    return std::ranges::any_of(
        everyone, [identifier](WELL_KNOWN_SID_TYPE kind) { return ::IsWellKnownSid(identifier, kind) != 0; });
}

bool givesToAll(ACL* list) {
    for (DWORD i = 0; i < list->AceCount; ++i) {
        void* found = nullptr;
        if (::GetAce(list, i, &found) == 0) {
            continue;
        }
        auto* const entry = static_cast<ACCESS_ALLOWED_ACE*>(found);
        const bool counts =
            entry->Header.AceType == ACCESS_ALLOWED_ACE_TYPE &&
            (entry->Header.AceFlags & INHERIT_ONLY_ACE) == 0 &&
            (entry->Mask & (FILE_READ_DATA | FILE_WRITE_DATA | GENERIC_READ | GENERIC_ALL)) != 0;
        if (counts && isEveryone(&entry->SidStart)) {
            return true;
        }
    }
    return false;
}

} // namespace

bool isOpenToAll(std::string_view path) {
    const std::wstring wide = wideOf(path, NotDone::read);
    DWORD size = 0;
    ::GetFileSecurityW(wide.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<std::byte> descriptor(size);
    BOOL isThere = FALSE;
    BOOL isDefault = FALSE;
    ACL* list = nullptr;
    const bool known =
        size > 0 &&
        ::GetFileSecurityW(wide.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), size, &size) != 0 &&
        ::GetSecurityDescriptorDacl(descriptor.data(), &isThere, &list, &isDefault) != 0;
    return known && isThere != FALSE && (list == nullptr || givesToAll(list));
}

} // namespace platform
