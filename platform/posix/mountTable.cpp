#include "platform/posix/mountTable.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>

#include "platform/paths.h"

namespace platform {

namespace {

constexpr std::array<std::string_view, 23> kernelFileSystems{
    "autofs",   "binfmt_misc", "bpf",        "cgroup",     "cgroup2",   "configfs", "debugfs", "devpts",
    "devtmpfs", "efivarfs",    "fusectl",    "hugetlbfs",  "mqueue",    "nfsd",     "nsfs",    "pipefs",
    "proc",     "pstore",      "rpc_pipefs", "securityfs", "selinuxfs", "sysfs",    "tracefs"};

// The table writes blanks, tabs, line feeds and backslashes in names as \ and three octal digits.
std::string unescaped(std::string_view field) {
    std::string result;
    for (std::size_t i = 0; i < field.size(); ++i) {
        const auto digit = [&](std::size_t offset) { return field[i + offset] - '0'; };
        const bool escape = field[i] == '\\' && i + 3 < field.size() &&
                            std::all_of(field.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                                        field.begin() + static_cast<std::ptrdiff_t>(i) + 4,
                                        [](char c) { return c >= '0' && c <= '7'; });
        if (escape) {
            result.push_back(static_cast<char>(digit(1) * 64 + digit(2) * 8 + digit(3)));
            i += 3;
        } else {
            result.push_back(field[i]);
        }
    }
    return result;
}

std::vector<std::string_view> fieldsOf(std::string_view line) {
    std::vector<std::string_view> fields;
    while (!line.empty()) {
        const std::size_t end = std::min(line.find(' '), line.size());
        if (end > 0) {
            fields.push_back(line.substr(0, end));
        }
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    return fields;
}

bool liesAtOrBelow(std::string_view path, std::string_view folder) {
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

} // namespace

bool Mount::isKernelFileSystem() const {
    return std::find(kernelFileSystems.begin(), kernelFileSystems.end(), type) != kernelFileSystems.end();
}

std::string Mount::share() const {
    std::string_view name = source;
    std::string_view server;
    if (type == "cifs" || type == "smb3") {
        if (!name.starts_with("//")) {
            return {};
        }
        name.remove_prefix(2);
        server = name.substr(0, name.find('/'));
        name.remove_prefix(server.size());
    } else if (type == "nfs" || type == "nfs4") {
        // An IPv6 server stands in square brackets.
        const std::size_t colon = name.find(":/", name.starts_with('[') ? name.find(']') : 0);
        if (colon == std::string_view::npos) {
            return {};
        }
        server = name.substr(0, colon);
        name.remove_prefix(colon + 1);
    }
    while (name.starts_with('/')) {
        name.remove_prefix(1);
    }
    while (name.ends_with('/')) {
        name.remove_suffix(1);
    }
    if (server.empty()) {
        return {};
    }
    std::string result = "\\\\";
    appendInternalName(result, server);
    result += '\\';
    // An NFS server's root export has no name of its own; further slashes stay inside the share name.
    appendInternalName(result, name.empty() ? std::string_view("/") : name);
    return result + '\\';
}

std::string Mount::driveRoot() const {
    std::string root = share();
    if (root.empty()) {
        appendInternalName(root, mountPoint.empty() ? std::string_view("/") : mountPoint);
        root += '\\';
    }
    return root;
}

MountTable MountTable::read() {
    std::ifstream file("/proc/self/mountinfo", std::ios::binary);
    return parse(std::string(std::istreambuf_iterator<char>(file), {}));
}

MountTable MountTable::parse(std::string_view text) {
    MountTable table;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::vector<std::string_view> fields = fieldsOf(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        // id, parent, device, root, mount point, options, …, "-", type, source
        const auto dash = std::find(fields.begin(), fields.end(), "-");
        if (fields.size() < 6 || std::distance(dash, fields.end()) < 3) {
            continue;
        }
        Mount mount{unescaped(fields[4]), std::string(dash[1]), unescaped(dash[2])};
        if (mount.mountPoint == "/") {
            mount.mountPoint.clear();
        }
        std::erase_if(table.mounts_,
                      [&](const Mount& lower) { return lower.mountPoint == mount.mountPoint; });
        table.mounts_.push_back(std::move(mount));
    }
    return table;
}

const Mount* MountTable::volumeOf(std::string_view nativePath) const {
    const Mount* best = nullptr;
    for (const Mount& mount : mounts_) {
        if (!mount.isKernelFileSystem() && liesAtOrBelow(nativePath, mount.mountPoint) &&
            (best == nullptr || best->mountPoint.size() < mount.mountPoint.size())) {
            best = &mount;
        }
    }
    return best;
}

bool MountTable::hasVolumeAt(std::string_view mountPoint) const {
    return std::any_of(mounts_.begin(), mounts_.end(), [&](const Mount& mount) {
        return mount.mountPoint == mountPoint && !mount.isKernelFileSystem();
    });
}

const Mount* MountTable::shareAt(std::string_view driveRoot) const {
    const auto found = std::find_if(mounts_.begin(), mounts_.end(), [&](const Mount& mount) {
        const std::string share = mount.share();
        return !share.empty() && share == driveRoot;
    });
    return found == mounts_.end() ? nullptr : &*found;
}

} // namespace platform
