#include "platform/paths.h"

#include <gtest/gtest.h>

#include "platform/files.h"
#include "platform/win32/wide.h"
#include "support/temporaryFolder.h"

namespace {

TEST(Paths, understandWhatAUserTypes) {
    namespace fs = std::filesystem;
    const TemporaryFolder folder;
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    const std::string here = folder.internal();
    const std::pair<std::string, std::string> table[] = {
        {"", ""},
        {"c:\\", "C:\\"},
        {"C:/Windows//x/./y/../z", "C:\\Windows\\x\\z"},
        {"c:\\windows\\", "C:\\windows\\"},
        {"C:\\..\\..", "C:\\"},
        {"C:\\ends with\\dot.\\ and blank \\", "C:\\ends with\\dot.\\ and blank \\"}, // kept as it is
        {"\\\\?\\c:\\x", "C:\\x"},
        {"\\\\?\\UNC\\server\\share\\x", "\\\\server\\share\\x"},
        {"\\\\server\\share", "\\\\server\\share\\"},
        {"//server/share/x", "\\\\server\\share\\x"},
        {"NUL", "\\\\.\\NUL"},
        {"\"C:\\some folder\\x\"", "C:\\some folder\\x"},
        {"C:\\some folder\"", "C:\\some folder\\"}, // from "C:\some folder\" on a command line
        {"\"", ""},
        {"x", here + "\\x"},
        {".\\x\\", here + "\\x\\"},
        {"x/../y", here + "\\y"},
    };
    for (const auto& [typed, internal] : table) {
        EXPECT_EQ(platform::toInternal(typed), internal) << typed;
    }
    fs::current_path(before);
}

TEST(Paths, areAsTheSystemHasThem) {
    EXPECT_EQ(platform::displayPath("C:\\a\\b\\"), "C:\\a\\b\\");
    EXPECT_EQ(platform::toNative("C:\\a\\b\\"), "C:\\a\\b");
    EXPECT_EQ(platform::toNative("C:\\"), "C:\\");
    EXPECT_EQ(platform::toNative("C:\\" + std::string(300, 'n')), "\\\\?\\C:\\" + std::string(300, 'n'));
    EXPECT_EQ(platform::widePath("C:\\"), L"\\\\?\\C:\\");
    EXPECT_EQ(platform::widePath("C:\\a.\\"), L"\\\\?\\C:\\a.");
    EXPECT_EQ(platform::widePath("\\\\server\\share\\x"), L"\\\\?\\UNC\\server\\share\\x");
    EXPECT_EQ(platform::internalName("a\"b|c"), "a\uF022b\uF07Cc") << "names that another system made";
}

TEST(Paths, keepNamesThatAreNoText) {
    const std::wstring names[] = {L"plain",  L"\x00E4\x4E2D", L"\xD83D\xDE00",
                                  L"\xD800", L"a\xDC00z",     L"\xDE00\xD83D"};
    for (const std::wstring& name : names) {
        EXPECT_EQ(platform::wide(platform::narrow(name)), name);
    }
    EXPECT_EQ(platform::narrow(L"\xD83D\xDE00"), "\U0001F600");
    EXPECT_EQ(platform::narrow(L"\xD800"), "\xED\xA0\x80");
    EXPECT_EQ(platform::wide("a\xFF"), L"a\xFFFD");
}

TEST(Paths, ofAnyLengthAndShapeReachTheirFiles) {
    const TemporaryFolder folder;
    const std::string longFolder = folder.internal(std::string(200, 'n')) + "\\" + std::string(200, 'm');
    for (const std::string& path : {longFolder + "\\" + std::string(100, 'f'), folder.internal() + "\\dot.",
                                    folder.internal() + "\\aux"}) {
        platform::makeFolders(path.substr(0, path.rfind('\\')));
        platform::replaceFile(path, "content");
        EXPECT_EQ(platform::readFile(path), "content");
        EXPECT_TRUE(platform::isSameFile(path, path));
        platform::deleteFile(path);
        EXPECT_FALSE(platform::somethingExists(path)) << path;
    }
}

} // namespace
