#include "support/testSystem.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <memory>

#include "platform/paths.h"
#include "support/linux/unprivileged.h"
#include "support/temporaryFolder.h"

namespace fs = std::filesystem;

std::string testSystem::root() {
    return "/\\";
}

std::string testSystem::driveAt(const fs::path& folder) {
    return folder.string() + '\\';
}

fs::path testSystem::pathOf(std::string_view text) {
    return text;
}

std::string testSystem::textOf(const fs::path& path) {
    return path.string();
}

void testSystem::makeFolders(const fs::path& folder) {
    fs::create_directories(folder);
}

void testSystem::writeFile(const fs::path& file, std::string_view content) {
    std::ofstream(file, std::ios::binary) << content;
}

void testSystem::removeAll(const fs::path& path) {
    std::error_code ignored;
    if (!fs::is_directory(fs::symlink_status(path, ignored))) {
        fs::remove(path, ignored);
        return;
    }
    for (fs::recursive_directory_iterator entry(path, ignored), end; !ignored && entry != end;
         entry.increment(ignored)) {
        if (entry->is_directory(ignored) && !entry->is_symlink(ignored)) {
            fs::permissions(entry->path(), fs::perms::owner_all, ignored);
        }
    }
    if (ignored) { // a path too long for one call
        static_cast<void>(std::system(("rm -rf '" + path.string() + "'").c_str()) == 0);
    }
    fs::remove_all(path, ignored);
}

std::vector<testSystem::Entry> testSystem::entriesOf(const fs::path& folder) {
    std::vector<Entry> entries;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        struct stat status {};
        ::lstat(entry.path().c_str(), &status);
        entries.push_back({platform::internalName(entry.path().filename().string()), S_ISDIR(status.st_mode),
                           static_cast<std::uint64_t>(status.st_size), status.st_atim.tv_sec,
                           status.st_mtim.tv_sec});
    }
    return entries;
}

void testSystem::settleAccessTimes(const fs::path& /*folder*/) {}

std::vector<std::string> testSystem::hostileNames() {
    std::vector<std::string> names{"file \"q\" 'a'.txt", "trailing. "};
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '/') {
            names.push_back(std::string("n") + static_cast<char>(byte) + ".T" + static_cast<char>(byte));
        }
    }
    return names;
}

// Created from within, one folder at a time, because the paths are longer than the system accepts.
int testSystem::makeDeepFolders(const fs::path& folder) {
    constexpr int levels = 3000;
    const fs::path before = fs::current_path();
    fs::current_path(folder);
    for (int level = 0; level < levels; ++level) {
        if (::mkdir("deep", 0700) != 0 || ::chdir("deep") != 0) {
            return 0;
        }
    }
    writeFile("bottom", "1234567");
    fs::current_path(before);
    return levels;
}

bool testSystem::makePipe(const fs::path& path) {
    return ::mkfifo(path.c_str(), 0600) == 0;
}

bool testSystem::makeLink(const fs::path& target, const fs::path& link) {
    fs::create_symlink(target, link);
    return true;
}

bool testSystem::isLink(const fs::path& path) {
    return fs::is_symlink(path);
}

std::string testSystem::device() {
    return "/dev/zero";
}

std::string testSystem::fullDevice() {
    return "/dev/full";
}

std::string testSystem::fontFolder() {
    return {};
}

void testSystem::setVariable(const std::string& name, const std::string& value) {
    value.empty() ? ::unsetenv(name.c_str()) : ::setenv(name.c_str(), value.c_str(), 1);
}

std::string testSystem::temporaryFolderVariable() {
    return "TMPDIR";
}

std::string testSystem::accountName() {
    const passwd* account = ::getpwuid(::geteuid());
    return account == nullptr ? "" : account->pw_name;
}

testSystem::Outcome testSystem::run(const std::string& program, const std::vector<std::string>& arguments,
                                    const std::vector<std::pair<std::string, std::string>>& variables,
                                    const std::string& outputFile) {
    const TemporaryFolder folder;
    const std::string output = outputFile.empty() ? folder.typed("out") : outputFile;
    const std::string errors = folder.typed("err");
    const std::string file = (fs::read_symlink("/proc/self/exe").parent_path() / program).string();
    std::vector<std::string> words{file};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        const auto redirect = [](int stream, const std::string& path, int flags) {
            ::dup2(::open(path.c_str(), flags, 0600), stream);
        };
        redirect(STDIN_FILENO, "/dev/null", O_RDONLY);
        redirect(STDOUT_FILENO, output, O_WRONLY | O_CREAT | O_TRUNC);
        redirect(STDERR_FILENO, errors, O_WRONLY | O_CREAT | O_TRUNC);
        for (const auto& [name, value] : variables) {
            setVariable(name, value);
        }
        ::execv(file.c_str(), pointers.data());
        ::_exit(127);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
            outputFile.empty() ? folder.read("out") : "", folder.read("err")};
}

// The superuser may read everything, so the test runs as another user meanwhile.
testSystem::ClosedFolder::ClosedFolder(const fs::path& folder) : folder_(folder) {
    fs::permissions(folder, fs::perms::none);
    auto user = std::make_unique<Unprivileged>();
    closed_ = user->is();
    handle_ = reinterpret_cast<std::intptr_t>(user.release()); // NOLINT
}

testSystem::ClosedFolder::~ClosedFolder() {
    delete reinterpret_cast<Unprivileged*>(handle_); // NOLINT
    std::error_code ignored;
    fs::permissions(folder_, fs::perms::owner_all, ignored);
}

testSystem::ReadOnlyFile::ReadOnlyFile(fs::path file) : file_(std::move(file)) {
    fs::permissions(file_, fs::perms::owner_read | fs::perms::others_read);
    auto user = std::make_unique<Unprivileged>();
    readOnly_ = user->is();
    handle_ = reinterpret_cast<std::intptr_t>(user.release()); // NOLINT
}

testSystem::ReadOnlyFile::~ReadOnlyFile() {
    delete reinterpret_cast<Unprivileged*>(handle_); // NOLINT
}
