#include "console/consoleFixture.h"
#include "support/expected.h"

namespace fs = std::filesystem;

namespace {

// A copy of the program in its own folder, with its own user.
class ApplicationFolder : public Console {
protected:
    ApplicationFolder() {
        fs::create_directory(folder / "bin");
        const fs::path built = testSystem::pathOf(platform::toNative(platform::executableFolder()));
        for (const char* name : {"spannory-scan", "spannory-scan.exe"}) {
            if (fs::exists(built / name)) {
                fs::copy_file(built / name, folder / "bin" / name);
            }
        }
        for (const char* place : {"home", "given", "user/spannory"}) {
            putTemplate(place);
        }
    }

    void putTemplate(const char* place) {
        fs::create_directories(folder / place);
        fs::copy_file(testSystem::pathOf(platform::toNative(templateFile())), folder / place / "001.dat");
    }

    // The folder in which a scan leaves its database.
    std::string usedBy(std::vector<std::string> arguments, const std::string& home) {
        arguments.insert(arguments.end(), {"--quiet", folder.typed("tree")});
        const Outcome outcome = testSystem::run(folder.typed("bin/spannory-scan"), arguments,
                                                {{"SPANNORY_HOME", home},
                                                 {"XDG_DATA_HOME", folder.typed("user")},
                                                 {"LOCALAPPDATA", folder.typed("user")}});
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        std::string used;
        for (const char* place : {"bin", "home", "given", "given/anew", "user/spannory"}) {
            used += fs::remove(folder / place / "main.dat") ? std::string(place) + " " : "";
        }
        return used;
    }
};

TEST_F(ApplicationFolder, isTheFirstOfItsPlaces) {
    const std::vector<std::string> given{"--app-folder", folder.typed("given")};
    const std::string home = folder.typed("home");
    EXPECT_EQ(usedBy({}, ""), "user/spannory ") << "the program's folder holds no template";
    putTemplate("bin");
    EXPECT_EQ(usedBy({}, ""), "bin ");
    EXPECT_EQ(usedBy({}, home), "home ");
    EXPECT_EQ(usedBy(given, home), "given ");
    EXPECT_EQ(usedBy({"--app-folder", folder.typed("given/anew")}, home), "given/anew ") << "it is made";
}

} // namespace
