#include "tree/savedNodes.h"

#include <gmock/gmock.h>

#include <QSignalSpy>
#include <QTest>

#include "base/clsRegSettings.h"
#include "platform/files.h"
#include "support/errorNumberOf.h"
#include "support/expected.h"
#include "tree/startupTree.h"
#include "tree/treeFixture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* quotedName = "Q \"1\" (Access Denied)";

class SavedNodes : public testing::Test {
protected:
    SavedNodes() {
        platform::copyFile(templateFile(), fixture.disk.internal("main.dat"));
        database = DBEngine::OpenDatabase(fixture.disk.internal("main.dat"));
        settings.setINIPath(fixture.disk.internal("settings.ini"));
        const std::string log = fixture.disk.internal("errorLog.txt");
        modGlobal::setErrorLog(&fixture.userInterface, [log] { return modGlobal::ErrorLogFiles{log, log}; });
        places.drives.driveRoots = [] { return std::vector<std::string>{testSystem::root(), "/cd\\"}; };
        places.drives.driveType = [this](std::string_view root) {
            ++drivesAsked;
            return root == "/cd\\" ? platform::drive::cdRom : platform::drive::fixed;
        };
        places.networkShares = [] { return std::vector<std::string>{"\\\\nas\\media\\"}; };
    }

    void insert(const std::string& values) const {
        database->Execute("insert into nodes (nodeIndex,nodeKey,parentIndex,parentKey,expanded,selected,"
                          "nodeText,nodeTag) values (" +
                          values + ")");
    }
    bool load(FolderTree& tree) {
        return modGlobal::tvwLoadNodes(tree, *database, fixture.images, places.drives);
    }
    std::string log() const {
        return std::filesystem::exists(fixture.disk / "errorLog.txt") ? fixture.disk.read("errorLog.txt")
                                                                      : "";
    }

    // Everything about the nodes except their images.
    static std::vector<std::string> describe(const FolderTree& tree) {
        std::vector<std::string> result;
        for (const PlacedNode& node : tree.allNodes()) {
            result.push_back(tree.parentKey(node.content.key) + ">" + node.content.key + " '" +
                             node.content.text.toStdString() + "' " + node.tag.toStdString() +
                             (node.hasPlaceholder ? " +" : "") +
                             (tree.isExpanded(node.content.key) ? " expanded" : "") +
                             (node.selected ? " selected" : "") + (node.content.bold ? " bold" : ""));
        }
        return result;
    }

    TreeFixture fixture{"a/deep", "b10", "b9"};
    clsRegSettings settings;
    std::unique_ptr<Database> database;
    modStartupTree::Places places;
    int drivesAsked = 0;
};

TEST_F(SavedNodes, bringTheTreeBackAsItWas) {
    FolderTree& tree = fixture.tree;
    modStartupTree::makeAnew(tree, settings, places);
    modGlobal::addTopNode(tree, fixture.images, fixture.key());
    tree.addPlaceholder(fixture.key());
    tree.setExpanded(fixture.key(), true);
    tree.setExpanded(fixture.key("a"), true);
    tree.setExpanded(fixture.key("a"), false);
    tree.setText(fixture.key("b9"), QString::fromUtf8(quotedName));
    tree.selectNode(fixture.key("b10"));
    modGlobal::tvwSaveNodes(tree, *database);
    modGlobal::tvwSaveNodes(tree, *database); // in place of the first

    const auto rows = database->OpenRecordset("select * from nodes order by nodeIndex");
    EXPECT_EQ(rows->RecordCount(), 11 + 5) << "placeholders: the existing drive, the share, deep, b9, b10";
    EXPECT_EQ(rows->Fields("nodeKey").text(), "ROOT");
    EXPECT_EQ(rows->Fields("nodeIndex").number(), 1);
    EXPECT_EQ(rows->Fields("parentIndex").number(), -1);
    EXPECT_TRUE(rows->Fields("parentKey").isNull());
    rows->Close();

    FolderTree restored;
    restored.addNode({}, {"/\\", QStringLiteral("is replaced"), {}, {}});
    restored.selectNode("/\\");
    restored.setRestInterval({});
    restored.show();
    const QAbstractItemModelTester tester(restored.model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QSignalSpy expanded(&restored, &FolderTree::nodeExpanded);
    const QSignalSpy clicked(&restored, &FolderTree::nodeClicked);
    drivesAsked = 0;
    EXPECT_TRUE(load(restored));
    EXPECT_EQ(drivesAsked, 2);
    EXPECT_EQ(describe(restored), describe(tree));
    EXPECT_TRUE(restored.viewport()->rect().intersects(
        restored.visualRect(static_cast<TreeModel*>(restored.model())->indexOf(fixture.key("b10")))));
    const std::vector<PlacedNode> before = tree.allNodes();
    const std::vector<PlacedNode> after = restored.allNodes();
    const auto picture = [](const QIcon& icon) { return icon.pixmap(16).toImage(); };
    for (std::size_t i = 0; i < before.size() && i < after.size(); ++i) {
        EXPECT_EQ(picture(after[i].content.image), picture(before[i].content.image)) << before[i].content.key;
        EXPECT_EQ(picture(after[i].content.selectedImage), picture(before[i].content.selectedImage))
            << before[i].content.key;
    }
    EXPECT_NE(picture(after[1].content.image), picture(after[2].content.image)) << "a disk and a CD";
    QApplication::processEvents();
    EXPECT_EQ(expanded.count() + clicked.count(), 0);
    EXPECT_EQ(database->OpenRecordset("nodes")->RecordCount(), 0) << "ready for the next load";
    EXPECT_EQ(log(), "");
    EXPECT_THAT(fixture.userInterface.messages, IsEmpty());
}

TEST_F(SavedNodes, aTreeIsNotExpandedForItsSelection) {
    FolderTree& tree = fixture.tree;
    modStartupTree::makeAnew(tree, settings, places);
    const std::string drive = testSystem::root();
    tree.addNode(drive, {drive + "usr\\", {}, {}, {}});
    tree.selectNode(drive + "usr\\");
    tree.setExpanded(drive, false);
    const std::vector<std::string> saved = describe(tree);
    modGlobal::tvwSaveNodes(tree, *database);
    EXPECT_TRUE(load(tree));
    QApplication::processEvents();
    EXPECT_EQ(describe(tree), saved);
    EXPECT_EQ(tree.selectedKey(), drive + "usr\\");
}

TEST_F(SavedNodes, withoutARootTheTreeStaysAndMayGetTopFolders) {
    const std::vector<std::string> before = describe(fixture.tree);
    EXPECT_FALSE(load(fixture.tree));
    insert(R"(1,"/\",-1,NULL,0,0,"/",NULL)");
    insert(R"(2,"ROOT",1,"/\",0,0,"below another",NULL)");
    EXPECT_FALSE(load(fixture.tree));
    EXPECT_EQ(describe(fixture.tree), before);

    modGlobal::addTopFolders(fixture.tree, fixture.images,
                             {"", "/\\a\"b\\", fixture.key(), "C:\\data\\", "ROOT", "/\\z\\"});
    EXPECT_THAT(keysOf(fixture.tree), ElementsAre(fixture.key(), "C:\\data\\", "/\\z\\"));
    EXPECT_EQ(fixture.tree.selectedKey(), fixture.key());

    insert(R"(1,"ROOT",-1,NULL,0,0,"My Computer",NULL)");
    EXPECT_TRUE(load(fixture.tree));
    EXPECT_THAT(describe(fixture.tree), ElementsAre(">ROOT 'My Computer'  bold"));
}

TEST_F(SavedNodes, whateverRowsTheyAreTheTreeIsSound) {
    const std::string megabyte(1 << 20, 'x');
    const struct {
        const char* name;
        std::vector<std::string> rows; // below ROOT
        std::vector<std::string> nodes;
        int leftOut;
    } cases[] = {
        {"keys that are none",
         {R"(2,NULL,1,"ROOT",0,0,"",NULL)", R"(3,"",1,"ROOT",0,0,"",NULL)",
          R"(4,'/\a" or 1=1 or "\',1,"ROOT",0,0,"",NULL)", "5,\"/\\a\nb\\\",1,\"ROOT\",0,0,\"\",NULL",
          "6,\"/\\\xFF\\\",1,\"ROOT\",0,0,\"\",NULL", "7,\"/\\" + megabyte + "\\\",1,\"ROOT\",0,0,\"\",NULL"},
         {},
         6},
        {"names that Windows allows",
         {"2,\"C:\\a\x7F\xED\xA0\x80\\\",1,\"ROOT\",0,0,\"\",NULL"},
         {"ROOT>C:\\a\x7F\xED\xA0\x80\\ '' "},
         0},
        {"keys twice, of which the first counts",
         {R"(2,"/\",1,"ROOT",0,0,"first",NULL)", R"(3,"/\",1,"ROOT",0,0,"second",NULL)",
          R"(4,"ROOT",1,"/\",0,0,"",NULL)", R"(5,"/\",-1,NULL,0,0,"wins: top level is read first",NULL)"},
         {">/\\ 'wins: top level is read first' "},
         3},
        {"parents that are none",
         {R"(2,"/\",9,"/gone\",0,0,"",NULL)", R"(3,"/a\",2,"/b\",0,0,"",NULL)",
          R"(4,"/b\",3,"/a\",0,0,"",NULL)", R"(5,"/c\",5,"/c\",0,0,"",NULL)", R"(6,"/d\",1,NULL,0,0,"",NULL)",
          R"(7,"/e\",NULL,"ROOT",0,0,"",NULL)", R"(8,"/f\",1,"DUMMYROOT",0,0,"",NULL)"},
         {},
         7},
        {"placeholders of none, of another, or twice",
         {R"(2,"DUMMYROOT",1,"ROOT",0,0,"",NULL)", R"(3,"DUMMYROOT",1,"ROOT",0,0,"",NULL)",
          R"(4,"DUMMY/\",1,"/\",0,0,"",NULL)", R"(5,"/a\",1,"ROOT",0,0,"",NULL)",
          R"(6,"DUMMY/\",1,"/a\",0,0,"",NULL)", R"(7,"DUMMYROOT",-1,NULL,0,0,"",NULL)",
          R"(8,"DUMMY",1,"ROOT",0,0,"a name like any",NULL)"},
         {"ROOT>/a\\ '' ", "ROOT>DUMMY 'a name like any' "},
         4},
        {"two selected, and expanded without children",
         {R"(2,"/a\",1,"ROOT",1,1,"",NULL)", R"(3,"/b\",1,"ROOT",1,1,"",NULL)",
          R"(4,"/c\",1,"ROOT",-1,0,"","T")", R"(5,"DUMMY/c\",4,"/c\",0,0,"",NULL)"},
         {"ROOT>/a\\ '' ", "ROOT>/b\\ ''  selected", "ROOT>/c\\ '' T +"},
         0},
        {"texts that are no line, or none",
         {"2,\"/a\\\",1,\"ROOT\",0,0,\"1\n2\t3\u20284\x85\",NULL", R"(3,"/b\",1,"ROOT",0,0,NULL,NULL)",
          R"(4,"/c\",1,"ROOT","yes","no",12.5,7)"},
         {"ROOT>/a\\ '1 2 3 4\uFFFD' ", "ROOT>/b\\ '' ", "ROOT>/c\\ '12.5' 7.0"},
         0},
        {"indexes that are no numbers",
         {R"("two","/a\","one","ROOT",0,0,"",NULL)", R"(-99999999999,"/b\",0.5,"ROOT",0,0,"",NULL)"},
         {"ROOT>/b\\ '' ", "ROOT>/a\\ '' "},
         0},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        insert(R"(1,"ROOT",-1,NULL,0,0,"",NULL)");
        for (const std::string& row : each.rows) {
            insert(row);
        }
        EXPECT_TRUE(load(fixture.tree));
        std::vector<std::string> nodes = describe(fixture.tree);
        EXPECT_TRUE(nodes.front().starts_with(">ROOT"));
        nodes.erase(nodes.begin());
        EXPECT_EQ(nodes, each.nodes);
        const std::string told = "do not fit into the folder tree: " + std::to_string(each.leftOut);
        EXPECT_EQ(log().find(told) != std::string::npos, each.leftOut > 0) << log();
        std::filesystem::remove(fixture.disk / "errorLog.txt");
    }
    EXPECT_THAT(fixture.userInterface.messages, IsEmpty()) << "quietly";
}

TEST_F(SavedNodes, deepChainsAndLongTextsCanBeShown) {
    std::vector<PlacedNode> nodes{{{"ROOT", {}, {}, {}}, {}}};
    nodes.front().expanded = true;
    for (std::size_t level = 1; level < 20'000; ++level) {
        nodes.push_back({{"/" + std::to_string(level) + "\\", {}, {}, {}}, {}, level - 1, false, true, true});
    }
    nodes.back().content.text = nodes[2047].content.text = QString(1 << 20, QLatin1Char('x'));
    FolderTree endless;
    static_cast<TreeModel*>(endless.model())
        ->replaceAll(std::move(nodes)); // not expanded, because Qt cannot handle such a depth
    modGlobal::tvwSaveNodes(endless, *database);
    database->Execute("update nodes set expanded=1, selected=1");
    EXPECT_TRUE(load(fixture.tree));
    EXPECT_EQ(fixture.tree.selectedKey(), "/2047\\");
    EXPECT_EQ(fixture.tree.text("/2047\\").size(), 32767);
    EXPECT_FALSE(fixture.tree.grab().isNull());
    EXPECT_THAT(log(), HasSubstr("tree: 17952"));
}

TEST_F(SavedNodes, errorsOfSavingAreLoggedAndThoseOfLoadingTheCommands) {
    insert(R"(1,"ROOT",-1,NULL,0,0,"",NULL)");
    database->BeginTrans();
    modGlobal::tvwSaveNodes(fixture.tree, *database);
    database->CommitTrans(); // the caller's transaction is still open
    EXPECT_THAT(fixture.userInterface.messages, ElementsAre(HasSubstr("[modGlobal.tvwSaveNodes]")));
    EXPECT_EQ(database->OpenRecordset("nodes")->RecordCount(), 1);
    database->Close();
    EXPECT_EQ(errorNumberOf([&] { load(fixture.tree); }), 3420);
    EXPECT_TRUE(fixture.tree.findNode(fixture.key()));
}

} // namespace
