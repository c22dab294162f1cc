#pragma once

#include <string>
#include <vector>

#include "tree/modDriveEnum.h"

class clsRegSettings;
class FolderTree;

// The tree as the window shows it at the start.
namespace modStartupTree {

// The source of the places: the system, unless a test provides another.
struct Places {
    modDriveEnum::DriveSource drives;
    std::function<std::vector<std::string>()> networkShares = platform::networkShares;
};

// Fills the empty tree: "My Computer" (key "ROOT"), expanded, with the drives below it and, unless the
// settings forbid it, the network branch. Traps its errors and logs them for the main window.
void initializeTreeView(FolderTree& tree, const clsRegSettings& settings, const Places& places = {});

// Resets the tree to its state at the start, whatever it contains.
void makeAnew(FolderTree& tree, const clsRegSettings& settings, const Places& places = {});

} // namespace modStartupTree
