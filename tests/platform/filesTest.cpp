#include "platform/files.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "support/errorNumberOf.h"
#include "support/temporaryFolder.h"
#include "support/testSystem.h"

namespace fs = std::filesystem;

namespace {

// The error that the action throws, as "53 description"; empty if there is none.
std::string errorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return std::to_string(error.number()) + " " + error.what();
    }
    return {};
}

TEST(Files, sayWhatWasNotDoneAndWhy) {
    const TemporaryFolder folder;
    folder.write("there", "x");
    const std::string missing = folder.typed("missing");
    const std::string noFile = "53 There is no such file: " + missing;
    const std::string noFolder = "76 There is no such folder: ";
    const std::string isFolder = "75 It is a folder: " + folder.typed();
    const std::string notOrdinary = "75 It is no ordinary file: ";
    std::vector<std::pair<std::string, std::function<void()>>> cases = {
        {noFile + " was not deleted.", [&] { platform::deleteFile(missing); }},
        {isFolder + " was not deleted.", [&] { platform::deleteFile(folder.typed()); }},
        {noFile + " was not read.", [&] { static_cast<void>(platform::readFile(missing)); }},
        {isFolder + " was not read.", [&] { static_cast<void>(platform::readFile(folder.typed())); }},
        {notOrdinary + testSystem::device() + " was not read.",
         [&] { static_cast<void>(platform::readFile(testSystem::device())); }},
        {"6 The file is too large: " + folder.typed("there") + " was not read.",
         [&] { static_cast<void>(platform::readFile(folder.typed("there"), 0)); }},
        {noFile + " was not written.", [&] { platform::appendToFile(missing, "x"); }},
        {noFolder + folder.typed("no/where") + " was not written.",
         [&] { platform::replaceFile(folder.typed("no/where"), "x"); }},
        {isFolder + " was not written.", [&] { platform::FileSink(folder.typed()); }},
        {isFolder + " was not written.", [&] { platform::replaceFile(folder.typed(), "x"); }},
        {noFile + " was not read.", [&] { platform::copyFile(missing, folder.typed("copy")); }},
        {noFolder + folder.typed("there/copy") + " was not written.",
         [&] { platform::copyFile(folder.typed("there"), folder.typed("there/copy")); }},
        {"",
         [&] {
             platform::makeFolders(folder.typed("a/b/c"));
             platform::makeFolders(folder.typed("a/b/c"));
         }},
        {"58 There is a file of that name already: " + folder.typed("there") + " was not created.",
         [&] { platform::makeFolders(folder.typed("there")); }},
    };
    if (testSystem::makePipe(folder / "pipe")) {
        const std::string pipe = folder.typed("pipe");
        cases.emplace_back(notOrdinary + pipe + " was not deleted.", [pipe] { platform::deleteFile(pipe); });
        cases.emplace_back(notOrdinary + pipe + " was not read.",
                           [pipe] { static_cast<void>(platform::readFile(pipe)); });
        cases.emplace_back("75 No such device or address: " + pipe + " was not written.",
                           [pipe] { platform::FileSink{pipe}; }); // no reader: must not block
    }
    if (const std::string full = testSystem::fullDevice(); !full.empty()) {
        const std::string diskFull = "61 The disk is full: " + full + " was not written.";
        cases.emplace_back(diskFull, [full] { platform::replaceFile(full, "x"); });
        cases.emplace_back(diskFull, [full] {
            platform::FileSink sink(full);
            sink.write("x");
            sink.close();
        });
    }
    for (const auto& [error, action] : cases) {
        EXPECT_EQ(errorOf(action), error);
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
