#include "console/consoleFixture.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <tuple>
#include <vector>

namespace fs = std::filesystem;

namespace {

const std::string program = (fs::read_symlink("/proc/self/exe").parent_path() / "spannory-scan").string();

// A terminal whose user has typed a line; what a program shows on it can be read.
class Terminal {
public:
    explicit Terminal(std::string_view line) : master_(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
        EXPECT_EQ(::grantpt(master_), 0);
        EXPECT_EQ(::unlockpt(master_), 0);
        terminal_ = ::open(::ptsname(master_), O_RDWR | O_NOCTTY); // NOLINT: on one thread
        EXPECT_EQ(::write(master_, line.data(), line.size()), std::ssize(line));
    }
    ~Terminal() {
        ::close(terminal_);
        ::close(master_);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    [[nodiscard]] int descriptor() const { return terminal_; }
    [[nodiscard]] std::string shown() const {
        std::string text;
        std::array<char, 4096> piece{};
        for (ssize_t length = 0; (length = ::read(master_, piece.data(), piece.size())) > 0;) {
            text.append(piece.data(), static_cast<std::size_t>(length));
        }
        return text;
    }

private:
    int master_;
    int terminal_ = -1;
};

TEST_F(Console, takesNoOtherFolderForOneThatIsGone) {
    const fs::path before = fs::current_path();
    fs::create_directory(folder / "gone");
    fs::current_path(folder / "gone");
    fs::remove(folder / "gone");
    const Outcome outcome = run(". --text report.csv --quiet");
    fs::current_path(before);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(holds(outcome.errors, "The current folder is gone.")) << outcome.errors;
    EXPECT_FALSE(fs::exists("/report.csv"));
}

// The text shown, in a shell's $'...', names the file.
TEST_F(Console, showsNamesAsTheyAreOnTheDisk) {
    constexpr std::pair<std::string_view, std::string_view> names[]{
        {"Who?", "Who?"},
        {"a\"b<c>d|e*", "a\"b<c>d|e*"},
        {"a\\b", "a\\b"},
        {"two\nlines\x1b[31m", "two\\012lines\\033[31m"},
        {"\\012", "\\134012"}, // no line break
        {"caf\xE9 caf\xC3\xA9", "caf\\351 caf\xC3\xA9"},
        {"\xC2\x9B", "\\302\\233"},                    // controls some terminals
        {"a\u202Ecod.exe", "a\\342\\200\\256cod.exe"}, // turns the text around
    };
    for (const auto& [name, shown] : names) {
        folder.write("tree/names/" + std::string(name) + "/file." + std::string(name), "x");
    }
    const Outcome outcome = run("--top 0 %T/names");
    for (const auto& [name, shown] : names) {
        EXPECT_TRUE(holds(outcome.output, "\n  " + std::string(shown) + " ")) << outcome.output;
        const std::string below = folder.typed("tree/names/") + std::string(shown) + "/\n";
        const std::vector<std::string> arguments{"--app-folder", folder.typed("app"),
                                                 folder.typed("tree/names/" + std::string(name))};
        EXPECT_TRUE(holds(testSystem::run("spannory-scan", arguments).output, below));
    }
}

TEST_F(Console, writesToNoFileOfItsOwnInPlaceOfAClosedStream) {
    const std::string command =
        program + " --app-folder " + folder.typed("app") + " " + folder.typed("tree") + " >&- 2>&-";
    EXPECT_NE(std::system(command.c_str()), 0) << "its output was lost"; // NOLINT: a shell closes them
    EXPECT_EQ(folder.read("app/main.dat.lock"), "");
}

TEST_F(Console, keepsItsFilesForTheUserAlone) {
    constexpr fs::perms own = fs::perms::owner_read | fs::perms::owner_write;
    const auto permissions = [&](const char* name) { return fs::status(folder / name).permissions(); };
    const mode_t before = ::umask(0);
    EXPECT_EQ(run("--quiet --text %F/1.csv --database %F/1.mdb %T").errors, "");
    ::umask(before);
    EXPECT_EQ(permissions("app"), fs::perms::owner_all);
    for (const char* name : {"main.dat", "main.dat.lock", "errorLog.txt"}) {
        EXPECT_EQ(permissions((std::string("app/") + name).c_str()), own) << name;
    }
    EXPECT_EQ(permissions("1.mdb"), own);
    EXPECT_EQ(permissions("1.csv"), own | fs::perms::group_read | fs::perms::group_write |
                                        fs::perms::others_read | fs::perms::others_write)
        << "reports are as the user wants new files to be";

    for (const char* name : {"errorLog.txt", "main.dat"}) {
        folder.write("precious", "precious");
        fs::remove(folder / "app" / name);
        fs::create_directories(folder / "app");
        fs::create_symlink(folder / "precious", folder / "app" / name);
        const Outcome outcome = run("--quiet %T");
        EXPECT_EQ(holds(outcome.errors, "main.dat is a link"), outcome.status == 1) << outcome.errors;
        EXPECT_EQ(outcome.status, name == std::string("main.dat") ? 1 : 0);
        EXPECT_EQ(folder.read("precious"), "precious") << name;
    }
}

// Runs the program, from a place where it cannot write, as a user who has nothing.
class ConsoleOfAnotherUser : public Console {
protected:
    ConsoleOfAnotherUser() {
        fs::create_directories(folder / "bin");
        for (const char* name : {"spannory-scan", "001.dat"}) {
            fs::copy_file(fs::path(program).parent_path() / name, folder / "bin" / name);
        }
        fs::permissions(folder.path(), fs::perms::all);
        fs::permissions(folder / "bin", fs::perms::owner_read | fs::perms::owner_exec |
                                            fs::perms::others_read | fs::perms::others_exec);
    }

    // Wholly another user: what only half changed its user may not look at itself, as a leak checker has to.
    Outcome runAsThem(const std::vector<std::string>& arguments) {
        std::vector<std::string> command{"/usr/bin/setpriv", "--reuid=65534", "--regid=65534",
                                         "--clear-groups"};
        if (::geteuid() != 0) {
            command = {"/usr/bin/env"};
        }
        std::vector<std::string> all(command.begin() + 1, command.end());
        all.push_back(folder.typed("bin/spannory-scan"));
        all.insert(all.end(), arguments.begin(), arguments.end());
        return testSystem::run(command.front(), all,
                               {{"SPANNORY_HOME", ""}, {"XDG_DATA_HOME", folder.typed("user")}});
    }
};

TEST_F(ConsoleOfAnotherUser, usesTheirFolderWhereItsOwnCannotBeWritten) {
    const Outcome outcome = runAsThem({folder.typed("tree")});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_TRUE(fs::exists(folder / "user/spannory/main.dat"));
}

TEST_F(ConsoleOfAnotherUser, usesNoApplicationFolderOfSomeoneElse) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only the superuser can make files of others";
    }
    constexpr uid_t them = 65534;
    folder.write("theirs/settings.ini", "");
    folder.write("mixed/settings.ini", "");
    folder.write("open/settings.ini", "");
    folder.write("sticky/settings.ini", "");
    ASSERT_EQ(::chown((folder / "theirs").c_str(), them, them), 0);
    ASSERT_EQ(::chown((folder / "mixed/settings.ini").c_str(), them, them), 0);
    fs::permissions(folder / "open", fs::perms::all);
    fs::permissions(folder / "sticky", fs::perms::all | fs::perms::sticky_bit);
    const auto used = [&](const char* name, bool byThem) {
        const std::vector<std::string> arguments{"--app-folder", folder.typed(name), "--quiet",
                                                 folder.typed("tree")};
        const Outcome outcome =
            byThem ? runAsThem(arguments) : testSystem::run(folder.typed("bin/spannory-scan"), arguments);
        EXPECT_EQ(holds(outcome.errors, " is not used, because "), outcome.status == 1) << outcome.errors;
        EXPECT_LE(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1) << outcome.errors;
        return outcome.status == 0;
    };
    for (const auto& [name, byRoot, byThem] : {std::tuple("theirs", false, true),
                                               {"mixed", false, false},
                                               {"open", false, false},
                                               {"sticky", true, true}}) {
        EXPECT_EQ(used(name, false), byRoot) << name;
        if (std::string(name) != "mixed") { // there, they could not write
            fs::remove(folder / name / "main.dat");
            fs::remove(folder / name / "main.dat.lock");
            EXPECT_EQ(used(name, true), byThem) << name;
        }
    }
    // The program's own folder is passed over for the next place.
    fs::permissions(folder / "bin", fs::perms::all);
    EXPECT_EQ(runAsThem({"--quiet", folder.typed("tree")}).status, 0);
    EXPECT_TRUE(fs::exists(folder / "user/spannory/main.dat"));
}

// In an application folder that everybody can write to; the program runs as the user, who owns "home".
TEST_F(ConsoleOfAnotherUser, usesNothingThatAStrangerHasPlanted) {
    constexpr uid_t user = 65534;
    constexpr uid_t stranger = 4712;
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only the superuser can make files of others";
    }
    folder.write("home/precious", "precious");
    folder.write("home/settings.ini", "[Startup]\r\nerrorLogTextFile=" + folder.typed("home/log") + "\r\n");
    fs::create_directory(folder / "home/folder");
    for (const char* name : {"home", "home/precious", "home/settings.ini", "home/folder"}) {
        ASSERT_EQ(::chown((folder / name).c_str(), user, user), 0);
    }
    const auto plant = [&](std::string_view kind, const fs::path& path) {
        if (kind == "file") {
            fs::copy_file(folder / "bin/001.dat", path);
            fs::permissions(path, fs::perms::all);
        } else if (kind == "empty file") {
            const std::ofstream made(path);
            fs::permissions(path, fs::perms::all);
        } else if (kind == "pipe") {
            ASSERT_EQ(::mkfifo(path.c_str(), 0666), 0);
        } else {
            fs::create_symlink(folder / "home" / kind, path);
        }
        ASSERT_EQ(::lchown(path.c_str(), stranger, stranger), 0);
    };
    struct Case {
        std::string_view kind; // or what a link leads to in the user's home
        const char* name;      // in the application folder; empty: the folder itself
        int status;
    };
    constexpr std::array cases{Case{"file", "main.dat", 1},
                               Case{"empty file", "main.dat", 1},
                               Case{"empty file", "main.dat.lock", 1},
                               Case{"pipe", "main.dat-journal", 0},
                               Case{"precious", "main.dat-journal", 0},
                               Case{"empty file", "errorLog.txt", 0},
                               Case{"pipe", "errorLog.txt", 0},
                               Case{"precious", "errorLog.txt", 0},
                               Case{"new", "errorLog.txt", 0},
                               Case{"settings.ini", "settings.ini", 1},
                               Case{"folder", "", 1}};
    for (const Case& each : cases) {
        const fs::path app = folder / "planted";
        fs::remove_all(app);
        if (*each.name != '\0') {
            fs::create_directory(app);
            fs::permissions(app, fs::perms::all | fs::perms::sticky_bit);
        }
        const fs::path planted = *each.name != '\0' ? app / each.name : app;
        plant(each.kind, planted);
        const std::uintmax_t size = each.kind.ends_with("file") ? fs::file_size(planted) : 0;
        const Outcome outcome = runAsThem({"--quiet", "--app-folder", app.string(), folder.typed("tree")});
        EXPECT_EQ(outcome.status, each.status) << each.kind << " as " << each.name << outcome.errors;
        EXPECT_EQ(size, each.kind.ends_with("file") ? fs::file_size(planted) : 0) << each.name;
        EXPECT_EQ(folder.read("home/precious"), "precious") << each.name;
        EXPECT_EQ(std::distance(fs::directory_iterator(folder / "home"), {}), 3) << each.name;
        EXPECT_TRUE(fs::is_empty(folder / "home/folder"));
    }
}

TEST_F(ConsoleOfAnotherUser, listsWhatCouldNotBeRead) {
    folder.write("tree/closed/file", "x");
    fs::permissions(folder / "tree/closed", fs::perms::none);
    const std::string closed = folder.typed("tree/closed/");
    Outcome outcome = runAsThem({"--quiet", folder.typed("tree")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(holds(outcome.errors, "1 folder could not be read. To list them, use --unreadable."))
        << outcome.errors;
    outcome = runAsThem({"--quiet", "--unreadable", folder.typed("tree")});
    EXPECT_EQ(outcome.output, "Folders that were not read:\n  " + closed + ": Permission denied\n\n");
    outcome = runAsThem({closed});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(holds(outcome.errors, "closed/: Permission denied\n")) << outcome.errors;
    folder.write("tree/names/two\nlines", "x");
    fs::permissions(folder / "tree/names", fs::perms::owner_read | fs::perms::others_read);
    outcome = runAsThem({"--quiet", "--unreadable", folder.typed("tree")});
    EXPECT_TRUE(holds(outcome.errors, "1 folder and 1 file could not be read.")) << outcome.errors;
    EXPECT_EQ(outcome.output, "Folders that were not read:\n  " + closed +
                                  ": Permission denied\nFiles that could not be read:\n  " +
                                  folder.typed("tree/names/two\\012lines") + ": Permission denied\n\n");
    outcome = runAsThem({"--quiet", "--unreadable", folder.typed("tree/names")});
    EXPECT_EQ(outcome.status, 0) << "its names were read";
    EXPECT_TRUE(holds(outcome.errors, "1 file could not be read.\n")) << outcome.errors;
    for (const char* name : {"tree/closed", "tree/names"}) {
        fs::permissions(folder / name, fs::perms::owner_all);
    }
}

TEST_F(Console, writesToAStreamAsItStands) {
    const std::string command =
        program + " --quiet --app-folder " + folder.typed("app") + " --summary --text ";
    const std::string tree = " " + folder.typed("tree");
    const std::string file = folder.typed("x");
    for (const std::string& rest : {"/dev/stdout" + tree + " >>" + file, "/dev/fd/3" + tree + " 3>>" + file,
                                    "/dev/stdout" + tree + " | cat >>" + file}) {
        folder.write("x", "before\n");
        EXPECT_EQ(std::system((command + rest).c_str()), 0) << rest; // NOLINT: a shell opens them
        EXPECT_TRUE(folder.read("x").starts_with("before\n\"Path\",")) << rest;
    }
    ASSERT_TRUE(testSystem::makePipe(folder / "pipe"));
    const std::string reader = "exec 3<>" + folder.typed("pipe") + "; "; // the reader opens first
    const std::string rest = folder.typed("pipe") + tree + " && head -n 1 <&3 >" + file;
    EXPECT_EQ(std::system((reader + command + rest).c_str()), 0); // NOLINT
    EXPECT_TRUE(folder.read("x").starts_with("\"Path\","));
    EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
}

// A scan that needs more space than the database may use, as on a full disk.
TEST_F(Console, tellsWhenTheScanCannotBeStored) {
    for (int i = 0; i < 2000; ++i) {
        folder.write("tree/many/" + std::string(200, 'n') + std::to_string(i), "");
    }
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit little{rlim_t{400} << 10, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &little);
    const Outcome outcome = run("--html %F/x.html --database %F/x.mdb %T %T/a");
    ::setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 4) << outcome.errors;
    EXPECT_TRUE(holds(outcome.errors, "main.dat")) << outcome.errors;
    for (const char* left : {"tree/a: not scanned", "x.html: not written", "x.mdb: not written"}) {
        EXPECT_TRUE(holds(outcome.errors, left)) << outcome.errors;
    }
    EXPECT_TRUE(holds(outcome.errors, "The disk is full")) << outcome.errors;
    EXPECT_EQ(run("%T").status, 0);
}

TEST_F(Console, tellsWhenTooManyFilesAreOpen) {
    const std::string command = "for n in 4 5 6 7 8; do (ulimit -n $n; exec " + program + " --app-folder " +
                                folder.typed("app") + " " + folder.typed("tree") + "); done >/dev/null 2>" +
                                folder.typed("errors");
    EXPECT_NE(std::system(command.c_str()), -1); // NOLINT: a shell sets the limits
    const std::string errors = folder.read("errors");
    if (holds(errors, "libasan") || holds(errors, "libtsan") || holds(errors, "has invalid vptr")) {
        GTEST_SKIP() << "a sanitizer opens files, too";
    }
    EXPECT_TRUE(holds(errors, "tree: Too many open files")) << errors;
    EXPECT_FALSE(holds(errors, "Folder not found")) << errors;
}

// For input and errors; if there is one.
void takeAsTerminal(int terminal) {
    if (terminal >= 0) {
        ::dup2(terminal, STDIN_FILENO);
        ::dup2(terminal, STDERR_FILENO);
    }
}

TEST_F(Console, overwritesOnlyWhenToldSo) {
    const std::string app = folder.typed("app");
    const std::string report = folder.typed("report.csv");
    const std::string scanned = folder.typed("tree");
    for (const auto& [answer, overwrites] :
         {std::pair("\n", false), {"n\n", false}, {" y\n", false}, {"y\n", true}, {"YES\n", true}}) {
        folder.write("report.csv", "old");
        const Terminal terminal(answer);
        if (terminal.descriptor() < 0) {
            GTEST_SKIP() << "no terminal can be opened, as in a chroot without /dev/pts";
        }
        const pid_t child = ::fork();
        if (child == 0) {
            takeAsTerminal(terminal.descriptor());
            ::dup2(::open("/dev/null", O_WRONLY), STDOUT_FILENO); // NOLINT
            ::execl(program.c_str(), "spannory-scan", "--app-folder", app.c_str(), "--text", report.c_str(),
                    scanned.c_str(), nullptr); // NOLINT
            ::_exit(127);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status == 0, overwrites) << answer << terminal.shown();
        EXPECT_EQ(folder.read("report.csv") != "old", overwrites) << answer;
    }
}

// Runs the program as a child whose output is a full pipe, so that it blocks at its first table.
class ConsoleSignals : public Console {
protected:
    // Sends the signal while the child prints the tables of its first path; returns the exit status as a
    // shell shows it.
    int signalled(int signal, const char* option = "--quiet=false", int terminal = -1) {
        std::array<int, 2> pipe{};
        EXPECT_EQ(::pipe(pipe.data()), 0);
        const int capacity = ::fcntl(pipe[1], F_GETPIPE_SZ);
        const std::string filling(static_cast<std::size_t>(capacity), ' ');
        EXPECT_EQ(::write(pipe[1], filling.data(), filling.size()), capacity);
        const pid_t child = ::fork();
        if (child == 0) {
            ::dup2(pipe[1], STDOUT_FILENO);
            takeAsTerminal(terminal);
            const std::string app = folder.typed("app");
            const std::string first = folder.typed("tree/a");
            const std::string second = folder.typed("tree");
            const std::string report = folder.typed("cancelled.csv");
            ::execl(program.c_str(), "spannory-scan", "--app-folder", app.c_str(), option, "--text",
                    report.c_str(), first.c_str(), second.c_str(), nullptr); // NOLINT
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

    // True once the child blocks in a write call to its standard output.
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
    folder.write("cancelled.csv", "complete");
    EXPECT_EQ(signalled(SIGINT), 130);
    EXPECT_EQ(folder.read("cancelled.csv"), "complete");
    EXPECT_EQ(signalled(SIGINT, "--force"), 130);
    EXPECT_EQ(folder.read("cancelled.csv"), report);
    EXPECT_EQ(signalled(SIGKILL), 128 + SIGKILL);
    const Outcome after = run("%T");
    EXPECT_EQ(after.status, 0);
    EXPECT_EQ(after.errors, "");
}

TEST_F(ConsoleSignals, leaveACompleteFileThatMightHaveBeenReplaced) {
    folder.write("cancelled.csv", "complete");
    const Terminal terminal("y\n");
    if (terminal.descriptor() < 0) {
        GTEST_SKIP() << "no terminal can be opened, as in a chroot without /dev/pts";
    }
    EXPECT_EQ(signalled(SIGINT, "--quiet=false", terminal.descriptor()), 130);
    EXPECT_EQ(folder.read("cancelled.csv"), "complete");
    const std::string shown = terminal.shown();
    EXPECT_TRUE(holds(shown, "Overwrite existing file? " + folder.typed("cancelled.csv") + " (")) << shown;
    EXPECT_TRUE(holds(shown, "M, 8 bytes) [y/N] ")) << shown;
    EXPECT_TRUE(holds(shown, "not replaced, because the scan was cancelled (use --force)")) << shown;
}

} // namespace
