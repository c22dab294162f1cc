#include "views/findQuery.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "platform/locale.h"
#include "platform/paths.h"
#include "support/scanFixture.h"

namespace {

using modFind::Conditions;
using modFind::FindQuery;
using modFind::Kind;
using modFind::Order;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

class Find : public testing::Test, protected ScanFixture {
protected:
    struct File {
        std::string path;
        double size = 1;
        std::string modified = "01/01/2020 12:00:00 AM";
        std::string owner = "me";
    };

    void record(const File& file, const std::string& accessed = {}) {
        EXPECT_TRUE(search.updateDetail(file.path, {}, file.size, accessed, file.modified, file.owner));
    }
    void recordFolder(const std::string& path) {
        EXPECT_TRUE(search.recordFolder(path, {{.size = search.folderSum(path)}, 0, false, {}, {}, "me"}));
    }
    // The names that are found, as on the disk.
    std::vector<std::string> names(const Conditions& conditions, const std::string& folder = "/\\",
                                   const Order& order = {}) {
        FindQuery query(conditions, order, folder, 100);
        query.run(working.database());
        std::vector<std::string> result;
        double size = 0;
        for (const modFind::Item& item : query.items()) {
            result.push_back(platform::displayName(item.nameAlone()));
            size += item.size;
        }
        EXPECT_EQ(query.count(), static_cast<std::int64_t>(result.size()));
        EXPECT_EQ(query.size(), size);
        return result;
    }
    std::vector<std::string> namesLike(const std::string& name, Kind kind = Kind::files) {
        Conditions conditions;
        conditions.kind = kind;
        conditions.name = name;
        return names(conditions);
    }
};

TEST(FindConditions, readSizesAndMoments) {
    const struct {
        const char* text;
        std::optional<double> bytes;
    } sizes[] = {{"0", 0},
                 {"500", 500},
                 {" 10M ", 10 * 1048576.0},
                 {"1.5G", 1.5 * 1073741824},
                 {"1.5 gb", 1.5 * 1073741824},
                 {"2KiB", 2048},
                 {"7 bytes", 7},
                 {"1T", 1099511627776},
                 {"", {}},
                 {"M", {}},
                 {"ten", {}},
                 {"-5", {}},
                 {"5X", {}},
                 {"5KK", {}},
                 {"5 6", {}},
                 {"1e3", {}},
                 {"inf", {}},
                 {"nan", {}},
                 {"99999999999P", {}}};
    for (const auto& each : sizes) {
        EXPECT_EQ(modFind::parseSize(each.text), each.bytes) << each.text;
    }
    const platform::Seconds now = platform::now();
    const auto before = [now](int days) { return platform::localTime(now - days * 86400LL); };
    EXPECT_EQ(modFind::parseMoment("30", now), before(30));
    EXPECT_EQ(modFind::parseMoment("2w", now), before(14));
    EXPECT_EQ(modFind::parseMoment("1.5 d", now), platform::localTime(now - 86400 * 3 / 2));
    EXPECT_EQ(modFind::parseMoment("1Y", now), before(365));
    EXPECT_EQ(modFind::parseMoment("02/29/2024", now), (platform::LocalTime{2024, 2, 29, 0, 0, 0}));
    for (const char* wrong : {"", "d", "-1", "30 x", "02/30/2024", "2/3/2024", "yesterday", "1e9", "9999y"}) {
        EXPECT_EQ(modFind::parseMoment(wrong, now), std::nullopt) << wrong;
    }
}

// Whatever is typed stays a text; only * and ? mean something.
TEST_F(Find, matchesNamesAsTyped) {
    for (const char* onDisk : {"plain.txt", "a\"quote'.txt", "50%_[x]#.txt", "caf\u00e9.txt", "[b", "2.0"}) {
        record({"/\\d\\" + platform::internalName(onDisk)});
    }
    const struct {
        std::string typed;
        std::vector<std::string> found;
    } table[] = {
        {"lain", {"plain.txt"}},
        {"plain", {"plain.txt"}},
        {"plain*", {"plain.txt"}},
        {"plain?", {}},
        {"?lain.t?t", {"plain.txt"}},
        {"*lain", {}},
        {"\"", {"a\"quote'.txt"}},
        {"'", {"a\"quote'.txt"}},
        {"a\"*'.*", {"a\"quote'.txt"}},
        {"\" or 1=1 --", {}},
        {"%", {"50%_[x]#.txt"}},
        {"_", {"50%_[x]#.txt"}},
        {"[x]#", {"50%_[x]#.txt"}},
        {"*[x]?.txt", {"50%_[x]#.txt"}},
        {"[b", {"[b"}},
        {"[b*", {"[b"}},
        {"caf?.txt", {"caf\u00e9.txt"}},
        {"caf\u00e9", {"caf\u00e9.txt"}},
        {"#", {"50%_[x]#.txt"}},
        {"nothing", {}},
    };
    for (const auto& each : table) {
        std::vector<std::string>
            shown; // a system without such names shows the characters that stand for them
        for (const std::string& name : each.found) {
            shown.push_back(platform::displayName(platform::internalName(name)));
        }
        EXPECT_THAT(namesLike(each.typed), testing::UnorderedElementsAreArray(shown)) << each.typed;
    }
    EXPECT_THAT(namesLike("PLAIN"), SizeIs(platform::namesIgnoreCase() ? 1 : 0));
    EXPECT_THAT(namesLike("*"), SizeIs(6));
}

TEST_F(Find, meetsEveryCondition) {
    record({"/\\d\\big.iso", 5000, "03/01/2024 01:00:00 PM", "anna"}, "06/01/2024 01:00:00 PM");
    record({"/\\d\\mid.txt", 300, "03/01/2024 01:00:00 AM", "anna"}, "01/01/2001 01:00:00 AM");
    record({"/\\d\\old.txt", 20, "12/31/1999 11:59:59 PM", "bert"}, "12/31/2025 12:00:00 AM");
    record({"/\\d\\bare", 7, "no date", ""});
    working.database().Execute("update details set owner=NULL where fileName=\"bare\"");
    const auto day = [](const char* text) { return modFind::parseMoment(text, 0); };
    const struct {
        const char* what;
        std::function<void(Conditions&)> set;
        std::vector<std::string> found;
    } table[] = {
        {"larger", [](auto& c) { c.larger = 20; }, {"big.iso", "mid.txt"}},
        {"smaller", [](auto& c) { c.smaller = 300; }, {"old.txt", "bare"}},
        {"between", [](auto& c) { c.larger = 7, c.smaller = 5000; }, {"mid.txt", "old.txt"}},
        {"extension", [](auto& c) { c.extension = "txt"; }, {"mid.txt", "old.txt"}},
        {"with its dot", [](auto& c) { c.extension = ".ISO"; }, {"big.iso"}},
        {"a pattern of it", [](auto& c) { c.extension = "?s*"; }, {"big.iso"}},
        {"no extension", [](auto& c) { c.extension = "(no extension)"; }, {"bare"}},
        {"owner", [](auto& c) { c.owner = "anna"; }, {"big.iso", "mid.txt"}},
        {"part of an owner", [](auto& c) { c.owner = "ann"; }, {}},
        {"a pattern of owners", [](auto& c) { c.owner = "b*"; }, {"old.txt"}},
        {"no owner", [](auto& c) { c.owner = "(none)"; }, {"bare"}},
        {"older", [&](auto& c) { c.older = day("03/01/2024"); }, {"old.txt"}},
        {"newer", [&](auto& c) { c.newer = day("02/29/2024"); }, {"big.iso", "mid.txt"}},
        {"of another date",
         [&](auto& c) { c.newer = day("02/29/2024"), c.date = modFind::Date::accessed; },
         {"big.iso", "old.txt"}},
        {"three", [](auto& c) { c.name = "i", c.larger = 1, c.extension = "txt"; }, {"mid.txt"}},
        {"all", [](auto&) {}, {"big.iso", "mid.txt", "old.txt", "bare"}},
    };
    for (const auto& each : table) {
        Conditions conditions;
        each.set(conditions);
        EXPECT_THAT(names(conditions), testing::ElementsAreArray(each.found)) << each.what;
    }
    using By = Order::By;
    EXPECT_THAT(names({}, "/\\", {By::size, false}), ElementsAre("bare", "old.txt", "mid.txt", "big.iso"));
    EXPECT_THAT(names({}, "/\\", {By::modified, false}), ElementsAre("old.txt", "mid.txt", "big.iso", "bare"))
        << "what is no date comes last";
    EXPECT_THAT(names({}, "/\\", {By::accessed, true}), ElementsAre("old.txt", "big.iso", "mid.txt", "bare"));
}

TEST_F(Find, tellsCaseOfExtensionsOnlyWhenAsked) {
    settings.setCaseSensitiveExt(true);
    record({"/\\d\\a.TXT"});
    record({"/\\d\\b.txt"});
    Conditions conditions;
    conditions.extension = "TXT";
    EXPECT_THAT(names(conditions), ElementsAre("a.TXT", "b.txt")) << "as such rows are stored otherwise";
    conditions.tellsCaseOfExtensions = true;
    EXPECT_THAT(names(conditions), SizeIs(platform::namesIgnoreCase() ? 2 : 1));
}

// How the rows are read depends on how many there are and where they lie.
TEST_F(Find, findsWhatIsBelowTheFolderAndNothingElse) {
    record({"/\\d\\in\\deep\\one", 5});
    recordFolder("/\\d\\in\\deep\\");
    record({"/\\d\\inner\\beside", 9});
    record({"/\\d\\in\\two", 3});
    recordFolder("/\\d\\in\\");
    std::vector<std::string> indexes;
    for (const bool indexed : {true, false}) {
        if (!indexed) {
            indexes = working.database().TakeIndexes("details");
        }
        for (const auto& [folder, found] :
             {std::pair(std::string("/\\d\\in\\"), std::vector<std::string>{"one", "two"}),
              {"/\\d\\in\\deep\\", {"one"}},
              {"/\\d\\", {"beside", "one", "two"}},
              {"", {"beside", "one", "two"}},
              {"/\\d\\none\\", {}}}) {
            FindQuery query({}, {}, folder, 100);
            while (!query.advance(working.database(), std::chrono::milliseconds(1))) {
            }
            std::vector<std::string> result;
            for (const modFind::Item& item : query.items()) {
                result.push_back(item.name);
            }
            EXPECT_EQ(result, found) << folder << indexed;
        }
    }
    working.database().RestoreIndexes(indexes);
    EXPECT_THAT(namesLike("in", Kind::folders), ElementsAre("in")) << "its name has no separator";
    EXPECT_THAT(namesLike("d?ep", Kind::folders), ElementsAre("deep"));
    EXPECT_THAT(namesLike("in?", Kind::folders), IsEmpty());
}

TEST_F(Find, countsAllAndKeepsTheFirst) {
    for (int i = 0; i < 1000; ++i) {
        record({"/\\d\\" + std::to_string(i), static_cast<double>((i * 37) % 1000)});
    }
    FindQuery query({}, {}, "/\\", 3);
    query.run(working.database());
    EXPECT_EQ(query.count(), 1000);
    EXPECT_EQ(query.size(), 999 * 1000 / 2);
    ASSERT_THAT(query.items(), SizeIs(3));
    EXPECT_EQ(query.items()[0].size, 999);
    EXPECT_EQ(query.items()[2].size, 997);
}

// Nothing is empty because it was not read, or because of sizes that cancel each other out.
TEST_F(Find, findsFoldersInWhichThereIsNothing) {
    tree.write("full/file", "1");
    tree.write("hollow/zero", "");
    std::filesystem::create_directories(tree / "empty/inner");
    std::filesystem::create_directories(tree / "bare");
    scan();
    Conditions conditions;
    conditions.kind = Kind::emptyFolders;
    EXPECT_THAT(names(conditions, key()), UnorderedElementsAre("inner", "bare"));
    conditions.name = "in";
    EXPECT_THAT(names(conditions, key()), ElementsAre("inner"));
    conditions.name.clear();
    working.database().Execute("update details set scanCompleteTime=NULL where fileName=\"bare\\\"");
    EXPECT_THAT(names(conditions, key()), ElementsAre("inner"));
}

// Rows may have anything in them, and change at any time.
TEST_F(Find, takesOddRowsAndLostOnes) {
    for (int i = 0; i < 200; ++i) {
        record({"/\\d\\" + std::to_string(i)});
    }
    Database& database = working.database();
    database.Execute("update details set size=NULL, dateModified=NULL where fileName=\"0\"");
    database.Execute("update details set fileName=NULL where fileName=\"1\"");
    database.Execute("update details set idx=9007199254740992, owner=\"\" where fileName=\"2\"");
    database.Execute("update details set idx=-7 where fileName=\"3\"");
    database.Execute("update details set size=-5 where fileName=\"4\"");
    FindQuery whole({}, {}, {}, FindQuery::all);
    whole.run(database);
    EXPECT_EQ(whole.count(), 200);
    EXPECT_EQ(whole.items().back().size, -5);

    FindQuery begun({}, {}, "/\\", 10);
    ASSERT_FALSE(begun.advance(database, std::chrono::milliseconds(0)));
    database.Execute("delete * from details");
    begun.run(database);
    EXPECT_EQ(begun.count(), 0);
    EXPECT_THAT(begun.items(), IsEmpty());
    FindQuery none({}, {}, "/\\", 10);
    none.run(database);
    EXPECT_EQ(none.count(), 0);
}

} // namespace
