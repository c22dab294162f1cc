#include "platform/folders.h"

#include "platform/paths.h"
#include "platform/systemError.h"
#include "platform/win32/fileInformation.h"
#include "platform/win32/wide.h"

#include <cwchar>

namespace platform {

namespace {

// An open enumeration of a folder's entries.
class Enumeration {
public:
    explicit Enumeration(std::wstring folder) {
        folder += folder.ends_with(L'\\') ? L"*" : L"\\*";
        handle_ = ::FindFirstFileExW(folder.c_str(), FindExInfoBasic, &found_, FindExSearchNameMatch, nullptr,
                                     FIND_FIRST_EX_LARGE_FETCH);
        error_ = isOpen() ? DWORD{ERROR_SUCCESS} : ::GetLastError();
    }
    ~Enumeration() {
        if (isOpen()) {
            ::FindClose(handle_);
        }
    }
    Enumeration(const Enumeration&) = delete;
    Enumeration& operator=(const Enumeration&) = delete;

    [[nodiscard]] bool isOpen() const noexcept { return handle_ != INVALID_HANDLE_VALUE; }
    // Why it could not be opened. The root of an empty drive contains nothing, not even itself.
    [[nodiscard]] DWORD error() const noexcept {
        return error_ == ERROR_FILE_NOT_FOUND ? DWORD{ERROR_SUCCESS} : error_;
    }
    [[nodiscard]] const WIN32_FIND_DATAW& entry() const noexcept { return found_; }
    bool next() noexcept { return ::FindNextFileW(handle_, &found_) != 0; }

private:
    WIN32_FIND_DATAW found_{};
    HANDLE handle_ = INVALID_HANDLE_VALUE;
    DWORD error_ = ERROR_SUCCESS;
};

bool isSelfOrParent(std::wstring_view name) {
    return name == L"." || name == L"..";
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
    std::string name;
    DWORD error = ERROR_SUCCESS; // of the last folder
    std::function<bool()> goesOn;

    template <class Take>
    bool read(std::string_view internalFolder, Take take) {
        Enumeration entries(widePath(internalFolder));
        error = entries.error();
        if (!entries.isOpen()) {
            return error == ERROR_SUCCESS;
        }
        constexpr int entriesPerLook = 1024;
        int entryCount = 0;
        do {
            const WIN32_FIND_DATAW& entry = entries.entry();
            if (!isSelfOrParent(entry.cFileName)) {
                name.clear();
                appendNarrow(name, entry.cFileName);
                take(factsOf(entry), name);
            }
            if (++entryCount % entriesPerLook == 0 && goesOn && !goesOn()) {
                error = ERROR_CANCELLED;
                return false;
            }
        } while (entries.next());
        error = ::GetLastError();
        return error == ERROR_NO_MORE_FILES;
    }
};

FolderReader::FolderReader() : implementation_(std::make_unique<Implementation>()) {}
FolderReader::~FolderReader() = default;

// When a folder is read, its links are not treated as folders; so only the start can be a link here.
bool FolderReader::read(std::string_view internalFolder, FolderListing& listing, bool /*isStart*/) {
    listing.clear();
    return implementation_->read(internalFolder, [&](const EntryFacts& facts, const std::string& name) {
        listing.append(facts, name);
    });
}

// Nothing is cheaper here: the system returns all facts with the names.
bool FolderReader::readNames(std::string_view internalFolder, FolderListing& listing) {
    return read(internalFolder, listing, true);
}

void FolderReader::setGoesOn(std::function<bool()> goesOn) {
    implementation_->goesOn = std::move(goesOn);
}

std::string FolderReader::failure() const {
    return systemMessage(implementation_->error);
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
    const Enumeration entries(widePath(internalFolder));
    return entries.error() == ERROR_SUCCESS ? std::string() : systemMessage(entries.error());
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
