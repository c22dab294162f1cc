#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

class clsUserInterface;
class FolderTree;
class ImageList;

// The operations of the folder tree, through which the program changes it. For keys, see tree/nodeKeys.h.
// Each function traps its errors and logs them unless stated otherwise.
namespace modGlobal {

// True if a node or placeholder with that key exists.
[[nodiscard]] bool findNode(const FolderTree& tree, std::string_view key);

// Lists the parent's subfolders and adds a node for each that is not anywhere in the tree. A parent that is
// not a folder, or cannot be listed, gets no children. Handles events once, before it adds any nodes.
void getChildFoldersAPI(FolderTree& tree, clsUserInterface& userInterface, ImageList& images,
                        std::string_view parentKey);

// Adds one subfolder (an internal path, with or without a trailing "\") to its parent, sorted by name, unless
// the tree already has it.
void addNode(std::string_view path, FolderTree& tree, std::string_view parentKey, ImageList& images);

// Adds several folders in one step, so that the tree sorts and shows them together. Errors other than those
// of a single path are thrown.
void addNodes(std::span<const std::string_view> paths, FolderTree& tree, std::string_view parentKey,
              ImageList& images);

// Adds a folder that is not in the tree as a top-level node that shows its whole path. Errors are thrown.
void addTopNode(FolderTree& tree, ImageList& images, std::string_view key);

// Gives a scan that was saved without a tree its top-level nodes: each of these folders that is not in the
// tree gets a node, which is listed when expanded. Selects the first folder, which does not count as a click.
// Invalid keys are left out. Errors are thrown.
void addTopFolders(FolderTree& tree, ImageList& images, const std::vector<std::string>& keys);

// Gives every child that is an existing folder a placeholder if it has none, and collapses it. Odd on
// purpose: also if its subfolders have been listed.
void getDummyFolders(FolderTree& tree, std::string_view key);

// If a folder (an internal path, with or without a trailing "\") has a node, selects it, makes it visible and
// expands its parent. Adds nothing and does not count as a click.
void tvwSelectNode(FolderTree& tree, std::string_view path);

// Removes the text before the next "|" from the list, together with the "|", and returns it.
[[nodiscard]] std::string_view getNextToken(std::string_view& list);

} // namespace modGlobal
