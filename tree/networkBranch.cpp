#include "tree/networkBranch.h"

#include "tree/folderTree.h"
#include "tree/nodeImages.h"
#include "tree/nodeKeys.h"

namespace modNetwork {

namespace {

QString shownName(std::string_view key) {
    return QString::fromUtf8(modNodeKeys::nameOf(key));
}

} // namespace

void addNetworkBranch(FolderTree& tree, std::string_view parentKey, const std::vector<std::string>& shares) {
    const QIcon networkIcon = modNodeImages::networkImage(tree);
    const QIcon serverIcon = modNodeImages::computerImage(tree);
    // Nodes that are not folders have nothing more to list.
    const QString listed = QString::fromUtf8(modNodeKeys::foldersProcessed);

    tree.addNode(parentKey, {std::string(modNodeKeys::network), QStringLiteral("Network"), networkIcon, {}});
    tree.setTag(modNodeKeys::network, listed);
    for (const std::string& share : shares) {
        const std::string server = share.substr(0, share.find('\\', 2) + 1);
        if (!tree.findNode(server)) {
            tree.addFolders(modNodeKeys::network, {{server, shownName(server), serverIcon, {}}});
            tree.setTag(server, listed);
        }
        tree.addFolders(server, {{share, shownName(share), networkIcon, {}}});
        tree.addPlaceholder(share);
    }
}

} // namespace modNetwork
