#include "platform/environment.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/auxv.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <thread>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"

extern char** environ; // NOLINT: the system's name

namespace platform {

namespace {

std::string executablePath() {
    std::array<char, PATH_MAX> path{};
    if (::readlink("/proc/self/exe", path.data(), path.size() - 1) > 0) {
        return path.data();
    }
    // Without /proc: the name under which the system started the program.
    const auto* name = reinterpret_cast<const char*>(::getauxval(AT_EXECFN)); // NOLINT
    return name != nullptr && ::realpath(name, path.data()) != nullptr ? path.data() : "";
}

std::string folderOf(const std::string& nativeFile) {
    return toInternal(nativeFile.substr(0, nativeFile.rfind('/') + 1));
}

} // namespace

std::optional<std::string> environmentVariable(std::string_view name) {
    const char* value = std::getenv(std::string(name).c_str());
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

std::string hostName() {
    std::array<char, HOST_NAME_MAX + 1> name{};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

// The file is written for shells: a value may stand in quotes, with "\" before special characters.
std::string systemName() {
    constexpr std::string_view name = "\nPRETTY_NAME=";
    constexpr std::size_t longest = 64U << 10;
    std::string result;
    try {
        const std::string text = "\n" + readStart("/etc/os-release", longest);
        const std::size_t start = text.find(name);
        for (std::size_t at = start == std::string::npos ? text.size() : start + name.size();
             at < text.size() && text[at] != '\n'; ++at) {
            at += text[at] == '\\' ? 1 : 0;
            if (at < text.size() && text[at] != '"' && text[at] != '\'') {
                result += text[at];
            }
        }
    } catch (const RuntimeError&) { // not every system has it
    }
    return result.empty() ? "Linux" : result;
}

std::string executableFolder() {
    return folderOf(executablePath());
}

std::string userDataFolder() {
    const std::string base = environmentVariable("XDG_DATA_HOME").value_or("");
    return toInternal((base.starts_with('/') ? base : std::string("~/.local/share")) + "/spannory/");
}

std::string shareFolder() {
    const std::string folder = executableFolder();
    return folder.empty() ? folder : toInternal(toNative(folder) + "/../share/spannory/");
}

std::string temporaryFolder() {
    const std::string named = environmentVariable("TMPDIR").value_or("");
    return toInternal((named.starts_with('/') ? named : std::string("/tmp")) + "/");
}

bool folderIsWritable(std::string_view path) {
    return ::faccessat(AT_FDCWD, toNative(path).c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

bool hasDisplay() {
    return environmentVariable("DISPLAY").has_value() || environmentVariable("WAYLAND_DISPLAY").has_value();
}

// There are none on this system.
void keepSystemBoxesAway() {}

void letTooLargeWritesFail() {
    ::signal(SIGXFSZ, SIG_IGN);
}

bool openInAssociatedProgram(std::string_view path) {
    std::string program = "xdg-open";
    std::string file = toNative(toInternal(path));
    std::array<char*, 3> arguments{program.data(), file.data(), nullptr};
    pid_t child = 0;
    if (::posix_spawnp(&child, program.c_str(), nullptr, nullptr, arguments.data(), environ) != 0) {
        return false;
    }
    // The application may run for as long as the file stays open, and someone has to wait for it.
    std::thread([child] { ::waitpid(child, nullptr, 0); }).detach();
    return true;
}

bool saveDialogFollowsFileType() noexcept {
    return false;
}

} // namespace platform
