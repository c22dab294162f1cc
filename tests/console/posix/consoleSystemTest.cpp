#include "console/consoleFixture.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>

namespace fs = std::filesystem;

namespace {

const std::string program = (fs::read_symlink("/proc/self/exe").parent_path() / "spannory-scan").string();

TEST_F(Console, takesNoOtherFolderForOneThatIsGone) {
    const fs::path before = fs::current_path();
    fs::create_directory(folder / "gone");
    fs::current_path(folder / "gone");
    fs::remove(folder / "gone");
    const Outcome outcome = run(". --text report.csv --quiet");
    fs::current_path(before);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(holds(outcome.errors, "Path not found: the current folder")) << outcome.errors;
    EXPECT_FALSE(fs::exists("/report.csv"));
}

TEST_F(Console, writesToNoFileOfItsOwnInPlaceOfAClosedStream) {
    const std::string command =
        program + " --app-folder " + folder.typed("app") + " " + folder.typed("tree") + " >&- 2>&-";
    EXPECT_NE(std::system(command.c_str()), 0) << "its output was lost"; // NOLINT: a shell closes them
    EXPECT_EQ(folder.read("app/main.dat.lock"), "");
}

// A scan that takes more than the database may grow to, as on a full disk.
TEST_F(Console, tellsWhenTheScanCannotBeStored) {
    for (int i = 0; i < 2000; ++i) {
        folder.write("tree/many/" + std::string(200, 'n') + std::to_string(i), "");
    }
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit little{rlim_t{400} << 10, before.rlim_max};
    auto* const handler = std::signal(SIGXFSZ, SIG_IGN); // NOLINT: the program inherits it
    ::setrlimit(RLIMIT_FSIZE, &little);
    const Outcome outcome = run("--html %F/x.html --database %F/x.mdb %T %T/a");
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 4) << outcome.errors;
    EXPECT_TRUE(holds(outcome.errors, "main.dat")) << outcome.errors;
    for (const char* left : {"tree/a: not scanned", "x.html: not written", "x.mdb: not written"}) {
        EXPECT_TRUE(holds(outcome.errors, left)) << outcome.errors;
    }
    EXPECT_EQ(run("%T").status, 0);
}

// The program as a child whose output is a pipe that is full at first, so that it waits with its first table.
class ConsoleSignals : public Console {
protected:
    // Sends the signal while the child prints its first path's tables; the exit status as a shell sees it.
    int signalled(int signal) {
        std::array<int, 2> pipe{};
        EXPECT_EQ(::pipe(pipe.data()), 0);
        const int capacity = ::fcntl(pipe[1], F_GETPIPE_SZ);
        const std::string filling(static_cast<std::size_t>(capacity), ' ');
        EXPECT_EQ(::write(pipe[1], filling.data(), filling.size()), capacity);
        const pid_t child = ::fork();
        if (child == 0) {
            ::dup2(pipe[1], STDOUT_FILENO);
            const std::string app = folder.typed("app");
            const std::string first = folder.typed("tree/a");
            const std::string second = folder.typed("tree");
            const std::string report = folder.typed("cancelled.csv");
            ::execl(program.c_str(), "spannory-scan", "--app-folder", app.c_str(), "--text", report.c_str(),
                    first.c_str(), second.c_str(), nullptr); // NOLINT
            ::_exit(127);
        }
        ::close(pipe[1]);
        for (int waits = 0; !sleepsInWrite(child) && waits < 5000; ++waits) {
            ::usleep(1000);
        }
        ::kill(child, signal);
        std::string taken(filling.size(), ' ');
        while (::read(pipe[0], taken.data(), taken.size()) > 0) {
        }
        ::close(pipe[0]);
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

    // True once the child waits for room in the pipe: it is in a write call to its standard output.
    static bool sleepsInWrite(pid_t child) {
        std::ifstream call("/proc/" + std::to_string(child) + "/syscall");
        int number = -1;
        std::string first;
        return call >> number >> first && number == SYS_write && first == "0x1";
    }
};

TEST_F(ConsoleSignals, endAScanWithoutHarmToTheNext) {
    EXPECT_EQ(signalled(SIGINT), 130);
    const std::string report = folder.read("cancelled.csv");
    EXPECT_TRUE(holds(report, "tree/a/one.TXT")) << "what was recorded is written";
    EXPECT_FALSE(holds(report, "tree/b/c/three")) << "the second path was cancelled";
    EXPECT_EQ(signalled(SIGKILL), 128 + SIGKILL);
    const Outcome after = run("%T");
    EXPECT_EQ(after.status, 0);
    EXPECT_EQ(after.errors, "");
}

} // namespace
