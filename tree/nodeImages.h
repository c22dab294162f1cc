#pragma once

#include <QIcon>
#include <map>
#include <string>
#include <string_view>

#include "tree/modDriveEnum.h"
#include "tree/treeModel.h"

class ImageList;
class QWidget;

// The pictures of the folder tree's nodes.
namespace modNodeImages {

// Places look as the tree's style has them: the computer and servers, "Network" and shares, drives.
[[nodiscard]] QIcon computerImage(const QWidget& tree);
[[nodiscard]] QIcon networkImage(const QWidget& tree);
[[nodiscard]] QIcon driveImage(const QWidget& tree, int driveType);

// The shell's icon for the folder, which opens while it is selected; at the top level it does not.
void giveFolderImages(TreeNode& node, ImageList& images, bool atTopLevel);

// Gives each node of a whole tree its pictures by where it stands, without looking at what it stands for:
// the drives are asked for once, and all folders look alike.
class ImagesByPlace {
public:
    // The tree and the images are not owned.
    ImagesByPlace(const QWidget& tree, ImageList& images, const modDriveEnum::DriveSource& drives);

    // Also makes "My Computer" bold. The parent's key is empty at the top level.
    void give(TreeNode& node, std::string_view parentKey);

private:
    std::map<std::string, QIcon> drives_; // by root
    QIcon otherDrive_;
    QIcon computer_;
    QIcon network_;
    TreeNode folder_;
    TreeNode topFolder_;
};

} // namespace modNodeImages
