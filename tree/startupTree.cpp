#include "tree/startupTree.h"

#include <QStyle>

#include "app/clsSettings.h"
#include "app/errorLog.h"
#include "tree/folderTree.h"
#include "tree/networkBranch.h"
#include "tree/nodeKeys.h"
#include "tree/treeOperations.h"

namespace modStartupTree {

namespace {

QStyle::StandardPixmap pictureOf(int driveType) {
    switch (driveType) {
    case platform::drive::cdRom:
        return QStyle::SP_DriveCDIcon;
    case platform::drive::removable:
        return QStyle::SP_DriveFDIcon;
    case platform::drive::remote:
        return QStyle::SP_DriveNetIcon;
    default:
        return QStyle::SP_DriveHDIcon;
    }
}

} // namespace

void initializeTreeView(FolderTree& tree, const clsRegSettings& settings, const Places& places) {
    modGlobal::trapped("frmMain", "initializeTreeView", [&] {
        const auto icon = [&](QStyle::StandardPixmap picture) {
            return tree.style()->standardIcon(picture, nullptr, &tree);
        };
        const std::string root(modNodeKeys::root);
        tree.addNode({}, {root, QStringLiteral("My Computer"), icon(QStyle::SP_ComputerIcon), {}, true});
        // What it holds is given here, not listed.
        tree.setTag(root, QString::fromUtf8(modNodeKeys::foldersProcessed));

        modDriveEnum::enumerateLocalDrives(root, tree, places.drives);
        for (const std::string& drive : tree.childKeys(root)) {
            tree.setImages(drive, icon(pictureOf(places.drives.driveType(drive))), {});
        }
        if (!dontUseNetwork(settings)) {
            modNetwork::addNetworkBranch(tree, root, places.networkShares());
        }
        modGlobal::getDummyFolders(tree, root);
        tree.setExpanded(root, true);
    });
}

} // namespace modStartupTree
