#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

class clsUserInterface;
class FolderTree;
class ImageList;

// The folder tree's operations; the program changes the tree through them. Keys are tree/nodeKeys.h's. Each
// routine traps its errors and logs them unless it says otherwise.
namespace modGlobal {

// True when a node with that key exists, placeholders included.
[[nodiscard]] bool findNode(const FolderTree& tree, std::string_view key);

// Lists the parent's subfolders and adds a node for each that is not in the tree, wherever. A parent that is
// no folder, or cannot be listed, gets no children. Lets events be handled once, before it adds any.
void getChildFoldersAPI(FolderTree& tree, clsUserInterface& userInterface, ImageList& images,
                        std::string_view parentKey);

// Adds one subfolder (an internal path, with or without trailing "\") to its parent, in order of its name,
// unless it is in the tree already.
void addNode(std::string_view path, FolderTree& tree, std::string_view parentKey, ImageList& images);

// Adds several, which the tree takes in one go: it has to find their places and to show them. Errors other
// than those of a single path are thrown.
void addNodes(std::span<const std::string_view> paths, FolderTree& tree, std::string_view parentKey,
              ImageList& images);

// Adds a folder, which is not in the tree, as a top-level node that shows its whole path. Errors
// are thrown.
void addTopNode(FolderTree& tree, ImageList& images, std::string_view key);

// Gives a scan that was saved without a tree its top-level nodes: each of these folders that the tree lacks
// gets one, to be listed when it is expanded. Selects the first folder, which does not count as a click. Keys
// that are none are left out. Errors are thrown.
void addTopFolders(FolderTree& tree, ImageList& images, const std::vector<std::string>& keys);

// Gives every child that is an existing folder a placeholder, if it has none, and collapses it: deliberately
// also one whose subfolders have been listed.
void getDummyFolders(FolderTree& tree, std::string_view key);

// Selects the node of a folder (an internal path, with or without trailing "\") when there is one, makes it
// visible and expands its parent. Adds nothing and does not count as a click.
void tvwSelectNode(FolderTree& tree, std::string_view path);

// Takes the text before the next "|" off the list, with the "|".
[[nodiscard]] std::string_view getNextToken(std::string_view& list);

} // namespace modGlobal
