#include "widgets/systemIcons.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

#include "platform/shellIcons.h"
#include "support/temporaryFolder.h"
#include "support/testSystem.h"

using modSystemIcons::getIcon;
using modSystemIcons::SizeFlag;

TEST(SystemIcons, oneIconIsHeldOnceHoweverManyPathsShowIt) {
    const TemporaryFolder disk;
    disk.write("some/file.txt", "");
    disk.write("a.folder/another.txt", "");
    ImageList images;
    const QString folder = getIcon(disk.internal("some") + "\\", images);
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^[0-9]+ICON$")).match(folder).hasMatch());
    EXPECT_EQ(getIcon(disk.internal("a.folder") + "\\", images), folder);
    const QString open = getIcon(disk.internal("some") + "\\", images, SizeFlag::openFolder);
    EXPECT_NE(open, folder);
    const QString file = getIcon(disk.internal("some/file.txt"), images);
    EXPECT_NE(file, folder);
    EXPECT_EQ(getIcon(disk.internal("a.folder/another.txt"), images), file);
    EXPECT_EQ(images.count(), 3);
    for (const QString& key : {folder, open, file}) {
        EXPECT_FALSE(images.image(key).pixmap(16).isNull());
    }
    ImageList others;
    EXPECT_EQ(getIcon(disk.internal("some/file.txt"), others), file);
    EXPECT_TRUE(others.contains(file)) << "each image list is filled";
}

TEST(SystemIcons, whateverAFileIsCalledItHasAnIcon) {
    const TemporaryFolder folder;
    ImageList images;
    for (const char* name : {"program", ".hidden", "a.b c.d"}) {
        folder.write(name, "");
        std::filesystem::permissions(folder / name, std::filesystem::perms::owner_all);
        EXPECT_TRUE(images.contains(getIcon(folder.internal(name), images))) << name;
    }
    for (const std::string& path :
         {folder.internal("is gone"), testSystem::root() + ".hidden", testSystem::root() + "ends with.dot.",
          std::string("no path"), std::string()}) {
        const QString key = getIcon(path, images);
        EXPECT_TRUE(images.contains(key) || (platform::hasShellIcons() && key.isEmpty())) << path;
    }
}
