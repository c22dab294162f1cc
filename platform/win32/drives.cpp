#include "platform/drives.h"

#include <windows.h>
#include <winnetwk.h>

#include <set>

#include "platform/locale.h"
#include "platform/win32/wide.h"

namespace platform {

namespace {

struct NameLess {
    bool operator()(const std::string& left, const std::string& right) const {
        return compareIgnoringCase(left, right) < 0;
    }
};

// One share may be connected several times, by names written differently.
using Shares = std::set<std::string, NameLess>;

// The network's names of the resources of one listing.
void addShares(HANDLE listing, Shares& shares) {
    std::vector<char> buffer(std::size_t{16} << 10);
    for (;;) {
        DWORD count = 0xFFFFFFFF;
        auto size = static_cast<DWORD>(buffer.size());
        const DWORD result = ::WNetEnumResourceW(listing, &count, buffer.data(), &size);
        if (result == ERROR_MORE_DATA && size > buffer.size()) {
            buffer.resize(size);
            continue;
        }
        if (result != NO_ERROR) {
            return;
        }
        const auto* resources = reinterpret_cast<const NETRESOURCEW*>(buffer.data()); // NOLINT
        for (DWORD i = 0; i < count; ++i) {
            if (resources[i].lpRemoteName != nullptr) {
                shares.insert(narrow(resources[i].lpRemoteName) + "\\");
            }
        }
    }
}

} // namespace

std::optional<std::string> logicalDriveStrings() {
    std::wstring roots(::GetLogicalDriveStringsW(0, nullptr), L'\0');
    const auto length = static_cast<DWORD>(roots.size());
    const DWORD written = roots.empty() ? 0 : ::GetLogicalDriveStringsW(length, roots.data());
    if (written == 0 || written > length) {
        return std::nullopt;
    }
    return narrow({roots.data(), written});
}

int driveType(std::string_view root) {
    return static_cast<int>(::GetDriveTypeW(wide(root).c_str()));
}

std::vector<std::string> networkShares() {
    Shares shares;
    HANDLE listing = nullptr;
    if (::WNetOpenEnumW(RESOURCE_CONNECTED, RESOURCETYPE_DISK, 0, nullptr, &listing) == NO_ERROR) {
        addShares(listing, shares);
        ::WNetCloseEnum(listing);
    }
    return {shares.begin(), shares.end()};
}

} // namespace platform
