#include "collect/tabSeparated.h"

#include <gmock/gmock.h>

#include "collect/collectedFigures.h"
#include "collect/httpClient.h"

namespace {

using testing::ElementsAre;

std::vector<TabSeparated::Row> read(std::size_t fields, std::string_view text, std::size_t pieceSize) {
    std::vector<TabSeparated::Row> rows;
    constexpr std::size_t mostRows = 2;
    TabSeparated answer(fields, mostRows, [&](TabSeparated::Row& row) { rows.push_back(std::move(row)); });
    for (std::size_t at = 0; at < text.size(); at += pieceSize) {
        answer.add(text.substr(at, pieceSize));
    }
    answer.finish();
    return rows;
}

TEST(TabSeparated, readsBytesOfAllKindsHoweverTheyAreCut) {
    using namespace std::literals;
    constexpr std::string_view text = "host\\t1\t\\\\\\'\\0\\b\\f\\n\\r\xff\xfe\n\tend\n";
    for (std::size_t pieceSize = 1; pieceSize <= text.size(); ++pieceSize) {
        EXPECT_THAT(read(2, text, pieceSize),
                    ElementsAre(ElementsAre("host\t1", "\\'\0\b\f\n\r\xff\xfe"s), ElementsAre("", "end")))
            << pieceSize;
    }
    EXPECT_TRUE(read(2, "", 1).empty());
    EXPECT_THAT(read(1, "\n", 1), ElementsAre(ElementsAre("")));
}

TEST(TabSeparated, refusesWhatIsNoSuchAnswer) {
    const std::string endless(std::size_t{2} << 20, 'x');
    for (const std::string& text :
         {std::string("a\n"), std::string("a\tb\tc\n"), std::string("a\tb"), std::string("a\tb\nCode: 160"),
          endless, std::string("a\tb\na\tb\na\tb\n")}) {
        EXPECT_THROW(read(2, text, 7), ServerError) << text.substr(0, 20);
    }
}

TEST(CollectedPaths, areWholeAndEndInTheirSeparator) {
    const struct {
        std::string_view typed;
        std::string_view path;
    } cases[] = {{"/", "/"},
                 {"/srv", "/srv/"},
                 {"/srv/", "/srv/"},
                 {"/srv/a\\b", "/srv/a\\b/"},
                 {"C:\\", "C:\\"},
                 {"d:\\data", "D:\\data\\"},
                 {"\\\\server\\share", "\\\\server\\share\\"}};
    for (const auto& each : cases) {
        EXPECT_EQ(modCollected::folderPath(each.typed), each.path);
    }
    for (const char* typed : {"", "srv", "./srv", "C:", "C:data", "1:\\x"}) {
        EXPECT_THROW(static_cast<void>(modCollected::folderPath(typed)), RuntimeError) << typed;
    }
}

} // namespace
