#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/files.h"
#include "platform/openFiles.h"
#include "support/everyWriter.h"
#include "support/testSystem.h"

namespace fs = std::filesystem;

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class Writers : public testing::Test, protected EveryWriter {
protected:
    std::size_t entries() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.path()), {}));
    }

    TemporaryFolder folder;
};

TEST_F(Writers, replaceTheFileThatThePathLeadsToAndNothingElse) {
    for (const Writer& writer : writers()) {
        SCOPED_TRACE(writer.name);
        const TemporaryFolder place;
        const std::string old(100'000, ' '); // longer than its replacement
        place.write("real/report", old);
        ASSERT_TRUE(testSystem::makeLink(place / "real", place / "link"));
        place.write("real/" + platform::replacementName("report", 1), "left by a program that was killed");
        place.write("real/" + platform::replacementName("other", 1), "of another file");
        writer.write(place.typed("link/report"));
        EXPECT_THAT(userInterface.messages, IsEmpty());
        EXPECT_LT(place.read("real/report").size(), old.size());
        EXPECT_FALSE(place.read("real/report").empty());
        EXPECT_TRUE(testSystem::isLink(place / "link"));
        EXPECT_EQ(std::distance(fs::directory_iterator(place / "real"), {}), 2) << "what was left is gone";
        writer.write(place.typed("link/" + std::string(255, 'n')));
        EXPECT_THAT(userInterface.messages, IsEmpty());
        EXPECT_EQ(fs::file_size(place / "real/report"),
                  fs::file_size(place / ("real/" + std::string(255, 'n'))));
    }
}

TEST_F(Writers, leaveWhatTheyMayNotReplace) {
    folder.write("kept", "old");
    fs::permissions(folder.path(), fs::perms::all);
    for (const fs::path& each : {application.path(), application / "main.dat"}) { // read by someone else
        fs::permissions(each, fs::perms::all);
    }
    const auto all = writers();
    const testSystem::ReadOnlyFile kept(folder / "kept");
    if (!kept.isReadOnly()) {
        GTEST_SKIP() << "the superuser writes everything";
    }
    for (const Writer& writer : all) {
        SCOPED_TRACE(writer.name);
        userInterface.messages.clear();
        writer.write(folder.typed("kept"));
        writer.write(folder.typed("no/where"));
        ASSERT_THAT(userInterface.messages, SizeIs(2));
        EXPECT_THAT(userInterface.messages[0],
                    HasSubstr("70 Permission is denied: " + folder.typed("kept") + " was not written."));
        EXPECT_THAT(userInterface.messages[1], HasSubstr("76 There is no such folder: " +
                                                         folder.typed("no/where") + " was not written."));
        EXPECT_EQ(folder.read("kept"), "old");
        EXPECT_EQ(entries(), 1U);
    }
}

} // namespace
