#include "platform/linux/mountTable.h"

#include <fcntl.h>
#include <poll.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <mutex>
#include <unordered_set>

#include "platform/linux/descriptor.h"
#include "platform/paths.h"

namespace platform {

namespace {

constexpr std::array<std::string_view, 23> kernelFileSystems{
    "autofs",   "binfmt_misc", "bpf",        "cgroup",     "cgroup2",   "configfs", "debugfs", "devpts",
    "devtmpfs", "efivarfs",    "fusectl",    "hugetlbfs",  "mqueue",    "nfsd",     "nsfs",    "pipefs",
    "proc",     "pstore",      "rpc_pipefs", "securityfs", "selinuxfs", "sysfs",    "tracefs"};

// In names, the table writes blanks, tabs, line feeds and backslashes as \ and three octal digits.
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

bool isOneOf(std::string_view type, std::initializer_list<std::string_view> types) {
    return std::find(types.begin(), types.end(), type) != types.end();
}

struct ServerAndName {
    std::string_view server; // empty if the source does not name one
    std::string name;
};

// The parts of a network file system's source: "server:/name", "//server/name" or "https://server/name".
ServerAndName serverAndName(std::string_view type, std::string_view source) {
    if (isOneOf(type, {"nfs", "nfs4", "ceph", "glusterfs", "fuse.glusterfs", "fuse.sshfs"})) {
        // The address of an IPv6 server is in square brackets.
        const std::size_t serverAtLeast = source.starts_with('[') ? source.find(']') : 0;
        std::size_t colon = source.find(":/", serverAtLeast);
        const bool inHomeFolder = colon == std::string_view::npos && type == "fuse.sshfs";
        if (inHomeFolder) {
            colon = source.find(':', serverAtLeast);
        }
        if (colon == std::string_view::npos) {
            return {};
        }
        const std::string_view name = source.substr(colon + 1);
        return {source.substr(0, colon), std::string(inHomeFolder ? "~/" : "").append(name)};
    }
    std::string_view mark;
    if (isOneOf(type, {"cifs", "smb3"})) {
        mark = "//";
    } else if (isOneOf(type, {"davfs", "fuse", "fuse.davfs2", "fuse.curlftpfs"})) {
        mark = "://";
    }
    const std::size_t start = mark.empty() ? std::string_view::npos : source.find(mark);
    if (start == std::string_view::npos) {
        return {};
    }
    source.remove_prefix(start + mark.size());
    const std::size_t end = std::min(source.find('/'), source.size());
    return {source.substr(0, end), std::string(source.substr(end))};
}

// btrfs names the subvolume among its options.
std::string subvolumeOf(std::string_view type, std::string_view options) {
    constexpr std::string_view key = "subvol=";
    const std::size_t start = type == "btrfs" ? options.rfind(key) : std::string_view::npos;
    return start == std::string_view::npos
               ? std::string()
               : unescaped(options.substr(start + key.size(), options.find(',', start) - start - key.size()));
}

bool liesAtOrBelow(std::string_view path, std::string_view folder) {
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

} // namespace

bool Mount::isKernelFileSystem() const {
    return std::find(kernelFileSystems.begin(), kernelFileSystems.end(), type) != kernelFileSystems.end();
}

bool Mount::mayNotAnswer() const {
    constexpr std::array<std::string_view, 13> served{"fuse", "fuseblk", "nfs",     "nfs4",     "cifs",
                                                      "smb3", "smbfs",   "9p",      "virtiofs", "ceph",
                                                      "afs",  "lustre",  "orangefs"};
    const bool isServed =
        type.starts_with("fuse.") || std::find(served.begin(), served.end(), type) != served.end();
    return !mountPoint.empty() && (isServed || !share().empty());
}

std::string Mount::share() const {
    const auto [server, path] = serverAndName(type, source);
    std::string_view name = path;
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
    // A server's root export has no name of its own; further slashes stay in the share name.
    appendInternalName(result, name.empty() ? std::string_view("/") : name);
    return result + '\\';
}

std::string Mount::driveRoot() const {
    std::string result = share();
    if (result.empty()) {
        appendInternalName(result, mountPoint.empty() ? std::string_view("/") : mountPoint);
        result += '\\';
    }
    return result;
}

MountTable MountTable::read() {
    return tryToRead().value_or(MountTable());
}

std::optional<MountTable> MountTable::tryToRead() {
    std::ifstream file("/proc/self/mountinfo", std::ios::binary);
    return file ? std::optional(parse(std::string(std::istreambuf_iterator<char>(file), {}))) : std::nullopt;
}

// The kernel tells by poll that the table has changed since the last poll.
std::shared_ptr<const MountTable> MountTable::current() {
    static std::mutex mutex;
    static const Descriptor changes(::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC));
    static std::shared_ptr<const MountTable> table;
    static bool isOld = true;
    const std::lock_guard guard(mutex);
    pollfd state{changes.get(), POLLPRI, 0};
    isOld = isOld || !changes.isOpen() || ::poll(&state, 1, 0) != 0;
    if (isOld) {
        const std::optional<MountTable> present = tryToRead();
        isOld = !present;
        if (present || !table) {
            table = std::make_shared<const MountTable>(present.value_or(MountTable()));
        }
    }
    return table;
}

MountTable MountTable::parse(std::string_view text) {
    MountTable table;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::vector<std::string_view> fields = fieldsOf(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        // id, parent, device, root, mount point, options, …, "-", type, source, the file system's options
        const auto dash = std::find(fields.begin(), fields.end(), "-");
        if (fields.size() < 6 || std::distance(dash, fields.end()) < 3) {
            continue;
        }
        Mount mount;
        mount.id = fields[0];
        mount.parent = fields[1];
        mount.mountPoint = unescaped(fields[4]);
        mount.type = dash[1];
        mount.source = unescaped(dash[2]);
        mount.device = fields[2];
        mount.root = unescaped(fields[3]);
        mount.subvolume = subvolumeOf(mount.type, std::distance(dash, fields.end()) > 3 ? dash[3] : "");
        if (mount.mountPoint == "/") {
            mount.mountPoint.clear();
        }
        std::erase_if(table.mounts_,
                      [&](const Mount& lower) { return lower.mountPoint == mount.mountPoint; });
        table.mounts_.push_back(std::move(mount));
    }
    table.removeCovered();
    return table;
}

// A mount is covered by one that came later and stands on the same mount, above it: had it been there first,
// the other would stand on it.
void MountTable::removeCovered() {
    std::unordered_set<std::string> covered;
    const auto isCovered = [&](const Mount& mount) {
        return covered.contains(mount.parent) ||
               std::any_of(mounts_.begin(), mounts_.end(), [&](const Mount& other) {
                   return other.parent == mount.parent && !other.mountPoint.empty() &&
                          other.mountPoint.size() < mount.mountPoint.size() &&
                          liesAtOrBelow(mount.mountPoint, other.mountPoint);
               });
    };
    for (bool isMore = true; isMore;) { // what stands on a covered mount is covered, too
        isMore = false;
        for (const Mount& mount : mounts_) {
            isMore = (isCovered(mount) && covered.insert(mount.id).second) || isMore;
        }
    }
    std::erase_if(mounts_, [&](const Mount& mount) { return covered.contains(mount.id); });
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
