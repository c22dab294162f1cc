#include "views/widgets/systemIcons.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

#include "support/temporaryFolder.h"

using modSystemIcons::getIcon;
using modSystemIcons::SizeFlag;

TEST(SystemIcons, oneIconIsHeldOnceHoweverManyPathsShowIt) {
    ImageList images;
    const QString folder = getIcon("/\\some\\folder\\", images);
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^[0-9]+ICON$")).match(folder).hasMatch());
    EXPECT_EQ(getIcon("/\\", images), folder);
    const QString open = getIcon("/\\some\\folder\\", images, SizeFlag::openFolder);
    EXPECT_NE(open, folder);
    const QString file = getIcon("/\\some\\file.txt", images);
    EXPECT_NE(file, folder);
    EXPECT_EQ(getIcon("/\\a.folder\\another.txt", images), file);
    EXPECT_EQ(images.count(), 3);
    for (const QString& key : {folder, open, file}) {
        EXPECT_FALSE(images.image(key).pixmap(16).isNull());
    }
    ImageList others;
    EXPECT_EQ(getIcon("/\\some\\file.txt", others), file);
    EXPECT_TRUE(others.contains(file)) << "each image list is filled";
}

TEST(SystemIcons, whateverAFileIsCalledItHasAnIcon) {
    const TemporaryFolder folder;
    folder.write("program", "");
    std::filesystem::permissions(folder / "program", std::filesystem::perms::owner_all);
    ImageList images;
    for (const std::string& path :
         {folder.internal("program"), folder.internal("is gone"), std::string("/\\.hidden"),
          std::string("/\\ends with.dot."), std::string("no path"), std::string()}) {
        EXPECT_TRUE(images.contains(getIcon(path, images))) << path;
    }
}
