#include "platform/profile.h"

#include <gmock/gmock.h>

#include <functional>
#include <vector>

#include "platform/registry.h"
#include "support/temporaryFolder.h"
#include "support/testSystem.h"

using namespace std::string_literals;
using testing::HasSubstr;

namespace {

TEST(Profile, readsAsWindowsDoes) {
    const std::string many(300, 'x');
    struct Case {
        std::string name;
        std::string file;
        std::string expected;
    };
    const std::vector<Case> cases = {
        {"names ignore case and blanks", " [ A ] rest\r\n\t K \t= two words \r\n", "two words"},
        {"first section only", "[a]\nj=1\n[b]\nk=2\n[A]\nk=3\n", "?"},
        {"first key wins", "[a]\nk=1\nK=2\n", "1"},
        {"a key without =", "[a]\nk\nk=2\n", "?"},
        {"empty value", "[a]\nk=\n", ""},
        {"one pair of quotes", "[a]\nk=\"' x '\"\n", "' x '"},
        {"unmatched quotes stay", "[a]\nk='\n", "'"},
        {"= in the value", "[a]\nk=b=c;d\n", "b=c;d"},
        {"unclosed header", "[a]\n[b\nk=1\n", "1"},
        {"byte order mark", "\xEF\xBB\xBF[a]\nk=ü\n", "ü"},
        {"UTF-16", "\xFF\xFE[\0a\0]\0\n\0k\0=\0\x3D\xD8\x0A\xDE"s, "😊"},
        {"cut at 254 characters", "[a]\nk=ü" + many, "ü" + many.substr(0, 253)},
    };
    const TemporaryFolder folder;
    for (const auto& c : cases) {
        folder.write("x.ini", c.file);
        EXPECT_EQ(platform::readProfileValue("a", " k ", "?", folder.typed("x.ini")), c.expected) << c.name;
    }
    EXPECT_EQ(platform::readProfileValue("a", "k", many, folder.typed("no/where.ini")), many)
        << "the default is not cut";
}

TEST(Profile, listsTheKeysOfASection) {
    const TemporaryFolder folder;
    const std::string file = folder.typed("x.ini");
    EXPECT_TRUE(platform::profileKeys("a", file).empty());
    std::string many;
    for (int i = 0; i < 2000; ++i) {
        many += "key" + std::to_string(i) + "=\n";
    }
    folder.write("x.ini", "k=0\n[b]\nno=1\n[ A ]\n;c=1\n two words = 2\nalone\n\n\xC3\xBC=3\n[c]\n" + many);
    EXPECT_EQ(platform::profileKeys("a", file), (std::vector<std::string>{"two words", "\xC3\xBC"}));
    EXPECT_EQ(platform::profileKeys("c", file).size(), 2000U);
    EXPECT_EQ(platform::profileKeys("c", file).back(), "key1999");
}

using Edit = std::function<bool(const std::string&)>;

Edit writing(const std::string& section, const std::string& key, const std::string& value) {
    return [=](const std::string& file) { return platform::writeProfileValue(section, key, value, file); };
}

// Both kinds of line end are fine.
std::string withoutCarriageReturns(std::string text) {
    std::erase(text, '\r');
    return text;
}

TEST(Profile, editsKeepAllElse) {
    const Edit write = writing("a", "k", "v");
    const Edit deleteKey = [](const std::string& file) { return platform::deleteProfileKey("A", "K", file); };
    const Edit deleteSection = [](const std::string& file) {
        return platform::deleteProfileSection("A", file);
    };
    struct Case {
        std::string before;
        Edit edit;
        std::string after;
    };
    const std::vector<Case> cases = {
        {"", write, "[a]\nk=v\n"},
        {"; hi\n[A]\nK=old\nj='1'\n", write, "; hi\n[A]\nK=v\nj='1'\n"},
        {"[a]\nj=1\n;c\n[b]\nk=2\n", write, "[a]\nj=1\n;c\nk=v\n[b]\nk=2\n"},
        {"[b]\nq=ü", writing("a", "k", "ü😊"), "[b]\nq=ü\n[a]\nk=ü😊\n"},
        {"[a]\nk=1\nk=2\n[A]\nk=3\n", deleteKey, "[a]\nk=2\n[A]\nk=3\n"},
        {"x\n[a]\nk=1\n;c\n\n[b]\n[a]\n", deleteSection, "x\n[b]\n[a]\n"},
    };
    const TemporaryFolder folder;
    for (const auto& c : cases) {
        folder.write("x.ini", c.before);
        EXPECT_TRUE(c.edit(folder.typed("x.ini"))) << c.before;
        EXPECT_EQ(withoutCarriageReturns(folder.read("x.ini")), c.after) << c.before;
    }
    folder.write("x.ini", "\xFF\xFE[\0a\0]\0\n\0"s);
    EXPECT_TRUE(writing("a", "k", "ü😊")(folder.typed("x.ini")));
    EXPECT_THAT(folder.read("x.ini"), HasSubstr("k\0=\0\xFC\0\x3D\xD8\x0A\xDE"s)) << "UTF-16 stays UTF-16";
}

TEST(Profile, whatCannotBeWrittenIsLost) {
    const Edit write = writing("a", "k", "2");
    const TemporaryFolder folder;
    for (const std::string& before : {"[a]\nk=1\n\0"s, "[a]\n" + std::string(10U << 20, '\x9F')}) {
        folder.write("x.ini", before);
        EXPECT_FALSE(write(folder.typed("x.ini"))) << before.substr(0, 20);
        EXPECT_EQ(folder.read("x.ini"), before) << before.substr(0, 20);
    }
    EXPECT_FALSE(write(folder.typed())) << "a folder";
    EXPECT_FALSE(write(folder.typed("missing/x.ini")));
    EXPECT_TRUE(platform::deleteProfileKey("a", "k", folder.typed("new.ini")));
    EXPECT_FALSE(std::filesystem::exists(folder / "new.ini"));
}

TEST(Profile, respectsReadOnly) {
    const TemporaryFolder folder;
    folder.write("x.ini", "[a]\nk=1\n");
    const testSystem::ReadOnlyFile file(folder / "x.ini");
    if (!file.isReadOnly()) {
        GTEST_SKIP() << "the superuser cannot become another user here";
    }
    EXPECT_FALSE(writing("a", "k", "2")(folder.typed("x.ini")));
    EXPECT_EQ(folder.read("x.ini"), "[a]\nk=1\n");
}

TEST(Registry, holdsEveryText) {
    using enum platform::RegistryRoot;
    const TemporaryFolder folder;
    const platform::Registry registry(folder.internal() + "\\");
    const std::string key = "Software\\Spannory Tests";
    EXPECT_EQ(registry.readText(localMachine, key, "name"), std::nullopt);
    EXPECT_TRUE(registry.writeText(localMachine, key, "", "default"));
    for (const std::string& text : {R"( "blanks" )"s, "'"s, ""s, "ü😊"s, std::string(1000, 'x')}) {
        EXPECT_TRUE(registry.writeText(localMachine, key, "name", text));
        EXPECT_EQ(registry.readText(localMachine, "software\\spannory tests", "NAME"), text);
    }
    EXPECT_EQ(registry.readText(currentUser, key, "name"), std::nullopt);
    EXPECT_EQ(registry.readText(localMachine, key, ""), "default");
    EXPECT_FALSE(registry.deleteValue(localMachine, key, "none"));
    EXPECT_TRUE(registry.deleteValue(localMachine, key, ""));
    EXPECT_EQ(registry.readText(localMachine, key, ""), std::nullopt);
    EXPECT_TRUE(registry.deleteSubkey(localMachine, "Software", "Spannory Tests"));
    EXPECT_EQ(registry.readText(localMachine, key, "name"), std::nullopt);
}

} // namespace
