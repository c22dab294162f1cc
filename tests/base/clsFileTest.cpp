#include "base/clsFile.h"

#include <gtest/gtest.h>

#include <functional>

#include "platform/runtimeError.h"

namespace {

// A property's value, or "error" and the number thrown.
std::string valueOf(const std::function<std::string_view()>& property) {
    try {
        return std::string(property());
    } catch (const RuntimeError& error) {
        return "error " + std::to_string(error.number());
    }
}

TEST(ClsFile, derivesEveryNameFromThePath) {
    struct Case {
        const char *path, *fileName, *folder, *lastFolder, *parent, *drive, *noDrive, *extension,
            *noExtension;
    };
    const char* none = "(no extension)";
    const Case cases[] = {
        {"C:\\", "", "C:\\", "", "C:", "C:\\", "", none, ""},
        {"C:\\a", "a", "C:\\", "a", "C:\\", "C:\\", "a", none, "a"},
        {"C:\\dir\\file.tar.gz", "file.tar.gz", "C:\\dir\\", "file.tar.gz", "C:\\dir\\", "C:\\",
         "dir\\file.tar.gz", "gz", "file.tar"},
        {"C:\\dir.old\\README", "README", "C:\\dir.old\\", "README", "C:\\dir.old\\", "C:\\",
         "dir.old\\README", none, "README"},
        {"C:\\dir\\.profile", ".profile", "C:\\dir\\", ".profile", "C:\\dir\\", "C:\\", "dir\\.profile",
         "profile", ""},
        {"C:\\dir\\file.", "file.", "C:\\dir\\", "file.", "C:\\dir\\", "C:\\", "dir\\file.", "", "file"},
        {"C:\\a\\b\\", "", "C:\\a\\b\\", "b", "C:\\a\\", "C:\\", "a\\b\\", none, ""},
        {"C:\\a.b\\", "", "C:\\a.b\\", "a.b", "C:\\", "C:\\", "a.b\\", none, ""},
        {"/\\usr\\lib\\x.so", "x.so", "/\\usr\\lib\\", "x.so", "/\\usr\\lib\\", "/\\", "usr\\lib\\x.so", "so",
         "x"},
        {"/mnt/data\\x\\", "", "/mnt/data\\x\\", "x", "/mnt/data\\", "/mnt/data\\", "x\\", none, ""},
        {"\\\\srv\\share", "share", "\\\\srv\\", "share", "\\\\srv\\", "\\\\srv\\", "share", none, "share"},
        {"\\\\srv\\share\\", "", "\\\\srv\\share\\", "share", "\\\\srv\\", "\\\\srv\\share\\", "", none, ""},
        {"\\\\srv\\sh\\dir\\f", "f", "\\\\srv\\sh\\dir\\", "f", "\\\\srv\\sh\\dir\\", "\\\\srv\\sh\\",
         "dir\\f", none, "f"},
        {"\\\\srv", "srv", "\\\\", "srv", "\\\\", "", "", none, "srv"},
        {"C:", "", "", "", "C\\", "", "", none, "error 5"},
        {"name.txt", "", "", "", "name.tx\\", "", "", "txt", "name"},
        {"abc\xC3\xA9", "", "", "", "abc\\", "", "", none, "error 5"},
        {"", "", "", "", "error 5", "", "", none, "error 5"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.path);
        const clsFile file(c.path);
        EXPECT_EQ(valueOf([&] { return file.FileName(); }), c.fileName);
        EXPECT_EQ(valueOf([&] { return file.folder(); }), c.folder);
        EXPECT_EQ(valueOf([&] { return file.lastFolder(); }), c.lastFolder);
        EXPECT_EQ(valueOf([&] { return file.parentFolder(); }), c.parent);
        EXPECT_EQ(valueOf([&] { return file.drive(); }), c.drive);
        EXPECT_EQ(valueOf([&] { return file.fullPathNoDrive(); }), c.noDrive);
        EXPECT_EQ(valueOf([&] { return file.fileExtension(); }), c.extension);
        EXPECT_EQ(valueOf([&] { return file.fileNameWithoutExtension(); }), c.noExtension);
    }
    EXPECT_EQ(clsFile("C:\\a").lastFolder("D:\\x\\y\\"), "y");
}

TEST(ClsFile, overflowsBeyondTheLongestPathCountedInCharacters) {
    const std::string longest = "C:\\" + std::string(32764, 'a');
    EXPECT_EQ(clsFile(longest).drive(), "C:\\");
    const clsFile longer(longest + "a");
    EXPECT_EQ(longer.fullPath().size(), 32768U);
    EXPECT_EQ(valueOf([&] { return longer.drive(); }), "error 6");
    EXPECT_EQ(valueOf([&] { return longer.parentFolder(); }), "error 6");
    EXPECT_EQ(valueOf([&] { return longer.fileExtension(); }), "error 6");
    std::string accents = "C:\\";
    for (int i = 0; i < 32764; ++i) {
        accents += "\xC3\xA9";
    }
    EXPECT_EQ(clsFile(accents).drive(), "C:\\");
}

} // namespace
