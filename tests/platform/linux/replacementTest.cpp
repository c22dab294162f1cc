#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "platform/files.h"
#include "platform/linux/replacement.h"
#include "platform/runtimeError.h"
#include "support/errorNumberOf.h"
#include "support/linux/unprivileged.h"
#include "support/temporaryFolder.h"
#include "support/testSystem.h"

namespace fs = std::filesystem;

using platform::Making;

namespace {

constexpr unsigned nobody = 65534;

struct stat statusOf(const fs::path& file) {
    struct stat status {};
    ::stat(file.c_str(), &status);
    return status;
}

mode_t modeOf(const fs::path& file) {
    return statusOf(file).st_mode & 07777;
}

std::size_t entries(const TemporaryFolder& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.path()), {}));
}

class Replacement : public testing::Test {
protected:
    Replacement() { fs::permissions(folder.path(), fs::perms::all); }

    std::string file(const char* name = "report") const { return folder.typed(name); }

    TemporaryFolder folder;
};

TEST_F(Replacement, keepsOwnerAndPermissions) {
    const bool isRoot = ::geteuid() == 0;
    for (const mode_t mode : {mode_t{0600}, mode_t{0640}, mode_t{0777}, mode_t{04755}}) {
        folder.write("report", "old");
        if (isRoot) {
            ASSERT_EQ(::chown(file().c_str(), nobody, nobody), 0);
        }
        ASSERT_EQ(::chmod(file().c_str(), mode), 0);
        platform::openReplacement(file(), platform::NewFile::shared,
                                  mode == 0640 ? Making::named : Making::unnamed)
            ->finish();
        EXPECT_EQ(modeOf(folder / "report"), mode);
        EXPECT_EQ(statusOf(folder / "report").st_uid, isRoot ? nobody : ::geteuid());
    }
    const mode_t before = ::umask(027);
    platform::openReplacement(file("new"), platform::NewFile::shared, Making::unnamed)->finish();
    platform::openReplacement(file("named"), platform::NewFile::shared, Making::named)->finish();
    ::umask(before);
    EXPECT_EQ(modeOf(folder / "new"), mode_t{0640}) << "a new file's are those that the user asks for";
    EXPECT_EQ(modeOf(folder / "named"), mode_t{0640});
}

TEST_F(Replacement, givesNobodyMoreThanBeforeWhereTheOwnerCannotBeKept) {
    folder.write("report", "old");
    ASSERT_EQ(::chmod(file().c_str(), 04662), 0);
    const Unprivileged user;
    if (!user.is() || ::getuid() != 0) {
        GTEST_SKIP() << "only the superuser can leave a file of another owner";
    }
    platform::replaceFile(file(), "new");
    EXPECT_EQ(statusOf(folder / "report").st_uid, nobody);
    EXPECT_EQ(modeOf(folder / "report"), mode_t{0622}) << "another group has the rights of others";
}

TEST_F(Replacement, keepsAccessLists) {
    constexpr const char* accessList = "system.posix_acl_access";
    // Version 2: owner rw, user 1 r, group none, mask r, others none.
    const std::array<unsigned char, 44> list{
        2, 0, 0,    0,    1,    0,    6,    0, 0xFF, 0xFF, 0xFF, 0xFF, 2,    0,    4,
        0, 1, 0,    0,    0,    4,    0,    0, 0,    0xFF, 0xFF, 0xFF, 0xFF, 0x10, 0,
        4, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0x20, 0, 0,    0,    0xFF, 0xFF, 0xFF, 0xFF};
    folder.write("report", "old");
    if (::setxattr(file().c_str(), accessList, list.data(), list.size(), 0) != 0) {
        GTEST_SKIP() << "no access lists on this volume";
    }
    platform::replaceFile(file(), "new");
    std::array<unsigned char, 44> after{};
    EXPECT_EQ(::getxattr(file().c_str(), accessList, after.data(), after.size()), 44);
    EXPECT_EQ(after, list);
    EXPECT_EQ(folder.read("report"), "new");
}

TEST_F(Replacement, followsALinkThatLeadsNowhereYet) {
    fs::create_directory(folder / "real");
    fs::create_symlink("real/report", folder / "first");
    fs::create_symlink(folder / "first", folder / "second");
    platform::replaceFile(file("second"), "new");
    EXPECT_EQ(folder.read("real/report"), "new");
    EXPECT_TRUE(fs::is_symlink(folder / "second") && fs::is_symlink(folder / "first"));
}

// What another user has put in the target's place, in a folder that everybody can write to.
TEST_F(Replacement, takesNothingOfAStrangersForItsTarget) {
    constexpr unsigned stranger = 4712;
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only the superuser can make files of others";
    }
    fs::permissions(folder.path(), fs::perms::all | fs::perms::sticky_bit);
    folder.write("precious", "precious");
    fs::create_symlink("precious", folder / "link");
    fs::create_symlink("new", folder / "link to nothing");
    fs::create_symlink("link", folder / "own link to theirs");
    folder.write("file", "theirs");
    ASSERT_EQ(::mkfifo(file("pipe").c_str(), 0666), 0);
    for (const char* name : {"link", "link to nothing", "file", "pipe"}) {
        ASSERT_EQ(::lchown(file(name).c_str(), stranger, stranger), 0);
    }
    for (const char* name : {"link", "link to nothing", "own link to theirs", "file", "pipe"}) {
        const std::size_t before = entries(folder);
        EXPECT_EQ(errorNumberOf([&] { platform::replaceFile(file(name), "new"); }), 75) << name;
        EXPECT_EQ(entries(folder), before) << name;
    }
    EXPECT_EQ(folder.read("precious"), "precious");
    EXPECT_EQ(folder.read("file"), "theirs");

    // Where they can be replaced, what is for the user alone stays so.
    fs::permissions(folder.path(), fs::perms::all);
    ASSERT_EQ(::chmod(file("file").c_str(), 0666), 0);
    const Unprivileged user;
    ASSERT_TRUE(user.is());
    platform::replaceFile(file("file"), "new", platform::NewFile::own);
    EXPECT_EQ(modeOf(folder / "file"), mode_t{0600});
}

TEST_F(Replacement, saysThatTheFolderTakesNoNewFile) {
    folder.write("closed/report", "old");
    fs::permissions(folder / "closed/report", fs::perms::all);
    fs::permissions(folder / "closed", fs::perms::owner_read | fs::perms::owner_exec |
                                           fs::perms::others_read | fs::perms::others_exec);
    const Unprivileged user;
    if (!user.is()) {
        GTEST_SKIP() << "the superuser cannot become another user here";
    }
    try {
        platform::replaceFile(file("closed/report"), "new");
        ADD_FAILURE();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), 70);
        EXPECT_EQ(error.what(), "Permission is denied to make a file in its folder: " +
                                    file("closed/report") + " was not written.");
    }
    EXPECT_EQ(folder.read("closed/report"), "old");
}

TEST_F(Replacement, leavesAloneWhatIsNotLeftByItself) {
    const std::string name = platform::replacementName("report", 1);
    fs::create_directory(folder / name);
    fs::create_symlink("elsewhere", folder / platform::replacementName("report", 2));
    ASSERT_TRUE(testSystem::makePipe(folder / platform::replacementName("report", 3)));
    folder.write(name + "~", "another name");
    platform::replaceFile(file(), "new");
    EXPECT_EQ(folder.read("report"), "new");
    EXPECT_EQ(entries(folder), 5U);
}

TEST_F(Replacement, doesNotDisturbAnotherThatHasAName) {
    const auto first = platform::openReplacement(file(), platform::NewFile::shared, Making::named);
    const auto second = platform::openReplacement(file(), platform::NewFile::shared, Making::named);
    const auto unnamed = platform::openReplacement(file(), platform::NewFile::shared, Making::unnamed);
    EXPECT_GE(entries(folder), 2U);
    for (const auto& each : {&first, &unnamed, &second}) {
        (*each)->finish();
    }
    EXPECT_EQ(entries(folder), 1U);
}

TEST_F(Replacement, leavesAtMostOneFileWhenKilledWhichTheNextRemoves) {
    folder.write("report", "old");
    for (const Making making : {Making::unnamed, Making::named, Making::named}) {
        std::array<int, 2> pipe{};
        ASSERT_EQ(::pipe(pipe.data()), 0);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            const auto replacement = platform::openReplacement(file(), platform::NewFile::shared, making);
            replacement->write(std::string(1'000'000, 'x'));
            if (::write(pipe[1], "x", 1) != 1) {
                ::_exit(1);
            }
            ::pause();
        }
        char ready = 0;
        EXPECT_EQ(::read(pipe[0], &ready, 1), 1);
        const std::size_t whileItRuns = entries(folder);
        EXPECT_LE(whileItRuns, 2U);
        platform::replaceFile(file(), "of another program");
        EXPECT_EQ(entries(folder), whileItRuns) << "what is in use stays";
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        ::close(pipe[0]);
        ::close(pipe[1]);
        EXPECT_EQ(entries(folder), whileItRuns) << "nothing removes it by itself";
        EXPECT_EQ(folder.read("report"), "of another program");
    }
    EXPECT_EQ(entries(folder), 2U);
    platform::replaceFile(file(), "new");
    EXPECT_EQ(entries(folder), 1U);
}

} // namespace
