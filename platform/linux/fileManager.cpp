#include "platform/fileManager.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/paths.h"

extern char** environ; // NOLINT: the system's name

namespace platform {

namespace {

// Without output. Nothing if the program cannot be started.
std::optional<pid_t> started(std::vector<std::string> words) {
    std::vector<char*> arguments(words.size() + 1, nullptr);
    std::transform(words.begin(), words.end(), arguments.begin(),
                   [](std::string& word) { return word.data(); });
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        ::posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
    }
    pid_t child = 0;
    const int error = ::posix_spawnp(&child, arguments.front(), &actions, nullptr, arguments.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? std::optional(child) : std::nullopt;
}

bool endsWell(pid_t child) {
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

std::string fileUrl(const std::string& native) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string url = "file://";
    for (const char c : native) {
        const bool isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                             std::string_view("/-._~").find(c) != std::string_view::npos;
        if (isPlain) {
            url += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            url.append({'%', digits[byte >> 4], digits[byte & 15]});
        }
    }
    return url;
}

} // namespace

// The desktop's service selects the entry; what opens a folder cannot.
bool showInFileManager(std::string_view internalPath) {
    std::string native = toNative(internalPath);
    const std::size_t nameStart = native.rfind('/');
    std::string folder = nameStart == 0 || nameStart == std::string::npos ? "/" : native.substr(0, nameStart);
    const auto service =
        started({"gdbus", "call", "--session", "--timeout", "10", "--dest", "org.freedesktop.FileManager1",
                 "--object-path", "/org/freedesktop/FileManager1", "--method",
                 "org.freedesktop.FileManager1.ShowItems", "['" + fileUrl(native) + "']", ""});
    const auto opener = service ? std::nullopt : started({"xdg-open", folder});
    if (!service && !opener) {
        return false;
    }
    std::thread([service, opener, folder = std::move(folder)] {
        if (service && endsWell(*service)) {
            return;
        }
        if (const auto child = service ? started({"xdg-open", folder}) : opener) {
            endsWell(*child);
        }
    }).detach();
    return true;
}

} // namespace platform
