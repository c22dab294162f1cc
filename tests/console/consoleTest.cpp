#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>

#include "support/temporaryFolder.h"

namespace fs = std::filesystem;

namespace {

struct Outcome {
    int status = 0;
    std::string output;
    std::string errors;
};

// Runs the real program as a shell user would.
class Console : public testing::Test {
protected:
    Console() {
        for (const char* file : {"tree/a/one.TXT", "tree/a/two.txt", "tree/b/c/three"}) {
            folder.write(file, std::string(2048, 'x'));
        }
        folder.write("tree/direct.txt", "12345");
    }

    // Arguments are shell words; %T is the tree, %F the folder round it.
    Outcome run(std::string arguments, const std::string& prefix = "", const std::string& output = "out") {
        for (const auto& [mark, path] :
             {std::pair("%T", folder.typed("tree")), std::pair("%F", folder.typed())}) {
            for (std::size_t at = 0; (at = arguments.find(mark)) != std::string::npos;) {
                arguments.replace(at, 2, path);
            }
        }
        const std::string command = prefix + " " SPANNORY_SCAN " --app-folder '" + folder.typed("app") +
                                    "' " + arguments + " >'" + (folder / output).string() + "' 2>'" +
                                    folder.typed("err") + "' </dev/null";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
                output == "out" ? folder.read(output) : "", folder.read("err")};
    }

    static bool holds(const std::string& text, const std::string& part) {
        return text.find(part) != std::string::npos;
    }

    TemporaryFolder folder;
};

TEST_F(Console, printsTheFiguresOfEachPath) {
    const Outcome outcome = run("%T %T/b", "LC_ALL=C TZ=UTC");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    const std::string out = outcome.output;
    const std::size_t a = out.find("  a  ");
    const std::size_t b = out.find("  b  ");
    const std::size_t files = out.find("  |Files|  ");
    EXPECT_TRUE(a < b && b < files && files != std::string::npos) << out;
    EXPECT_TRUE(holds(out, "4.0 Kb\n")) << out;
    EXPECT_TRUE(holds(out, "  txt                 4.0 Kb           3\n")) << out;
    EXPECT_TRUE(holds(out, "  (no extension)      2.0 Kb           1\n")) << out;
    EXPECT_TRUE(holds(out, "\n8 items.\nFinished in ")) << out;
    EXPECT_TRUE(holds(out, folder.typed("tree/b") + "/\n")) << "the second path";
    EXPECT_TRUE(holds(run("--top 1 %T").output, "  (2 more)\n"));
    EXPECT_EQ(run("--quiet %T").output, "");
}

TEST_F(Console, endsWithAStatusAndALineForEachFailure) {
    folder.write("garbage.dat", "this is no database");
    folder.write("exists.html", "precious");
    ::mkfifo(folder.typed("pipe").c_str(), 0600);
    struct Case {
        const char* arguments;
        int status;
        const char* error; // part of its line; null for none
    };
    const Case cases[] = {
        {"", 2, "PATH"},
        {"--nonsense %T", 2, "nonsense"},
        {"--owners --no-owners %T", 2, "excludes"},
        {"--top many %T", 2, "top"},
        {"--top -1 %T", 2, "top"},
        {"--top 99999999999999999999 %T", 2, "top"},
        {"--html", 2, "html"},
        {"--help", 0, nullptr},
        {"--version", 0, nullptr},
        {"%F/missing", 1, "missing: Directory not found."},
        {"%T/direct.txt", 1, "direct.txt: Directory not found."},
        {"''", 1, "Directory not found."},
        {"%F/missing %T", 1, "missing"},
        {"--load %F/missing", 1, "missing"},
        {"--load %F", 1, "Could not find file"},
        {"--load %F/pipe", 1, "pipe"},
        {"--load %F/garbage.dat", 1, "Unrecognized database format"},
        {"--html %F/exists.html %T", 1, "exists.html: Overwrite existing file?"},
        {"--html %F/no/where.html %T", 1, "where.html"},
        {"--text %F %T", 1, "Is a directory"},
        {"--text /dev/full %T", 1, "Disk full: /dev/full"},
        {"--xml /dev/full %T", 1, "Disk full: /dev/full"},
        {"--excel %F/no/where.xlsx %T", 1, "where.xlsx"},
        {"--database %F/no/where.mdb %T", 1, "where.mdb"},
        {"--database %F/app/main.dat --force %T", 1, "working database itself"},
        {"--html %F/app/main.dat --force %T", 1, "working database itself"},
        {"--force --html %F/exists.html --quiet %T", 0, nullptr},
    };
    for (const Case& c : cases) {
        const Outcome outcome = run(c.arguments);
        EXPECT_EQ(outcome.status, c.status) << c.arguments << "\n" << outcome.errors;
        if (c.error == nullptr) {
            EXPECT_EQ(outcome.errors, "") << c.arguments;
        } else {
            EXPECT_TRUE(holds(outcome.errors, c.error)) << c.arguments << "\n" << outcome.errors;
        }
        if (c.status == 1) {
            EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1) << outcome.errors;
        }
        if (std::string(c.arguments).starts_with("--html %F/exists")) {
            EXPECT_EQ(folder.read("exists.html"), "precious");
        }
    }
    EXPECT_TRUE(holds(folder.read("exists.html"), "<TITLE>Spannory - Detail Report"));
    EXPECT_EQ(run("%T", "", "/dev/full").errors, "spannory-scan: standard output: No space left on device\n");
}

TEST_F(Console, writesTheSameReportsFromASavedScan) {
    EXPECT_EQ(run("--quiet --text %F/1.csv --xml %F/1.xml --html %F/1.html --excel %F/1.xlsx --database "
                  "%F/1.mdb %T")
                  .errors,
              "");
    fs::copy_file(folder / "app/main.dat", folder / "saved.mdb");
    EXPECT_EQ(folder.read("saved.mdb"), folder.read("1.mdb"));
    const Outcome loaded = run("--load %F/1.mdb --text %F/2.csv --xml %F/2.xml %T/b");
    EXPECT_EQ(loaded.errors, "");
    EXPECT_TRUE(holds(loaded.output, folder.typed("tree/b"))) << loaded.output;
    EXPECT_FALSE(holds(loaded.output, "Finished in"));
    EXPECT_EQ(folder.read("1.csv"), folder.read("2.csv"));
    const auto body = [&](const char* file) {
        return folder.read(file).substr(folder.read(file).find("-->"));
    };
    EXPECT_EQ(body("1.xml"), body("2.xml"));
    EXPECT_EQ(run("--load %F/1.mdb %T/nothing").status, 1);
    // The working database of the last run is not made anew when it is what is to be loaded.
    const Outcome own = run("--load %F/app/main.dat --text %F/3.csv");
    EXPECT_EQ(own.status, 0) << own.errors;
    EXPECT_TRUE(holds(own.errors, "main-2.dat"));
    EXPECT_EQ(folder.read("1.csv"), folder.read("3.csv"));
    const Outcome summary = run("--quiet --summary --text %F/4.csv %T");
    EXPECT_EQ(summary.errors, "");
    EXPECT_FALSE(holds(folder.read("4.csv"), "\"File\""));
}

TEST_F(Console, takesNoOtherFolderForOneThatIsGone) {
    const Outcome outcome = run(". --text report.csv --quiet",
                                "cd '" + folder.typed() + "' && mkdir gone && cd gone && rmdir ../gone;");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(holds(outcome.errors, "Path not found: the current folder")) << outcome.errors;
    EXPECT_FALSE(fs::exists("/report.csv"));
}

TEST_F(Console, survivesGarbageInItsFolder) {
    folder.write("app/settings.ini",
                 "[APPLICATION_SETTINGS]\r\ngetOwnerInfo=perhaps\r\n[[[\r\n\xFF=\xFE\r\n");
    folder.write("app/main.dat", "garbage");
    const Outcome outcome = run("%T");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_TRUE(holds(outcome.errors, "getOwnerInfo")) << outcome.errors;
    EXPECT_TRUE(holds(outcome.output, "8 items."));
}

TEST_F(Console, needsAnApplicationFolder) {
    folder.write("app", "a file where the folder should be");
    const Outcome outcome = run("%T");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(holds(outcome.errors, folder.typed("app"))) << outcome.errors;
    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1) << outcome.errors;
}

TEST_F(Console, isNotFooledByWhatADatabaseHolds) {
    folder.write(
        "make.sql",
        "create table details (drive, fullPath, parentFolder, size, isFolder, owner);"
        "create table nodes (nodeKey);"
        "insert into details values ('/\\', char(27) || '[31mred', '/\\x' || char(155) || '\\', 'big',"
        " 0, char(10) || 'me'), ('/\\', 'q', '/\\say \"x\"\\', 9e999, 0, x'00ff');");
    ASSERT_EQ(std::system(
                  ("sqlite3 -bail '" + folder.typed("hostile.dat") + "' < '" + folder.typed("make.sql") + "'")
                      .c_str()),
              0);
    const Outcome outcome = run("--load %F/hostile.dat --xml %F/x.xml --text %F/x.csv --html %F/x.html");
    EXPECT_EQ(outcome.status, 1) << "a quote in a path makes statements that fail";
    EXPECT_TRUE(holds(outcome.errors, "3075")) << outcome.errors;
    EXPECT_EQ((outcome.output + outcome.errors).find_first_of("\x1b\x9b"), std::string::npos)
        << outcome.output;
}

// A scan that takes more than the database may grow to, as on a full disk.
TEST_F(Console, tellsWhenTheScanCannotBeStored) {
    for (int i = 0; i < 2000; ++i) {
        folder.write("tree/many/" + std::string(200, 'n') + std::to_string(i), "");
    }
    const Outcome outcome =
        run("--html %F/x.html --database %F/x.mdb %T %T/a", "trap '' XFSZ; ulimit -f 400;");
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
            ::execl(SPANNORY_SCAN, "spannory-scan", "--app-folder", app.c_str(), "--text", report.c_str(),
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
