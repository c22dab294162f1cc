#include "tree/treeOperations.h"

#include <gmock/gmock.h>

#include <array>

#include "platform/locale.h"
#include "platform/paths.h"
#include "tree/treeFixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TreeOperations, fillANodeWithItsFoldersAlone) {
    TreeFixture fixture{"b"};
    for (const std::string& name : testSystem::hostileNames()) {
        testSystem::makeFolders(fixture.disk / name);
    }
    std::vector<std::string> folders; // not every system can create all of them
    for (const testSystem::Entry& entry : testSystem::entriesOf(fixture.disk.path())) {
        folders.push_back(fixture.key() + entry.name + "\\");
    }
    fixture.disk.write("file", "");
    testSystem::makeLink(fixture.disk / "b", fixture.disk / "link");
    fixture.tree.setExpanded(fixture.key(), true);
    EXPECT_THAT(fixture.tree.childKeys(fixture.key()), testing::UnorderedElementsAreArray(folders));
    EXPECT_GT(folders.size(), 10U);
    EXPECT_FALSE(fixture.hasPlaceholder(fixture.key()));
    for (const std::string& child : fixture.tree.childKeys(fixture.key())) {
        EXPECT_TRUE(fixture.hasPlaceholder(child) && !fixture.tree.isExpanded(child)) << child;
        EXPECT_EQ(fixture.tree.text(child), QString::fromUtf8(modNodeKeys::nameOf(child)));
    }
    EXPECT_EQ(fixture.userInterface.busyDepth, 0);
    EXPECT_THAT(fixture.userInterface.messages, IsEmpty());
}

TEST(TreeOperations, takeAListApartAtItsBars) {
    std::string_view list = "a|b c||d";
    for (const char* token : {"a", "b c", "", "d", ""}) {
        EXPECT_EQ(modGlobal::getNextToken(list), token);
    }
    EXPECT_EQ(list, "");
}

TEST(TreeOperations, addNothingTwice) {
    TreeFixture fixture{"a/b", "c"};
    FolderTree& tree = fixture.tree;
    tree.addNode({}, {fixture.key("a/b"), QStringLiteral("typed"), {}, {}});
    tree.setExpanded(fixture.key(), true);
    tree.setExpanded(fixture.key("a"), true);
    EXPECT_EQ(fixture.children(fixture.key("a")), "");
    EXPECT_EQ(tree.parentKey(fixture.key("a/b")), "");

    // Selecting a folder lists it again and finds new folders, in the right place.
    std::filesystem::create_directory(fixture.disk / "b");
    std::filesystem::remove(fixture.disk / "c");
    modGlobal::getChildFoldersAPI(tree, fixture.userInterface, fixture.images, fixture.key());
    modGlobal::addNode(fixture.key("b"), tree, fixture.key(), fixture.images);
    tree.removePlaceholder("DUMMY" + fixture.key("c"));
    modGlobal::getDummyFolders(tree, fixture.key());
    EXPECT_EQ(fixture.children(fixture.key()), "a,b,c");
    EXPECT_TRUE(fixture.hasPlaceholder(fixture.key("b")));
    EXPECT_FALSE(fixture.hasPlaceholder(fixture.key("c"))) << "it has vanished";
    EXPECT_FALSE(tree.isExpanded(fixture.key("a"))) << "collapsed behind its placeholder again";

    const std::string lower = fixture.key("c") + "x";
    const std::string upper = fixture.key("c") + "X";
    modGlobal::addNodes(std::array<std::string_view, 2>{lower, upper}, tree, fixture.key("c"),
                        fixture.images);
    EXPECT_EQ(fixture.children(fixture.key("c")), platform::namesIgnoreCase() ? "x" : "X,x");
    EXPECT_THAT(fixture.userInterface.messages, IsEmpty());
}

TEST(TreeOperations, selectByPathAndReportErrors) {
    TreeFixture fixture{"a"};
    fixture.tree.setExpanded(fixture.key(), true);
    fixture.tree.setExpanded(fixture.key(), false);
    const std::string path = fixture.key("a");
    modGlobal::tvwSelectNode(fixture.tree, std::string_view(path).substr(0, path.size() - 1));
    EXPECT_EQ(fixture.tree.selectedKey(), path);
    EXPECT_TRUE(fixture.tree.isExpanded(fixture.key()));
    modGlobal::tvwSelectNode(fixture.tree, "/\\not in the tree");
    EXPECT_EQ(fixture.tree.selectedKey(), path);
    modGlobal::getChildFoldersAPI(fixture.tree, fixture.userInterface, fixture.images, "ROOT");
    EXPECT_THAT(fixture.userInterface.messages, IsEmpty());

    modGlobal::getDummyFolders(fixture.tree, "/\\not in the tree\\");
    EXPECT_THAT(fixture.userInterface.messages,
                ElementsAre(testing::AllOf(testing::StartsWith("35601 Element not found"),
                                           testing::HasSubstr("[modGlobal.getDummyFolders]"))));
}

} // namespace
