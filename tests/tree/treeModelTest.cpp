#include "tree/treeModel.h"

#include <gmock/gmock.h>

#include <QAbstractItemModelTester>

#include "support/errorNumberOf.h"

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
    model.insertSorted("/\\", folders({"b10", "Zoo", "b2", "a", "A", "\u00e9t\u00e9", "B3"}));
    EXPECT_EQ(texts(), "A a b2 B3 b10 \u00e9t\u00e9 Zoo ");
    EXPECT_EQ(runs, 1);

    model.setText("/\\b10\\", QStringLiteral("zzz"));
    model.insertSorted("/\\", folders({"b12", "zoom", "b11", "0"}));
    EXPECT_EQ(texts(), "0 A a b2 B3 zzz b11 b12 \u00e9t\u00e9 Zoo zoom ");
    EXPECT_EQ(runs, 4) << "one for each place";
    for (const std::string& key : model.allKeys()) {
        EXPECT_EQ(model.keyOf(model.indexOf(key)), key);
        const QModelIndex index = model.indexOf(key);
        EXPECT_EQ(model.index(index.row(), 0, index.parent()), index) << key;
    }
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
    EXPECT_THAT(model.allKeys(), testing::ElementsAre("/\\", "/\\usr\\")) << "nothing was added by half";
}

} // namespace
