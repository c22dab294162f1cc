#include "tree/treeOperations.h"

#include <algorithm>
#include <optional>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/clsFile.h"
#include "base/clsUserInterface.h"
#include "base/errorTrap.h"
#include "base/modGlobal.h"
#include "platform/answering.h"
#include "platform/locale.h"
#include "platform/paths.h"
#include "scan/clsFileSearch.h"
#include "tree/folderTree.h"
#include "tree/nodeImages.h"
#include "tree/nodeKeys.h"

namespace modGlobal {

namespace {

constexpr std::string_view moduleName = "modGlobal";

// The node for a subfolder; nothing if the tree already has it.
std::optional<TreeNode> nodeOfFolder(std::string_view path, const FolderTree& tree, ImageList& images) {
    std::string key = addBackslash(path);
    if (findNode(tree, key)) {
        return std::nullopt;
    }
    TreeNode node{std::move(key), QString::fromUtf8(clsFile(path).lastFolder()), {}, {}};
    modNodeImages::giveFolderImages(node, images, false);
    return node;
}

} // namespace

bool findNode(const FolderTree& tree, std::string_view key) {
    return trapped(moduleName, "findNode", [&] { return tree.findNode(key); });
}

void getChildFoldersAPI(FolderTree& tree, clsUserInterface& userInterface, ImageList& images,
                        std::string_view parentKey) {
    trapped(moduleName, "getChildFoldersAPI", [&] {
        if (!modNodeKeys::isFolderKey(parentKey)) {
            return;
        }
        const BusyPointer busy(userInterface);
        clsFileSearch search(userInterface);
        search.setStartstr(parentKey);
        search.getFolders();
        const std::vector<std::string_view> paths(search.subfolders().begin(), search.subfolders().end());
        addNodes(paths, tree, parentKey, images);
    });
}

void addNode(std::string_view path, FolderTree& tree, std::string_view parentKey, ImageList& images) {
    trapped(moduleName, "addNode", [&] {
        if (auto node = nodeOfFolder(path, tree, images)) {
            tree.addFolders(parentKey, {*std::move(node)});
        }
    });
}

void addNodes(std::span<const std::string_view> paths, FolderTree& tree, std::string_view parentKey,
              ImageList& images) {
    std::vector<TreeNode> nodes;
    // Another system may have recorded several folders that are the same folder to this system.
    std::unordered_set<std::string_view, platform::NameHash, platform::NameEqual> taken;
    for (const std::string_view path : paths) {
        if (!taken.insert(path).second) {
            continue;
        }
        auto node = trapped(moduleName, "addNode", [&] { return nodeOfFolder(path, tree, images); });
        if (node) {
            nodes.push_back(*std::move(node));
        }
    }
    tree.addFolders(parentKey, std::move(nodes));
}

void addTopNode(FolderTree& tree, ImageList& images, std::string_view key) {
    TreeNode node{std::string(key), QString::fromStdString(platform::displayPath(key)), {}, {}};
    modNodeImages::giveFolderImages(node, images, true);
    tree.addNode({}, std::move(node));
}

void addTopFolders(FolderTree& tree, ImageList& images, const std::vector<std::string>& keys) {
    for (const std::string& key : keys) {
        if (modNodeKeys::isSound(key) && modNodeKeys::isFolderKey(key) && !findNode(tree, key)) {
            addTopNode(tree, images, key);
            tree.addPlaceholder(key);
        }
    }
    const auto first =
        std::find_if(keys.begin(), keys.end(), [&](const auto& key) { return findNode(tree, key); });
    if (first != keys.end()) {
        tree.selectNode(*first);
    }
}

void getDummyFolders(FolderTree& tree, std::string_view key) {
    trapped(moduleName, "getDummyFolders", [&] {
        for (const std::string& child : tree.childKeys(key)) {
            if (!modNodeKeys::isFolderKey(child) || !platform::seemsToBeFolder(child)) {
                continue;
            }
            if (!tree.findNode(modNodeKeys::placeholderOf(child))) {
                tree.addPlaceholder(child);
            }
            tree.setExpanded(child, false);
        }
    });
}

void tvwSelectNode(FolderTree& tree, std::string_view path) {
    trapped(moduleName, "tvwSelectNode", [&] {
        const std::string key = addBackslash(path);
        if (findNode(tree, key)) {
            tree.selectNode(key);
        }
    });
}

std::string_view getNextToken(std::string_view& list) {
    return trapped(moduleName, "getNextToken", [&] {
        const std::size_t end = list.find('|');
        const std::string_view token = list.substr(0, end);
        list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
        return token;
    });
}

} // namespace modGlobal
