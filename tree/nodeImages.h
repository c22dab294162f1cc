#pragma once

#include <QIcon>
#include <map>
#include <string>
#include <string_view>

#include "tree/modDriveEnum.h"
#include "tree/treeModel.h"

class ImageList;
class QWidget;

// The images of the folder tree's nodes.
namespace modNodeImages {

// Images from the tree's style: for the computer and servers, for "Network" and shares, and for drives.
[[nodiscard]] QIcon computerImage(const QWidget& tree);
[[nodiscard]] QIcon networkImage(const QWidget& tree);
[[nodiscard]] QIcon driveImage(const QWidget& tree, int driveType);

// The shell's icon for the folder, which looks open while the folder is selected, except at the top level.
void giveFolderImages(TreeNode& node, ImageList& images, bool atTopLevel);

// Gives each node of a whole tree its images by its place in the tree, without reading folders: the drives
// are queried once, and all folders look alike.
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
