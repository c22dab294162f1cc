#include "base/excludePattern.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace std::string_literals;

using Rules = ExcludePattern::Rules;

bool fits(const std::string& pattern, std::string path, Rules rules) {
    ExcludePattern::makeComparable(path, rules);
    return ExcludePattern(pattern, rules).fits(path);
}

TEST(ExcludePattern, fitsAWholePathOrWhatIsBehindASlash) {
    constexpr Rules rules{.ignoresCase = false, .backslashSeparates = false};
    const struct {
        const char* pattern;
        std::string path;
        bool isFit;
    } cases[] = {
        {"b", "/a/b", true},
        {"b", "/a/bb", false},
        {"b", "/a/b/c", false},
        {"a/b", "/x/a/b", true},
        {"a/b", "/xa/b", false},
        {"/a/b", "/a/b", true},
        {"/b", "/a/b", false},
        {"b/", "/a/b", false},
        {"*", "/a", true},
        {"*.tmp", "/a/x.tmp", true},
        {"*.tmp", "/a/.tmp", true},
        {"*.tmp", "/a/x.tmp/y", false},
        {"a*d", "/a/b/c/d", true},
        {"a*d", "/xa/b/d", false},
        {"a*b*c", "/abbbc", true},
        {"a*b*c", "/acb", false},
        {"a**c", "/abc", true},
        {"a*", "/x/y", false},
        {"?", "/a/\xC3\xA9", true},
        {"?", "/a/\xE9", true},
        {"?", "/a/bc", false},
        {"a?b", "/a/b", true},
        {"[ab]x", "/bx", true},
        {"[!ab]x", "/bx", false},
        {"[^ab]x", "/cx", true},
        {"[a-c]", "/x/b", true},
        {"[a-c]", "/x/d", false},
        {"[c-a]", "/b", false},
        {"[a-]", "/-", true},
        {"[]]", "/]", true},
        {"[!]]", "/]", false},
        {"[\\]]x", "/]x", true},
        {"[a\\-c]", "/b", false},
        {"x[a", "/x[a", true},
        {"x[a*", "/x[ab", true},
        {"[[:digit:]x]", "/7", true},
        {"[[:digit:]x]", "/x", true},
        {"[[:upper:]]", "/a", false},
        {"[[:nothing:]]", "/a", false},
        {"\xC3\xA9[\xC3\xA8-\xC3\xAA]", "/\xC3\xA9\xC3\xA9", true},
        {"\\*", "/*", true},
        {"\\*", "/a", false},
        {"q[*]", "/q*", true},
        {"q[*]", "/qa", false},
        {"a\\b", "/ab", true},
        {"a\\\\b", "/a\\b", true},
        {"a\\", "/a\\", true},
        {"A", "/a", false},
        {"", "/a", false},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(fits(each.pattern, each.path, rules), each.isFit) << each.pattern << "  " << each.path;
    }
}

TEST(ExcludePattern, takesBothSeparatorsAndEachCaseWhereTheSystemDoes) {
    constexpr Rules rules{.ignoresCase = true, .backslashSeparates = true};
    const struct {
        const char* pattern;
        const char* path;
        bool isFit;
    } cases[] = {
        {"Build", "C:\\x\\BUILD", true},     {"x\\build", "C:\\x\\build", true},
        {"x/build", "C:\\x\\build", true},   {"c:/X/*", "C:\\x\\build", true},
        {"x\\*", "C:\\x\\build", true},      {"C:\\x", "C:\\x\\build", false},
        {"[A-C]uild", "C:\\x\\build", true}, {"[[]x]", "C:\\[x]", true},
        {"\xC3\x89", "C:\\\xC3\xA9", true},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(fits(each.pattern, each.path, rules), each.isFit) << each.pattern << "  " << each.path;
    }
}

// Each "*" that may end anywhere would otherwise multiply the time.
TEST(ExcludePattern, endsOnTextThatNearlyFits) {
    constexpr Rules rules{.ignoresCase = false, .backslashSeparates = false};
    std::string pattern = "x";
    for (int i = 0; i < 60; ++i) {
        pattern += "*a";
    }
    EXPECT_FALSE(fits(pattern + "[b]?", "x" + std::string(4000, 'a'), rules));
    EXPECT_TRUE(fits(pattern, "x" + std::string(4000, 'a'), rules));
}

} // namespace
