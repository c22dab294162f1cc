#include "window/commandLine.h"

#include <gmock/gmock.h>

#include <vector>

namespace {

TEST(WindowCommandLine, tellsWhatIsAskedForAndWhatIsWrong) {
    const struct {
        std::vector<const char*> words;
        std::optional<int> exitStatus;
        const char* answer;
        const char* path;
    } table[] = {
        {{}, std::nullopt, "", ""},
        {{"--app-folder", "x", "a folder"}, std::nullopt, "", "a folder"},
        {{"--", "--help"}, std::nullopt, "", "--help"},
        {{"--version"}, 0, "spannory ", ""},
        {{"-h"}, 0, "--app-folder", ""},
        {{"--wrong"}, 2, "--wrong", ""},
    };
    for (const auto& each : table) {
        std::vector<const char*> words{"spannory"};
        words.insert(words.end(), each.words.begin(), each.words.end());
        const WindowOptions options = parseWindowCommandLine(static_cast<int>(words.size()), words.data());
        EXPECT_EQ(options.exitStatus, each.exitStatus);
        EXPECT_THAT(options.answer, testing::HasSubstr(each.answer));
        EXPECT_EQ(options.path, each.path);
    }
}

} // namespace
