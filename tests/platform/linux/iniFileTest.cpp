#include "platform/linux/iniFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <functional>
#include <vector>

#include "support/temporaryFolder.h"

namespace fs = std::filesystem;

using namespace std::string_literals;
using platform::IniText;

namespace {

TEST(IniText, readsOnlyText) {
    EXPECT_EQ(IniText::fromBytes("[a]\nk=\xFC\n")->value("a", "k"), "ü") << "not UTF-8";
    for (const std::string& bytes :
         {"[a]\nk=1\n\0"s, "\xFF\xFE[\0a\0]\0\n"s, "\xFF\xFE[\0a\0]\0\n\0k\0=\0\x0A\xDE\x0A\xDE"s}) {
        EXPECT_FALSE(IniText::fromBytes(bytes)) << bytes;
    }
}

TEST(IniText, editsKeepAllOtherBytes) {
    using Edit = std::function<bool(IniText&)>;
    const Edit write = [](IniText& text) { return text.setValue("a", "k", "v"); };
    const Edit deleteSection = [](IniText& text) { return text.removeSection("A"); };
    struct Case {
        std::string before;
        Edit edit;
        std::string after;
    };
    const std::vector<Case> cases = {
        {"", write, "[a]\r\nk=v\r\n"},
        {"; hi\n[A] x\n K  =  old \nj=1\n", write, "; hi\n[A] x\n K  =  v\nj=1\n"},
        {"[a]\r\nk='old'", write, "[a]\r\nk=v"},
        {"[a]\nk \n", write, "[a]\nk=v\n"},
        {"[a]\nj = 1\n;c\n\n\t\n[b]\nk=2\n", write, "[a]\nj = 1\n;c\nk=v\n\n\t\n[b]\nk=2\n"},
        {"[a]\r\nj=1", write, "[a]\r\nj=1\r\nk=v\r\n"},
        {"[a]\r\nj=1\r", write, "[a]\r\nj=1\r\nk=v\r\n"},
        {"\xEF\xBB\xBFjunk\n\n[b]\n\xFFq", write, "\xEF\xBB\xBFjunk\n\n[b]\n\xFFq\n[a]\nk=v\n"},
        {"\xFF\xFE[\0a\0]\0\n\0"s, write, "\xFF\xFE[\0a\0]\0\n\0k\0=\0v\0\n\0"s},
        {"x\n[a]\nk=1\n;c\n\n[b]\n[a]\n", deleteSection, "x\n[b]\n[a]\n"},
    };
    for (const auto& c : cases) {
        auto text = IniText::fromBytes(c.before);
        ASSERT_TRUE(text) << c.before;
        EXPECT_TRUE(c.edit(*text)) << c.before;
        EXPECT_EQ(text->toBytes(), c.after) << c.before;
    }
}

TEST(IniText, takesOnlyWhatALineCanHold) {
    IniText text;
    EXPECT_FALSE(text.setValue("a", "k", "2\n[b]"));
    EXPECT_FALSE(text.setValue("a", "k=j", "2"));
    EXPECT_FALSE(text.setValue("a]", "k", "2"));
    EXPECT_EQ(text.toBytes(), "");
}

TEST(IniFile, isForTheUserAloneUnlessTheyHaveSaidOtherwise) {
    const TemporaryFolder folder;
    const auto write = [&](const char* value) {
        return platform::editIniFile(folder.typed("settings.ini"),
                                     [&](IniText& text) { return text.setValue("a", "k", value); });
    };
    const auto permissions = [&] { return fs::status(folder / "settings.ini").permissions(); };
    constexpr fs::perms own = fs::perms::owner_read | fs::perms::owner_write;
    const mode_t before = ::umask(0);
    EXPECT_TRUE(write("1"));
    EXPECT_EQ(permissions(), own);
    fs::permissions(folder / "settings.ini", own | fs::perms::group_read);
    EXPECT_TRUE(write("2"));
    EXPECT_EQ(permissions(), own | fs::perms::group_read);
    ::umask(before);
}

} // namespace
