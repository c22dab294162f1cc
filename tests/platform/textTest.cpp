#include "platform/text.h"

#include <gtest/gtest.h>

#include "platform/locale.h"

namespace {

TEST(Text, isCutBetweenCharacters) {
    EXPECT_EQ(platform::firstCharacters("caf\xC3\xA9s", 4), "caf\xC3\xA9");
    EXPECT_EQ(platform::firstCharacters("\xF0\x9F\x98\x80\xF0\x9F\x98\x80", 1), "\xF0\x9F\x98\x80");
    EXPECT_EQ(platform::firstCharacters("abc", 0), "");
    EXPECT_EQ(platform::characterCount("caf\xC3\xA9"), 4U);
}

TEST(Text, isOrderedByLettersInLowerCase) {
    struct Case {
        const char *left, *right;
        int order;
    };
    const Case cases[] = {
        {"", "", 0},
        {"", "a", -1},
        {"Abc", "aBC", 0},
        {"ab", "ABC", -1},
        {"a_", "AB", -1},
        {"\u00C4\u00D6.TXT", "\u00E4\u00F6.txt", 0},
        {"\u0416", "\u0436", 0},
        {"\u00E4", "z", 1},
        {"\U0001F600", "\uFFFD", 1},
        {"\xFF", "\xFE", 1},
        {"\xFF", "\uFFFD", 1},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(platform::compareIgnoringCase(c.left, c.right), c.order) << c.left << " " << c.right;
        EXPECT_EQ(platform::compareIgnoringCase(c.right, c.left), -c.order) << c.right << " " << c.left;
    }
    EXPECT_EQ(platform::sameName("A", "a"), platform::namesIgnoreCase());
}

} // namespace
