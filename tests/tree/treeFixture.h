#pragma once

#include <QAbstractItemModelTester>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/errorLog.h"
#include "support/recordingInterface.h"
#include "support/temporaryFolder.h"
#include "support/testSystem.h"
#include "tree/folderTree.h"
#include "tree/nodeKeys.h"
#include "tree/treeOperations.h"
#include "widgets/systemIcons.h"

// All keys of a tree or its model, in the order of the nodes.
template <class Tree>
std::vector<std::string> keysOf(const Tree& tree) {
    std::vector<std::string> keys;
    for (const PlacedNode& node : tree.allNodes()) {
        keys.push_back(node.content.key);
    }
    return keys;
}

// A visible tree, filled as in the window, with one top-level node for a folder on the disk.
class TreeFixture {
public:
    explicit TreeFixture(std::initializer_list<std::string_view> folders = {}) {
        modGlobal::setErrorLog(&userInterface);
        for (const std::string_view name : folders) {
            testSystem::makeFolders(disk / name);
        }
        tree.addNode({}, {key(), QStringLiteral("disk"), {}, {}});
        tree.addPlaceholder(key());
        QObject::connect(&tree, &FolderTree::nodeExpanded, [this](const std::string& node) { fill(node); });
        QObject::connect(&tree, &FolderTree::nodeClicked,
                         [this](const std::string& node) { clicked.push_back(node); });
        tree.resize(300, 400);
        tree.show();
    }
    ~TreeFixture() { modGlobal::setErrorLog(); }
    TreeFixture(const TreeFixture&) = delete;
    TreeFixture& operator=(const TreeFixture&) = delete;

    // The key of a folder on the disk ("" for the top one), with "/" between its names.
    [[nodiscard]] std::string key(std::string_view name = {}) const {
        std::string result = disk.internal() + '\\';
        for (const char c : name) {
            result += c == '/' ? '\\' : c;
        }
        return name.empty() ? result : result + '\\';
    }

    [[nodiscard]] QModelIndex indexOf(std::string_view node) const {
        return static_cast<const TreeModel*>(tree.model())->indexOf(node);
    }

    // The texts of a node's children, separated by commas.
    [[nodiscard]] std::string children(std::string_view parent) const {
        std::string texts;
        for (const std::string& child : tree.childKeys(parent)) {
            texts.append(texts.empty() ? "" : ",").append(tree.text(child).toStdString());
        }
        return texts;
    }

    [[nodiscard]] bool hasPlaceholder(std::string_view node) const {
        return modGlobal::findNode(tree, modNodeKeys::placeholderOf(node));
    }

    TemporaryFolder disk;
    RecordingInterface userInterface;
    ImageList images;
    FolderTree tree;
    QAbstractItemModelTester tester{tree.model(), QAbstractItemModelTester::FailureReportingMode::Fatal};
    std::vector<std::string> clicked;

private:
    void fill(const std::string& node) {
        if (hasPlaceholder(node)) {
            tree.removePlaceholder(modNodeKeys::placeholderOf(node));
        }
        if (tree.tag(node).isEmpty()) {
            modGlobal::getChildFoldersAPI(tree, userInterface, images, node);
            modGlobal::getDummyFolders(tree, node);
            tree.setTag(node, QString::fromUtf8(modNodeKeys::foldersProcessed));
        }
    }
};
