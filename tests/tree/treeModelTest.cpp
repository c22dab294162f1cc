#include "tree/treeModel.h"

#include <gmock/gmock.h>

#include <QAbstractItemModelTester>

#include "support/errorNumberOf.h"
#include "tree/treeFixture.h"

namespace {

std::vector<TreeNode> folders(std::initializer_list<const char*> names) {
    std::vector<TreeNode> nodes;
    for (const char* name : names) {
        nodes.push_back({std::string("/\\") + name + "\\", QString::fromUtf8(name), {}, {}});
    }
    return nodes;
}

class TreeModelTest : public testing::Test {
protected:
    TreeModelTest() {
        model.append({}, {"/\\", QStringLiteral("/"), {}, {}});
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, [this] { ++runs; });
    }

    std::string texts() {
        std::string result;
        for (const std::string& key : model.childKeys("/\\")) {
            result += model.text(key).toStdString() + ' ';
        }
        return result;
    }

    TreeModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    int runs = 0;
};

TEST_F(TreeModelTest, sortsFoldersAsPeopleDoAndInsertsThemInRuns) {
    model.insertSorted("/\\", folders({"b10", "Zoo", "b2", "a", "\u00e9t\u00e9", "B3"}));
    EXPECT_EQ(texts(), "a b2 B3 b10 \u00e9t\u00e9 Zoo ");
    EXPECT_EQ(runs, 1);

    model.setText("/\\b10\\", QStringLiteral("zzz"));
    model.insertSorted("/\\", folders({"b12", "zoom", "b11", "0"}));
    EXPECT_EQ(texts(), "0 a b2 B3 zzz b11 b12 \u00e9t\u00e9 Zoo zoom ");
    EXPECT_EQ(runs, 4) << "one for each place";
    for (const std::string& key : keysOf(model)) {
        EXPECT_EQ(model.keyOf(model.indexOf(key)), key);
        const QModelIndex index = model.indexOf(key);
        EXPECT_EQ(model.index(index.row(), 0, index.parent()), index) << key;
    }
}

TEST_F(TreeModelTest, removesANodeWithAllBelowIt) {
    model.insertSorted("/\\", folders({"a", "b", "c"}));
    model.append("/\\b\\", {"/\\b\\deep\\", {}, {}, {}});
    const QPersistentModelIndex last = model.indexOf("/\\c\\");
    model.remove("/\\b\\");
    EXPECT_EQ(texts(), "a c ");
    EXPECT_FALSE(model.contains("/\\b\\deep\\"));
    EXPECT_EQ(model.keyOf(last), "/\\c\\");
    EXPECT_EQ(model.indexOf("/\\c\\").row(), 1);
    EXPECT_EQ(errorNumberOf([&] { model.remove("/\\b\\"); }), 35601);
}

TEST_F(TreeModelTest, refusesKeysThatAreThereOrAreNot) {
    model.insertSorted("/\\", folders({"usr"}));
    model.addPlaceholder("/\\usr\\");
    EXPECT_EQ(errorNumberOf([&] { model.append({}, {"/\\usr\\", {}, {}, {}}); }), 35602);
    EXPECT_EQ(errorNumberOf([&] { model.insertSorted("/\\", folders({"new", "usr"})); }), 35602);
    EXPECT_EQ(errorNumberOf([&] { model.insertSorted("/\\", folders({"new", "new"})); }), 35602);
    EXPECT_EQ(errorNumberOf([&] { model.addPlaceholder("/\\usr\\"); }), 35602);
    EXPECT_EQ(errorNumberOf([&] { model.append("/\\no\\", {"x", {}, {}, {}}); }), 35601);
    EXPECT_EQ(errorNumberOf([&] { (void)model.text("DUMMY/\\usr\\"); }), 35601);
    EXPECT_EQ(errorNumberOf([&] { model.removePlaceholder("DUMMY/\\"); }), 35601);
    EXPECT_EQ(errorNumberOf([&] { model.removePlaceholder("/\\usr\\"); }), 35601);
    EXPECT_THAT(keysOf(model), testing::ElementsAre("/\\", "/\\usr\\")) << "all or nothing is added";

    const bool same = platform::namesIgnoreCase();
    EXPECT_EQ(errorNumberOf([&] { model.insertSorted("/\\", folders({"new", "NEW"})); }), same ? 35602 : 0);
    EXPECT_EQ(texts(), same ? "usr " : "NEW new usr ");
}

TEST_F(TreeModelTest, replacesAllNodesOrNone) {
    const auto placed = [](const char* key, std::size_t parent) {
        return PlacedNode{{key, {}, {}, {}}, QString(), parent};
    };
    constexpr std::size_t top = PlacedNode::topLevel;
    const std::pair<std::vector<PlacedNode>, int> wrong[] = {
        {{placed("a", top), placed("a", 0)}, 35602},
        {{placed("a", top), placed("b", 1)}, 9},
        {{placed("a", 1), placed("b", top)}, 9},
    };
    for (const auto& each : wrong) {
        EXPECT_EQ(errorNumberOf([&] { model.replaceAll(each.first); }), each.second);
    }
    EXPECT_THAT(keysOf(model), testing::ElementsAre("/\\"));

    const auto indexes =
        model.replaceAll({placed("b", top), placed("b2", 0), placed("a", top), placed("b1", 0)});
    EXPECT_THAT(keysOf(model), testing::ElementsAre("b", "b2", "b1", "a"));
    EXPECT_EQ(indexes[3], model.indexOf("b1"));
    EXPECT_EQ(indexes[3].row(), 1);
    model.append("b2", {"/\\", {}, {}, {}});
    EXPECT_EQ(model.parentKey("/\\"), "b2") << "the old node's key is free";
    model.replaceAll({});
    EXPECT_FALSE(model.contains("b") || model.rowCount({}) > 0);
}

TEST(TreeModel, bearsChainsOfAnyDepth) {
    constexpr std::size_t depth = 200'000;
    TreeModel model;
    std::vector<PlacedNode> chain;
    for (std::size_t i = 0; i < depth; ++i) {
        chain.push_back({{std::to_string(i), {}, {}, {}}, {}, i == 0 ? PlacedNode::topLevel : i - 1});
    }
    model.replaceAll(std::move(chain));
    EXPECT_EQ(model.allNodes().size(), depth);
    model.replaceAll({}); // otherwise the stack would overflow here
}

} // namespace
