#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// What the tests need from the system they run on; implemented in linux/ and win32/, and chosen by CMake. If
// the system lacks something, the function returns an empty value or false, and the test skips that part.
namespace testSystem {

// --- paths ----------------------------------------------------------------------------------------------

// The drive of the paths made up by tests: `/\` or `C:\`.
[[nodiscard]] std::string root();

// The key with which the folder counts as a drive; empty if only real drives do.
[[nodiscard]] std::string driveAt(const std::filesystem::path& folder);

// Convert between texts, which are UTF-8 (or the bytes of a POSIX name), and the library's paths.
[[nodiscard]] std::filesystem::path pathOf(std::string_view text);
[[nodiscard]] std::string textOf(const std::filesystem::path& path);

// --- files and folders, by paths of any length ----------------------------------------------------------

void makeFolders(const std::filesystem::path& folder);
void writeFile(const std::filesystem::path& file, std::string_view content);
// Removes it with all its contents. Anything that cannot be removed stays.
void removeAll(const std::filesystem::path& path);

// The system's facts about one entry, found by other calls than the program's.
struct Entry {
    std::string name; // in internal form
    bool isFolder = false;
    std::uint64_t size = 0;
    std::int64_t accessed = 0; // seconds since 1970
    std::int64_t modified = 0;
};
[[nodiscard]] std::vector<Entry> entriesOf(const std::filesystem::path& folder);

// Reads all folders, on a system where the first reading of a folder always changes its access time.
void settleAccessTimes(const std::filesystem::path& folder);

// Names of files that are hard to store, query and write into reports.
[[nodiscard]] std::vector<std::string> hostileNames();

// Creates nested folders below the path, each called "deep", with a file of 7 bytes in the last one. Returns
// their number, 0 if they cannot be created; the path of the last is longer than a plain call accepts.
int makeDeepFolders(const std::filesystem::path& folder);

// --- special files --------------------------------------------------------------------------------------

// A pipe without reader and writer.
bool makePipe(const std::filesystem::path& path);
// A symbolic link to an existing file or folder (an absolute path), or to nowhere.
bool makeLink(const std::filesystem::path& target, const std::filesystem::path& link);
[[nodiscard]] bool isLink(const std::filesystem::path& path);
// A device that can be read endlessly.
[[nodiscard]] std::string device();
// A file to which every write fails because the disk is full.
[[nodiscard]] std::string fullDevice();

// The folder of fonts that Qt's offscreen platform does not find by itself; empty if it finds them.
[[nodiscard]] std::string fontFolder();

// --- the process ----------------------------------------------------------------------------------------

// Sets an environment variable; an empty value removes it.
void setVariable(const std::string& name, const std::string& value);
// The variable that names the folder for temporary files.
[[nodiscard]] std::string temporaryFolderVariable();
[[nodiscard]] std::string accountName();

struct Outcome {
    int status = 0;
    std::string output;
    std::string errors;
};

// Runs a program beside the test program, without input, and waits until it ends. The variables are added to
// its environment; its output goes to a file if one is named.
[[nodiscard]] Outcome run(const std::string& program, const std::vector<std::string>& arguments,
                          const std::vector<std::pair<std::string, std::string>>& variables = {},
                          const std::string& outputFile = {});

// While an object lives, the folder's entries cannot be read.
class ClosedFolder {
public:
    explicit ClosedFolder(const std::filesystem::path& folder);
    ~ClosedFolder();
    ClosedFolder(const ClosedFolder&) = delete;
    ClosedFolder& operator=(const ClosedFolder&) = delete;

    // False if the folder can be read anyway.
    [[nodiscard]] bool isClosed() const noexcept { return closed_; }

private:
    std::filesystem::path folder_;
    std::intptr_t handle_ = -1;
    bool closed_ = false;
};

// While an object lives, the file can be read but not written.
class ReadOnlyFile {
public:
    explicit ReadOnlyFile(std::filesystem::path file);
    ~ReadOnlyFile();
    ReadOnlyFile(const ReadOnlyFile&) = delete;
    ReadOnlyFile& operator=(const ReadOnlyFile&) = delete;

    // False if the file can be written anyway.
    [[nodiscard]] bool isReadOnly() const noexcept { return readOnly_; }

private:
    std::filesystem::path file_;
    std::intptr_t handle_ = -1;
    bool readOnly_ = true;
};

} // namespace testSystem
