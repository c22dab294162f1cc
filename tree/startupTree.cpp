#include "tree/startupTree.h"

#include "base/clsSettings.h"
#include "base/errorTrap.h"
#include "tree/folderTree.h"
#include "tree/networkBranch.h"
#include "tree/nodeImages.h"
#include "tree/nodeKeys.h"
#include "tree/treeOperations.h"

namespace modStartupTree {

void initializeTreeView(FolderTree& tree, const clsRegSettings& settings, const Places& places) {
    modGlobal::trapped("frmMain", "initializeTreeView", [&] {
        const std::string root(modNodeKeys::root);
        tree.addNode({}, {root, QStringLiteral("My Computer"), modNodeImages::computerImage(tree), {}, true});
        // Its children are added here, not listed.
        tree.setTag(root, QString::fromUtf8(modNodeKeys::foldersProcessed));

        modDriveEnum::enumerateLocalDrives(root, tree, places.drives);
        for (const std::string& drive : tree.childKeys(root)) {
            tree.setImages(drive, modNodeImages::driveImage(tree, places.drives.driveType(drive)), {});
        }
        if (!dontUseNetwork(settings)) {
            modNetwork::addNetworkBranch(tree, root, places.networkShares());
        }
        modGlobal::getDummyFolders(tree, root);
        tree.setExpanded(root, true);
    });
}

void makeAnew(FolderTree& tree, const clsRegSettings& settings, const Places& places) {
    tree.replaceNodes({});
    initializeTreeView(tree, settings, places);
}

} // namespace modStartupTree
