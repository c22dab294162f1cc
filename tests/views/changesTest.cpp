#include "views/changes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/scanFixture.h"
#include "views/findQuery.h"

namespace {

using modChanges::Change;
using modChanges::State;
using testing::ElementsAre;
using testing::IsEmpty;

class Changes : public testing::Test, protected ScanFixture {
protected:
    Changes() {
        modChanges::makeTable(rows());
        modChanges::Table first(rows(), 1);
        append(first, "", "/\\", 400, 580, State::grown);
        append(first, "/\\", "a\\", 300, 500, State::grown);
        append(first, "/\\", "b\\", 100, {}, State::gone);
        append(first, "/\\", "it's", {}, 80, State::appeared);
        append(first, "/\\a\\", "x.txt", 300, 500, State::grown);
        append(first, "/\\b\\", "y.txt", 100, {}, State::gone);
        modChanges::Table second(rows(), 2);
        append(second, "/\\", "a\\", 300, 200, State::shrunk);
    }
    Database& rows() { return working.database(); }
    static void append(modChanges::Table& table, const std::string& folder, const std::string& name,
                       const std::optional<double>& before, const std::optional<double>& now, State state) {
        Change change;
        change.folder = folder;
        change.name = name;
        change.isFolder = name.ends_with('\\');
        change.before = before;
        change.now = now;
        change.state = state;
        change.extension = change.isFolder ? "" : "txt";
        table.append(change);
    }
    static std::vector<std::string> names(const std::vector<Change>& changes) {
        std::vector<std::string> result;
        for (const Change& each : changes) {
            result.emplace_back(each.nameAlone());
        }
        return result;
    }
};

TEST_F(Changes, areFoundByFolderLargestFirst) {
    EXPECT_THAT(names(modChanges::entriesIn(rows(), 1, "/\\")), ElementsAre("a", "b", "it's"));
    EXPECT_THAT(names(modChanges::entriesIn(rows(), 1, "/\\b\\")), ElementsAre("y.txt"));
    EXPECT_THAT(names(modChanges::entriesIn(rows(), 1, "/\\it's\\")), IsEmpty());
    EXPECT_THAT(names(modChanges::entriesIn(rows(), 2, "/\\")), ElementsAre("a"));
    EXPECT_EQ(modChanges::folderRow(rows(), 1, "/\\a\\")->change(), 200);
    EXPECT_EQ(modChanges::folderRow(rows(), 2, "/\\a\\")->change(), -100);
    EXPECT_EQ(modChanges::folderRow(rows(), 1, "/\\")->change(), 180) << "a drive's root";
    EXPECT_FALSE(modChanges::folderRow(rows(), 1, "/\\a\\x.txt\\"));
    modChanges::forget(rows(), 1);
    EXPECT_THAT(names(modChanges::entriesIn(rows(), 1, "/\\")), IsEmpty());
    EXPECT_THAT(names(modChanges::entriesIn(rows(), 2, "/\\")), ElementsAre("a"));
}

TEST_F(Changes, areFoundByConditions) {
    modChanges::forget(rows(), 2);
    const struct {
        modFind::Kind kind;
        std::optional<State> state;
        double larger;
        const char* folder;
        std::vector<std::string> expected;
    } cases[] = {
        {modFind::Kind::files, {}, 0, "/\\", {"x.txt", "y.txt", "it's"}},
        {modFind::Kind::files, {}, 90, "/\\", {"x.txt", "y.txt"}},
        {modFind::Kind::files, State::gone, 0, "/\\", {"y.txt"}},
        {modFind::Kind::files, {}, 0, "/\\a\\", {"x.txt"}},
        {modFind::Kind::folders, {}, 0, "/\\", {"a", "b"}},
        {modFind::Kind::folders, State::grown, 0, "/\\", {"a"}},
        {modFind::Kind::folders, State::touched, 0, "/\\", {}},
    };
    for (const auto& each : cases) {
        modFind::Conditions conditions;
        conditions.kind = each.kind;
        conditions.onlyChanged = true;
        conditions.state = each.state;
        conditions.larger = each.larger;
        modFind::FindQuery query(conditions, {}, each.folder, 100);
        query.run(rows());
        std::vector<std::string> found;
        for (const modFind::Item& item : query.items()) {
            found.emplace_back(item.nameAlone());
            EXPECT_EQ(item.isGone, item.folder + item.name == "/\\b\\" || item.name == "y.txt") << item.name;
        }
        EXPECT_EQ(found, each.expected) << &each - cases;
    }
}

} // namespace
