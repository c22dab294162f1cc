#include "tree/nodeImages.h"

#include <QStyle>
#include <QWidget>

#include "tree/nodeKeys.h"
#include "widgets/systemIcons.h"

namespace modNodeImages {

namespace {

QIcon placeImage(const QWidget& tree, QStyle::StandardPixmap picture) {
    return tree.style()->standardIcon(picture, nullptr, &tree);
}

bool isServer(std::string_view key) {
    return key.starts_with("\\\\") && !modNodeKeys::isFolderKey(key);
}

} // namespace

QIcon computerImage(const QWidget& tree) {
    return placeImage(tree, QStyle::SP_ComputerIcon);
}

QIcon networkImage(const QWidget& tree) {
    return placeImage(tree, QStyle::SP_DriveNetIcon);
}

QIcon driveImage(const QWidget& tree, int driveType) {
    switch (driveType) {
    case platform::drive::cdRom:
        return placeImage(tree, QStyle::SP_DriveCDIcon);
    case platform::drive::removable:
        return placeImage(tree, QStyle::SP_DriveFDIcon);
    case platform::drive::remote:
        return placeImage(tree, QStyle::SP_DriveNetIcon);
    default:
        return placeImage(tree, QStyle::SP_DriveHDIcon);
    }
}

void giveFolderImages(TreeNode& node, ImageList& images, bool atTopLevel) {
    using modSystemIcons::SizeFlag;
    const SizeFlag selected = atTopLevel ? SizeFlag::none : SizeFlag::openFolder;
    node.image = images.image(modSystemIcons::getIcon(node.key, images));
    node.selectedImage = images.image(modSystemIcons::getIcon(node.key, images, selected));
}

ImagesByPlace::ImagesByPlace(const QWidget& tree, ImageList& images, const modDriveEnum::DriveSource& drives)
    : otherDrive_(driveImage(tree, platform::drive::unknown)), computer_(computerImage(tree)),
      network_(networkImage(tree)) {
    for (const std::string& root : modDriveEnum::driveRoots(drives)) {
        drives_.emplace(root, driveImage(tree, drives.driveType(root)));
    }
    folder_.key = topFolder_.key = "\\"; // for any folder
    giveFolderImages(folder_, images, false);
    giveFolderImages(topFolder_, images, true);
}

void ImagesByPlace::give(TreeNode& node, std::string_view parentKey) {
    if (node.key == modNodeKeys::root) {
        node.image = computer_;
        node.bold = true;
    } else if (node.key == modNodeKeys::network || isServer(parentKey)) {
        node.image = network_;
    } else if (isServer(node.key)) {
        node.image = computer_;
    } else if (!modNodeKeys::isFolderKey(node.key)) {
        return;
    } else if (parentKey == modNodeKeys::root) {
        const auto known = drives_.find(node.key);
        node.image = known == drives_.end() ? otherDrive_ : known->second;
    } else {
        const TreeNode& like = parentKey.empty() ? topFolder_ : folder_;
        node.image = like.image;
        node.selectedImage = like.selectedImage;
    }
}

} // namespace modNodeImages
