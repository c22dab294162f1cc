#include <filesystem>

#include "console/consoleFixture.h"

using ConsoleCollectSystem = Console;

TEST_F(ConsoleCollectSystem, passwordThatAllMayReadIsRefused) {
    folder.write("password", "secret");
    for (const auto more : {std::filesystem::perms::others_read, std::filesystem::perms::others_write}) {
        std::filesystem::permissions(folder / "password", std::filesystem::perms::owner_read | more);
        const Outcome outcome =
            run("--quiet --collect http://127.0.0.1:1/x --collect-patience 0 --collect-password-file "
                "%F/password %T");
        EXPECT_EQ(outcome.status, 1);
        EXPECT_TRUE(holds(outcome.errors, "Every user may read or change")) << outcome.errors;
        EXPECT_FALSE(holds(outcome.errors, "secret"));
    }
}
