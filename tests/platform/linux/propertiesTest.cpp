#include "platform/properties.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <thread>

#include "platform/fileManager.h"
#include "support/temporaryFolder.h"

namespace platform {
namespace {

using Kind = Properties::Kind;

TEST(Properties, areThoseOfTheEntryItself) {
    const TemporaryFolder folder;
    folder.write("file", std::string(5000, 'x'));
    folder.write("sub/x", "");
    std::filesystem::create_symlink("sub", folder / "link");
    ::mkfifo((folder / "pipe").c_str(), 0600);
    ::chmod((folder / "file").c_str(), 04751);
    ::chmod((folder / "sub").c_str(), 01777);
    std::filesystem::resize_file(folder / "sub/x", 1 << 20); // a hole
    struct Case {
        const char* name;
        Kind kind;
        const char* mode;
    };
    for (const Case& expected :
         {Case{"file", Kind::file, "-rwsr-x--x"}, Case{"sub", Kind::folder, "drwxrwxrwt"},
          Case{"sub\\", Kind::folder, "drwxrwxrwt"}, Case{"link", Kind::link, "lrwxrwxrwx"},
          Case{"pipe", Kind::other, "prw-------"}}) {
        const auto properties = propertiesOf(folder.internal() + "\\" + expected.name);
        ASSERT_TRUE(properties) << expected.name;
        EXPECT_EQ(properties->kind, expected.kind) << expected.name;
        EXPECT_EQ(properties->mode, expected.mode) << expected.name;
    }
    EXPECT_EQ(propertiesOf(folder.internal("link"))->linkTarget, "sub");
    EXPECT_EQ(propertiesOf(folder.internal("sub/x"))->size, 1 << 20);
    EXPECT_LT(propertiesOf(folder.internal("sub/x"))->sizeOnDisk, 1 << 20);
    EXPECT_FALSE(propertiesOf(folder.internal("none")));
}

// With programs in place of the desktop's that write down how they were called.
class FileManager : public testing::Test {
protected:
    void SetUp() override {
        ::setenv("PATH", programs.typed().c_str(), 1);
        ::setenv("CALLS", programs.typed("calls").c_str(), 1);
    }
    void TearDown() override {
        ::setenv("PATH", path.c_str(), 1);
        ::unsetenv("CALLS");
    }
    void makeProgram(const char* name, int status) const {
        programs.write(name, "#!/bin/sh\nfor last; do :; done\necho \"" + std::string(name) +
                                 " $*\" >>\"$CALLS\"\nexit " + std::to_string(status) + "\n");
        std::filesystem::permissions(programs / name, std::filesystem::perms::owner_all);
    }
    // What was called, as soon as it holds the text.
    std::string calls(const std::string& text) const {
        std::string seen;
        for (int i = 0; i < 500 && seen.find(text) == std::string::npos; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            seen = std::filesystem::exists(programs / "calls") ? programs.read("calls") : "";
        }
        return seen;
    }

    const std::string path = std::getenv("PATH");
    TemporaryFolder programs;
};

TEST_F(FileManager, selectsTheEntryOrOpensItsFolder) {
    const TemporaryFolder folder;
    const std::string entry = folder.internal("it's 100% ü");
    EXPECT_FALSE(showInFileManager(entry)) << "there is none";

    makeProgram("xdg-open", 0);
    EXPECT_TRUE(showInFileManager(entry));
    EXPECT_EQ(calls("\n"), "xdg-open " + folder.typed() + "\n");

    makeProgram("gdbus", 0);
    EXPECT_TRUE(showInFileManager(entry + "\\"));
    const std::string address = "['file://" + folder.typed() + "/it%27s%20100%25%20%C3%BC']";
    EXPECT_NE(calls(address).find(address), std::string::npos);

    makeProgram("gdbus", 1); // no session bus answers
    std::filesystem::remove(programs / "calls");
    EXPECT_TRUE(showInFileManager(entry));
    EXPECT_NE(calls("xdg-open").find("xdg-open " + folder.typed() + "\n"), std::string::npos);
}

} // namespace
} // namespace platform
