#include "support/testSystem.h"

#include <windows.h>

#include "platform/win32/wide.h"
#include "support/temporaryFolder.h"

namespace fs = std::filesystem;

namespace {

constexpr std::uint64_t ticksPerSecond = 10'000'000;
constexpr std::int64_t secondsBefore1970 = 11'644'473'600;

// With the prefix for long paths and for names exactly as written.
std::wstring longPath(const fs::path& path) {
    return L"\\\\?\\" + fs::absolute(path).make_preferred().wstring();
}

std::int64_t secondsOf(const FILETIME& time) {
    const auto ticks = static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
    return static_cast<std::int64_t>(ticks / ticksPerSecond) - secondsBefore1970;
}

template <class Take>
void forEachEntry(const std::wstring& folder, Take take) {
    WIN32_FIND_DATAW entry{};
    HANDLE search = ::FindFirstFileW((folder + L"\\*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        const std::wstring_view name = entry.cFileName;
        if (name != L"." && name != L"..") {
            take(entry);
        }
    } while (::FindNextFileW(search, &entry) != 0);
    ::FindClose(search);
}

bool isFolder(DWORD attributes) {
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0;
}

void removeTree(const std::wstring& folder) {
    forEachEntry(folder, [&](const WIN32_FIND_DATAW& entry) {
        const std::wstring path = folder + L"\\" + entry.cFileName;
        ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        if (isFolder(entry.dwFileAttributes)) {
            removeTree(path);
        } else if (::DeleteFileW(path.c_str()) == 0) {
            ::RemoveDirectoryW(path.c_str()); // a link to a folder
        }
    });
    ::RemoveDirectoryW(folder.c_str());
}

// Quoted by the system's rules for arguments on a command line.
std::wstring quotedArgument(std::string_view argument) {
    std::wstring result = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : platform::wide(argument)) {
        result.append(c == L'"' ? backslashes + 1 : 0, L'\\');
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        result += c;
    }
    return result.append(backslashes, L'\\') + L"\"";
}

HANDLE openInheritable(const std::wstring& path, DWORD access, DWORD creation) {
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    return ::CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable, creation,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
}

// The exit status of a command; -1 if it cannot be started.
int execute(std::wstring command, STARTUPINFOW& startup) {
    PROCESS_INFORMATION process{};
    if (::CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                         &process) == 0) {
        return -1;
    }
    ::WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 0;
    ::GetExitCodeProcess(process.hProcess, &status);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    return static_cast<int>(status);
}

// An imitation of the system may not create links itself, but the system below it can. Then only links to
// folders are recognised.
bool makeLinkBelow(const fs::path& target, const fs::path& link) {
    using UnixName = char*(CDECL*)(LPCWSTR);
    const auto unixName = reinterpret_cast<UnixName>(reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    if (unixName == nullptr) {
        return false;
    }
    const char* from = unixName(target.c_str());
    const char* to = unixName(link.c_str());
    if (from == nullptr || to == nullptr) {
        return false;
    }
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    execute(L"\\\\?\\unix\\bin\\ln -s " + quotedArgument(from) + L" " + quotedArgument(to), startup);
    for (int waits = 0; !testSystem::isLink(link) && waits < 100; ++waits) {
        ::Sleep(20); // the command does not wait by itself
    }
    return testSystem::isLink(link);
}

} // namespace

std::string testSystem::root() {
    return "C:\\";
}

std::string testSystem::driveAt(const fs::path& /*folder*/) {
    return {};
}

fs::path testSystem::pathOf(std::string_view text) {
    return platform::wide(text);
}

std::string testSystem::textOf(const fs::path& path) {
    return platform::narrow(fs::path(path).make_preferred().wstring());
}

void testSystem::makeFolders(const fs::path& folder) {
    const std::wstring path = longPath(folder);
    constexpr std::size_t rootLength = 7; // `\\?\C:\`
    for (std::size_t end = rootLength; end != std::wstring::npos;) {
        end = path.find(L'\\', end + 1);
        ::CreateDirectoryW(path.substr(0, end).c_str(), nullptr);
    }
}

void testSystem::writeFile(const fs::path& file, std::string_view content) {
    HANDLE handle = ::CreateFileW(longPath(file).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    ::WriteFile(handle, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
    ::CloseHandle(handle);
}

void testSystem::removeAll(const fs::path& path) {
    const std::wstring wide = longPath(path);
    if (::DeleteFileW(wide.c_str()) == 0) { // a folder
        removeTree(wide);
    }
}

std::vector<testSystem::Entry> testSystem::entriesOf(const fs::path& folder) {
    std::vector<Entry> entries;
    forEachEntry(longPath(folder), [&](const WIN32_FIND_DATAW& entry) {
        const auto size = static_cast<std::uint64_t>(entry.nFileSizeHigh) << 32 | entry.nFileSizeLow;
        entries.push_back({platform::narrow(entry.cFileName), isFolder(entry.dwFileAttributes), size,
                           secondsOf(entry.ftLastAccessTime), secondsOf(entry.ftLastWriteTime)});
    });
    return entries;
}

void testSystem::settleAccessTimes(const fs::path& folder) {
    for (const Entry& entry : entriesOf(folder)) {
        if (entry.isFolder) {
            settleAccessTimes(folder / pathOf(entry.name));
        }
    }
}

std::vector<std::string> testSystem::hostileNames() {
    std::vector<std::string> names{"it's %PATH% & more",
                                   "trailing. ",
                                   "aux",
                                   "nul.txt",
                                   "COM1",
                                   "dot.",
                                   "\uF05C looks mapped",
                                   "\U0001F600",
                                   "\u00C4\u00DF\u0130",
                                   "[a-z]#!",
                                   "~1",
                                   "a;b,c=d",
                                   " blank first",
                                   "x\x7Fy"};
    for (const char* surrogate : {"\xED\xA0\x80", "\xED\xBF\xBF"}) { // unpaired, so not valid UTF-16
        names.push_back(std::string("lone ") + surrogate + ".txt");
    }
    return names;
}

// The system itself would allow 6,000, but an imitation of it looks up every name on the way each time.
int testSystem::makeDeepFolders(const fs::path& folder) {
    constexpr int levels = 150;
    std::wstring path = longPath(folder);
    for (int level = 0; level < levels; ++level) {
        path += L"\\deep";
        if (::CreateDirectoryW(path.c_str(), nullptr) == 0) {
            return 0;
        }
    }
    HANDLE file = ::CreateFileW((path + L"\\bottom").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    ::WriteFile(file, "1234567", 7, &written, nullptr);
    ::CloseHandle(file);
    return levels;
}

// No file system has pipes here.
bool testSystem::makePipe(const fs::path& /*path*/) {
    return false;
}

bool testSystem::makeLink(const fs::path& target, const fs::path& link) {
    const DWORD attributes = ::GetFileAttributesW(target.c_str());
    const bool toFolder = attributes != INVALID_FILE_ATTRIBUTES && isFolder(attributes);
    constexpr DWORD allowUnprivileged = 2;
    const DWORD flags = (toFolder ? SYMBOLIC_LINK_FLAG_DIRECTORY : 0) | allowUnprivileged;
    ::CreateSymbolicLinkW(link.c_str(), target.c_str(), flags);
    return isLink(link) || (toFolder && makeLinkBelow(target, link));
}

bool testSystem::isLink(const fs::path& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

std::string testSystem::device() {
    return "NUL";
}

std::string testSystem::fullDevice() {
    return {};
}

// An imitation of the system has no fonts of its own; those of the system below it are used.
std::string testSystem::fontFolder() {
    const std::string own = "C:\\windows\\Fonts";
    return entriesOf(own).empty() ? "Z:\\usr\\share\\fonts\\truetype\\dejavu" : own;
}

void testSystem::setVariable(const std::string& name, const std::string& value) {
    ::SetEnvironmentVariableW(platform::wide(name).c_str(),
                              value.empty() ? nullptr : platform::wide(value).c_str());
}

std::string testSystem::temporaryFolderVariable() {
    return "TMP";
}

std::string testSystem::accountName() {
    wchar_t name[257]; // NOLINT
    DWORD length = 257;
    return ::GetUserNameW(name, &length) == 0 ? "" : platform::narrow(name);
}

testSystem::Outcome testSystem::run(const std::string& program, const std::vector<std::string>& arguments,
                                    const std::vector<std::pair<std::string, std::string>>& variables,
                                    const std::string& outputFile) {
    const TemporaryFolder folder;
    wchar_t own[MAX_PATH]; // NOLINT
    ::GetModuleFileNameW(nullptr, own, MAX_PATH);
    std::wstring command = quotedArgument(textOf(fs::path(own).parent_path() / (program + ".exe")));
    for (const std::string& argument : arguments) {
        command += L" " + quotedArgument(argument);
    }
    for (const auto& [name, value] : variables) {
        setVariable(name, value);
    }
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = openInheritable(L"NUL", GENERIC_READ, OPEN_EXISTING);
    startup.hStdOutput =
        openInheritable(outputFile.empty() ? (folder / "out").wstring() : platform::wide(outputFile),
                        GENERIC_WRITE, OPEN_ALWAYS);
    startup.hStdError = openInheritable((folder / "err").wstring(), GENERIC_WRITE, OPEN_ALWAYS);
    const int status = execute(command, startup);
    for (HANDLE handle : {startup.hStdInput, startup.hStdOutput, startup.hStdError}) {
        ::CloseHandle(handle);
    }
    for (const auto& [name, value] : variables) {
        setVariable(name, {});
    }
    return {status, outputFile.empty() ? folder.read("out") : "", folder.read("err")};
}

// While it is open without sharing, nobody else can open it.
testSystem::ClosedFolder::ClosedFolder(const fs::path& folder) : folder_(folder) {
    HANDLE handle = ::CreateFileW(folder.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    handle_ = reinterpret_cast<std::intptr_t>(handle);
    closed_ = handle != INVALID_HANDLE_VALUE;
}

testSystem::ClosedFolder::~ClosedFolder() {
    ::CloseHandle(reinterpret_cast<HANDLE>(handle_)); // NOLINT
}

testSystem::ReadOnlyFile::ReadOnlyFile(fs::path file) : file_(std::move(file)) {
    ::SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_READONLY);
}

testSystem::ReadOnlyFile::~ReadOnlyFile() {
    ::SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);
}
