#include "platform/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>

#include "support/errorNumberOf.h"
#include "support/temporaryFolder.h"
#include "support/unprivileged.h"

namespace fs = std::filesystem;

namespace {

TEST(Files, failWithTheNumberOfTheCause) {
    const TemporaryFolder folder;
    folder.write("there", "x");
    ::mkfifo(folder.typed("pipe").c_str(), 0600);
    const std::string missing = folder.typed("missing");
    const std::pair<int, std::function<void()>> cases[] = {
        {53, [&] { platform::deleteFile(missing); }},
        {75, [&] { platform::deleteFile(folder.typed()); }},
        {75, [&] { platform::deleteFile(folder.typed("pipe")); }},
        {53, [&] { static_cast<void>(platform::readFile(missing)); }},
        {75, [&] { static_cast<void>(platform::readFile(folder.typed())); }},
        {75, [&] { static_cast<void>(platform::readFile(folder.typed("pipe"))); }},
        {75, [&] { static_cast<void>(platform::readFile("/dev/zero")); }},
        {6, [&] { static_cast<void>(platform::readFile(folder.typed("there"), 0)); }},
        {53, [&] { platform::appendToFile(missing, "x"); }},
        {76, [&] { platform::replaceFile(folder.typed("no/where"), "x"); }},
        {61, [&] { platform::replaceFile("/dev/full", "x"); }},
        {75, [&] { platform::FileSink(folder.typed()); }},
        {75, [&] { platform::FileSink(folder.typed("pipe")); }}, // nobody reads it: no endless wait
        {61,
         [&] {
             platform::FileSink sink("/dev/full");
             sink.write("x");
             sink.close();
         }},
        {53, [&] { platform::copyFile(missing, folder.typed("copy")); }},
        {76, [&] { platform::copyFile(folder.typed("there"), folder.typed("there/copy")); }},
        {0,
         [&] {
             platform::makeFolders(folder.typed("a/b/c"));
             platform::makeFolders(folder.typed("a/b/c"));
         }},
        {58, [&] { platform::makeFolders(folder.typed("there")); }},
    };
    int index = 0;
    for (const auto& [number, action] : cases) {
        EXPECT_EQ(errorNumberOf(action), number) << "case " << index;
        ++index;
    }
    EXPECT_FALSE(fs::exists(folder / "missing")) << "appending makes no file";
}

TEST(Files, areReplacedWholeThroughLinks) {
    const TemporaryFolder folder;
    folder.write("target", "old");
    fs::permissions(folder / "target", fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink("target", folder / "link");
    platform::replaceFile(folder.typed("link"), "new");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(folder.read("target"), "new");
    EXPECT_EQ(fs::status(folder / "target").permissions(), fs::perms::owner_read | fs::perms::owner_write);
    platform::copyFile(folder.typed("target"), folder.typed("copy"));
    EXPECT_EQ(folder.read("copy"), "new");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 3) << "nothing temporary is left";
    EXPECT_TRUE(platform::isSameFile(folder.typed("link"), folder.typed("target")));
    EXPECT_FALSE(platform::isSameFile(folder.typed("copy"), folder.typed("target")));
}

TEST(Files, areWrittenUnderTheLongestNameButNotWhenReadOnly) {
    const TemporaryFolder folder;
    const std::string longest(255, 'n');
    platform::replaceFile(folder.typed(longest), "x");
    EXPECT_EQ(folder.read(longest), "x");

    folder.write("kept", "old");
    fs::permissions(folder.path(), fs::perms::all);
    fs::permissions(folder / "kept", fs::perms::owner_read | fs::perms::others_read);
    const Unprivileged unprivileged;
    if (!unprivileged.is()) {
        GTEST_SKIP() << "the superuser writes everything";
    }
    EXPECT_EQ(errorNumberOf([&] { platform::replaceFile(folder.typed("kept"), "new"); }), 70);
    EXPECT_EQ(errorNumberOf([&] { platform::deleteFile(folder.typed("kept")); }), 70);
    EXPECT_EQ(folder.read("kept"), "old");
}

TEST(Files, lockBetweenHolders) {
    const TemporaryFolder folder;
    auto first = platform::FileLock::tryAcquire(folder.typed("x.lock"));
    ASSERT_TRUE(first);
    EXPECT_FALSE(platform::FileLock::tryAcquire(folder.typed("x.lock")));
    first.reset();
    EXPECT_TRUE(platform::FileLock::tryAcquire(folder.typed("x.lock")));
}

} // namespace
