#include "platform/files.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "support/errorNumberOf.h"
#include "support/temporaryFolder.h"
#include "support/testSystem.h"

namespace fs = std::filesystem;

namespace {

TEST(Files, failWithTheNumberOfTheCause) {
    const TemporaryFolder folder;
    folder.write("there", "x");
    const std::string missing = folder.typed("missing");
    std::vector<std::pair<int, std::function<void()>>> cases = {
        {53, [&] { platform::deleteFile(missing); }},
        {75, [&] { platform::deleteFile(folder.typed()); }},
        {53, [&] { static_cast<void>(platform::readFile(missing)); }},
        {75, [&] { static_cast<void>(platform::readFile(folder.typed())); }},
        {75, [&] { static_cast<void>(platform::readFile(testSystem::device())); }},
        {6, [&] { static_cast<void>(platform::readFile(folder.typed("there"), 0)); }},
        {53, [&] { platform::appendToFile(missing, "x"); }},
        {76, [&] { platform::replaceFile(folder.typed("no/where"), "x"); }},
        {75, [&] { platform::FileSink(folder.typed()); }},
        {53, [&] { platform::copyFile(missing, folder.typed("copy")); }},
        {76, [&] { platform::copyFile(folder.typed("there"), folder.typed("there/copy")); }},
        {0,
         [&] {
             platform::makeFolders(folder.typed("a/b/c"));
             platform::makeFolders(folder.typed("a/b/c"));
         }},
        {58, [&] { platform::makeFolders(folder.typed("there")); }},
    };
    if (testSystem::makePipe(folder / "pipe")) {
        cases.emplace_back(75, [&] { platform::deleteFile(folder.typed("pipe")); });
        cases.emplace_back(75, [&] { static_cast<void>(platform::readFile(folder.typed("pipe"))); });
        cases.emplace_back(75,
                           [&] { platform::FileSink(folder.typed("pipe")); }); // no reader: must not block
    }
    if (const std::string full = testSystem::fullDevice(); !full.empty()) {
        cases.emplace_back(61, [full] { platform::replaceFile(full, "x"); });
        cases.emplace_back(61, [full] {
            platform::FileSink sink(full);
            sink.write("x");
            sink.close();
        });
    }
    int index = 0;
    for (const auto& [number, action] : cases) {
        EXPECT_EQ(errorNumberOf(action), number) << "case " << index;
        ++index;
    }
    EXPECT_FALSE(fs::exists(folder / "missing")) << "appending makes no file";
}

TEST(Files, areReplacedWhole) {
    const TemporaryFolder folder;
    folder.write("target", "old");
    fs::permissions(folder / "target", fs::perms::owner_read | fs::perms::owner_write);
    const fs::perms before = fs::status(folder / "target").permissions();
    platform::replaceFile(folder.typed("target"), "new");
    EXPECT_EQ(folder.read("target"), "new");
    EXPECT_EQ(fs::status(folder / "target").permissions(), before);
    folder.write("copy", "older");
    platform::copyFile(folder.typed("target"), folder.typed("copy"));
    EXPECT_EQ(folder.read("copy"), "new");
    platform::appendToFile(folder.typed("copy"), "er");
    EXPECT_EQ(folder.read("copy"), "newer");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 2) << "nothing temporary is left";
    EXPECT_FALSE(platform::isSameFile(folder.typed("copy"), folder.typed("target")));
}

TEST(Files, areReplacedByTwoAtOnce) {
    const TemporaryFolder folder;
    for (const std::string before : {"", "old"}) {
        fs::remove(folder / "target");
        if (!before.empty()) {
            folder.write("target", before);
        }
        platform::Replacement first(folder.typed("target"));
        platform::Replacement second(folder.typed("target"));
        const platform::Replacement discarded(folder.typed("target"));
        first.write("first");
        second.write(std::string(1'000'000, '2'));
        EXPECT_EQ(folder.read("target"), before);
        second.commit();
        EXPECT_EQ(folder.read("target").size(), 1'000'000U);
        first.commit();
        EXPECT_EQ(folder.read("target"), "first");
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1) << "nothing temporary is left";
}

TEST(Files, areFollowedThroughLinks) {
    const TemporaryFolder folder;
    folder.write("real/target", "old");
    ASSERT_TRUE(testSystem::makeLink(folder / "real", folder / "folder link"));
    std::vector<std::string> names{"folder link/target"};
    if (testSystem::makeLink(folder / "real/target", folder / "link")) { // not every system has both
        names.emplace_back("link");
    }
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        const std::string link = folder.typed(name);
        const std::string target = folder.typed("real/target");
        EXPECT_TRUE(platform::isSameFile(link, target));
        EXPECT_EQ(platform::resolveLinks(link), platform::resolveLinks(target));
        platform::replaceFile(link, "new in " + name);
        EXPECT_EQ(folder.read("real/target"), "new in " + name);
    }
    EXPECT_EQ(names.size() == 2, testSystem::isLink(folder / "link")) << "a link stays a link";
}

TEST(Files, ofTheProgramsOwnAreNoLinks) {
    const TemporaryFolder folder;
    folder.write("precious", "old");
    if (!testSystem::makeLink(folder / "precious", folder / "link") ||
        !testSystem::makeLink(folder / "missing", folder / "loose")) {
        GTEST_SKIP() << "this user cannot make links to files here";
    }
    for (const char* name : {"link", "loose"}) {
        SCOPED_TRACE(name);
        const std::string link = folder.typed(name);
        EXPECT_TRUE(platform::isLink(link));
        EXPECT_EQ(errorNumberOf([&] { platform::FileSink{link}; }), 75);
        EXPECT_EQ(errorNumberOf([&] { platform::appendToFile(link, "x"); }), 75);
        EXPECT_EQ(errorNumberOf([&] { static_cast<void>(platform::FileLock::tryAcquire(link)); }), 75);
        EXPECT_EQ(platform::resolveFolderLinks(link), platform::resolveLinks(folder.typed()) + "\\" + name);
    }
    EXPECT_EQ(folder.read("precious"), "old");
    EXPECT_FALSE(fs::exists(folder / "missing"));
    EXPECT_FALSE(platform::isLink(folder.typed("precious")));
}

TEST(Files, areWrittenUnderTheLongestNameButNotWhenReadOnly) {
    const TemporaryFolder folder;
    const std::string longest(255, 'n');
    platform::replaceFile(folder.typed(longest), "x");
    EXPECT_EQ(folder.read(longest), "x");

    folder.write("kept", "old");
    fs::permissions(folder.path(), fs::perms::all);
    const testSystem::ReadOnlyFile kept(folder / "kept");
    if (!kept.isReadOnly()) {
        GTEST_SKIP() << "the superuser may write everything";
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
    first = platform::FileLock::tryAcquire(folder.typed("x.lock"));
    ASSERT_TRUE(first);
    first->removeAtEnd();
    EXPECT_TRUE(fs::exists(folder / "x.lock"));
    first.reset();
    EXPECT_FALSE(fs::exists(folder / "x.lock"));
}

} // namespace
