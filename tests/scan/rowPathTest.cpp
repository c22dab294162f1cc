#include "scan/rowPath.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>

#include "platform/runtimeError.h"

namespace {

// As each column is derived from a path alone.
void expectColumnsOf(const RowPath& row, const std::string& path) {
    const clsFile file(path);
    const bool isFolder = path.ends_with('\\');
    const std::string_view parent = file.parentFolder();
    EXPECT_EQ(row.isFolder(), isFolder) << path;
    EXPECT_EQ(row.withoutDrive(), file.fullPathNoDrive()) << path;
    EXPECT_EQ(row.drive(), file.drive()) << path;
    EXPECT_EQ(row.parent(), parent) << path;
    EXPECT_EQ(row.folder(), isFolder ? parent : file.folder()) << path;
    EXPECT_EQ(row.fileName(), isFolder ? std::string_view(path).substr(parent.size()) : file.FileName())
        << path;
    EXPECT_EQ(row.extension(), file.fileExtension()) << path;
}

} // namespace

// Whatever path came before.
TEST(RowPath, columnsAreThoseOfThePathAlone) {
    const std::array<std::string, 22> paths{"/\\a",
                                            "/\\a\\",
                                            "/\\a\\b.c",
                                            "/\\a\\b.c\\",
                                            "/\\a\\bb.C",
                                            "/\\a\\.d",
                                            "/\\a\\e.",
                                            "/\\a.x\\f",
                                            "/\\",
                                            "C:\\",
                                            "C:\\a.b.c",
                                            "C:\\a\\",
                                            "\\\\s\\",
                                            "\\\\s\\share",
                                            "\\\\s\\share\\",
                                            "\\\\s\\x\\y.z",
                                            "\\\\s\\x\\y\\",
                                            "/home\\u\\",
                                            "/home\\u\\\xC3\xA4.\xC3\x84",
                                            "name",
                                            "name.txt",
                                            "/\\a\\\\"};
    std::mt19937 random(15); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same each time
    RowPath row;
    for (int i = 0; i < 5000; ++i) {
        const std::string& path = paths.at(random() % paths.size());
        row.set(path);
        expectColumnsOf(row, path);
    }
}

TEST(RowPath, pathsThatAreTooLongAreRefused) {
    const std::string folder = "/\\" + std::string(32763, 'x') + "\\";
    RowPath row;
    row.set(folder);
    row.set(folder + "y");
    const std::string tooLong = folder + "yz";
    EXPECT_THROW(row.set(tooLong), RuntimeError);
    row.set("/\\a\\b");
    expectColumnsOf(row, "/\\a\\b");
}
