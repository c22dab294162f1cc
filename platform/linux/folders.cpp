#include "platform/folders.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/answering.h"
#include "platform/linux/folderCalls.h"
#include "platform/linux/mountTable.h"
#include "platform/linux/realPath.h"
#include "platform/linux/volumeCalls.h"
#include "platform/paths.h"
#include "platform/systemError.h"

namespace platform {

namespace {

constexpr std::size_t namesPerPart = 16; // on a volume of which each answer may take long

// Makes a call on the folder or entry, by another process if its volume may not answer.
template <class Direct, class Guarded>
int callOn(const std::string& native, Direct direct, Guarded guarded) {
    if (!couldHang(native)) {
        return direct();
    }
    VolumeCalls calls(native);
    return guarded(calls);
}

std::string reasonOf(int error) {
    return error == ETIMEDOUT ? std::string(notAnswering) : systemMessage(error);
}

} // namespace

struct FolderReader::Implementation {
    // The entries of a folder on a guarded volume, whose facts are asked for in parts.
    struct Batch {
        struct Entry {
            NameKind kind;
            std::string name;
            EntryFacts facts;
        };
        std::string folder;
        std::vector<Entry> entries;
        std::vector<std::size_t> asked; // those that are asked for facts
        std::vector<int> errors;        // of each part

        void add(NameKind kind, const char* name) {
            if (kind != NameKind::mountPoint) {
                asked.push_back(entries.size());
            }
            entries.push_back({kind, name, {}});
            entries.back().facts.isFolder = kind == NameKind::mountPoint;
        }

        void ask(VolumeCalls& calls, std::size_t part, std::size_t first, std::size_t count) {
            std::vector<std::string_view> names;
            for (std::size_t i = first; i < first + count; ++i) {
                names.emplace_back(entries[asked[i]].name);
            }
            std::size_t next = first;
            errors[part] = calls.facts(folder, names, [&](const EntryFacts& facts, const char*) {
                if (next < first + count) {
                    entries[asked[next++]].facts = facts;
                }
            });
        }

        // Those before the entry that was asked for with this number.
        void takeUntil(std::size_t end, const TakeEntry& take) {
            const std::size_t last = end < asked.size() ? asked[end] : entries.size();
            for (std::size_t i = 0; i < last; ++i) {
                Entry& entry = entries[i];
                if (entry.facts.error == ENOENT) {
                    continue;
                }
                if (entry.facts.error != 0) {
                    entry.facts.isFolder = entry.kind == NameKind::folder;
                }
                take(entry.facts, entry.name.c_str());
            }
        }
    };

    FolderCalls calls;
    std::optional<VolumeCalls> guarded; // for what is read below a start that may not answer
    std::string start;                  // in the system's form
    std::string native;
    std::string share; // the last share, and where it is mounted
    std::string shareNative;
    int error = 0; // of the last folder
    std::function<bool()> goesOn;
    Distribute distribute;

    // A walk stays on one volume, which is known when links are resolved. So only where that volume may not
    // answer, each folder is read by another process.
    int startAt() {
        guarded.reset();
        start = native;
        if (!couldHang(native) || !platform::mayNotAnswer(toInternal(realPath(native).value_or(native)))) {
            return calls.startAt(native);
        }
        guarded.emplace(native);
        guarded->setGoesOn(goesOn);
        return guarded->startAt(native);
    }

    int read(const TakeEntry& take) {
        if (!guarded) {
            return calls.read(native, take);
        }
        return distribute ? readInParts(take) : guarded->read(native, take);
    }

    // By several processes, as each of them waits for its answer alone.
    int readInParts(const TakeEntry& take) {
        const auto batch = std::make_shared<Batch>();
        batch->folder = native;
        const int listed =
            guarded->list(native, [&](NameKind kind, const char* name) { batch->add(kind, name); });
        const std::size_t count = batch->asked.size();
        const std::size_t parts = (count + namesPerPart - 1) / namesPerPart;
        batch->errors.resize(parts);
        const auto work = [batch, count](std::size_t part, FolderReader& reader) {
            const std::size_t first = part * namesPerPart;
            batch->ask(*reader.implementation_->guarded, part, first, std::min(count - first, namesPerPart));
        };
        if (parts > 0 && !distribute(parts, work)) {
            return EINTR;
        }
        for (std::size_t part = 0; part < parts; ++part) {
            if (batch->errors[part] == EAGAIN) { // another reader had no process of its own
                batch->ask(*guarded, part, part * namesPerPart,
                           std::min(count - part * namesPerPart, namesPerPart));
            }
        }
        const auto failed = std::find_if(batch->errors.begin(), batch->errors.end(),
                                         [](int partError) { return partError != 0; });
        batch->takeUntil(failed == batch->errors.end()
                             ? count
                             : static_cast<std::size_t>(failed - batch->errors.begin()) * namesPerPart,
                         take);
        return failed == batch->errors.end() ? listed : *failed;
    }

    // A share's mount point is looked up only when the share changes, not for every folder.
    void findNative(std::string_view internalFolder) {
        if (share.empty() || !internalFolder.starts_with(share)) {
            native = toNative(internalFolder);
            const std::size_t server = internalFolder.starts_with("\\\\") ? internalFolder.find('\\', 2) : 0;
            share = internalFolder.substr(0, server == 0 ? 0 : internalFolder.find('\\', server + 1) + 1);
            shareNative = share.empty() ? std::string() : toNative(share);
            return;
        }
        native = shareNative;
        const std::string_view names = internalFolder.substr(share.size());
        if (!names.empty()) {
            native += '/';
            appendNativeName(native, names.ends_with('\\') ? names.substr(0, names.size() - 1) : names);
        }
    }
};

FolderReader::FolderReader() : implementation_(std::make_unique<Implementation>()) {}
FolderReader::~FolderReader() = default;

bool FolderReader::read(std::string_view internalFolder, FolderListing& listing, bool isStart) {
    Implementation& self = *implementation_;
    listing.clear();
    self.findNative(internalFolder);
    const auto take = [&](const EntryFacts& facts, const char* name) { listing.append(facts, name); };
    self.error = isStart ? self.startAt() : 0;
    if (self.error == 0) {
        self.error = self.read(take);
    }
    return self.error == 0;
}

bool FolderReader::readNames(std::string_view internalFolder, FolderListing& listing) {
    Implementation& self = *implementation_;
    listing.clear();
    self.findNative(internalFolder);
    const auto take = [&](const EntryFacts& facts, const char* name) { listing.append(facts, name); };
    self.error = callOn(
        self.native, [&] { return self.calls.readNames(self.native, take); },
        [&](VolumeCalls& calls) {
            calls.setGoesOn(self.goesOn);
            return calls.readNames(self.native, take);
        });
    return self.error == 0;
}

std::unique_ptr<FolderReader> FolderReader::another() const {
    auto reader = std::make_unique<FolderReader>();
    Implementation& other = *reader->implementation_;
    other.calls.startWith(implementation_->calls);
    if (implementation_->guarded) {
        other.guarded.emplace(implementation_->start);
        other.guarded->startWith(*implementation_->guarded);
    }
    return reader;
}

bool FolderReader::mayNotAnswer() const {
    return implementation_->guarded.has_value();
}

void FolderReader::setDistribute(Distribute distribute) {
    implementation_->distribute = distribute;
    FolderCalls::Distribute parts;
    if (distribute) {
        parts = [distribute = std::move(distribute)](std::size_t count,
                                                     const std::function<void(std::size_t)>& work) {
            return distribute(count, [work](std::size_t part, FolderReader&) { work(part); });
        };
    }
    implementation_->calls.setDistribute(std::move(parts));
}

// Owners are among the facts.
void FolderReader::setWithOwners(bool /*withOwners*/) {}

bool FolderReader::lacksResources() const {
    const int error = implementation_->error;
    return error == EMFILE || error == ENFILE || error == ENOMEM || error == EAGAIN;
}

void FolderReader::setGoesOn(std::function<bool()> goesOn) {
    implementation_->calls.setGoesOn(goesOn);
    if (implementation_->guarded) {
        implementation_->guarded->setGoesOn(goesOn);
    }
    implementation_->goesOn = std::move(goesOn);
}

std::string FolderReader::failure() const {
    switch (implementation_->error) {
    case ELOOP:
        return "The folder, or one above it, has become a link";
    case EXDEV:
        return "Another volume has been mounted";
    default:
        return reasonOf(implementation_->error);
    }
}

bool folderExists(std::string_view internalPath) {
    return folderFacts(internalPath).has_value();
}

std::string recordedPath(std::string_view internalFolder) {
    const auto resolved = realPath(toNative(internalFolder));
    std::string path = resolved ? toInternal(*resolved) : std::string(internalFolder);
    return path.ends_with('\\') ? path : path + '\\';
}

EntryFacts entryFacts(std::string_view internalPath) {
    const std::string native = toNative(internalPath);
    EntryFacts facts;
    const int error = callOn(
        native, [&] { return entryStatus(native, facts); },
        [&](VolumeCalls& calls) { return calls.entryStatus(native, facts); });
    return error == 0 ? facts : EntryFacts();
}

// A file with a single name has no number.
bool areNamesOfOneFile(std::string_view left, std::string_view right) {
    const EntryFacts one = entryFacts(left);
    const EntryFacts other = entryFacts(right);
    return one.number != 0 && one.number == other.number && one.volume == other.volume;
}

bool hasFurtherNames(std::string_view /*internalPath*/) {
    return true;
}

std::optional<EntryFacts> folderFacts(std::string_view internalFolder) {
    const std::string native = toNative(internalFolder);
    EntryFacts facts;
    const int error = callOn(
        native, [&] { return folderStatus(native, facts); },
        [&](VolumeCalls& calls) { return calls.folderStatus(native, facts); });
    return error == 0 ? std::optional(facts) : std::nullopt;
}

std::string whyHidden(std::string_view internalPath) {
    const std::string native = toNative(internalPath);
    EntryFacts facts;
    const int cause = callOn(
        native, [&] { return folderStatus(native, facts); },
        [&](VolumeCalls& calls) { return calls.folderStatus(native, facts); });
    const bool isKnown = cause == 0 || cause == ENOENT || cause == ENOTDIR || cause == ENAMETOOLONG;
    return isKnown ? std::string() : reasonOf(cause);
}

std::string whyUnreadable(std::string_view internalFolder) {
    const std::string native = toNative(internalFolder);
    const int cause = callOn(
        native, [&] { return tryToOpen(native); },
        [&](VolumeCalls& calls) { return calls.tryToOpen(native); });
    return cause == 0 ? std::string() : reasonOf(cause);
}

PathSet mountPointsBelow(std::string_view internalFolder) {
    PathSet result;
    const auto resolved = realPath(toNative(internalFolder));
    if (!resolved) {
        return result;
    }
    std::string start = *resolved;
    if (start != "/") {
        start += '/';
    }
    const MountTable table = MountTable::read();
    for (const Mount& mount : table.mounts()) {
        if (!mount.mountPoint.starts_with(start)) {
            continue;
        }
        std::string path(internalFolder);
        if (!path.ends_with('\\')) {
            path += '\\';
        }
        for (std::string_view rest = std::string_view(mount.mountPoint).substr(start.size());
             !rest.empty();) {
            const std::size_t end = std::min(rest.find('/'), rest.size());
            appendInternalName(path, rest.substr(0, end));
            rest.remove_prefix(end);
            if (!rest.empty()) {
                path += '\\';
                rest.remove_prefix(1);
            }
        }
        result.insert(std::move(path));
    }
    return result;
}

} // namespace platform
