#include "platform/drives.h"

#include <windows.h>
#include <winnetwk.h>

#include <algorithm>
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

// A share may be connected several times, under names written differently.
using Shares = std::set<std::string, NameLess>;

// Adds the network names of the resources in one listing.
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

std::vector<std::string> driveRoots() {
    std::wstring list(::GetLogicalDriveStringsW(0, nullptr), L'\0');
    const auto length = static_cast<DWORD>(list.size());
    const DWORD written = list.empty() ? 0 : ::GetLogicalDriveStringsW(length, list.data());
    if (written > length) {
        return {};
    }
    std::vector<std::string> roots;
    // Each ends with a NUL.
    for (std::wstring_view rest(list.data(), written); !rest.empty();) {
        const std::wstring_view root = rest.substr(0, rest.find(L'\0'));
        if (!root.empty()) {
            roots.push_back(narrow(root));
        }
        rest.remove_prefix(std::min(root.size() + 1, rest.size()));
    }
    return roots;
}

int driveType(std::string_view root) {
    return static_cast<int>(::GetDriveTypeW(wide(root).c_str()));
}

// A user's quota limits what the two figures count.
std::optional<DriveSpace> driveSpace(std::string_view root) {
    ULARGE_INTEGER available{};
    ULARGE_INTEGER all{};
    ULARGE_INTEGER unused{};
    const int type = driveType(root);
    if (type == drive::remote || type == drive::noRoot || type == drive::unknown ||
        ::GetDiskFreeSpaceExW(wide(root).c_str(), &available, &all, &unused) == 0 || all.QuadPart == 0) {
        return std::nullopt;
    }
    const auto total = static_cast<double>(all.QuadPart);
    const auto free = static_cast<double>(available.QuadPart);
    return DriveSpace{total, total - free, free};
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
