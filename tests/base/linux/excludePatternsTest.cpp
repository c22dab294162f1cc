#include <fnmatch.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "base/excludePattern.h"
#include "base/excludes.h"

namespace {

// Of the path, or of what is behind one of its "/".
bool systemFits(const std::string& pattern, const std::string& path) {
    for (std::size_t start = 0; start != std::string::npos;) {
        if (::fnmatch(pattern.c_str(), path.c_str() + start, 0) == 0) {
            return true;
        }
        const std::size_t slash = path.find('/', start);
        start = slash == std::string::npos ? slash : slash + 1;
    }
    return false;
}

// Where an editor of lines would begin another one.
TEST(ExcludePattern, isStoredAsOneLine) {
    const std::string pattern = "a\nb\r\xE2\x80\xA8\xE2\x80\xA9\xEF\xB7\x90\xEF\xB7\x91\xC2\xA0";
    const std::string stored = modExcludes::toStored(pattern);
    for (const char* end : {"\n", "\r", "\xE2\x80\xA8", "\xE2\x80\xA9", "\xEF\xB7\x90", "\xEF\xB7\x91"}) {
        EXPECT_EQ(stored.find(end), std::string::npos);
    }
    EXPECT_EQ(modExcludes::fromStored(stored), pattern);
    EXPECT_EQ(modExcludes::toStored(modExcludes::fromStored(stored)), stored);
}

TEST(ExcludePattern, agreesWithTheSystemsMatcher) {
    std::mt19937 random(20); // NOLINT(bugprone-random-generator-seed,cert-msc51-cpp): the same each time
    const auto text = [&](std::string_view characters, int longest) {
        std::string result;
        for (int left = static_cast<int>(random() % static_cast<unsigned>(longest)) + 1; left > 0; --left) {
            result += characters[random() % characters.size()];
        }
        return result;
    };
    int fitting = 0;
    for (int i = 0; i < 200'000; ++i) {
        // The system refuses a "\" at the end, for which the C standard has no meaning.
        const std::string pattern = text("abc/**??[]!-\\", 7) + text("abc*?]", 1);
        std::string path = "/" + text("abc/]-[", 6) + "a";
        for (std::size_t twice = path.find("//"); twice != std::string::npos; twice = path.find("//")) {
            path.erase(twice, 1);
        }
        const bool isFit = systemFits(pattern, path);
        fitting += isFit ? 1 : 0;
        ASSERT_EQ(ExcludePattern(pattern).fits(path), isFit) << pattern << "  " << path;
    }
    EXPECT_GT(fitting, 5'000);
}

} // namespace
