#include "tree/startupTree.h"

#include <gmock/gmock.h>

#include "base/clsRegSettings.h"
#include "platform/paths.h"
#include "tree/treeFixture.h"

namespace {

using testing::ElementsAre;

// Six drives, one of each kind shown, and shares on two servers.
modStartupTree::Places somePlaces() {
    modStartupTree::Places places;
    places.drives.driveRoots = [] {
        return std::vector<std::string>{testSystem::root(), "b:\\",   "/mnt/my stick\\", "/cd\\",
                                        "/gone\\",          "/nas\\", "/odd\\"};
    };
    places.drives.driveType = [](std::string_view root) {
        const std::pair<std::string_view, int> types[] = {
            {"b:\\", 2}, {"/mnt/my stick\\", 2}, {"/cd\\", 5},  {"/gone\\", 1}, {"/nas\\", 4},
            {"A:\\", 2}, {"/ram\\", 6},          {"/what\\", 0}};
        for (const auto& [known, type] : types) {
            if (root == known) {
                return type;
            }
        }
        return root == testSystem::root() ? 3 : 99;
    };
    places.networkShares = [] {
        return std::vector<std::string>{"\\\\nas\\b10\\", "\\\\nas\\b9\\", "\\\\mail\\export/deep\\"};
    };
    return places;
}

TEST(DriveEnum, describesEachKind) {
    const modDriveEnum::DriveSource source = somePlaces().drives;
    const std::pair<std::string, const char*> cases[] = {
        {testSystem::root(), "Hard Drive"},
        {"b:\\", "Floppy Disk"},
        {"A:\\", "Floppy Disk"},
        {"/mnt/my stick\\", "Removable Drive"},
        {"/nas\\", "Network"},
        {"/cd\\", "Optical Drive"},
        {"/ram\\", "RAM Disk"},
        {"/gone\\", "The root directory does not exist"},
        {"/what\\", "Unknown"},
        {"", ""},
    };
    for (const auto& [root, description] : cases) {
        EXPECT_EQ(modDriveEnum::getDriveDescription(root, source).toStdString(), description) << root;
    }
}

TEST(DriveEnum, endsAtADriveThatIsThere) {
    TreeFixture fixture;
    modStartupTree::Places places = somePlaces();
    places.drives.driveType = [](std::string_view) { return 3; };
    fixture.tree.addNode({}, {"ROOT", {}, {}, {}});
    fixture.tree.addNode("ROOT", {"/cd\\", QStringLiteral("cd"), {}, {}});
    modDriveEnum::enumerateLocalDrives("ROOT", fixture.tree, places.drives);
    EXPECT_THAT(fixture.tree.childKeys("ROOT"),
                ElementsAre("/cd\\", testSystem::root(), "b:\\", "/mnt/my stick\\"));
    EXPECT_THAT(fixture.userInterface.messages,
                ElementsAre(testing::HasSubstr("[modDriveEnum.enumerateLocalDrives]")));

    places.drives.driveRoots = [] { return std::vector<std::string>{"a:\\", "/my b\\"}; };
    EXPECT_EQ(modDriveEnum::getDriveString(places.drives), std::string("a:\\\0/my b\\\0", 11));
}

TEST(StartupTree, holdsDrivesAndShares) {
    TreeFixture fixture;
    FolderTree tree;
    clsRegSettings settings;
    settings.setINIPath(fixture.disk.internal("settings.ini"));
    modStartupTree::initializeTreeView(tree, settings, somePlaces());
    EXPECT_THAT(keysOf(tree),
                ElementsAre("ROOT", testSystem::root(), "b:\\", "/mnt/my stick\\", "/cd\\", "/gone\\",
                            "/odd\\", "NETWORK", "\\\\mail\\", "\\\\mail\\export/deep\\", "\\\\nas\\",
                            "\\\\nas\\b9\\", "\\\\nas\\b10\\"));
    EXPECT_TRUE(tree.isFirstNode("ROOT") && tree.isExpanded("ROOT"));
    EXPECT_EQ(tree.text("/mnt/my stick\\").toStdString(),
              platform::displayPath("/mnt/my stick\\") + " (Removable Drive)");
    EXPECT_EQ(tree.text("/odd\\").toStdString(), platform::displayPath("/odd\\") + " ()");
    EXPECT_EQ(tree.text("\\\\mail\\export/deep\\").toStdString(), "export/deep");
    for (const std::string& key : keysOf(tree)) {
        const bool isPlace =
            key == testSystem::root() || (key.starts_with("\\\\") && modNodeKeys::isFolderKey(key));
        EXPECT_EQ(tree.findNode("DUMMY" + key), isPlace) << key;
    }

    settings.SaveSetting("startup", "dontUseNetwork", "1", stpIni);
    FolderTree local;
    modStartupTree::initializeTreeView(local, settings, somePlaces());
    EXPECT_FALSE(local.findNode("NETWORK"));

    modStartupTree::initializeTreeView(local, settings, somePlaces());
    EXPECT_THAT(fixture.userInterface.messages,
                ElementsAre(testing::HasSubstr("[frmMain.initializeTreeView]")));
}

TEST(NodeKeys, tellFoldersFromTheRest) {
    for (const char* key :
         {"/\\", "/home\\", "/\\usr\\", "\\\\server\\share\\", "\\\\server\\a/b\\c\\", "C:\\"}) {
        EXPECT_TRUE(modNodeKeys::isFolderKey(key)) << key;
    }
    for (const char* key : {"", "ROOT", "NETWORK", "\\\\server\\", "\\\\server", "DUMMY/\\", "DUMMYROOT"}) {
        EXPECT_FALSE(modNodeKeys::isFolderKey(key)) << key;
    }
}

} // namespace
