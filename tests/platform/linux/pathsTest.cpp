#include "platform/paths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "support/temporaryFolder.h"

namespace {

std::string nativeName(std::string_view internalName) {
    std::string result;
    platform::appendNativeName(result, internalName);
    return result;
}

TEST(Paths, mapNamesOneToOne) {
    const std::pair<std::string, std::string> table[] = {
        {"plain name.txt", "plain name.txt"},
        {"caf\xC3\xA9", "caf\xC3\xA9"},
        {"a\\b\"c|d*e?f<g>h", "a\uF05Cb\uF022c\uF07Cd\uF02Ae\uF03Ff\uF03Cg\uF03Eh"},
        {"\n\t\x01\x7F", "\uF00A\uF009\uF001\uF07F"},
        {"bad\xFF\xC3", "bad\uEFFF\uEFC3"},
        {"\xC0\xAF", "\uEFC0\uEFAF"},           // overlong
        {"\xED\xA0\x80", "\uEFED\uEFA0\uEF80"}, // surrogate
        {"\uF05C", "\uEFEF\uEF81\uEF9C"},       // looks like a mapped character
        {"\uEF41", "\uEFEE\uEFBD\uEF81"},       // looks like a mapped byte
        {"\uFFFE", "\uEFEF\uEFBF\uEFBE"},       // not allowed in XML
        {"trailing. ", "trailing. "},
    };
    for (const auto& [native, internal] : table) {
        EXPECT_EQ(platform::internalName(native), internal);
        EXPECT_EQ(nativeName(internal), native);
        EXPECT_EQ(platform::displayName(internal), native);
    }
    std::set<std::string> seen;
    for (int high = 1; high < 256; ++high) {
        for (int low = 1; low < 256; ++low) {
            const std::string native{static_cast<char>(high), 'x', static_cast<char>(low),
                                     static_cast<char>(high)};
            if (native.find('/') != std::string::npos) {
                continue;
            }
            const std::string internal = platform::internalName(native);
            ASSERT_EQ(nativeName(internal), native);
            ASSERT_EQ(platform::displayName(internal), native);
            ASSERT_EQ(internal.find_first_of("\\\"|*?<>\n\r"), std::string::npos);
            ASSERT_TRUE(seen.insert(internal).second);
        }
    }
}

TEST(Paths, understandWhatAUserTypes) {
    namespace fs = std::filesystem;
    const TemporaryFolder folder;
    const fs::path before = fs::current_path();
    fs::create_directories(folder / "sub/target");
    fs::create_directory_symlink("sub/target", folder / "link");
    fs::current_path(folder.path());
    const std::string here = folder.internal();
    const std::pair<std::string, std::string> table[] = {
        {"", ""},
        {"/", "/\\"},
        {"//", "/\\"},
        {"/\\", "/\\"},
        {"/opt", "/\\opt"},
        {"/opt/", "/\\opt\\"},
        {"/opt//x/./y/../z", "/\\opt\\x\\z"},
        {"link/../x", here + "\\sub\\x"}, // ".." leads to the parent of the link's target
        {"/../..", "/\\"},
        {"/\\opt\\x\\", "/\\opt\\x\\"},
        {"\\\\server\\share\\x", "\\\\server\\share\\x"},
        {"x", here + "\\x"},
        {"./x/", here + "\\x\\"},
        {".", here + "\\"},
        {"a\\b", here + "\\a\uF05Cb"}, // a native name may contain the separator
    };
    for (const auto& [typed, internal] : table) {
        EXPECT_EQ(platform::toInternal(typed), internal) << typed;
    }
    fs::current_path(before);
    EXPECT_EQ(platform::toNative(here), folder.typed());
    EXPECT_EQ(platform::toNative(here + "\\a\uF05Cb\\"), folder.typed("a\\b"));
    EXPECT_EQ(platform::toNative("/\\"), "/");
    EXPECT_EQ(platform::toNative("\\\\nowhere\\share\\x"), "");
}

TEST(Paths, areShownAsTheyAreOnTheDisk) {
    const std::pair<const char*, const char*> table[] = {
        {"/\\usr\\lib\\x.so", "/usr/lib/x.so"},
        {"/\\", "/"},
        {"/home\\me\\", "/home/me/"},
        {"\\\\server\\share\\x\\", "//server/share/x/"},
        {"/\\a\uF05Cb\\", "/a\\b/"},
        {"", ""},
        {"C:\\Who\uF03F", "C:/Who?"},
        {"/mnt\uF02A\\bad\uEFFF\n", "/mnt*/bad\xFF\n"},
        // Not created by this system:
        {"/\\a\uF000\uF02F\uF041\uF0C3\uEF41", "/a\uF000\uF02F\uF041\uF0C3\uEF41"},
    };
    for (const auto& [internal, shown] : table) {
        EXPECT_EQ(platform::displayPath(internal), shown);
    }
}

} // namespace
