#include "platform/folders.h"

#include "platform/answering.h"
#include "platform/paths.h"
#include "platform/systemError.h"
#include "platform/win32/accounts.h"
#include "platform/win32/fileInformation.h"
#include "platform/win32/openFolder.h"
#include "platform/win32/wide.h"

#include <algorithm>
#include <array>
#include <cwchar>

namespace platform {

namespace {

constexpr std::size_t entriesPerPart = 64;                    // of those whose owners are looked up
constexpr std::size_t readBufferSize = std::size_t{64} << 10; // shares do not take larger ones

bool isSamePath(const std::wstring& left, const std::wstring& right) {
    return ::CompareStringOrdinal(left.c_str(), static_cast<int>(left.size()), right.c_str(),
                                  static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

// Without the dots and blanks at the ends of names, which some file systems leave out of a folder's place.
std::wstring withoutEnds(const std::wstring& path) {
    std::wstring result;
    for (const wchar_t c : path) {
        while (c == L'\\' && (result.ends_with(L'.') || result.ends_with(L' '))) {
            result.pop_back();
        }
        result += c;
    }
    result.erase(result.find_last_not_of(L". ") + 1);
    return result;
}

// The drive letter and the mount points of a volume, each with a trailing "\".
std::vector<std::string> pathsOfVolume(const wchar_t* volume) {
    std::vector<std::string> result;
    DWORD length = 0;
    ::GetVolumePathNamesForVolumeNameW(volume, nullptr, 0, &length);
    std::wstring names(length, L'\0'); // each ends in NUL
    if (length == 0 || ::GetVolumePathNamesForVolumeNameW(volume, names.data(), length, &length) == 0) {
        return result;
    }
    for (const wchar_t* name = names.c_str(); *name != L'\0'; name += std::wcslen(name) + 1) {
        result.push_back(narrow(name));
    }
    return result;
}

} // namespace

struct FolderReader::Implementation {
    std::wstring start; // without a trailing "\"; empty if there is none
    std::optional<std::wstring> startPlace;
    DWORD volume = 0; // of the start
    bool isRemote = false;
    std::string name;
    DWORD error = ERROR_SUCCESS; // of the last folder
    std::function<bool()> goesOn;
    Distribute distribute;
    bool withOwners = false;
    AccountReader accounts;
    std::wstring entryPath;
    alignas(FILE_ID_BOTH_DIR_INFO) std::array<std::byte, readBufferSize> buffer;

    void startAt(const std::wstring& path, const OpenFolder& folder) {
        start = path.ends_with(L'\\') ? path.substr(0, path.size() - 1) : path;
        const bool isOpen = folder.error() == ERROR_SUCCESS;
        startPlace = isOpen && folder.tellsPath(buffer) ? folder.place(buffer) : std::nullopt;
        volume = isOpen ? folder.volume() : 0;
    }

    // A folder below the start has to be where its path says. If a folder on the way has become a link, or
    // the root of another volume, the open folder is elsewhere.
    DWORD whyElsewhere(const std::wstring& path, const OpenFolder& folder) {
        const bool isBelow = path.starts_with(start) && path.substr(start.size()).starts_with(L'\\');
        if (start.empty() || !startPlace || !isBelow) {
            return ERROR_SUCCESS;
        }
        const std::optional<std::wstring> place = folder.place(buffer);
        if (!place) {
            return ::GetLastError();
        }
        const std::wstring expected = *startPlace + path.substr(start.size());
        // Names that differ only in their ends stand side by side, so neither leads out of the tree.
        if (isSamePath(*place, expected) || isSamePath(withoutEnds(*place), withoutEnds(expected))) {
            return ERROR_SUCCESS;
        }
        return folder.volume() != volume ? DWORD{ERROR_NOT_SAME_DEVICE} : DWORD{ERROR_CANT_RESOLVE_FILENAME};
    }

    bool list(const OpenFolder& folder, FolderListing& listing) {
        constexpr int entriesPerLook = 1024;
        int entryCount = 0;
        error = folder.forEachEntry(buffer, [&](const auto& entry, std::wstring_view wideName) {
            name.clear();
            appendNarrow(name, wideName);
            EntryFacts facts = factsOf(entry);
            facts.volume = volume;
            facts.number = facts.volume != 0 ? facts.number : 0; // it says nothing by itself
            listing.append(facts, name);
            const bool ends = ++entryCount % entriesPerLook == 0 && goesOn && !goesOn();
            return ends ? DWORD{ERROR_CANCELLED} : DWORD{ERROR_SUCCESS};
        });
        return error == ERROR_SUCCESS;
    }

    // The names of a large folder's entries, whose owners are looked up in parts.
    struct Batch {
        std::wstring folder; // with a trailing "\"
        std::vector<std::string> names;
        std::vector<std::uint32_t> owners;

        void lookUp(std::size_t first, std::size_t count, Implementation& by) {
            for (std::size_t i = first; i < first + count; ++i) {
                owners[i] = by.accountOf(folder, names[i]);
            }
        }
    };

    std::uint32_t accountOf(const std::wstring& folder, std::string_view entryName) {
        entryPath.assign(folder);
        entryPath += wide(entryName);
        return accounts.accountOf(entryPath);
    }

    // Each owner is a question of its own.
    bool findOwners(std::wstring folder, FolderListing& listing) {
        if (!folder.ends_with(L'\\')) {
            folder += L'\\';
        }
        const std::size_t count = listing.size();
        if (!distribute || count <= entriesPerPart) {
            for (std::size_t i = 0; i < count; ++i) {
                listing.items_[i].owner = accountOf(folder, listing[i].name);
            }
            return true;
        }
        const auto batch = std::make_shared<Batch>();
        batch->folder = std::move(folder);
        batch->owners.resize(count);
        for (std::size_t i = 0; i < count; ++i) {
            batch->names.emplace_back(listing[i].name);
        }
        const auto work = [batch, count](std::size_t part, FolderReader& reader) {
            const std::size_t first = part * entriesPerPart;
            batch->lookUp(first, std::min(entriesPerPart, count - first), *reader.implementation_);
        };
        if (!distribute((count + entriesPerPart - 1) / entriesPerPart, work)) {
            error = ERROR_CANCELLED;
            return false;
        }
        for (std::size_t i = 0; i < count; ++i) {
            listing.items_[i].owner = batch->owners[i];
        }
        return true;
    }
};

FolderReader::FolderReader() : implementation_(std::make_unique<Implementation>()) {}
FolderReader::~FolderReader() = default;

bool FolderReader::read(std::string_view internalFolder, FolderListing& listing, bool isStart) {
    listing.clear();
    const std::wstring path = widePath(internalFolder);
    const OpenFolder folder(path);
    implementation_->error = folder.error();
    if (isStart) {
        implementation_->startAt(path, folder);
        implementation_->isRemote = platform::mayNotAnswer(internalFolder) || folder.isRemote();
    } else if (folder.error() == ERROR_SUCCESS) {
        implementation_->error = implementation_->whyElsewhere(path, folder);
    }
    const bool isListed = implementation_->error == ERROR_SUCCESS && implementation_->list(folder, listing);
    const bool isWhole = !implementation_->withOwners || implementation_->findOwners(path, listing);
    return isListed && isWhole;
}

std::unique_ptr<FolderReader> FolderReader::another() const {
    auto reader = std::make_unique<FolderReader>();
    reader->implementation_->start = implementation_->start;
    reader->implementation_->startPlace = implementation_->startPlace;
    reader->implementation_->volume = implementation_->volume;
    return reader;
}

bool FolderReader::mayNotAnswer() const {
    return implementation_->isRemote;
}

void FolderReader::setDistribute(Distribute distribute) {
    implementation_->distribute = std::move(distribute);
}

void FolderReader::setWithOwners(bool withOwners) {
    implementation_->withOwners = withOwners;
}

bool FolderReader::lacksResources() const {
    switch (implementation_->error) {
    case ERROR_TOO_MANY_OPEN_FILES:
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
    case ERROR_NO_SYSTEM_RESOURCES:
        return true;
    default:
        return false;
    }
}

// Nothing is cheaper here: the system returns all facts with the names.
bool FolderReader::readNames(std::string_view internalFolder, FolderListing& listing) {
    listing.clear();
    const OpenFolder folder(widePath(internalFolder));
    implementation_->error = folder.error();
    return implementation_->error == ERROR_SUCCESS && implementation_->list(folder, listing);
}

void FolderReader::setGoesOn(std::function<bool()> goesOn) {
    implementation_->goesOn = std::move(goesOn);
}

std::string FolderReader::failure() const {
    switch (implementation_->error) {
    case ERROR_CANT_RESOLVE_FILENAME:
        return "The folder, or one above it, has become a link";
    case ERROR_NOT_SAME_DEVICE:
        return "Another volume has been mounted";
    default:
        return systemMessage(implementation_->error);
    }
}

bool folderExists(std::string_view internalPath) {
    return folderFacts(internalPath).has_value();
}

// Drives that stand for a share or a folder keep their letters.
std::string recordedPath(std::string_view internalFolder) {
    return std::string(internalFolder) + (internalFolder.ends_with('\\') ? "" : "\\");
}

EntryFacts entryFacts(std::string_view internalPath) {
    return ownFacts(widePath(internalPath)).value_or(EntryFacts());
}

bool areNamesOfOneFile(std::string_view left, std::string_view right) {
    const std::optional<FileInformation> one = informationOf(widePath(left));
    const std::optional<FileInformation> other = informationOf(widePath(right));
    return one && other && one->number != 0 && one->number == other->number && one->volume == other->volume;
}

bool hasFurtherNames(std::string_view internalPath) {
    return nameCount(widePath(internalPath)) > 1;
}

std::optional<EntryFacts> folderFacts(std::string_view internalFolder) {
    const std::optional<FileInformation> found = informationOf(widePath(internalFolder));
    return found && found->facts.isFolder ? std::optional(found->facts) : std::nullopt;
}

std::string whyHidden(std::string_view internalPath) {
    const bool isThere = ::GetFileAttributesW(widePath(internalPath).c_str()) != INVALID_FILE_ATTRIBUTES;
    const DWORD cause = isThere ? DWORD{ERROR_SUCCESS} : ::GetLastError();
    const bool isHidden = cause == ERROR_ACCESS_DENIED || cause == ERROR_TOO_MANY_OPEN_FILES;
    return isHidden ? systemMessage(cause) : std::string();
}

std::string whyUnreadable(std::string_view internalFolder) {
    const DWORD error = OpenFolder(widePath(internalFolder)).error();
    return error == ERROR_SUCCESS ? std::string() : systemMessage(error);
}

PathSet mountPointsBelow(std::string_view internalFolder) {
    PathSet result;
    std::wstring volume(MAX_PATH, L'\0');
    HANDLE search = ::FindFirstVolumeW(volume.data(), static_cast<DWORD>(volume.size()));
    if (search == INVALID_HANDLE_VALUE) {
        return result;
    }
    do {
        for (std::string& path : pathsOfVolume(volume.c_str())) {
            const bool isBelow =
                path.size() > internalFolder.size() &&
                sameName(std::string_view(path).substr(0, internalFolder.size()), internalFolder);
            if (isBelow) {
                path.pop_back();
                result.insert(std::move(path));
            }
        }
    } while (::FindNextVolumeW(search, volume.data(), static_cast<DWORD>(volume.size())) != 0);
    ::FindVolumeClose(search);
    return result;
}

} // namespace platform
