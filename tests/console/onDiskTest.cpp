#include <filesystem>

#include "console/consoleFixture.h"

namespace {

using ConsoleOnDisk = Console;

TEST_F(ConsoleOnDisk, countsWhatIsTakenOnTheDiskWhereAsked) {
    folder.write("tree/sparse", "");
    std::filesystem::resize_file(folder / "tree/sparse", 1 << 30);
    const Outcome plain = run("--database %F/saved.mdb --text %F/plain.csv %T");
    EXPECT_TRUE(holds(plain.output, "\n1.0 Gb, 5 files, 3 folders\n")) << plain.output;
    for (const char* how : {"--on-disk %T", "--on-disk --load %F/saved.mdb %T"}) {
        const Outcome outcome =
            run(std::string(how) + " --force --text %F/disk.csv --html %F/disk.html --overview %F/o.html");
        EXPECT_EQ(outcome.status, 0);
        EXPECT_TRUE(holds(outcome.output, " on disk, 5 files, 3 folders\n")) << how << outcome.output;
        EXPECT_FALSE(holds(outcome.output, "Gb")) << how << outcome.output;
        for (const char* file : {"disk.csv", "disk.html", "o.html"}) {
            EXPECT_FALSE(holds(folder.read(file), "1073741824")) << how << file;
            EXPECT_FALSE(holds(folder.read(file), "1.0 Gb")) << how << file;
        }
    }
    EXPECT_TRUE(holds(folder.read("plain.csv"), "1073741824"));
    EXPECT_TRUE(holds(run("--on-disk --find sparse %T").output, "sparse"));
    EXPECT_FALSE(holds(run("--on-disk --larger 100M --find * %T").output, "sparse"));
    folder.write("app/settings.ini", "[APPLICATION_SETTINGS]\r\nonDisk=1\r\n");
    EXPECT_TRUE(holds(run("%T").output, " on disk, 5 files"));
    EXPECT_FALSE(holds(run("--no-on-disk %T").output, " on disk, "));
    EXPECT_TRUE(holds(run("--compare %F/saved.mdb %T").errors, "Sizes are compared, not what is taken"));
}

} // namespace
