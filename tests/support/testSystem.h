#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// What the tests need of the system that they run on; posix/ and win32/ implement it, and CMake picks one.
// What a system does not have is empty or false, and the test leaves it out or skips.
namespace testSystem {

// --- paths ----------------------------------------------------------------------------------------------

// The drive that made-up paths lie on: `/\` or `C:\`.
[[nodiscard]] std::string root();

// Between texts, which are UTF-8 (or a POSIX name's bytes), and the library's paths.
[[nodiscard]] std::filesystem::path pathOf(std::string_view text);
[[nodiscard]] std::string textOf(const std::filesystem::path& path);

// --- files and folders, by paths of any length ----------------------------------------------------------

void makeFolders(const std::filesystem::path& folder);
void writeFile(const std::filesystem::path& file, std::string_view content);
// With all below it. What cannot be removed stays.
void removeAll(const std::filesystem::path& path);

// What the system says of one entry itself, asked by other calls than the program's.
struct Entry {
    std::string name; // internal
    bool isFolder = false;
    std::uint64_t size = 0;
    std::int64_t accessed = 0; // seconds since 1970
    std::int64_t modified = 0;
};
[[nodiscard]] std::vector<Entry> entriesOf(const std::filesystem::path& folder);

// Where a folder's time of access cannot be kept from changing when it is first read, this reads all folders.
void settleAccessTimes(const std::filesystem::path& folder);

// Names of files that are hard to store, query and write into reports.
[[nodiscard]] std::vector<std::string> hostileNames();

// Folders one in the other below the path, each called "deep", with a file of 7 bytes in the last. How many
// there are, 0 when they cannot be made; the last's path is longer than what one plain call takes.
int makeDeepFolders(const std::filesystem::path& folder);

// --- special files --------------------------------------------------------------------------------------

// A pipe that nobody reads or writes.
bool makePipe(const std::filesystem::path& path);
// A symbolic link to an existing file or folder (an absolute path), or one that leads nowhere.
bool makeLink(const std::filesystem::path& target, const std::filesystem::path& link);
[[nodiscard]] bool isLink(const std::filesystem::path& path);
// A device that reading never ends.
[[nodiscard]] std::string device();
// A file that is always full.
[[nodiscard]] std::string fullDevice();

// Where fonts lie that Qt's offscreen platform does not find by itself; empty where it does.
[[nodiscard]] std::string fontFolder();

// --- the process ----------------------------------------------------------------------------------------

// An environment variable; an empty value takes it away.
void setVariable(const std::string& name, const std::string& value);
// The variable that says where temporary files go.
[[nodiscard]] std::string temporaryFolderVariable();
[[nodiscard]] std::string accountName();

struct Outcome {
    int status = 0;
    std::string output;
    std::string errors;
};

// Runs a program that stands beside the test program, without input, and waits for its end. Variables are
// added to its environment; output goes to a file when one is named.
[[nodiscard]] Outcome run(const std::string& program, const std::vector<std::string>& arguments,
                          const std::vector<std::pair<std::string, std::string>>& variables = {},
                          const std::string& outputFile = {});

// While one lives, the folder's entries cannot be read.
class ClosedFolder {
public:
    explicit ClosedFolder(const std::filesystem::path& folder);
    ~ClosedFolder();
    ClosedFolder(const ClosedFolder&) = delete;
    ClosedFolder& operator=(const ClosedFolder&) = delete;

    // False where it can be read all the same.
    [[nodiscard]] bool isClosed() const noexcept { return closed_; }

private:
    std::intptr_t handle_ = -1;
    bool closed_ = false;
};

// While one lives, the file can be read and not written.
class ReadOnlyFile {
public:
    explicit ReadOnlyFile(std::filesystem::path file);
    ~ReadOnlyFile();
    ReadOnlyFile(const ReadOnlyFile&) = delete;
    ReadOnlyFile& operator=(const ReadOnlyFile&) = delete;

    // False where it can be written all the same.
    [[nodiscard]] bool isReadOnly() const noexcept { return readOnly_; }

private:
    std::filesystem::path file_;
    std::intptr_t handle_ = -1;
    bool readOnly_ = true;
};

} // namespace testSystem
